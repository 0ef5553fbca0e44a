// Reader of the text forms: lexemes taken as numbers, whole lines taken as texts.
//
// A lexeme runs to the next blank or line end, so a number and its sign are one; "!" begins a
// comment; letters are taken in upper case, whole lines as they are. Lines count up to column 200.
// Whatever is wrong ends the run through GroupWriter::stop, which saves what the text has become.
#ifndef ZORVIK_SERVICE_TEXT_READER_H_
#define ZORVIK_SERVICE_TEXT_READER_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "lang/text/lexer.h"
#include "service/group_writer.h"

namespace zorvik {

// Signs that a number may have before it. A sign that it may not have is left to the conversion,
// which refuses it.
enum class Sign { kPlus, kPlusOrMinus };

// A line of an item, or of codes, has at least this many characters: two brackets and one between.
constexpr std::size_t kShortestItemLine = 3;

class TextReader {
 public:
  // The text is open and read from its first line; `output` is what becomes of it.
  TextReader(int text_unit, const TextForm& form, GroupWriter& output);

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

 private:
  std::string_view lexeme();
  std::string_view number(Sign sign, bool& negative);
  bool take_plain(Sign sign, double& value);
  double repaired_real(std::string_view text);
  [[noreturn]] void stop_at_end();

  const int unit_;
  const TextForm& form_;
  GroupWriter& output_;
  Lexeme lexeme_ = {};
  bool peeked_ = false;
  std::string_view line_;
  std::string error_;
};

constexpr int kTextColumns = 200;   // of a line of a text form
constexpr int kTitleColumns = 100;  // what counts of a title's line; no title is longer

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_TEXT_READER_H_
