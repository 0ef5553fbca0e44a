// After an error the rest of its statement is passed over: up to ";", which is taken, or to the
// next keyword, which is given back and begins the next statement. Lexical errors on the way count
// too.
//   X = 1 2; Y = * 3; -> an error at 2, up to the ";"; then one of the next statement, at *
#include "lang/text/statement_recovery.h"

#include "driver/messages.h"

namespace zorvik {

Outcome report_premature_end() {
  count_error("%err- Premature end of file detected");
  return Outcome::kTextEnded;
}

Outcome skip_statement(int unit) {
  Lexeme lexeme;
  for (;;) {
    switch (next_lexeme(unit, lexeme)) {
      case LexStatus::kEnd:
        return Outcome::kTextEnded;
      case LexStatus::kError:
        report_lexical_error(lexeme);
        break;
      case LexStatus::kLexeme:
        if (lexeme.is(kSemicolon)) return Outcome::kAbandoned;
        if (is_keyword(lexeme.code)) {
          give_back(lexeme);
          return Outcome::kAbandoned;
        }
    }
  }
}

Outcome recover_from(int unit, const Lexeme& lexeme) {
  if (lexeme.is(kSemicolon)) return Outcome::kAbandoned;
  if (is_keyword(lexeme.code)) {
    give_back(lexeme);
    return Outcome::kAbandoned;
  }
  return skip_statement(unit);
}

Outcome reject(int unit, const Lexeme& lexeme, std::string_view text) {
  count_error_at(lexeme.column, text);
  return recover_from(unit, lexeme);
}

// A malformed lexeme is given back too: it is an error of the next statement.
void take_semicolon(int unit) {
  Lexeme lexeme;
  const LexStatus status = next_lexeme(unit, lexeme);
  if (status == LexStatus::kEnd) return;
  if (status == LexStatus::kError || !lexeme.is(kSemicolon)) give_back(lexeme);
}

}  // namespace zorvik
