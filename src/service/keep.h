// KEEP: prunes the save file to chosen records and numbers them anew.
//
// At every moment vnxsav is the whole old file or the whole new one, also when the run is killed or
// the power fails. Only where it cannot be replaced in one step, since it has several hard links,
// its folder may not be written, or the file system has no nameless files, is it rewritten in
// place, and what was not yet written back is lost with the run.
#ifndef ZORVIK_SERVICE_KEEP_H_
#define ZORVIK_SERVICE_KEEP_H_

#include <cstdint>
#include <span>

namespace zorvik {

// Keeps the records at the positions `chosen` (ascending, from 1, none twice) of vnxsav. Returns
// when the file has been rewritten and closed. Every refusal ends the run; nothing has been changed
// unless it is a write or close error of the second pass:
//   "%fat- Control structures in <vnxsav> are invalid"
//   "%fat- I/O error detected during KEEP operation. File <vnxsav>"
//   "%fat- Number of records in <vnxsav> is 0. Only control structures are present"
//   "%fat- Rewind error detected during KEEP operation. Scratch file"
//   "%fat- Close error detected during KEEP operation. File <vnxsav>"
// each with the command's second line; "%fat- Number of records in <vnxsav> NR = " with
// "      2nd argument of SCMD2 contains values > NR"; and those of copy_save_record.
void keep_records(std::span<const std::int32_t> chosen);

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_KEEP_H_
