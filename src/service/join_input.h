// One of the two files that are joined: its header, and its records by number.
#ifndef ZORVIK_SERVICE_JOIN_INPUT_H_
#define ZORVIK_SERVICE_JOIN_INPUT_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "driver/file.h"
#include "results/header.h"

namespace zorvik {

struct JoinInput {
  File& file;
  const std::string name;
  const std::string_view ordinal;  // "2nd" or "3rd"
  ResultsHeader& header;
  std::int64_t header_bytes = 0, record_bytes = 0;
  std::int64_t records = 0;

  std::int64_t offset_of(std::int64_t record) const {  // from 1; records + 1: the file's end
    return header_bytes + (record - 1) * record_bytes;
  }
};

// Reads both headers side by side and ends the run at the first difference, with a message in the
// listing that names the files: sizes, catalogue (dummy pairs aside), descriptors, title, names.
// Failures: "%fat- File " name ". Read error", "%fat- Premature End_of_file detected. File ",
// "%fat- Invalid header. File ", "%fat- Header is too large. File ".
void compare_headers(JoinInput& earlier, JoinInput& later);

// Counts the records: "%fat- Premature End_of_file detected." and the ordinal on the console when
// the last one is cut short, "%fat- 2nd file in SCMD2 has no records" in the listing.
void count_records(JoinInput& input);

// The problem time of a record; "%fat- Read error." and the ordinal on the console.
double time_of_record(JoinInput& input, std::int64_t record);

// A failed read of a record ends the run, on the console.
[[noreturn]] void stop_on_record(JoinInput& input, ReadStatus status);

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_JOIN_INPUT_H_
