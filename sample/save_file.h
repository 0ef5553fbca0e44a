// Writer of save files (vnxsav) from plain data, for tests and samples: the counts come from the
// lists, so every file that it writes is sound. An empty list leaves the placeholder that belongs
// to it.
#ifndef ZORVIK_SAMPLE_SAVE_FILE_H_
#define ZORVIK_SAMPLE_SAVE_FILE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace zorvik::sample {

using Integers = std::vector<std::int32_t>;
using Reals = std::vector<double>;
using Texts = std::vector<std::string>;

struct ControlStructures {
  std::int32_t constants = 0;  // Ncons
  std::string title;
  Integers cells;                       // iE
  Integers buffer, pointers, extended;  // lbufer, iE1, iexE
  std::int32_t state_values = 0;        // of each record's S1
};

// State beyond the fixed part; absent when `values` is.
struct SavedRest {
  std::int32_t offset = 0;  // of all three lists: ls1p, lE1, lexE
  Reals values;             // S1
  Integers pointers, extended;
};

struct SavedEvent {
  std::string name;
  std::int32_t address = 0;
};

struct SavedList {
  std::string name;
  std::int32_t address = 0;
};

struct SaveRecord {
  std::int32_t variables = 0;  // Nvar
  double time = 0.0, largest_step = 0.0;
  std::int32_t number = 0;  // Nsaves
  // Variables: equally many names, lengths and pointers; values and their pointers; a text.
  Texts names;
  Integers pointers, more_pointers, lengths;  // iX, iX1, lcx
  Integers extents;                           // iexX, from j2x00 on
  std::int32_t first_extent = 0;              // j2x00
  Integers value_pointers;                    // iXp
  Reals values;                               // X
  std::string text;                           // iXt
  // Constants of events.
  Integers constant_extents;  // iexCe
  std::string constant_text;  // iCte
  Reals constant_values;      // Cev
  std::vector<SavedEvent> events;
  Integers event_code;  // ievent
  SavedRest rest;
  std::vector<SavedList> lists;
  Integers list_items;           // ialist; only when there are lists
  Reals state;                   // S1, as many as the control structures say
  Integers output_words;         // iWRo
  Texts output_texts;            // b1
  std::int32_t last_number = 1;  // i2
};

struct SaveFile {
  ControlStructures controls;
  std::vector<SaveRecord> records;
};

std::string control_structures_bytes(const ControlStructures& controls);
std::string save_record_bytes(const SaveRecord& record);
std::string save_file_bytes(const SaveFile& file);

}  // namespace zorvik::sample

#endif  // ZORVIK_SAMPLE_SAVE_FILE_H_
