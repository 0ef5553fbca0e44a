// Labels, GOTO, OUT and RETURN. A GOTO keeps its target's name until the END of its procedure, an
// OUT until the end of the text: labels and procedures may stand behind what names them.
#include "driver/messages.h"
#include "driver/text.h"
#include "lang/check/statement_handlers.h"

namespace zorvik {
namespace {

std::string fault_of_goto_target(const Lexeme& lexeme) {
  if (lexeme.is(kIntegerConstant) || is_name_or_function(lexeme)) return {};
  if (lexeme.is(kLabel)) return "%err- Label with \":\" is invalid after the GOTO statement";
  return invalid_after(lexeme, "GOTO");
}

std::string fault_of_out_target(const Lexeme& lexeme) {
  if (is_name_or_function(lexeme)) return {};
  if (lexeme.is(kLabel)) return "%err- Label is invalid after the OUT statement";
  if (is_numeric_constant(lexeme.code)) {
    return message("%err- Name in the OUT statement begins from the ",
                   lexeme.text[0] == '.' ? "period" : " digit");
  }
  return invalid_after(lexeme, "OUT");
}

// Reads the target of a jump or a call; kDone when it is good.
Outcome read_target(int unit, const Lexeme& head, Lexeme& target,
                    std::string (*fault_of)(const Lexeme&)) {
  switch (next_lexeme(unit, target)) {
    case LexStatus::kEnd:
      // "taget" is how the message is spelled.
      count_error_at(head.column, message("%err- ", head.view(), " taget is absent"));
      return Outcome::kTextEnded;
    case LexStatus::kError:
      report_lexical_error(target);
      return recover_from(unit, target);
    case LexStatus::kLexeme:
      break;
  }
  const std::string fault = fault_of(target);
  return fault.empty() ? Outcome::kDone : reject(unit, target, fault);
}

}  // namespace

std::string invalid_after(const Lexeme& lexeme, std::string_view word) {
  std::string text = "%err- ";
  // The constant itself is not shown, so its text has a closing quote and no opening one.
  if (lexeme.is(kCharacterConstant)) {
    text += "Character constant ";
  } else if (lexeme.is(kRealConstant)) {
    text += message("Real constant \"", lexeme.view());
  } else if (is_keyword(lexeme.code)) {
    text += message("Statement \"", lexeme.view());
  } else {
    text += message("Operator \"", lexeme.view());
  }
  return text + message("\" is invalid after the ", word, " statement");
}

Outcome define_label(const Lexeme& label) {
  ControlTables& tables = control_tables;
  if (tables.labels == kMaxControlStatements) {
    stop_with_listing(message("%fat- Number of labels > ", kMaxControlStatements));
  }
  // After the limit: the 101st label is one too many even when its name stands already.
  if (find_label(label.view()) != nullptr) {
    count_error_at(label.column,
                   message("%err- Multiple definition of label \"", label.view(), '"'));
    return Outcome::kDone;
  }
  Label& entry = tables.label[++tables.labels];
  copy_padded(entry.name, kLabelWidth, label.view());
  entry.position = position_of(label);
  return Outcome::kDone;
}

Outcome check_goto(int unit, const Lexeme& head) {
  ControlTables& tables = control_tables;
  // Before the target is read: the 101st ends the run even when it is in error.
  if (tables.jumps == kMaxControlStatements) {
    stop_with_listing(message("%fat- Number of GOTOs > ", kMaxControlStatements));
  }
  Lexeme target;
  const Outcome outcome = read_target(unit, head, target, fault_of_goto_target);
  if (outcome != Outcome::kDone) return outcome;
  GotoStatement& jump = tables.jump[++tables.jumps];
  copy_padded(jump.target, kLabelWidth, target.view());
  jump.position = position_of(head);
  jump.label = {};
  take_semicolon(unit);
  return Outcome::kDone;
}

Outcome check_out(int unit, const Lexeme& head) {
  if (procedure_table.out_count == kMaxOuts) {
    stop_with_listing(message("%fat- Number of OUTs > ", kMaxOuts));
  }
  Lexeme target;
  const Outcome outcome = read_target(unit, head, target, fault_of_out_target);
  if (outcome != Outcome::kDone) return outcome;
  add_out(target.view());
  take_semicolon(unit);
  return Outcome::kDone;
}

Outcome check_return(int unit, const Lexeme& head) {
  // MAIN has no caller to return to; its block and the OUTPUTs have one.
  if (statement_state.context == Context::kMain) {
    count_error_at(head.column, "%err- RETURN is not valid in MAIN procedure");
    return skip_statement(unit);
  }
  take_semicolon(unit);
  return Outcome::kDone;
}

}  // namespace zorvik
