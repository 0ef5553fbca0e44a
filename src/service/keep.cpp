// First pass: every chosen record goes to the scratch file. Then the save file ends behind the
// chosen records that lead it, and the second pass writes all of them back from the scratch file.
// Of 5 records with 1, 2, 4 chosen: 1 and 2 stay in place (only their numbers are written over),
// the file is cut behind 2, and 4 follows as the new record 3.
#include "service/keep.h"

#include <algorithm>

#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"
#include "service/save_file.h"
#include "service/stop_command.h"

namespace zorvik {
namespace {

constexpr std::string_view kSaveName = "File <vnxsav>";
constexpr std::string_view kScratchName = "Scratch file";

[[noreturn]] void stop_keep(std::string_view what, int io_status = kNoIoStatus) {
  stop_command(what, "      Utility can not execute command KEEP. Function SCMD2", io_status);
}

[[noreturn]] void stop_for_io(int io_status = kNoIoStatus) {
  stop_keep("%fat- I/O error detected during KEEP operation. File <vnxsav>", io_status);
}

void read_control_structures(File& save, SaveCounts& counts) {
  if (scan_save_part(save, SavePart::kControlStructures, counts) != ScanStatus::kOk) {
    stop_keep("%fat- Control structures in <vnxsav> are invalid");
  }
}

void start_again(File& save, SaveCounts& counts) {
  if (const int status = save.rewind(); status != 0) stop_for_io(status);
  read_control_structures(save, counts);
}

void close_save_file(File& save) {
  if (const int status = save.close(); status != 0) {
    stop_keep("%fat- Close error detected during KEEP operation. File <vnxsav>", status);
  }
}

// Counts the records; refuses when one is damaged or one that is not there is chosen.
std::int64_t check_records(File& save, SaveCounts& counts, std::int32_t last_chosen) {
  std::int64_t records = 0;
  if (scan_records(save, counts, records) != ScanStatus::kEnd) stop_for_io();
  if (records == 0) {
    stop_keep("%fat- Number of records in <vnxsav> is 0. Only control structures are present");
  }
  if (last_chosen > records) {
    stop_command(message("%fat- Number of records in <vnxsav> NR = ", records),
                 "      2nd argument of SCMD2 contains values > NR");
  }
  return records;
}

// Copies the chosen records to the scratch file; returns their bytes.
std::int64_t copy_to_scratch(File& save, File& scratch, SaveCounts& counts,
                             std::span<const std::int32_t> chosen) {
  std::int64_t bytes = 0;
  std::int32_t position = 1, kept = 0;
  for (const std::int32_t wanted : chosen) {
    if (!skip_records(save, counts, wanted - position)) stop_for_io();
    const std::int64_t start = save.position();
    copy_save_record({save, kSaveName}, {scratch, kScratchName}, counts, ++kept);
    bytes += save.position() - start;
    position = wanted + 1;
  }
  return bytes;
}

// Ends the run unless the scratch file holds `records` complete records in just `bytes` bytes, and
// rewinds it.
void check_scratch(File& scratch, SaveCounts counts, std::int64_t records, std::int64_t bytes) {
  const SaveStream target{scratch, kScratchName};
  if (const int status = scratch.flush(); status != 0) stop_on_failed_write(target, status);
  if (const int status = scratch.rewind(); status != 0) {
    stop_keep("%fat- Rewind error detected during KEEP operation. Scratch file", status);
  }
  std::int64_t complete = 0;
  const ScanStatus end = scan_records(scratch, counts, complete);
  if (end != ScanStatus::kEnd || complete != records || scratch.position() != bytes) {
    stop_on_failed_write(target, scratch.io_status());
  }
  if (const int status = scratch.rewind(); status != 0) {
    stop_keep("%fat- Rewind error detected during KEEP operation. Scratch file", status);
  }
}

std::int64_t leading_records(std::span<const std::int32_t> chosen) {
  std::int64_t leading = 0;
  for (const std::int32_t number : chosen) {
    if (number != leading + 1) break;
    ++leading;
  }
  return leading;
}

// Ends the save file behind its first `records` records; returns its new size.
std::int64_t cut_save_file(File& save, SaveCounts& counts, std::int64_t records) {
  start_again(save, counts);
  if (!skip_records(save, counts, records)) stop_for_io();
  const std::int64_t end = save.position();
  if (const int status = save.truncate_here(); status != 0) stop_for_io(status);
  close_save_file(save);
  open_save_file(Use::kRewrite);
  read_control_structures(save, counts);
  return end;
}

}  // namespace

void keep_records(std::span<const std::int32_t> chosen) {
  File& save = open_save_file(Use::kRewrite);
  SaveCounts counts;
  read_control_structures(save, counts);
  check_records(save, counts, chosen.back());
  start_again(save, counts);
  open_file(kScratchUnit, "SC2");
  File& scratch = file_on(kScratchUnit);
  const std::int64_t bytes = copy_to_scratch(save, scratch, counts, chosen);
  const auto kept = static_cast<std::int64_t>(chosen.size());
  check_scratch(scratch, counts, kept, bytes);

  SaveStream target{save, kSaveName};
  std::int64_t whole_until = cut_save_file(save, counts, leading_records(chosen));
  save.keep_on_failure(whole_until);
  for (std::int32_t number = 1; number <= kept; ++number) {
    copy_save_record({scratch, kScratchName}, target, counts, number);
    if (const int status = save.flush(); status != 0) stop_on_failed_write(target, status);
    whole_until = std::max(whole_until, save.position());
    save.keep_on_failure(whole_until);
  }
  close_save_file(save);
}

}  // namespace zorvik
