// Statements that hold expressions: assignments, PRINT and WRITE, the heads of IF and DO. Labels
// are off from the head to the statement's end, so that A:B is a range. Of several values each
// begins as the first one does; what they mean is for pass 2 and the execution to say.
#include "driver/messages.h"
#include "driver/text.h"
#include "lang/check/expression_checker.h"
#include "lang/check/statement_handlers.h"

namespace zorvik {
namespace {

// Reads the next lexeme of a statement that is not complete; kDone when there is one.
Outcome read_part(int unit, Lexeme& lexeme) {
  switch (next_lexeme(unit, lexeme)) {
    case LexStatus::kEnd:
      return report_premature_end();
    case LexStatus::kError:
      report_lexical_error(lexeme);
      return recover_from(unit, lexeme);
    default:
      return Outcome::kDone;
  }
}

// Checks the list of values of an assignment or an output statement and counts them.
Outcome check_values(int unit, int& count) {
  Lexeme lexeme;
  for (count = 1;; ++count) {
    if (const Outcome outcome = read_part(unit, lexeme); outcome != Outcome::kDone) return outcome;
    if (!may_begin_expression(lexeme)) {
      return reject(unit, lexeme, "%err- Invalid beginning of (sub)expression");
    }
    switch (check_expression(unit, ExpressionMode::kValue, lexeme)) {
      case ExpressionEnd::kComma:
        continue;
      case ExpressionEnd::kTextEnded:
        return report_premature_end();
      case ExpressionEnd::kFailed:
        return recover_from(unit, lexeme);
      default:
        return Outcome::kDone;
    }
  }
}

// Checks the target up to and including "=". A plain name is all of a target; of one with "(" the
// expression reader takes the name again, with its subscripts.
Outcome check_left_side(int unit, Lexeme name) {
  if (!name.is(kName)) {
    return reject(unit, name, "%err- Invalid left side of assignment statement");
  }
  Lexeme sign;
  if (const Outcome outcome = read_part(unit, sign); outcome != Outcome::kDone) return outcome;
  if (sign.is(kAssign)) return Outcome::kDone;
  if (!sign.is(kOpen)) {
    return reject(unit, sign, "%err- Invalid lexeme. \"=\" or \"(\" expected");
  }
  give_back(sign);
  if (check_expression(unit, ExpressionMode::kTarget, name) == ExpressionEnd::kFailed) {
    return recover_from(unit, name);
  }
  if (const Outcome outcome = read_part(unit, sign); outcome != Outcome::kDone) return outcome;
  if (sign.is(kAssign)) return Outcome::kDone;
  return reject(unit, sign, "%err- Invalid lexeme. \"=\" expected");
}

Outcome check_condition(int unit, const Lexeme& head) {
  Lexeme lexeme;
  if (const Outcome outcome = read_part(unit, lexeme); outcome != Outcome::kDone) return outcome;
  if (!may_begin_expression(lexeme)) {
    return reject(unit, lexeme, "%err- Invalid beginning of expression after IF");
  }
  switch (check_expression(unit, ExpressionMode::kValue, lexeme)) {
    case ExpressionEnd::kFailed:
      return recover_from(unit, lexeme);
    case ExpressionEnd::kTextEnded:
      return report_premature_end();
    default:
      break;
  }
  // The condition may have ended at THEN, "[" included, at another keyword, at ";" or at ",".
  if (lexeme.is(kThen)) {
    next_lexeme(unit, lexeme);  // it was given back; a ":" behind it makes it no label
    check_then(lexeme);
    return Outcome::kDone;
  }
  count_error_at(head.column, "%err- Invalid lexeme. THEN expected");
  return recover_from(unit, lexeme);
}

// The number is judged first: the 101st IF is one too many even when it is nested too deep as well.
void open_if_block() {
  ControlTables& tables = control_tables;
  StatementState& state = statement_state;
  if (tables.ifs == kMaxControlStatements) {
    stop_with_listing(message("%fat- Number of IF-s > ", kMaxControlStatements));
  }
  tables.if_block[++tables.ifs] = {};
  if (state.if_depth == kMaxNesting) {
    stop_with_listing(message("%fat- Number of nested IF-s > ", kMaxNesting));
  }
  state.open_if[++state.if_depth] = {false, false, tables.ifs, state.do_depth, {}, {}};
}

void open_do_block(Position head) {
  ControlTables& tables = control_tables;
  StatementState& state = statement_state;
  if (tables.dos == kMaxControlStatements) {
    stop_with_listing(message("%fat- Number of DO-s > ", kMaxControlStatements));
  }
  ++tables.dos;
  if (state.do_depth == kMaxNesting) {
    stop_with_listing(message("%fat- Number of nested DO-s > ", kMaxNesting));
  }
  state.open_do[++state.do_depth] = {head, tables.dos, state.if_depth};
}

}  // namespace

Outcome check_assignment(int unit, const Lexeme& head) {
  const LabelsOff labels_off;
  const Outcome outcome = check_left_side(unit, head);
  int values;
  return outcome == Outcome::kDone ? check_values(unit, values) : outcome;
}

Outcome check_output_statement(int unit) {
  const LabelsOff labels_off;
  int values;
  return check_values(unit, values);
}

Outcome check_if(int unit, const Lexeme& head) {
  open_if_block();
  const LabelsOff labels_off;
  return check_condition(unit, head);
}

Outcome check_do(int unit, const Lexeme& head) {
  open_do_block(position_of(head));
  const LabelsOff labels_off;
  Lexeme name;
  int values = 0;
  Outcome outcome = read_part(unit, name);
  if (outcome == Outcome::kDone) outcome = check_left_side(unit, name);
  if (outcome == Outcome::kDone) outcome = check_values(unit, values);
  if (outcome == Outcome::kTextEnded) {  // other statements leave it to the end of the pass
    stop_with_notice();
  }
  if (outcome == Outcome::kDone && values != 2 && values != 3) {
    count_error("%err- Number of values in left side of DO-expression is not 2 or 3");
  }
  return outcome;
}

}  // namespace zorvik
