// The results file's records have one length: the file's size tells how many are whole. The save
// file has to be walked through to the first record that is not; the file is then opened again, and
// cut where a second walk over the whole ones ends.
//   5 records of 8000 bytes and 100 bytes behind a header of 400: the file ends at byte 40400
#include "service/repair.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "driver/messages.h"
#include "driver/run_end.h"
#include "driver/text.h"
#include "driver/units.h"
#include "results/header.h"
#include "service/save_file.h"

namespace zorvik {
namespace {

// The I/O status goes with the second line here.
[[noreturn]] void stop_repair(std::string_view what, int io_status = kNoIoStatus) {
  issue_message(listing_unit, what);
  stop_with_listing("      Utility can not repair this file", kNoLine, io_status);
}

std::string during_repair(std::string_view what, std::string_view name) {
  return message("%fat- ", what, " detected during REPAIR operation. File ", name);
}

void close_in_repair(File& file, std::string_view name) {
  if (const int status = file.close(); status != 0) {
    stop_repair(during_repair("Close error", name), status);
  }
}

[[noreturn]] void stop_on_end(std::string_view name, int status) {
  stop_repair(during_repair("ENDFILE error", name), status);
}

void end_file_here(File& file, std::string_view name) {
  int status = file.truncate_here();
  if (status == 0) status = file.sync();
  if (status != 0) stop_on_end(name, status);
}

std::int64_t size_of(File& save) {
  const std::int64_t size = save.size();
  if (size < 0) stop_repair(during_repair("I/O error", "<vnxsav>"), save.io_status());
  return size;
}

// Copies the save file from `start` on to the first of vnxsav.cut, vnxsav.cut2 ... that is free.
void keep_what_is_cut(File& save, std::int64_t start, std::int64_t bytes) {
  File& copy = file_on(kCutUnit);
  const std::string name = "vnxsav.cut";
  int status = copy.open_unnamed(name);
  for (int k = 2; status == EEXIST; ++k) status = copy.open_unnamed(message(name, k));
  if (status != 0) stop_on_end("<vnxsav>", status);
  copy.keep_on_failure(File::kNoFile);
  switch (copy.copy_from(save, start, bytes)) {
    case CopyStatus::kOk:
      break;
    case CopyStatus::kWriteError:
      stop_on_end("<vnxsav>", copy.io_status());
    default:
      stop_repair(during_repair("I/O error", "<vnxsav>"), save.io_status());
  }
  status = copy.sync();
  if (status == 0) status = copy.close();
  if (status == 0) status = sync_folder(".");
  if (status != 0) stop_on_end("<vnxsav>", status);
}

[[noreturn]] void stop_without_records(std::string_view name) {
  stop_repair(message("%fat- File ", name, " has not valid records except control structures"));
}

File& open_at_records(SaveCounts& counts) {
  File& save = open_save_file(Use::kRewrite);
  if (scan_save_part(save, SavePart::kControlStructures, counts) != ScanStatus::kOk) {
    stop_repair("%fat- Control structures in <vnxsav> are invalid");
  }
  return save;
}

// Opens vnxres and reads its header; the file then stands at the first record.
File& open_results(ResultsHeader& header) {
  open_file(kResultsUnit, "RES", {}, Use::kRewrite);
  File& results = file_on(kResultsUnit);
  switch (read_header(results, header)) {
    case HeaderStatus::kOk:
      return results;
    case HeaderStatus::kReadError:
      stop_repair("%fat- Read error during REPAIR operation. File <vnxres>", results.io_status());
    case HeaderStatus::kEnd:
      stop_repair(during_repair("Premature end of file", "<vnxres>"));
    case HeaderStatus::kInvalid:
      stop_repair("%fat- Invalid header. File <vnxres>");
    case HeaderStatus::kTooLarge:
    case HeaderStatus::kCatalogueFull:
      break;
  }
  stop_repair("%fat- Header is too large. File <vnxres>");
}

}  // namespace

void repair_save_file() {
  SaveCounts counts;
  File& save = open_at_records(counts);
  std::int64_t records = 0, good_bytes = save.position(), longest = 0;
  ScanStatus status;
  while ((status = scan_save_part(save, SavePart::kRecord, counts)) == ScanStatus::kOk) {
    ++records;
    longest = std::max(longest, save.position() - good_bytes);
    good_bytes = save.position();
  }
  if (status == ScanStatus::kEnd) {
    issue_message(listing_unit, "%inf- File <vnxsav> has a valid structure. File not changed");
    end_run(RunEnd::kNormal);
  }
  // Not the file's end but a failed read: behind it there may be good records.
  const bool is_unreadable = save.io_status() != 0;
  close_in_repair(save, "<vnxsav>");
  if (records == 0) stop_without_records("<vnxsav>");
  open_at_records(counts);
  if (const int refusal = save.write_refusal(); refusal != 0) stop_on_end("<vnxsav>", refusal);
  const std::int64_t cut_bytes = size_of(save) - good_bytes;
  if (is_unreadable || cut_bytes > longest) keep_what_is_cut(save, good_bytes, cut_bytes);
  if (const int failure = save.seek(good_bytes); failure != 0) {
    stop_repair(during_repair("I/O error", "<vnxsav>"), failure);
  }
  end_file_here(save, "<vnxsav>");
  close_in_repair(save, "<vnxsav>");
  issue_message(listing_unit, "%inf- File <vnxsav> repaired");
  error_count = 0;  // the damage was counted when it was found; it is gone now
}

void repair_results_file() {
  static ResultsHeader header;
  close_in_repair(file_on(kResultsUnit), "<vnxres>");
  File& results = open_results(header);
  const std::int64_t size = results.size();
  if (size < 0) {
    stop_repair("%fat- Read error during REPAIR operation. File <vnxres>", results.io_status());
  }
  const std::int64_t header_bytes = results.position();
  const std::int64_t records = (size - header_bytes) / header.record_bytes();
  const std::int64_t good_bytes = header_bytes + records * header.record_bytes();
  // No record at all is no damage either.
  if (good_bytes == size) {
    issue_message(listing_unit, "%inf- File <vnxres> has a valid structure. File not changed");
    return;
  }
  // A header alone is not what anybody wants back: the file stays as it is.
  if (records == 0) {
    close_in_repair(results, "<vnxres>");
    stop_without_records("<vnxres>");
  }
  if (const int status = results.seek(good_bytes); status != 0) {
    stop_repair("%fat- Read error during REPAIR operation. File <vnxres>", status);
  }
  end_file_here(results, "<vnxres>");
  issue_message(listing_unit, "%inf- File <vnxres> repaired");
}

}  // namespace zorvik
