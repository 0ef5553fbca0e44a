// Joining of two results files whose problem times follow each other.
//
//   times of the earlier file   0 1 2 3 4          of the later one   3 4 5 6
//   mode 0: the earlier file grows by 5 6          mode 1: new file 0 1 2 3 4 | 5 6
//   mode 2: new file 0 1 2 | 3 4 5 6
// Times within 0.5e-5 of each other are equal.
#ifndef ZORVIK_SERVICE_JOIN_RESULTS_H_
#define ZORVIK_SERVICE_JOIN_RESULTS_H_

#include <string_view>

namespace zorvik {

// Carries out the joining command `text` in the mode `mode` (whole; 0, 1 or 2) and reports what was
// joined in the listing. Refusals of the command, of the files and of their times end the run with
// messages in the listing before anything is written; failures while records are read or written
// are reported on the console ("%fat- Write error. 1st  file in SCMD2"), and the earlier file that
// was being appended to is then cut back to what it was, a new file is not made.
void join_results_files(std::string_view text, double mode);

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_JOIN_RESULTS_H_
