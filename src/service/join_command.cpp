// The text is cut by the program's own lexer, from memory, after its blanks are taken out. So a
// name is what a name of the language may be; its letters stay as they are.
//   "all = run1 + run2" -> all=run1+run2 -> name, "=", name, "+", name
#include "service/join_command.h"

#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"
#include "lang/text/lexer.h"

namespace zorvik {
namespace {

// An operator character in a file name would end it: names are lexemes of the language.
constexpr int kMemory = 0;  // the lexer's unit for a text that is already in the source line

Lexeme wanted_lexeme() {
  Lexeme lexeme;
  if (next_lexeme(kMemory, lexeme) != LexStatus::kLexeme) {
    stop_with_listing("%fat- 1st argument of SCMD2 is not completed");
  }
  return lexeme;
}

std::string file_name(std::string_view ordinal) {
  const Lexeme lexeme = wanted_lexeme();
  if (lexeme.is(kCharacterConstant)) {
    stop_with_listing(message("%fat- ", ordinal, " file name in SCMD2 is in quotes"));
  }
  if (lexeme.is(kLabel)) {
    stop_with_listing(message("%fat- Invalid ", ordinal, " file name in SCMD2"));
  }
  return std::string(lexeme.view());
}

void expect_operator(int code, std::string_view place) {
  if (wanted_lexeme().is(code)) return;
  stop_with_listing(message("%fat- See 1st arg. of SCMD2. ", place, " word is not\"",
                            kOperatorTexts[static_cast<std::size_t>(code)], '"'));
}

void expect_end(std::string_view last_name) {
  Lexeme lexeme;
  if (next_lexeme(kMemory, lexeme) == LexStatus::kEnd) return;
  stop_with_listing(message("%fat- See 1st arg. of SCMD2. Extra char-s after ", last_name));
}

JoinMode mode_of(double number) {
  if (number == 0) return JoinMode::kAppend;
  if (number == 1) return JoinMode::kFollow;
  if (number == 2) return JoinMode::kReplace;
  // The text says 1st where the 2nd argument is meant.
  stop_with_listing("%fat- See 1st arg. of SCMD2. 1st arg < 0 or > 2");
}

// Names are compared exactly, not the files behind them.
void check_names(const JoinCommand& command) {
  const bool same = command.output() == command.earlier();
  if (command.mode == JoinMode::kAppend && !same) {
    stop_with_listing("%fat- See 2nd arg. of SCMD2. 1st file name <> 2nd file name");
  }
  if (command.mode != JoinMode::kAppend && same) {
    stop_with_listing("%fat- See 2nd arg. of SCMD2. 1st file name = 2nd file name");
  }
  if (command.output() == command.later()) {
    stop_with_listing("%fat- See 1st arg. of SCMD2. 1st file name = 3rd file name");
  }
  if (command.earlier() == command.later()) {
    stop_with_listing("%fat- See 1st arg. of SCMD2. 2nd file name = 3rd file name");
  }
}

enum class MustExist { kNo, kYes, kEither };

void check_file(const std::string& name, MustExist must_exist) {
  const Inquiry inquiry = inquire_file(name);
  if (inquiry.failure != 0) {
    stop_with_listing(message("%fat- SCMD2: INQUIRE error. File ", name), kNoLine, inquiry.failure);
  }
  if (inquiry.exists && must_exist == MustExist::kNo) {
    stop_with_listing(message("%fat- SCMD2: file ", name, " exists"));
  }
  if (!inquiry.exists && must_exist == MustExist::kYes) {
    stop_with_listing(message("%fat- SCMD2: file ", name, " does not exist"));
  }
  // zrvlis, the run's own results file, the file of an OUTPUT.
  if (inquiry.opened) {
    stop_with_listing(message("%fat- SCMD2: file ", name, " already opened"));
  }
}

}  // namespace

JoinCommand parse_join_command(std::string_view text, double mode) {
  // Control characters are taken out with the blanks.
  std::string packed;
  for (const char c : text) {
    if (static_cast<unsigned char>(c) > ' ') packed.push_back(c);
  }
  reset_lexer();
  set_source_text(packed);

  JoinCommand command;
  command.names[0] = file_name(kFileOrdinals[0]);
  expect_operator(kAssign, "2nd");
  command.names[1] = file_name(kFileOrdinals[1]);
  expect_operator(kPlus, "4th");
  command.names[2] = file_name(kFileOrdinals[2]);
  expect_end(command.later());
  command.mode = mode_of(mode);

  check_names(command);
  const bool append = command.mode == JoinMode::kAppend;
  check_file(command.output(), append ? MustExist::kEither : MustExist::kNo);
  check_file(command.earlier(), MustExist::kYes);
  check_file(command.later(), MustExist::kYes);
  return command;
}

}  // namespace zorvik
