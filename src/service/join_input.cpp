// Both headers are read side by side, group by group, so that the first difference is met before a
// later group could be misread. Records have one length, so that any of them is found by its
// number.
//   nCH = 3 and 4: "%fat- Mandatory elem-s in run1 and run2 are different", no list being read
#include "service/join_input.h"

#include <algorithm>
#include <cstring>

#include "driver/interruption.h"
#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"

namespace zorvik {
namespace {

// What two catalogues differ in, as messages name it.
std::string part_of_catalogue(HeaderGroup group) {
  if (is_list(group)) return message(kElementKinds[kind_of_list(group)].name, "-s in ");
  return group == kCounts ? "elem-s in " : "parts of ";
}

[[noreturn]] void stop_on_difference(HeaderGroup group, const std::string& one,
                                     const std::string& other) {
  if (group == kSizes) {
    stop_with_listing(message("%fat- Length of inf. in ", one, " <> Length of inf. in ", other));
  }
  if (group == kDescriptors) {
    stop_with_listing(message("%fat- Information in ", one, " and ", other, " is different"));
  }
  stop_with_listing(
      message("%fat- Mandatory ", part_of_catalogue(group), one, " and ", other, " are different"));
}

void check_status(const JoinInput& input, HeaderStatus status) {
  switch (status) {
    case HeaderStatus::kOk:
      return;
    case HeaderStatus::kReadError:
      stop_with_listing(message("%fat- File ", input.name, ". Read error"), kNoLine,
                        input.file.io_status());
    case HeaderStatus::kEnd:
      stop_with_listing(message("%fat- Premature End_of_file detected. File ", input.name));
    case HeaderStatus::kInvalid:
      stop_with_listing(message("%fat- Invalid header. File ", input.name));
    case HeaderStatus::kTooLarge:
    case HeaderStatus::kCatalogueFull:
      stop_with_listing(message("%fat- Header is too large. File ", input.name));
  }
}

// What can't be read is told before the other file is looked at; what contradicts itself only when
// both files say the same, for a difference is the plainer message.
bool is_unreadable(HeaderStatus status) {
  return status == HeaderStatus::kReadError || status == HeaderStatus::kEnd;
}

// True when the group of both headers holds the same; the pair of an absent kind means nothing.
bool group_is_equal(JoinInput& earlier, JoinInput& later, HeaderGroup group) {
  if (is_list(group) && earlier.header.count_of(kind_of_list(group)) < 1) return true;
  const HeaderItems one = items_of(earlier.header, group), other = items_of(later.header, group);
  return one.count == other.count && std::memcmp(one.data, other.data, one.bytes()) == 0;
}

void compare_group(JoinInput& earlier, JoinInput& later, HeaderGroup group) {
  const HeaderStatus one = read_group(earlier.file, earlier.header, group);
  if (is_unreadable(one)) check_status(earlier, one);
  const HeaderStatus other = read_group(later.file, later.header, group);
  if (is_unreadable(other)) check_status(later, other);
  if (group <= kDescriptors && !group_is_equal(earlier, later, group)) {
    stop_on_difference(group, earlier.name, later.name);
  }
  check_status(earlier, one);
  check_status(later, other);
}

void compare_titles(const JoinInput& earlier, const JoinInput& later) {
  if (earlier.header.title_text() == later.header.title_text()) return;
  issue_message(listing_unit,
                message("%fat- TITLE  in ", earlier.name, " is ", earlier.header.title_text()));
  stop_with_listing(message("      TITLE  in ", later.name, " is ", later.header.title_text()));
}

// Every pair that differs is listed before the run ends.
void compare_names(const JoinInput& earlier, const JoinInput& later) {
  bool different = false;
  for (int k = 0; k < earlier.header.nv(); ++k) {
    const std::string_view one = earlier.header.listed_name(k), other = later.header.listed_name(k);
    if (one == other) continue;
    different = true;
    issue_message(listing_unit, message("%fat- ", earlier.name, " has ", trim_right(one)));
    issue_message(listing_unit, message("      ", later.name, " has ", trim_right(other)));
  }
  if (different) {
    stop_with_listing("%fat- SCMD2: files are different. You can convert files to text and see it");
  }
}

}  // namespace

void compare_headers(JoinInput& earlier, JoinInput& later) {
  for (int group = kSizes; group <= kTitle; ++group) {
    compare_group(earlier, later, static_cast<HeaderGroup>(group));
  }
  compare_titles(earlier, later);
  compare_names(earlier, later);
  for (JoinInput* input : {&earlier, &later}) {
    input->header_bytes = input->file.position();
    input->record_bytes = input->header.record_bytes();
  }
}

void count_records(JoinInput& input) {
  const std::int64_t size = input.file.size();
  if (size < 0) stop_on_record(input, ReadStatus::kError);
  const std::int64_t bytes = std::max<std::int64_t>(size - input.header_bytes, 0);
  if (bytes % input.record_bytes != 0) stop_on_record(input, ReadStatus::kCut);
  input.records = bytes / input.record_bytes;
  if (input.records == 0) {
    stop_with_listing(message("%fat- ", input.ordinal, " file in SCMD2 has no records"));
  }
}

double time_of_record(JoinInput& input, std::int64_t record) {
  stop_if_interrupted();
  // The time is the first value of the standard part.
  const std::int64_t extended_bytes = input.header.extended_values() * kValueBytes;
  double time = 0.0;
  const ReadStatus status =
      input.file.read_at(input.offset_of(record) + extended_bytes, &time, sizeof time);
  if (status != ReadStatus::kOk) stop_on_record(input, status);
  return time;
}

// No blank follows the point in these texts.
void stop_on_record(JoinInput& input, ReadStatus status) {
  if (status == ReadStatus::kError) {
    stop_on_console(message("%fat- Read error.", input.ordinal, " file in SCMD2"),
                    input.file.io_status());
  }
  stop_on_console(
      message("%fat- Premature End_of_file detected.", input.ordinal, " file in SCMD2"));
}

}  // namespace zorvik
