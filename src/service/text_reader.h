// Reader of the text forms: lexemes taken as numbers, whole lines taken as texts, and the binary
// file that is made of them.
//
// A lexeme runs to the next blank or line end, so a number and its sign are one; "!" begins a
// comment; letters are taken in upper case, whole lines as they are. Lines count up to column 200.
// Whatever is wrong ends the run: the message, with the line's number in the text file, then the
// command's second line. The binary file is then cut back to its last complete group.
#ifndef ZORVIK_SERVICE_TEXT_READER_H_
#define ZORVIK_SERVICE_TEXT_READER_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "driver/file.h"
#include "driver/messages.h"
#include "lang/text/lexer.h"

namespace zorvik {

// What differs between the two text forms.
struct TextForm {
  std::string_view text_name, binary_name;  // "<restxt>", "<vnxres>"
  std::string_view consequence;             // second line of every refusal
  // A real that can't be converted although it has an exponent: is it 0 without a word?
  bool bad_exponent_is_zero;
};

// Signs that a number may have before it. A sign that it may not have is left to the conversion,
// which refuses it.
enum class Sign { kPlus, kPlusOrMinus };

class TextReader {
 public:
  // Both files are open; the text is read from its first line.
  TextReader(int text_unit, File& binary, const TextForm& form);

  // "%fat- Invalid lexeme" and the quoted lexeme for a sign alone; the conversion's message; the
  // lexer's message; each followed by " File " and the text's name. "%fat- Premature end of file
  // detected. File " at the end, "%fat- Read error. File " and "." when a line can't be read.
  std::int32_t integer(Sign sign);
  double real(Sign sign);

  // The marker before or after texts: "%fat- File <..>. String 0_TEXT_0 expected" (1_TEXT_1).
  void marker(std::string_view text);

  // The next whole line without blanks around it; at most `columns` characters of it count.
  std::string_view whole_line(int columns);
  // The next line of a text item: what stands between its first and its last character.
  std::string_view text_item();
  // "%fat- File <..>. Invalid string " and the line read last.
  [[noreturn]] void stop_on_line();

  // True when another lexeme follows (a malformed one is refused); it is the next one read.
  bool more_follows();

  // Writes to the binary file: "%fat- Write error. File <..>.". A complete group goes to the disk
  // at once, so that a full disk leaves nothing but whole groups.
  void write(const void* from, std::size_t bytes);
  void end_group();

  [[noreturn]] void stop(std::string_view text, int io_status = kNoIoStatus);

 private:
  std::string_view lexeme();
  std::string_view number(Sign sign, bool& negative);
  double repaired_real(std::string_view text);
  [[noreturn]] void stop_at_end();

  const int unit_;
  File& binary_;
  const TextForm& form_;
  std::int64_t group_start_ = 0;
  Lexeme lexeme_ = {};
  bool peeked_ = false;
  std::string_view line_;
  std::string error_;
};

constexpr int kTextColumns = 200;   // of a line of a text form
constexpr int kTitleColumns = 100;  // what counts of a title's line; no title is longer

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_TEXT_READER_H_
