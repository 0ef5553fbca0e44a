// Units are closed from the last to the first, then the console and last the listing, so that every
// failure on the way can still be told in the listing or on the console. Files that a failed run
// was making are given up (File::abandon). A failure while the end is reported ends the process at
// once.
#include "driver/run_end.h"

#include <cstdlib>
#include <cstring>

#include "driver/interruption.h"
#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/progress.h"
#include "driver/text.h"
#include "driver/units.h"

namespace zorvik {
namespace {

// Reports a failed close of `unit`. The listing can no longer carry its own failure.
void report_failed_close(int unit, int status) {
  const int destination =
      unit == kListingUnit || listing_unit == kConsole ? kConsole : -listing_unit;
  issue_message(destination, message("%fat- Write error. ", write_error_subject(unit)), status);
}

// The console can't tell it itself: the listing does, and a note where there is one.
void report_failed_console(int status) {
  if (listing_unit != kConsole) {
    issue_message(listing_unit, "%fat- Write error. Console", status);
  }
  note(Hazard::kUnwrittenConsole, [&] {
    return message("the console can't be written, output is lost: ",
                   std::string_view(std::strerror(status)));
  });
}

}  // namespace

// An error that was only counted makes a failed run too, whatever end its caller saw.
void end_run(RunEnd end) {
  static bool ending = false;
  const bool good = end == RunEnd::kNormal && error_count == 0;
  bool failed = !good;
  if (ending) std::_Exit(EXIT_FAILURE);  // the console broke while the end was being reported
  ending = true;

  for (int unit = kUnitCount - 1; unit > kConsole; --unit) {
    if (unit == kListingUnit) continue;
    if (unit == kScratchUnit) {
      file_on(unit).close();  // it vanishes: nothing can be lost
      continue;
    }
    File& file = file_on(unit);
    if (const int status = good ? file.close() : file.abandon(); status != 0) {
      failed = true;
      report_failed_close(unit, status);
    }
  }
  if (const int status = file_on(kConsole).flush(); status != 0) {
    failed = true;
    report_failed_console(status);
  }
  if (const int status = file_on(kListingUnit).close(); status != 0) {
    failed = true;
    report_failed_close(kListingUnit, status);
    file_on(kConsole).flush();  // with the message about the listing
  }
  // The terminal is cleared first, so that the notes stand below the run's own output.
  end_progress();
  write_notes();
  if (is_interrupted()) die_by_pending_signal();
  std::exit(failed ? EXIT_FAILURE : EXIT_SUCCESS);
}

}  // namespace zorvik
