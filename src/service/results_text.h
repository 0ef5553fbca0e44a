// The results file as text: TO_TEXT RESULTS writes vnxres as restxt, FROM_TEXT RESULTS makes a new
// vnxres from restxt. Both hold the same items in the same order, group by group of the header and
// then record by record, so that integers come back equal and reals with the digits of the print
// format.
//
//   5 1 6 0                                        H1 NV NL NT; a catalogue would follow
//   0 1 2 1 2 2001                                 descriptors
//   0_TEXT_0 / [X(1:2,1:2)         ] / 1_TEXT_1    names, a line each
//   0_TEXT_0 / [] / 1_TEXT_1                       title
//   ! Tau
//   5.000000000E-01 1.000000000E+00 ...            a record
#ifndef ZORVIK_SERVICE_RESULTS_TEXT_H_
#define ZORVIK_SERVICE_RESULTS_TEXT_H_

namespace zorvik {

// Closes the results file when it is open for the run; opens vnxres and creates restxt. Refusals,
// each with the command's second line: "%fat- Close error detected during "TO_TEXT RESULTS"
// operation. File <vnxres>" (<restxt>), "%fat- Read error during ...", "%fat- Premature EOF
// detected during ..." (the second line alone when not even the first four integers are there),
// "%fat- Invalid header. File <vnxres>", "%fat- Header is too large. File <vnxres>", "%fat- Title
// is longer than 100 characters. File <vnxres>", "%err- Write error. File <restxt>". By itself:
// "%fat- File <vnxres> is corrupted. Use SCMD2 to repair it".
void results_to_text();

// Creates vnxres and opens restxt. Refusals: those of TextReader, "%fat- Invalid header. File
// <restxt>", "%fat- Header is too large. File <restxt>", "%fat- Close error detected during
// "FROM_TEXT RESULTS" operation. File <vnxres>" (<restxt>).
void results_from_text();

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_RESULTS_TEXT_H_
