// Case files: whole runs of the program, several related ones in a file.
//
//   === the rule of the case in one sentence
//   --- zrvdat                     the program text; so too: program PATH (a file of the
//                                  repository, behind the lines of the section)
//   --- vnxres                     an input file as commented binary text; so too vnxsav, nwsp_dat
//   --- input NAME text            an input file as it stands here; or: binary, or: sample [FILE]
//                                  (the file of that name, or FILE, of the sample plant)
//   --- console                    what the console must hold; without it, nothing. `console any`
//   --- zrvlis                     the whole listing; so too: file NAME
//   --- zrvlis contains            these lines, one after the other, somewhere; or: lacks
//   --- stops                      the run ends with status 1 and "Errors detected. See listing"
//                                  alone on the console; the listing contains these lines, or,
//                                  with `stops whole`, is these lines
//   --- each                       last section of a case: one case for each of its rows (below)
//   --- each vnxres                each row is that input file, as commented binary text, or,
//                                  where the name ends in "txt", as it stands
//   --- each program               each row is the PATH of a program, and words about it
//   --- change NAME                each row `OLD => NEW` is changed in that input file
//   --- file NAME binary           the bytes, as commented binary text; or: sample [FILE]; or: any
//   --- absent NAME                a file that must not exist
//   --- status 1                   the exit status; without it, 0
//   --- errors                     what standard error must hold; without it, nothing
//   --- argument WORD              given to the program on its command line
//   --- environment NAME=VALUE     given to the program
//   --- room 2000                  no file may grow beyond so many bytes: a full disk
//   --- sweep NAME                 besides, every shorter NAME must give a defined end
//   --- sweep NAME ints N          besides, so must hostile values in its first N integers
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

#include <map>
#include <string>
#include <vector>

namespace zorvik::runner {

enum class Match { kWhole, kContains, kLacks, kAny, kAbsent };

struct Expectation {
  std::string name;  // of a file, or "console"
  Match match;
  bool binary;
  std::string content;
};

struct Sweep {
  std::string name;
  std::size_t integers;  // replaced in turn; 0: the file is cut instead
};

struct Case {
  std::string rule;
  int line;                                   // in the case file
  std::map<std::string, std::string> inputs;  // content by name
  std::vector<Expectation> expectations;
  std::vector<Sweep> sweeps;
  int status;
  std::string errors;       // on standard error
  std::string argument;     // empty: none
  std::string environment;  // NAME=VALUE; empty: none
  unsigned long room;       // 0: enough
};

// Reads the cases of a file; a file that is not understood ends the runner with status 2.
std::vector<Case> read_case_file(const std::string& path, const std::string& repository);

// A file's content; ends the runner when it cannot be read.
std::string content_of(const std::string& path);

}  // namespace zorvik::runner

#endif  // ZORVIK_TESTS_RUNNER_CASE_FILE_H_
