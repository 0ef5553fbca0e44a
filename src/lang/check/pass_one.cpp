// One lexeme decides what a statement is, and the statement's handler reads on from there. A
// handler that finds an error has recovered when it returns, so that the loop always stands at the
// beginning of a statement.
#include "lang/check/pass_one.h"

#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"
#include "lang/check/statement_handlers.h"
#include "results/results_reader.h"

namespace zorvik {
namespace {

constexpr std::string_view kNoProcedure = "%err- Invalid lexeme. There is no active procedure";

std::string invalid_here(std::string_view what, const Lexeme& lexeme) {
  return message("%err- ", what, " \"", lexeme.view(), "\" is invalid here");
}

Outcome check_keyword(int unit, const Lexeme& head) {
  switch (head.code) {
    case kIf:
      return check_if(unit, head);
    case kThen:
      check_then(head);
      break;
    case kElse:
      check_else(head);
      break;
    case kEndif:
      check_endif(head);
      break;
    case kGoto:
      return check_goto(unit, head);
    case kPrint:
    case kWrite:
    case kWrite1:
      return check_output_statement(unit);
    case kStop:
      take_semicolon(unit);
      break;
    case kEnd:
      end_procedure(unit, head);
      break;
    case kOut:
      return check_out(unit, head);
    case kOutput:
      return check_output(unit, head);
    case kReturn:
      return check_return(unit, head);
    case kBegin:
      return check_begin(unit, head);
    case kDo:
      return check_do(unit, head);
    default:  // kEnddo
      check_enddo(head);
  }
  return Outcome::kDone;
}

Outcome check_statement(int unit, const Lexeme& head) {
  if (head.is(kSemicolon)) return Outcome::kDone;
  // What begins no statement anywhere is told as such, with or without an active procedure.
  if (is_operator(head.code)) return reject(unit, head, invalid_here("Operation", head));
  if (head.code < kName) return reject(unit, head, invalid_here("Constant", head));  // 100 to 102
  if (is_function(head.code)) return reject(unit, head, invalid_here("Function", head));
  if (statement_state.context == Context::kNone && !head.is(kOutput)) {
    count_error_at(head.column, kNoProcedure);
    return skip_statement(unit);  // past the lexeme, even when it is a keyword
  }
  if (head.is(kLabel)) return define_label(head);
  return head.is(kName) ? check_assignment(unit, head) : check_keyword(unit, head);
}

// The text has ended: a procedure must not be open.
void check_end_of_text() {
  if (!statement_state.procedure_closed) stop_with_listing("%fat- Missing END statement");
  check_out_targets();
}

void check_program(int unit) {
  Lexeme lexeme;
  for (bool first = true;; first = false) {
    const LexStatus status = next_lexeme(unit, lexeme);
    if (status == LexStatus::kEnd) break;
    if (status == LexStatus::kError) {
      report_lexical_error(lexeme);
      skip_statement(unit);  // where the text ends there, the next lexeme says so
      continue;
    }
    // A program says so that it works without a results file: by a label as its very first lexeme.
    if (first && lexeme.is(kLabel)) no_results_file = true;
    if (check_statement(unit, lexeme) == Outcome::kTextEnded) break;
  }
  check_end_of_text();
}

}  // namespace

void parse_pass(int unit) {
  // Every line that is read from here on is listed.
  source_line.list_to = listing_unit;
  open_file(kScratchUnit, "SC1");
  statement_state = {};
  statement_state.context = Context::kMain;
  reset_procedure_table();
  reset_control_tables();
  error_count = 0;
  check_program(unit);
  if (error_count > 0) {
    stop_with_notice();
  }
  write_blank_line(listing_unit);
}

}  // namespace zorvik
