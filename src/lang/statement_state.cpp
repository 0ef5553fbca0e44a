#include "lang/statement_state.h"

#include "driver/messages.h"

namespace zorvik {

StatementState statement_state;

void report_error(std::string_view text) {
  issue_message(listing_unit, text);
  ++error_count;
}

void report_error_at(int column, std::string_view text) {
  issue_pointed_message(listing_unit, text, column);
  ++error_count;
}

Outcome report_premature_end() {
  report_error("%err- Premature end of file detected");
  return Outcome::kTextEnded;
}

void stop_at(int column, std::string_view text) {
  issue_pointed_message(listing_unit, text, column);
  stop_with_notice();
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
  report_error_at(lexeme.column, text);
  return recover_from(unit, lexeme);
}

void take_semicolon(int unit) {
  Lexeme lexeme;
  const LexStatus status = next_lexeme(unit, lexeme);
  if (status == LexStatus::kEnd) return;
  if (status == LexStatus::kError || !lexeme.is(kSemicolon)) give_back(lexeme);
}

}  // namespace zorvik
