// KEEP: prunes the save file to chosen records and numbers them anew.
//
// The chosen records are first copied to the scratch file; the save file is cut only after they are
// found complete there, and only behind the leading records that stay where they are.
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
