// Two-line fatal messages: what is wrong, then what can't be done because of it.
#ifndef ZORVIK_SERVICE_STOP_COMMAND_H_
#define ZORVIK_SERVICE_STOP_COMMAND_H_

#include <string_view>

#include "driver/messages.h"

namespace zorvik {

// Writes both lines to the listing, "Errors detected. See listing" on the console, and ends the
// run. The I/O status and the line number, if any, go with the first line.
[[noreturn]] inline void stop_command(std::string_view what, std::string_view consequence,
                                      int io_status = kNoIoStatus, int line = kNoLine) {
  issue_message(listing_unit, what, io_status, line);
  stop_with_listing(consequence);
}

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_STOP_COMMAND_H_
