// Units: the files of a run by number, and open_file, through which each of them is opened.
//
// Unit 0 is the console. The files' names are fixed; all lie in the current directory.
//   code  file       form    must   opened for
//   DAT   zrvdat     text    exist  the program text
//   LIS   zrvlis     text    be new the listing
//   SC1   (no name)  binary  -      scratch file of the two passes, gone when closed
//   SC2   (no name)  binary  -      scratch file on the disk, beside the caller's file
//   RES   vnxres     binary  exist  results file, read or rewritten
//   REN   vnxres     binary  be new results file written by a service command
//   REC   caller's   binary  exist  joining of results files, read or rewritten
//   REW   caller's   binary  be new joining of results files
//   SAV   vnxsav     binary  exist  save file, read or rewritten
//   SAN   vnxsav     binary  be new save file written by a service command
//   TXS   savtxt     text    either text form of saving
//   TXR   restxt     text    either text form of results
//   other caller's name in lower case, text, must be new: the files of OUTPUTs
// What a service command makes new is whole or absent: it has its name when it is closed.
// The property tables file nwsp_dat is opened by its own reader (wsp/property_file.h).
#ifndef ZORVIK_DRIVER_UNITS_H_
#define ZORVIK_DRIVER_UNITS_H_

#include <string>
#include <string_view>

#include "driver/file.h"

namespace zorvik {

constexpr int kConsole = 0;
constexpr int kProgramUnit = 1;
constexpr int kListingUnit = 2;
constexpr int kPropertyUnit = 4;
constexpr int kResultsUnit = 5;
constexpr int kSaveUnit = 6;
constexpr int kTextUnit = 7;
constexpr int kSecondResultsUnit = 8;  // joining: the earlier file
constexpr int kThirdResultsUnit = 9;   // joining: the later file
constexpr int kJoinedResultsUnit = 10;
constexpr int kCutUnit = 11;  // REPAIR: the copy of what is cut off
constexpr int kScratchUnit = 32;
constexpr int kFirstOutputUnit = 100;  // + the unit number in an OUTPUT's header
constexpr int kUnitCount = 300;

// What the caller will do with a file that the code does not decide on.
enum class Use {
  kRead,
  kRewrite,  // it must exist
  kCreate,   // it must not; for TXS and TXR
};

// Occupies the standard descriptors that the caller left closed, so that no file of the run becomes
// the console. Called once, before any file is opened.
void occupy_standard_descriptors();

// The file of a unit, 0 to kUnitCount - 1, open or not; the console is always open. It stays the
// same object for the whole run.
File& file_on(int unit);

// Opens the file of `code` on `unit` (SC1 and SC2 always use kScratchUnit). A file that must exist
// must be a regular one, and is opened for reading only unless it is to be rewritten. Returns only
// on success: a failure writes "%fat- Open error. File " and the name with the I/O status on the
// console and ends the run. From a successful LIS on, messages go to the listing.
void open_file(int unit, std::string_view code, std::string_view name = {}, Use use = Use::kRead);

// Asks the system about a file by its name, open or not.
struct Inquiry {
  int failure;  // errno of an inquiry that failed, else 0
  bool exists;
  bool opened;  // on some unit of the run
};
Inquiry inquire_file(const std::string& name);

// What a failed final flush of the unit is reported with: "%fat- Write error. " and this text.
void set_write_error_subject(int unit, std::string subject);
const std::string& write_error_subject(int unit);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_UNITS_H_
