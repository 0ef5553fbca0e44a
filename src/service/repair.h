// REPAIR: cuts a file whose last record is incomplete back to the end of its last complete record.
// A file without damage is left alone.
//
// A torn write leaves less than a record. When more is to be cut off than the longest complete
// record of the save file has bytes, or when the file could not be read to its end, that is first
// copied to vnxsav.cut (or .cut2, .cut3 ... : no file is written over); if that fails, nothing is
// cut.
#ifndef ZORVIK_SERVICE_REPAIR_H_
#define ZORVIK_SERVICE_REPAIR_H_

namespace zorvik {

// Repairs vnxsav; returns when it was cut, with error_count 0, so that the damage found does not
// count. A valid file: "%inf- File <vnxsav> has a valid structure. File not changed" and the run
// ends. Refusals, each followed by "      Utility can not repair this file" with the I/O status:
// "%fat- Control structures in <vnxsav> are invalid", "%fat- File <vnxsav> has not valid records
// except control structures", "%fat- Close error detected during REPAIR operation. File <vnxsav>"
// (also "I/O error", "ENDFILE error").
void repair_save_file();

// Repairs vnxres, of any layout; closes it first when it is open for the run. "%inf- File <vnxres>
// has a valid structure. File not changed" or "... repaired". Refused like the save file, and with
// "%fat- Read error during REPAIR operation. File <vnxres>", "%fat- Premature end of file detected
// during REPAIR operation. File <vnxres>", "%fat- Invalid header. File <vnxres>", "%fat- Header is
// too large. File <vnxres>".
void repair_results_file();

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_REPAIR_H_
