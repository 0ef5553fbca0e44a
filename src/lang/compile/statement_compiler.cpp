// A statement is its head word and its operands, laid down while its lexemes are read; jump targets
// stay 0 and wait in the jump table. IF X > 1 THEN Y = 2; ENDIF in line 5 becomes
//   -100005 | X 1 > | -200005 | target: the ENDIF | -2000005 | Y | 2 | -400005 | 0
#include "lang/compile/statement_compiler.h"

#include "driver/messages.h"
#include "driver/text.h"
#include "lang/code/code_store.h"
#include "lang/code/jump_table.h"
#include "lang/compile/expression_compiler.h"
#include "lang/text/statement_recovery.h"
#include "results/results_variables.h"

namespace zorvik {
namespace {

int append(const Compilation& compilation, std::int32_t word,
           std::string_view full = kProceduresFull) {
  return append_code_word(word, compilation.scope.line, full);
}

int append_head(const Compilation& compilation, StatementCode code) {
  return append(compilation, make_head(code, compilation.scope.line));
}

// Compiles and appends one expression; kFailed once the rest of the statement has been skipped.
ExpressionEnd compile(Compilation& compilation, ExpressionMode mode, Lexeme& lexeme,
                      std::string_view full = kProceduresFull) {
  ItemList items;
  const ExpressionEnd end =
      compile_expression(compilation.unit, mode, lexeme, compilation.scope, items);
  if (end == ExpressionEnd::kFailed) {
    compilation.failed = true;
    count_written_error();  // the operand's error stands counted; this one is the statement's
    recover_from(compilation.unit, lexeme);
  } else {
    append_expression(items, compilation.scope.line, full);
  }
  return end;
}

// Compiles the values of a list with the separator word between them; false after a failure.
bool compile_list(Compilation& compilation, std::string_view full = kProceduresFull) {
  Lexeme lexeme;
  for (;;) {
    next_lexeme(compilation.unit, lexeme);
    const ExpressionEnd end = compile(compilation, ExpressionMode::kValue, lexeme, full);
    if (end != ExpressionEnd::kComma) return end != ExpressionEnd::kFailed;
    append(compilation, kListSeparator, full);
  }
}

// Compiles `target =`; false after a failure.
bool compile_target(Compilation& compilation, Lexeme name,
                    std::string_view full = kProceduresFull) {
  if (compile(compilation, ExpressionMode::kTarget, name, full) == ExpressionEnd::kFailed) {
    return false;
  }
  Lexeme sign;
  next_lexeme(compilation.unit, sign);  // "="
  return true;
}

template <class Row>
const Row& row_at(const Row* rows, Position Row::*position, int count, Position wanted,
                  SearchOrder order) {
  return rows[IU96BS(rows, position, count, wanted, order)];
}

// Only an OUTPUT has a file of its own that WRITE heads with the problem time and WRITE1 does not;
// elsewhere the two are the same.
StatementCode output_code(const Compilation& compilation, const Lexeme& head) {
  if (head.is(kPrint)) return kCodePrint;
  const bool own_file = compilation.context == Context::kOutput;
  return head.is(kWrite1) && own_file ? kCodeWrite1 : kCodeWrite;
}

}  // namespace

// The letters of the names are those of the messages, large or small.
std::string_view routine_of(Context context) {
  switch (context) {
    case Context::kOutput:
      return " Routine U91OU2";
    case Context::kBlock:
      return " Routine u91be2";
    default:
      return " Routine u91ps2";
  }
}

void compile_assignment(Compilation& compilation, const Lexeme& head) {
  const LabelsOff labels_off;
  append(compilation, make_head(kCodeAssignment, compilation.scope.line), kBlocksFull);
  if (compile_target(compilation, head, kBlocksFull)) compile_list(compilation, kBlocksFull);
}

void compile_output_statement(Compilation& compilation, const Lexeme& head) {
  const LabelsOff labels_off;
  const StatementCode code = output_code(compilation, head);
  const bool writes_time = code == kCodeWrite && compilation.context == Context::kOutput;
  if (writes_time) results_variables.time_named = true;
  append_head(compilation, code);
  if (!compile_list(compilation)) {
    issue_message(listing_unit, "%err- Errors in PRINT or WRITE expression", kNoIoStatus,
                  compilation.scope.line);
  }
}

void compile_if(Compilation& compilation, const Lexeme&) {
  const LabelsOff labels_off;
  append_head(compilation, kCodeIf);
  Lexeme lexeme;
  next_lexeme(compilation.unit, lexeme);
  const bool good = compile(compilation, ExpressionMode::kValue, lexeme) != ExpressionEnd::kFailed;
  next_lexeme(compilation.unit, lexeme);  // THEN
  if (!good) return;
  // An IF is known by its THEN. IFs are numbered in the order of their heads, and so are their
  // THENs.
  const IfBlock& block = row_at(control_tables.if_block, &IfBlock::then, control_tables.ifs,
                                position_of(lexeme), SearchOrder::kIncreasing);
  append(compilation, make_head(kCodeThen, lexeme.line));
  record_jump(JumpTarget::kIfPart, block.then_end, append(compilation, 0));
}

void compile_else(Compilation& compilation, const Lexeme& head) {
  const IfBlock& block = row_at(control_tables.if_block, &IfBlock::else_part, control_tables.ifs,
                                position_of(head), SearchOrder::kAny);
  record_position(JumpTarget::kIfPart, position_of(head), append_head(compilation, kCodeElse));
  record_jump(JumpTarget::kIfPart, block.endif, append(compilation, 0));
}

void compile_endif(Compilation& compilation, const Lexeme& head) {
  record_position(JumpTarget::kIfPart, position_of(head), append_head(compilation, kCodeEndif));
  append(compilation, 0);
}

// A ";" behind the target is read as an empty statement.
void compile_goto(Compilation& compilation, const Lexeme& head) {
  const GotoStatement& jump =
      row_at(control_tables.jump, &GotoStatement::position, control_tables.jumps, position_of(head),
             SearchOrder::kIncreasing);
  append_head(compilation, kCodeGoto);
  record_jump(JumpTarget::kLabel, jump.label, append(compilation, 0));
  Lexeme target;
  next_lexeme(compilation.unit, target);
}

void compile_out(Compilation& compilation, const Lexeme&) {
  Lexeme name;
  next_lexeme(compilation.unit, name);
  const int number = find_output(name.view());
  if (number == 0) {
    stop_on_console(message("%dbg- Invalid OUT", name.view(), routine_of(compilation.context)));
  }
  append_head(compilation, kCodeOut);
  append(compilation, number);
}

void compile_do(Compilation& compilation, const Lexeme& head) {
  const LabelsOff labels_off;
  const DoBlock& block = row_at(control_tables.do_block, &DoBlock::head, control_tables.dos,
                                position_of(head), SearchOrder::kIncreasing);
  append_head(compilation, kCodeDo);
  record_jump(JumpTarget::kEnddo, block.enddo, append(compilation, 0));
  Lexeme name;
  next_lexeme(compilation.unit, name);
  if (compile_target(compilation, name) && compile_list(compilation)) {
    for (int k = 0; k < kLoopRecordWords; ++k) append(compilation, 0);
  }
  // Also after a failure: the jumps are then not resolved, but ENDDO's row is asked for all the
  // same.
  record_position(JumpTarget::kDo, position_of(head), code_store.next_free);
}

void compile_enddo(Compilation& compilation, const Lexeme& head) {
  const DoBlock& block = row_at(control_tables.do_block, &DoBlock::enddo, control_tables.dos,
                                position_of(head), SearchOrder::kAny);
  record_position(JumpTarget::kEnddo, position_of(head), append_head(compilation, kCodeEnddo));
  record_jump(JumpTarget::kDo, block.head, append(compilation, 0));
}

}  // namespace zorvik
