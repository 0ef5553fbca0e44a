// A record is one line of its file, handed over with the blank of column 1. A listing that can't be
// written is told on the console and ends the run; the end finds the listing failed and says
// nothing more of it.
//   "%err- Undefined variable X" of line 17 -> " %err- Undefined variable X Line 17"
#include "driver/messages.h"

#include <string>

#include "driver/progress.h"
#include "driver/run_end.h"
#include "driver/source_line.h"
#include "driver/text.h"
#include "driver/units.h"

namespace zorvik {

int error_count = 0;
int listing_unit = kConsole;

namespace {

// On a terminal a title or a name of a file must not move the cursor or change the colours.
std::string without_controls(std::string_view text) {
  std::string shown(text);
  for (char& c : shown) {
    const auto code = static_cast<unsigned char>(c);
    if ((code < ' ' && c != '\t') || code == 127) c = '.';
  }
  return shown;
}

// Writes the text and, for a status, its second record; 0 or the status of the write that failed.
// A failure of the console is told when the run ends.
int write_record(int unit, std::string_view text, int io_status) {
  File& file = file_on(unit);
  std::string shown;
  if (unit == kConsole) {
    clear_progress();
    if (file.is_terminal()) text = shown = without_controls(text);
  }
  int failure = file.write_line(" ", text);
  if (io_status != kNoIoStatus && failure == 0) {
    failure = file.write_line(" ", message("Fortran iostat = ", io_status));
  }
  return failure;
}

// Of all files that messages go to, the listing is the one whose failure ends the run at once.
void stop_on_failed_write(int failure) {
  if (failure == 0) return;
  write_record(kConsole, "%fat- Write error. File <zrvlis>", failure);
  end_run(RunEnd::kFailed);
}

void write_to_file(int unit, std::string_view text, int io_status) {
  stop_on_failed_write(write_record(unit, text, io_status));
}

}  // namespace

void set_listing_unit(int unit) { listing_unit = unit; }

void issue_message(int unit, std::string_view text, int io_status, int line) {
  if (text.empty()) return;
  std::string with_line;
  if (line > kNoLine) {
    with_line = message(text, " Line ", line);
    text = with_line;
  }
  // The console comes first: a failing file would end the run before it had been told.
  if (unit <= kConsole) write_record(kConsole, text, io_status);
  if (unit != kConsole) write_to_file(unit < 0 ? -unit : unit, text, io_status);
}

void flush_listing() { stop_on_failed_write(file_on(listing_unit).flush()); }

void issue_pointed_message(int unit, std::string_view text, int column) {
  if (text.empty()) return;
  std::string pointer = "%_____";
  // A tab stays a tab, so the caret stands below its character however wide tabs are shown.
  for (int k = 1; k < column; ++k) {
    pointer.push_back(source_line.text[k - 1] == '\t' ? '\t' : '_');
  }
  pointer.push_back('^');
  issue_message(unit, pointer);
  issue_message(unit, text);
}

void write_blank_line(int unit) {
  if (unit == kConsole) {
    write_record(unit, "", kNoIoStatus);
  } else {
    write_to_file(unit, "", kNoIoStatus);
  }
}

void count_error(std::string_view text, int line, int io_status) {
  issue_message(listing_unit, text, io_status, line);
  ++error_count;
}

void count_error_at(int column, std::string_view text) {
  issue_pointed_message(listing_unit, text, column);
  ++error_count;
}

void count_written_error() { ++error_count; }

void stop_run(int unit, std::string_view text, Stop stop, int line, int io_status) {
  issue_message(unit, text, io_status, line);
  if (stop == Stop::kWithNotice) stop_with_notice();
  end_run(RunEnd::kFailed);
}

void stop_on_console(std::string_view text, int io_status) {
  stop_run(kConsole, text, Stop::kAtOnce, kNoLine, io_status);
}

void stop_with_listing(std::string_view text, int line, int io_status) {
  stop_run(listing_unit, text, Stop::kWithNotice, line, io_status);
}

void stop_with_listing_at(int column, std::string_view text) {
  issue_pointed_message(listing_unit, text, column);
  stop_with_notice();
}

void stop_with_notice() {
  issue_message(kConsole, "Errors detected. See listing");
  end_run(RunEnd::kFailed);
}

void reset_messages() {
  error_count = 0;
  listing_unit = kConsole;
}

}  // namespace zorvik
