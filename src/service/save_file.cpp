// Each way of stepping through the file is a taker of fields on the walk of save_layout.h: the
// lister wants few of them, so that the walk passes over the rest; the copier wants all.
//   Title = SAMPLE PLANT. SAVINGS
//   Record = 1     Problem time = 2.000000000E+01
#include "service/save_file.h"

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/progress.h"
#include "driver/run_end.h"
#include "driver/text.h"
#include "driver/units.h"
#include "service/line_packer.h"
#include "service/stop_command.h"

namespace zorvik {
namespace {

// Lists what it meets; with Listing::kNone it wants nothing.
class Lister : public FieldTaker {
 public:
  Lister(Listing listing, const SaveCounts& counts) : listing_(listing), counts_(counts) {}

  bool wants(const SaveField& field) const override {
    if (listing_ == Listing::kNone || field.role == FieldRole::kPlain) return false;
    if (field.role != FieldRole::kEventNames) return true;
    return listing_ == Listing::kEvents && counts_[SaveCount::kNev] > 0;
  }

  void take(const SaveField& field, const FieldItems&, void* slice, int count) override {
    if (field.role == FieldRole::kTitle) {
      if (title_.empty()) title_.assign(static_cast<char*>(slice), static_cast<std::size_t>(count));
    } else if (field.role == FieldRole::kTimes) {
      // The first of the two times; the largest step is not listed.
      problem_time_ = *static_cast<double*>(slice);
    } else if (field.role == FieldRole::kEventNames) {
      for (int k = 0; k < count; ++k) add_event(static_cast<char*>(slice), k);
    }
  }

  void end(const SaveField& field, const FieldItems&) override {
    // The number ends the group R2: the time has been met before it.
    if (field.role == FieldRole::kRecordNumber) {
      issue_message(listing_unit, message("Record = ", format_integer(counts_[SaveCount::kNsaves]),
                                          "     Problem time = ", format_real(problem_time_)));
    } else if (field.role == FieldRole::kEventNames) {
      issue_message(listing_unit, line_);
    }
  }

  void list_title() const {
    if (listing_ != Listing::kNone) issue_message(listing_unit, message("Title = ", title_));
  }

 private:
  void add_event(const char* names, int k) {
    const auto width = static_cast<std::size_t>(bytes_of(SaveItem::kShortText));
    const std::string_view name =
        trim_right_char({names + static_cast<std::size_t>(k) * width, width}, ' ');
    switch (packer_.place(static_cast<int>(name.size()))) {
      case LinePacker::Place::kFirst:
        break;
      case LinePacker::Place::kSameLine:
        line_.push_back(' ');
        break;
      case LinePacker::Place::kNewLine:
        issue_message(listing_unit, line_);
        line_.clear();
        break;
    }
    line_.append(name);
  }

  const Listing listing_;
  const SaveCounts& counts_;
  std::string title_;  // its first slice
  double problem_time_ = 0.0;
  LinePacker packer_;  // of the event names
  std::string line_;
};

ScanStatus report_damage(PartStatus status, const File& file) {
  if (status == PartStatus::kReadError) {
    count_error("%err- Read error. File <vnxsav>", kNoLine, file.io_status());
  } else {
    count_error("%err- Premature End_of_File detected during reading from <vnxsav>");
    issue_message(listing_unit, "      May be <vnxsav> is corrupted or not properly closed");
  }
  return ScanStatus::kReported;
}

}  // namespace

File& open_save_file(Use use) {
  open_file(kSaveUnit, "SAV", {}, use);
  File& file = file_on(kSaveUnit);
  show_progress_through(file, "bytes of vnxsav");
  return file;
}

ScanStatus scan_save_part(File& file, SavePart part, SaveCounts& counts, Listing listing) {
  Lister lister(listing, counts);
  const PartStatus status = walk_part(file, part, counts, lister);
  if (status == PartStatus::kEnd) return ScanStatus::kEnd;
  if (status != PartStatus::kOk) return report_damage(status, file);
  if (part == SavePart::kControlStructures) lister.list_title();
  return ScanStatus::kOk;
}

ScanStatus scan_records(File& file, SaveCounts& counts, std::int64_t& records, Listing listing) {
  for (records = 0;; ++records) {
    const ScanStatus status = scan_save_part(file, SavePart::kRecord, counts, listing);
    if (status != ScanStatus::kOk) return status;
  }
}

bool skip_records(File& file, SaveCounts& counts, std::int64_t records) {
  for (std::int64_t k = 0; k < records; ++k) {
    if (scan_save_part(file, SavePart::kRecord, counts) != ScanStatus::kOk) return false;
  }
  return true;
}

void stop_on_failed_write(const SaveStream& target, int status) {
  stop_with_listing(message("%fat- Write error during KEEP operation. ", target.name), kNoLine,
                    status);
}

void copy_save_bytes(const SaveStream& source, SaveRange range, const SaveStream& target) {
  switch (target.file.copy_from(source.file, range.start, range.end - range.start)) {
    case CopyStatus::kOk:
      return;
    case CopyStatus::kReadError:
      stop_with_listing(message("%fat- Read error during KEEP operation. ", source.name), kNoLine,
                        source.file.io_status());
    case CopyStatus::kSourceEnds:
      stop_with_listing(
          message("%fat- Premature end of file detected. KEEP operation. ", source.name));
    case CopyStatus::kWriteError:
      stop_on_failed_write(target, target.file.io_status());
  }
}

void copy_save_record(const SaveStream& source, SaveRange record, const SaveStream& target,
                      std::int32_t new_number) {
  const std::int64_t number = record.start + offset_of_record_number();
  copy_save_bytes(source, {record.start, number}, target);
  if (const int status = target.file.write(&new_number, sizeof new_number); status != 0) {
    stop_on_failed_write(target, status);
  }
  const auto after = number + static_cast<std::int64_t>(sizeof new_number);
  copy_save_bytes(source, {after, record.end}, target);
}

void write_record_number(const SaveStream& target, std::int32_t number) {
  int status = target.file.seek(target.file.position() + offset_of_record_number());
  if (status == 0) status = target.file.write(&number, sizeof number);
  if (status != 0) stop_on_failed_write(target, status);
}

void show_save_file(Listing listing) {
  File& file = open_save_file();
  SaveCounts counts;
  std::int64_t records = 0;
  if (scan_save_part(file, SavePart::kControlStructures, counts, listing) == ScanStatus::kOk) {
    scan_records(file, counts, records, listing);
  }
  if (records == 0) {
    stop_command("%fat- Number of records in <vnxsav> is 0. Only control structures are present",
                 "      Utility can not execute command SHOW. Function SCMD2");
  }
  if (const int status = file.close(); status != 0) {
    stop_with_listing("%fat- Close error. File <vnxsav>", kNoLine, status);
  }
  // Damage behind the records that were listed does not end the run, but the console tells of it.
  if (error_count != 0) issue_message(kConsole, "%err- Errors detected. See listing");
  end_run(RunEnd::kNormal);
}

}  // namespace zorvik
