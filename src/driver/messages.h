// Diagnostics: the one way in which the system writes a message, and the error counter.
//
// A text's class mark tells what kind of event it is: "%fat- " the run ends, "%err- " counted by
// the caller, the pass goes on, "%inf- " information, "%dbg- " an inconsistency of the utility
// itself. What happens next is decided by the stop mode. Every record begins with one blank, the
// carriage-control column of the file.
#ifndef ZORVIK_DRIVER_MESSAGES_H_
#define ZORVIK_DRIVER_MESSAGES_H_

#include <string_view>

namespace zorvik {

enum class Stop {
  kNone,        // continue
  kAtOnce,      // end the run
  kWithNotice,  // write "Errors detected. See listing" on the console, then end the run
};

constexpr int kNoIoStatus = 0;
constexpr int kNoLine = 0;

// Errors of the current pass. The routine that issues an error message adds 1; the writers never
// count.
extern int error_count;

// The unit of the listing; 0, the console, until the listing is open.
extern int listing_unit;
void set_listing_unit(int unit);

// Writes `text` to the file `unit`; unit 0 is the console; a negative unit means the console and
// then the file of the opposite sign. A line above 0 continues the record with " Line " and the
// number; a status other than 0 gives a second record, "Fortran iostat = " and the number. An empty
// text writes nothing and does nothing. When the write fails: "%fat- Write error. File <zrvlis>" on
// the console and the end.
void issue_message(int unit, std::string_view text, int io_status = kNoIoStatus,
                   Stop stop = Stop::kNone, int line = kNoLine);

// issue_message for a message that ends the run.
[[noreturn]] void stop_run(int unit, std::string_view text, int io_status, Stop stop,
                           int line = kNoLine);

// The commonest forms of it: to the listing with the notice on the console, and an internal
// inconsistency, on the console alone.
[[noreturn]] void stop_with_listing(std::string_view text, int line = kNoLine,
                                    int io_status = kNoIoStatus);
[[noreturn]] void stop_on_inconsistency(std::string_view text);

// Writes the pointer record "%_____" ... "^" for `column` of the line read last, then the text. A
// text of length 0 writes nothing. Never ends the run.
void issue_pointed_message(int unit, std::string_view text, int column);

// Writes "Errors detected. See listing" on the console and ends the run.
[[noreturn]] void stop_with_notice();

// A record of one blank.
void write_blank_line(int unit);

void reset_messages();

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_MESSAGES_H_
