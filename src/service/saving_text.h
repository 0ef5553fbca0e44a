// The save file as text: TO_TEXT SAVING writes the control structures and one saving record of
// vnxsav as savtxt, FROM_TEXT SAVING makes a new vnxsav from savtxt. Both walk over the table of
// save_layout.h; a comment line names the fields before each group.
#ifndef ZORVIK_SERVICE_SAVING_TEXT_H_
#define ZORVIK_SERVICE_SAVING_TEXT_H_

namespace zorvik {

// Writes record `number` (>= 1, whole) of vnxsav to the new file savtxt. Refusals, each with the
// command's second line: "%fat- Control structures in <vnxsav> are invalid", "%fat- I/O error
// detected during "TO_TEXT SAVING" operation. File <vnxsav>" (also "Rewind error", "Close error";
// <savtxt>), "%fat- File <vnxsav> has not valid records except control structures", "%err- Read
// error. File <vnxsav>", "%err- Premature End_of_File detected during reading from <vnxsav>",
// "%err- Write error. File <savtxt>"; and "%fat- Number of records in <vnxsav> NR = " with
// "      2nd argument of SCMD2 > NR".
void saving_to_text(double number);

// Refusals: those of TextReader, "%fat- File <savtxt>. Invalid value " (another Nvar at the end),
// "%fat- File <savtxt>. Extra information detected", "%fat- Close error. File <vnxsav>."
// (<savtxt>).
void saving_from_text();

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_SAVING_TEXT_H_
