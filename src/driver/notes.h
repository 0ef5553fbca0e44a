// Notes: hazards that the fixed texts do not tell, told on standard error and only there.
//
// They are written at the end of the run when standard error is a terminal or the environment has
// ZORVIK_NOTES=1; ZORVIK_NOTES=0 silences them on a terminal too. One line a hazard: where it was
// met first, and how often. Console, listing, files and exit status never depend on them.
#ifndef ZORVIK_DRIVER_NOTES_H_
#define ZORVIK_DRIVER_NOTES_H_

#include <string>
#include <string_view>

namespace zorvik {

enum class Hazard {
  kTextBehindMargin,  // program text that is not read
  kUnknownName,       // a name that is nearly a known one
  kCutResults,        // vnxres ends inside a record
  kWrappedLine,       // an output line that did not hold all values of its statement
  kExponentWithoutE,  // 1.5+100
  kZeroForReal,       // a real of restxt that is none, stored as 0
  kShiftedRecord,     // a record of restxt whose values do not end with it
  kUnopenedFile,      // an open error in words, with its cure
  kUnwrittenConsole,  // console output that is lost
};
constexpr int kHazardCount = static_cast<int>(Hazard::kUnwrittenConsole) + 1;

// True when notes are to be written; found out once.
bool notes_wanted();

// Counts the hazard; true when it is met for the first time and its text is wanted.
bool is_first(Hazard hazard);

// What the note says, without a newline.
void set_note(Hazard hazard, std::string text);

// Counts the hazard and, the first time, keeps what `text_of` returns. Costs nothing more when no
// notes are wanted.
template <class TextOf>
void note(Hazard hazard, TextOf text_of) {
  if (notes_wanted() && is_first(hazard)) set_note(hazard, text_of());
}

// Writes what has been noted. Called once, when the run ends.
void write_notes();

// What the I/O status of a failed open means for that file, and what to do about it.
std::string open_error_in_words(std::string_view name, int io_status);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_NOTES_H_
