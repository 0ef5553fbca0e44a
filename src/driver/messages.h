// Diagnostics: the one way in which the system writes a message, and the error counter.
//
// A text's class mark tells what kind of event it is: "%fat- " the run ends, "%err- " counted, the
// pass goes on, "%inf- " information, "%dbg- " an inconsistency of the utility itself. The routine
// says what happens next: issue_... goes on, count_... counts and goes on, stop_... never returns.
// Every record begins with one blank, the carriage-control column of the file.
#ifndef ZORVIK_DRIVER_MESSAGES_H_
#define ZORVIK_DRIVER_MESSAGES_H_

#include <string_view>

namespace zorvik {

enum class Stop {
  kAtOnce,      // nothing more is written
  kWithNotice,  // "Errors detected. See listing" on the console
};

constexpr int kNoIoStatus = 0;
constexpr int kNoLine = 0;

// Errors of the current pass. count_error and count_error_at add to it; a pass starts it at 0.
extern int error_count;

// The unit of the listing; 0, the console, until the listing is open.
extern int listing_unit;
void set_listing_unit(int unit);

// These return.

// Writes `text` to the file `unit`; unit 0 is the console; a negative unit means the console and
// then the file of the opposite sign. A line above 0 continues the record with " Line " and the
// number; a status other than 0 gives a second record, "Fortran iostat = " and the number. An empty
// text writes nothing and does nothing. When the write fails: "%fat- Write error. File <zrvlis>" on
// the console and the end.
void issue_message(int unit, std::string_view text, int io_status = kNoIoStatus,
                   int line = kNoLine);

// Writes the pointer record "%_____" ... "^" for `column` of the line read last, then the text. A
// text of length 0 writes nothing.
void issue_pointed_message(int unit, std::string_view text, int column);

// A record of one blank.
void write_blank_line(int unit);

// Hands the listing to the system, so that it can be read while the run works. A failure is one of
// writing.
void flush_listing();

// Counts an error after writing it to the listing, with a line number or under a column.
void count_error(std::string_view text, int line = kNoLine, int io_status = kNoIoStatus);
void count_error_at(int column, std::string_view text);

// Counts once more an error whose message stands already.
void count_written_error();

// These end the run and never return.

// issue_message, then the end as `stop` says.
[[noreturn]] void stop_run(int unit, std::string_view text, Stop stop, int line = kNoLine,
                           int io_status = kNoIoStatus);

// On the console alone, without the notice: what happens before there is a listing, and failing
// files.
[[noreturn]] void stop_on_console(std::string_view text, int io_status = kNoIoStatus);

// In the listing, with the notice on the console: the errors of a program and of a command.
[[noreturn]] void stop_with_listing(std::string_view text, int line = kNoLine,
                                    int io_status = kNoIoStatus);

// The same under a column of the line read last.
[[noreturn]] void stop_with_listing_at(int column, std::string_view text);

// The notice alone: "Errors detected. See listing" on the console.
[[noreturn]] void stop_with_notice();

void reset_messages();

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_MESSAGES_H_
