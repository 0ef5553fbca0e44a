// Both directions go over the header by its groups and over a record by its pieces, in the same
// order. The text has no number of records: the records go on while there is another lexeme.
#include "service/results_text.h"

#include <algorithm>
#include <span>
#include <vector>

#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/progress.h"
#include "driver/text.h"
#include "driver/units.h"
#include "results/header.h"
#include "service/stop_command.h"
#include "service/text_reader.h"
#include "service/text_writer.h"

namespace zorvik {
namespace {

constexpr std::string_view kToTextConsequence =
    "      Utility can not execute command \"TO_TEXT RESULTS\". Function SCMD2";
constexpr TextForm kForm = {
    "<restxt>", "<vnxres>",
    "      Utility can not exec. command \"FROM_TEXT RESULTS\". Function SCMD2", true};

ResultsHeader header;
double block[kBlockValues];

// The pieces of a record in their order: blocks of the extended part, its rest, the standard part.
struct Piece {
  std::int64_t values;
  bool is_standard_part;
};
template <class Handle>
void for_each_piece(Handle handle) {
  if (header.is_extended()) {
    for (int k = 0; k < header.parts[0]; ++k) handle(Piece{kBlockValues, false});
    if (header.parts[1] > 0) handle(Piece{header.parts[1], false});
  }
  handle(Piece{header.standard_values(), true});
}

// A record may be larger than memory set aside for it: a piece is handled in parts of one block.
int next_count(std::int64_t values_left) {
  return static_cast<int>(std::min<std::int64_t>(values_left, kBlockValues));
}

std::string_view fault_of(HeaderStatus status) {
  return status == HeaderStatus::kInvalid ? "%fat- Invalid header. File "
                                          : "%fat- Header is too large. File ";
}

// ---- TO_TEXT

[[noreturn]] void stop_to_text(std::string_view what, int io_status = kNoIoStatus) {
  stop_command(what, kToTextConsequence, io_status);
}

std::string during_to_text(std::string_view what, std::string_view name) {
  return message("%fat- ", what, " during \"TO_TEXT RESULTS\" operation. File ", name);
}

void close_after_to_text(File& file, std::string_view name) {
  if (const int status = file.close(); status != 0) {
    stop_to_text(during_to_text("Close error detected", name), status);
  }
}

[[noreturn]] void stop_on_header(HeaderStatus status, HeaderGroup group, const File& results) {
  switch (status) {
    case HeaderStatus::kReadError:
      stop_to_text(during_to_text("Read error", "<vnxres>"), results.io_status());
    case HeaderStatus::kEnd:
      if (group == kSizes)
        stop_with_listing(kToTextConsequence);  // an empty file has no first line
      stop_to_text(during_to_text("Premature EOF detected", "<vnxres>"));
    default:
      stop_to_text(message(fault_of(status), "<vnxres>"));
  }
}

void read_and_check(File& results, HeaderGroup group) {
  const HeaderStatus status = read_group(results, header, group);
  // The length of the title is asked for when the sizes make sense, and before they are found too
  // large.
  const bool judged = status == HeaderStatus::kOk || status == HeaderStatus::kTooLarge;
  if (group == kSizes && judged && header.nt() > kTitleColumns) {
    stop_to_text(
        message("%fat- Title is longer than ", kTitleColumns, " characters. File <vnxres>"));
  }
  if (status != HeaderStatus::kOk) stop_on_header(status, group, results);
}

void write_as_text(TextWriter& text, const HeaderItems& items) {
  if (!items.present) return;
  const auto* characters = static_cast<const char*>(items.data);
  switch (items.kind) {
    case HeaderItem::kInteger:
      text.begin_numbers();
      text.integers(static_cast<const std::int32_t*>(items.data), items.count);
      text.end_numbers();
      return;
    case HeaderItem::kName:
      text.begin_texts();
      text.texts(characters, items.count, kEntryNameWidth);
      text.end_texts();
      return;
    case HeaderItem::kCharacter:
      text.begin_texts();
      text.texts(characters, 1, items.count);
      text.end_texts();
      return;
  }
}

// Copies one record; false at the clean end of the file.
// Its numbers are written while it is read: of a record that is cut short the text has the
// beginning.
bool write_record_as_text(File& results, TextWriter& text, bool must_exist) {
  bool any = false, at_end = false;
  for_each_piece([&](Piece piece) {
    if (at_end) return;
    bool started = false;
    for (std::int64_t left = piece.values; left > 0;) {
      const int count = next_count(left);
      const ReadStatus status =
          results.read(block, static_cast<std::size_t>(count) * sizeof(double));
      if (status == ReadStatus::kError) {
        stop_to_text(during_to_text("Read error", "<vnxres>"), results.io_status());
      }
      if (status == ReadStatus::kEnd && !any && !must_exist) {
        at_end = true;
        return;
      }
      if (status != ReadStatus::kOk) {
        stop_with_listing("%fat- File <vnxres> is corrupted. Use SCMD2 to repair it");
      }
      if (!started && piece.is_standard_part) text.line(kTauLine);
      if (!started) text.begin_numbers();
      started = any = true;
      text.reals(block, count);
      left -= count;
    }
    text.end_numbers();
  });
  return !at_end;
}

// ---- FROM_TEXT

void check_from_text(GroupWriter& output, HeaderGroup group) {
  const HeaderStatus status = check_group(header, group);
  if (status != HeaderStatus::kOk) output.stop(message(fault_of(status), kForm.text_name));
}

void read_title(TextReader& text, std::span<char> title) {
  text.marker(kTextBegin);
  const std::string_view line = text.whole_line(kTitleColumns);
  if (line.size() != title.size() + 2) text.stop_on_line();
  std::copy_n(line.data() + 1, title.size(), title.data());
  text.marker(kTextEnd);
}

void read_names(TextReader& text, char* names, int count) {
  text.marker(kTextBegin);
  for (int k = 0; k < count; ++k) {
    copy_padded(names + k * kEntryNameWidth, kEntryNameWidth, text.text_item());
  }
  text.marker(kTextEnd);
}

void read_header_group(TextReader& text, HeaderGroup group, GroupWriter& output) {
  const HeaderItems items = items_of(header, group);
  if (!items.present) return;
  // H1 and the descriptors may be negative; elsewhere a minus is refused.
  const Sign sign = group == kSizes || group == kDescriptors ? Sign::kPlusOrMinus : Sign::kPlus;
  switch (items.kind) {
    case HeaderItem::kInteger:
      for (int k = 0; k < items.count; ++k) {
        static_cast<std::int32_t*>(items.data)[k] = text.integer(sign);
      }
      break;
    case HeaderItem::kName:
      read_names(text, static_cast<char*>(items.data), items.count);
      break;
    case HeaderItem::kCharacter:
      read_title(text, {static_cast<char*>(items.data), static_cast<std::size_t>(items.count)});
      break;
  }
  check_from_text(output, group);
  output.write(items.data, items.bytes());
  output.end_group();
}

// The standard part of a record stands between its own "! Tau" line and the next one; notes the
// first that does not, with a value missing or one too many. A text without these lines is right
// too.
void watch_record(std::int64_t record) {
  if (source_line.watched_lines == 0 || source_line.watched_lines == record) return;
  source_line.watched = {};
  source_line.watched_lines = 0;
  note(Hazard::kShiftedRecord, [&] {
    return message("line ", source_line.number, " of <restxt>: the values of record ", record,
                   " do not end where the record ends");
  });
}

// Each piece is a group of its own: a text in error leaves whole pieces.
void read_record(TextReader& text, GroupWriter& output, std::int64_t record) {
  for_each_piece([&](Piece piece) {
    for (std::int64_t left = piece.values; left > 0;) {
      const int count = next_count(left);
      for (int k = 0; k < count; ++k) {
        block[k] = text.real(Sign::kPlusOrMinus);
        if (piece.is_standard_part && k == 0 && left == piece.values) watch_record(record);
      }
      output.write(block, static_cast<std::size_t>(count) * sizeof(double));
      left -= count;
    }
    if (piece.is_standard_part) watch_record(record);
    output.end_group();
  });
}

void close_after_from_text(File& file, std::string_view name) {
  if (const int status = file.close(); status != 0) {
    stop_command(
        message("%fat- Close error detected during \"FROM_TEXT RESULTS\" operation. File ", name),
        kForm.consequence, status, source_line.number);
  }
}

}  // namespace

void results_to_text() {
  File& results = file_on(kResultsUnit);
  File& text_file = file_on(kTextUnit);
  close_after_to_text(results, "<vnxres>");
  open_file(kResultsUnit, "RES");
  open_file(kTextUnit, "TXR", {}, Use::kCreate);
  show_progress_through(results, "bytes of vnxres");
  TextWriter text(text_file, "<restxt>", kToTextConsequence);
  for (int group = kSizes; group <= kTitle; ++group) {
    read_and_check(results, static_cast<HeaderGroup>(group));
    write_as_text(text, items_of(header, static_cast<HeaderGroup>(group)));
  }
  bool first = header.is_extended();  // without any record such a file is refused
  while (write_record_as_text(results, text, first)) first = false;
  text.finish();
  close_after_to_text(results, "<vnxres>");
  close_after_to_text(text_file, "<restxt>");
}

void results_from_text() {
  File& results = file_on(kResultsUnit);
  File& text_file = file_on(kTextUnit);
  reset_source_line();
  close_after_from_text(results, "<vnxres>");
  // An old vnxres is refused first; a text that is missing leaves no new one behind.
  if (inquire_file("vnxres").exists) open_file(kResultsUnit, "REN");
  open_file(kTextUnit, "TXR");
  show_progress_through(text_file, "bytes of restxt");
  open_file(kResultsUnit, "REN");
  GroupWriter output(results, kForm);
  TextReader text(kTextUnit, kForm, output);
  for (int group = kSizes; group <= kTitle; ++group) {
    read_header_group(text, static_cast<HeaderGroup>(group), output);
  }
  source_line.watched = kTauLine;
  std::int64_t record = 0;
  do {
    read_record(text, output, ++record);
  } while (text.more_follows());
  close_after_from_text(results, "<vnxres>");
  close_after_from_text(text_file, "<restxt>");
}

}  // namespace zorvik
