#include "service/join_input.h"

#include <algorithm>
#include <cstring>

#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"

namespace zorvik {
namespace {

// How a difference of a group is reported: before, between and after the two names.
struct DifferenceRow {
  std::string_view before, between, after;
};
constexpr DifferenceRow kDifferences[kDescriptors + 1] = {
    {"%fat- Length of inf. in ", " <> Length of inf. in ", ""},
    {"%fat- Mandatory elem-s in ", " and ", " are different"},
    {"%fat- Mandatory CH-s in ", " and ", " are different"},
    {"%fat- Mandatory HCS-s in ", " and ", " are different"},
    {"%fat- Mandatory COL-s in ", " and ", " are different"},
    {"%fat- Mandatory SCH-s in ", " and ", " are different"},
    {"%fat- Mandatory SLVES-s in ", " and ", " are different"},
    {"%fat- Mandatory TANK-s in ", " and ", " are different"},
    {"%fat- Mandatory ACCUM-s in ", " and ", " are different"},
    {"%fat- Mandatory parts of ", " and ", " are different"},
    {"%fat- Information in ", " and ", " is different"},
};

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

bool is_unreadable(HeaderStatus status) {
  return status == HeaderStatus::kReadError || status == HeaderStatus::kEnd;
}

// True when the group of both headers holds the same; the pair of an absent kind means nothing.
bool group_is_equal(JoinInput& earlier, JoinInput& later, HeaderGroup group) {
  if (group >= kChList && group <= kAccumList &&
      earlier.header.count_of(static_cast<ElementKind>(group - kChList)) < 1) {
    return true;
  }
  const HeaderItems one = items_of(earlier.header, group), other = items_of(later.header, group);
  return one.count == other.count && std::memcmp(one.data, other.data, one.bytes()) == 0;
}

void compare_group(JoinInput& earlier, JoinInput& later, HeaderGroup group) {
  const HeaderStatus one = read_group(earlier.file, earlier.header, group);
  if (is_unreadable(one)) check_status(earlier, one);
  const HeaderStatus other = read_group(later.file, later.header, group);
  if (is_unreadable(other)) check_status(later, other);
  if (group <= kDescriptors && !group_is_equal(earlier, later, group)) {
    const DifferenceRow& row = kDifferences[group];
    stop_with_listing(message(row.before, earlier.name, row.between, later.name, row.after));
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
    input->record_bytes = input->header.record_values() * static_cast<std::int64_t>(sizeof(double));
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
  const std::int64_t extended_bytes =
      input.header.extended_values() * static_cast<std::int64_t>(sizeof(double));
  double time = 0.0;
  const ReadStatus status =
      input.file.read_at(input.offset_of(record) + extended_bytes, &time, sizeof time);
  if (status != ReadStatus::kOk) stop_on_record(input, status);
  return time;
}

void stop_on_record(JoinInput& input, ReadStatus status) {
  if (status == ReadStatus::kError) {
    stop_on_console(message("%fat- Read error.", input.ordinal, " file in SCMD2"),
                    input.file.io_status());
  }
  stop_on_console(
      message("%fat- Premature End_of_file detected.", input.ordinal, " file in SCMD2"));
}

}  // namespace zorvik
