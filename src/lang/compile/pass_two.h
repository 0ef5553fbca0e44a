// Pass 2: reads the program text again, now known to be valid, and compiles every procedure.
#ifndef ZORVIK_LANG_COMPILE_PASS_TWO_H_
#define ZORVIK_LANG_COMPILE_PASS_TWO_H_

namespace zorvik {

constexpr int kMaxErrors = 100;  // of the pass

// Rewinds the text, reads the results file's header, so that names of results variables are known,
// compiles MAIN, the block and the OUTPUTs into the code store and ends with report_space_usage.
// Returns only when no error was found. Ends the run with the errors of open_results_file, "%fat-
// Rewind error. File <zrvdat>", "%fat- Number of errors > 100", "%fat- Space (values) for keys is
// full", "%fat- Space (descriptors) for keys is full"; with "%dbg- Invalid " for what pass 1 does
// not let through.
void u91ps2(int unit);

// Gives the keys of MAIN their initial values, lists the space report, resolves the keys of named
// OUTPUTs, loads the first record (load_first_record) and closes the program text on `unit` and the
// scratch file. Errors counted in pass 2 end the run here, as do "%fat- Close error. File <zrvdat>"
// and "%fat- Close error. Scratch file".
void report_space_usage(int unit);

}  // namespace zorvik

#endif  // ZORVIK_LANG_COMPILE_PASS_TWO_H_
