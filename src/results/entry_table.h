// The table of a results file's entries: first those that the catalogue implies, then the listed
// ones.
//
// An entry covers the rows lo1..hi1 and columns lo2..hi2 of one variable, its values running down
// the rows first. Value p of a record stands p - 1 doubles after the record's start: the extended
// part, when there is one, comes before the standard part, whose first value is the problem time.
#ifndef ZORVIK_RESULTS_ENTRY_TABLE_H_
#define ZORVIK_RESULTS_ENTRY_TABLE_H_

#include <cstdint>
#include <string_view>

#include "results/header.h"

namespace zorvik {

struct Entry {
  char name[kEntryNameWidth];  // with its shape text, blank-padded
  std::uint8_t full_length, base_length;
  std::int32_t lo1, hi1, lo2, hi2;
  std::int32_t form;   // 1000 * first extent of the variable + type digit (0 and 3 integer, 1 real,
                       // 4 pointer)
  std::int64_t start;  // the entry's first value in a record, from 1

  std::string_view full_name() const { return {name, full_length}; }  // without trailing blanks
  std::string_view base_name() const { return {name, base_length}; }  // the same, up to "("
  std::int64_t rows() const { return std::int64_t{hi1} - lo1 + 1; }
  std::int64_t columns() const { return std::int64_t{hi2} - lo2 + 1; }
  std::int64_t values() const { return rows() * columns(); }
  int first_extent() const { return form / 1000; }
  int type_digit() const { return form % 1000; }
};

struct EntryTable {
  Entry entry[kMaxEntries + 1];  // from 1
  int count;
};
extern EntryTable entry_table;

// Fills the table from a header that was found good. kInvalid for an entry whose values lie beyond
// the record or whose subscripts or type make no sense; kTooLarge when its values could not fit
// into the store.
HeaderStatus build_entry_table(const ResultsHeader& header);

}  // namespace zorvik

#endif  // ZORVIK_RESULTS_ENTRY_TABLE_H_
