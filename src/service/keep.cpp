// The chosen records are copied to the scratch file behind the control structures, with their new
// numbers, and read back; then the scratch file takes the place of the save file in one step. Where
// it cannot, the save file ends behind the chosen records that lead it, and the others follow from
// the scratch file. Of 5 records with 1, 2, 4 chosen: 1 and 2 stay in place (only their numbers are
// written over), the file is cut behind 2, and 4 follows as the new record 3.
#include "service/keep.h"

#include <cerrno>
#include <vector>

#include "driver/messages.h"
#include "driver/progress.h"
#include "driver/text.h"
#include "driver/units.h"
#include "service/save_file.h"
#include "service/stop_command.h"

namespace zorvik {
namespace {

constexpr std::string_view kSaveName = "File <vnxsav>";
constexpr std::string_view kScratchName = "Scratch file";

using Chosen = std::span<const std::int32_t>;

[[noreturn]] void stop_keep(std::string_view what, int io_status = kNoIoStatus) {
  stop_command(what, "      Utility can not execute command KEEP. Function SCMD2", io_status);
}

[[noreturn]] void stop_for_io(int io_status = kNoIoStatus) {
  stop_keep("%fat- I/O error detected during KEEP operation. File <vnxsav>", io_status);
}

// The file then stands at its first record.
void read_control_structures(File& save, SaveCounts& counts) {
  if (scan_save_part(save, SavePart::kControlStructures, counts) != ScanStatus::kOk) {
    stop_keep("%fat- Control structures in <vnxsav> are invalid");
  }
}

void close_save_file(File& file) {
  if (const int status = file.close(); status != 0) {
    stop_keep("%fat- Close error detected during KEEP operation. File <vnxsav>", status);
  }
}

// Counts the records and tells where the chosen ones stand; refuses when one is damaged or one that
// is not there is chosen.
std::vector<SaveRange> find_records(File& save, SaveCounts& counts, Chosen chosen) {
  std::vector<SaveRange> found;
  std::int64_t records = 0;
  for (std::int64_t start = save.position();; start = save.position()) {
    const ScanStatus status = scan_save_part(save, SavePart::kRecord, counts);
    if (status == ScanStatus::kReported) stop_for_io();
    if (status == ScanStatus::kEnd) break;
    ++records;
    if (found.size() < chosen.size() && chosen[found.size()] == records) {
      found.push_back({start, save.position()});
    }
  }
  // An empty file is told as such, whatever was chosen.
  if (records == 0) {
    stop_keep("%fat- Number of records in <vnxsav> is 0. Only control structures are present");
  }
  if (found.size() < chosen.size()) {
    stop_command(message("%fat- Number of records in <vnxsav> NR = ", records),
                 "      2nd argument of SCMD2 contains values > NR");
  }
  return found;
}

// Copies the control structures and the records to the scratch file; returns the records' places
// there.
std::vector<SaveRange> copy_to_scratch(File& save, File& scratch, std::int64_t control_bytes,
                                       const std::vector<SaveRange>& records) {
  const SaveStream source{save, kSaveName}, target{scratch, kScratchName};
  std::vector<SaveRange> copies;
  std::int64_t total = control_bytes;
  for (const SaveRange& record : records) total += record.end - record.start;
  show_progress_of_copy(scratch, total);
  scratch.reserve(total);
  copy_save_bytes(source, {0, control_bytes}, target);
  for (const SaveRange& record : records) {
    const std::int64_t start = scratch.position();
    copy_save_record(source, record, target, static_cast<std::int32_t>(copies.size()) + 1);
    copies.push_back({start, scratch.position()});
  }
  if (const int status = scratch.flush(); status != 0) stop_on_failed_write(target, status);
  return copies;
}

// Ends the run unless the scratch file holds the control structures and `copies`, all complete.
void check_scratch(File& scratch, const std::vector<SaveRange>& copies) {
  if (const int status = scratch.rewind(); status != 0) {
    stop_keep("%fat- Rewind error detected during KEEP operation. Scratch file", status);
  }
  SaveCounts counts;
  ScanStatus status = scan_save_part(scratch, SavePart::kControlStructures, counts);
  std::size_t complete = 0;
  while (status == ScanStatus::kOk && complete < copies.size()) {
    if (scratch.position() != copies[complete].start) break;
    status = scan_save_part(scratch, SavePart::kRecord, counts);
    if (status == ScanStatus::kOk) ++complete;
  }
  if (complete != copies.size() || scratch.position() != scratch.size()) {
    stop_on_failed_write({scratch, kScratchName}, scratch.io_status());
  }
}

// Cuts the save file behind the records that stay where they are, numbers them, and writes the
// others behind them. A record that fails to be written leaves those before it.
void rewrite_in_place(File& save, File& scratch, const std::vector<SaveRange>& copies,
                      Chosen chosen) {
  std::size_t leading = 0;
  while (leading < chosen.size() && chosen[leading] == static_cast<std::int32_t>(leading) + 1) {
    ++leading;
  }
  const std::int64_t cut = leading == 0 ? copies.front().start : copies[leading - 1].end;
  if (const int status = scratch.sync(); status != 0) stop_for_io(status);
  if (const int status = save.seek(cut); status != 0) stop_for_io(status);
  if (const int status = save.truncate_here(); status != 0) stop_for_io(status);
  const SaveStream source{scratch, kScratchName}, target{save, kSaveName};
  for (std::size_t k = 0; k < copies.size(); ++k) {
    save.keep_on_failure(std::max(cut, copies[k].start));
    if (const int status = save.seek(copies[k].start); status != 0) stop_for_io(status);
    if (k < leading) {
      write_record_number(target, static_cast<std::int32_t>(k) + 1);
    } else {
      copy_save_bytes(source, copies[k], target);
    }
    if (const int status = save.flush(); status != 0) stop_on_failed_write(target, status);
  }
  save.keep_on_failure(File::kAll);
  if (const int status = save.sync(); status != 0) stop_on_failed_write(target, status);
}

}  // namespace

void keep_records(Chosen chosen) {
  File& save = open_save_file(Use::kRewrite);
  SaveCounts counts;
  read_control_structures(save, counts);
  const std::int64_t control_bytes = save.position();
  const std::vector<SaveRange> records = find_records(save, counts, chosen);
  open_file(kScratchUnit, "SC2", "vnxsav");
  File& scratch = file_on(kScratchUnit);
  const std::vector<SaveRange> copies = copy_to_scratch(save, scratch, control_bytes, records);
  check_scratch(scratch, copies);
  // Only now: what is wrong with the records is told first.
  if (const int refusal = save.write_refusal(); refusal != 0) stop_for_io(refusal);
  if (const int status = scratch.take_place_of("vnxsav"); status == ENOTSUP) {
    rewrite_in_place(save, scratch, copies, chosen);
  } else if (status != 0) {
    stop_for_io(status);
  }
  close_save_file(save);
  close_save_file(scratch);
}

}  // namespace zorvik
