// A record is read into the line, blanks behind it up to the line's capacity, and handed out
// character by character. Going back to a place is reading from the text's beginning when the place
// lies behind: lines have no index, and few places are gone back to.
//   line 7, "X = 1  ! start"  -> listed as " 00007 X = 1  ! start", length 14, then handed out
#include "driver/source_line.h"

#include <algorithm>
#include <cstring>

#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/text.h"
#include "driver/units.h"

namespace zorvik {

SourceLine source_line;

namespace {

void list_line() {
  char number[6];  // five digits and a blank
  int rest = source_line.number;
  for (int k = 4; k >= 0; --k, rest /= 10) number[k] = static_cast<char>('0' + rest % 10);
  number[5] = ' ';
  const std::string_view text(source_line.text, static_cast<std::size_t>(source_line.length));
  issue_message(source_line.list_to, message(std::string_view(number, sizeof number), text));
}

// True when the text ends inside a comment: "!" outside a character constant begins one.
bool ends_in_comment(std::string_view text) {
  bool in_constant = false;
  for (const char c : text) {
    if (c == '\'') in_constant = !in_constant;
    if (c == '!' && !in_constant) return true;
  }
  return false;
}

// Notes what stands behind the significant columns, once a line, unless it is blank or comment;
// returns the length that counts.
int without_lost_text(int length) {
  static int last_noted = 0;
  const std::string_view all(source_line.text, static_cast<std::size_t>(length));
  const auto width = static_cast<std::size_t>(source_line.width);
  const std::string_view lost = trim_right(trim_left(all.substr(width)));
  // The line is not counted yet.
  const int number = source_line.number + 1;
  const bool harmless =
      lost.empty() || lost.front() == '!' || ends_in_comment(all.substr(0, width));
  if (!harmless && number > last_noted) {
    last_noted = number;
    note(Hazard::kTextBehindMargin, [&] {
      return message("line ", number, ": \"", lost, "\" stands behind column ", width,
                     " and is not read");
    });
  }
  return source_line.width;
}

// Reads a record into the line; kOk, kEnd or kError. Beyond the significant columns it is read only
// in the pass that lists, and only for a note.
ReadStatus read_record(int unit) {
  int length = 0;
  const bool listed = source_line.list_to != 0;
  const int columns = listed && notes_wanted() ? kLineCapacity : source_line.width;
  const ReadStatus status = file_on(unit).read_line(source_line.text, columns, length);
  if (status != ReadStatus::kOk) return status;
  if (length > source_line.width) length = without_lost_text(length);
  std::memset(source_line.text + length, ' ', static_cast<std::size_t>(kLineCapacity - length));
  const std::string_view all(source_line.text, static_cast<std::size_t>(length));
  source_line.length = static_cast<int>(trim_right(all).size());
  ++source_line.number;
  if (!source_line.watched.empty() && all.starts_with(source_line.watched)) {
    ++source_line.watched_lines;
  }
  return status;
}

}  // namespace

void reset_source_line() {
  std::memset(source_line.text, ' ', sizeof source_line.text);
  source_line.length = 0;
  source_line.position = 1;
  source_line.wants_line = true;
  source_line.number = 0;
  source_line.list_to = 0;
  source_line.width = kProgramColumns;
  source_line.failure = 0;
  source_line.watched = {};
  source_line.watched_lines = 0;
}

void set_source_text(std::string_view text) {
  copy_padded(source_line.text, kLineCapacity, text);
  source_line.length = static_cast<int>(std::min<std::size_t>(text.size(), kLineCapacity));
  source_line.position = 1;
  source_line.wants_line = false;
}

int read_source_line(int unit) {
  if (unit == 0 || source_line.failure != 0) return kEndOfText;  // no line follows a torn one
  const ReadStatus status = read_record(unit);
  if (status == ReadStatus::kEnd) return kEndOfText;
  if (status == ReadStatus::kError) {
    source_line.failure = file_on(unit).io_status();
    if (unit != kProgramUnit) return kEndOfText;
    stop_on_console("%fat- Read error. File <zrvdat>", source_line.failure);
  }
  // Only while listing is the line number bounded by its five digits.
  if (source_line.list_to == 0) return source_line.length;
  if (source_line.number > kMaxSourceLines) {
    stop_on_console(message("%fat- Input file has more then ", kMaxSourceLines, " lines"));
  }
  list_line();
  return source_line.length;
}

// The lines up to this one are passed over silently, by read_record.
void u16pxy(int unit, int line, int column) {
  return_to(unit, line, column);
  if (source_line.list_to != 0) list_line();
}

void return_to(int unit, int line, int column) {
  File& file = file_on(unit);
  // The line itself needs no reading when it is the current one.
  if (source_line.number > line || source_line.number == 0) {
    if (const int status = file.rewind(); status != 0) {
      stop_with_listing("%fat- I/O error. File <zrvdat>", kNoLine, status);
    }
    source_line.number = 0;
  }
  while (source_line.number < line) {
    const ReadStatus status = read_record(unit);
    if (status == ReadStatus::kError) {
      stop_with_listing("%fat- I/O error. File <zrvdat>", kNoLine, file.io_status());
    }
    if (status == ReadStatus::kEnd) {
      stop_on_console("%dbg- Premature End_of_File. u16pxy");
    }
  }
  go_back_to(column);
}

}  // namespace zorvik
