// Pass 1: reads, lists and checks the whole program text, statement by statement.
//
// Compiles nothing. It leaves the procedure table, and in the scratch file the labels, jumps and
// blocks of every procedure, for pass 2. Every error is reported, counted in error_count and
// followed by recovery, so one run reports all errors of the text.
#ifndef ZORVIK_LANG_CHECK_PASS_ONE_H_
#define ZORVIK_LANG_CHECK_PASS_ONE_H_

namespace zorvik {

// Opens the scratch file and checks the text on `unit`, listing it. Returns only when no error was
// found; otherwise "Errors detected. See listing" goes to the console and the run ends.
void parse_pass(int unit);

}  // namespace zorvik

#endif  // ZORVIK_LANG_CHECK_PASS_ONE_H_
