// Stepping through the save file vnxsav: scanning and listing it, copying a record, and the command
// SHOW. Strictly forwards: the control structures first, then record after record.
#ifndef ZORVIK_SERVICE_SAVE_FILE_H_
#define ZORVIK_SERVICE_SAVE_FILE_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "driver/units.h"
#include "service/save_layout.h"

namespace zorvik {

enum class Listing {
  kNone,
  kRecords,  // the title and a line for each record
  kEvents,   // those, and the names of each record's events
};

enum class ScanStatus {
  kOk,
  kEnd,       // no more records
  kReported,  // the part is damaged: the message is in the listing, the error is counted
};

// Opens vnxsav on kSaveUnit and returns it (open_file's failure ends the run).
File& open_save_file(Use use = Use::kRead);

// Reads a part at the position of `file` and lists it as asked. Damage gives "%err- Read error.
// File <vnxsav>", or "%err- Premature End_of_File detected during reading from <vnxsav>" and
// "      May be <vnxsav> is corrupted or not properly closed".
ScanStatus scan_save_part(File& file, SavePart part, SaveCounts& counts,
                          Listing listing = Listing::kNone);

// Scans records until one of them is not kOk, which is returned; `records` counts the good ones.
ScanStatus scan_records(File& file, SaveCounts& counts, std::int64_t& records,
                        Listing listing = Listing::kNone);

// Scans `records` records; false when one of them is not kOk.
bool skip_records(File& file, SaveCounts& counts, std::int64_t records);

// Copying of parts of the file. The names are those of messages, which end the run: "%fat- Read
// error during KEEP operation. ", "%fat- Write error during KEEP operation. ", "%fat- Premature end
// of file detected. KEEP operation. ".
struct SaveStream {
  File& file;
  std::string_view name;  // "File <vnxsav>" or "Scratch file"
};
struct SaveRange {  // bytes of the file
  std::int64_t start, end;
};
void copy_save_bytes(const SaveStream& source, SaveRange range, const SaveStream& target);

// Copies a record unchanged, but for its record number.
void copy_save_record(const SaveStream& source, SaveRange record, const SaveStream& target,
                      std::int32_t new_number);

// Writes the number into the record that begins at the target's position.
void write_record_number(const SaveStream& target, std::int32_t number);

// Ends the run with "%fat- Write error during KEEP operation. " and the target's name.
[[noreturn]] void stop_on_failed_write(const SaveStream& target, int status);

// SHOW SAVING and SHOW EVENTS: lists the save file and ends the run. Refused when the file has no
// readable record: "%fat- Number of records in <vnxsav> is 0. Only control structures are present"
// and the command's second line.
[[noreturn]] void show_save_file(Listing listing);

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_SAVE_FILE_H_
