// Case files: whole runs of the program, several related ones in a file.
//
//   === the rule of the case in one sentence
//   --- zrvdat                     the program text; so too: program PATH (a file of the
//                                  repository, behind the lines of the section)
//   --- vnxres                     an input file as commented binary text; so too vnxsav, nwsp_dat
//   --- input NAME FORM            an input file; text or no FORM: as it stands here; binary: as
//                                  commented binary text; sample [FILE]: the file of that name, or
//                                  FILE, of the sample plant
//   --- file NAME FORM             what a file must hold, as above, or: contains (these lines, one
//                                  after the other, somewhere), lacks, any, absent
//   --- zrvlis FORM                so too; console and errors, the standard error, are empty when
//                                  nothing is said
//   --- stops                      the run ends with status 1 and "Errors detected. See listing"
//                                  alone on the console; the listing contains these lines, or,
//                                  with `stops whole`, is these lines
//   --- each                       last section of a case: one case for each of its rows (below)
//   --- each vnxres                each row is that input file, as commented binary text, or,
//                                  where the name ends in "txt", as it stands
//   --- each program               each row is the PATH of a program, and words about it
//   --- change NAME                each row `OLD => NEW` is changed in that input file
//   --- status 1                   the exit status; without it, 0
//   --- argument WORD              given to the program on its command line
//   --- environment NAME=VALUE     given to the program
//   --- room 2000                  no file may grow beyond so many bytes: a full disk
//
// A row begins with no blank. What stands before its arrow takes the place of the program's "@";
// a backslash between blanks ends a line. `-> TEXT`, or no arrow, stops like "stops", the listing
// containing TEXT;
// `!> TEXT` is what the console holds at the end of status 1, `>> TEXT` at a normal end; `~> TEXT`
// ends so too, the listing containing TEXT. TEXT begins with a blank of its own; more lines follow
// behind further arrows or, with their blank, under the row. A "`" in the program stands for
// nothing: there the pointer points of the error that is said next. In the heading `before TEXT`
// and then `then TEXT` are lines before and behind those of every row.
//
// Sections before the first "===" hold for every case of the file, which may give its own program,
// input or status instead; text before them is a comment. Empty lines at a section's end do not
// count. Each "~" at a line's end stands for a blank. A line `repeat 3 | X{i} = {i+10:4};` stands
// for three lines, {i} counting from 1; ":4" gives a number of four digits. Input files must be as
// they were after the run, and no file may appear that the case does not name; the listing need not
// be named.
#ifndef ZORVIK_TESTS_RUNNER_CASE_FILE_H_
#define ZORVIK_TESTS_RUNNER_CASE_FILE_H_

#include <string>
#include <vector>

#include "support/run_directory.h"

namespace zorvik::runner {

enum class Match { kWhole, kContains, kLacks, kAny, kAbsent };

struct Expectation {
  std::string name;  // of a file, or "console", or "errors"
  Match match;
  std::string content;
};

struct Case {
  std::string rule;
  int line = 0;  // in the case file
  support::Files inputs;
  std::vector<Expectation> expectations;
  int status = 0;
  std::string argument, environment;  // empty: none
  rlim_t room = support::kLargestFile;
};

// Reads the cases of a file, the repository being the working directory; a file that is not
// understood ends the runner with status 2.
std::vector<Case> read_case_file(const std::string& path);

}  // namespace zorvik::runner

#endif  // ZORVIK_TESTS_RUNNER_CASE_FILE_H_
