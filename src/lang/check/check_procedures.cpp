// OUTPUT, BEGIN and END: the division of the text into procedures, and what can only be checked
// once a procedure, or the whole text, is complete.
//   X = 1; BEGIN ... END ... END OUTPUT T; ... END
//     -> procedure 1 MAIN, 2 the block, 3 T; MAIN's END is checked before the block, that before T
#include "driver/messages.h"
#include "driver/text.h"
#include "lang/check/statement_handlers.h"

namespace zorvik {
namespace {

// Stands in the listing where the block's lines, listed before with MAIN's, begin and end again.
constexpr std::string_view kBlockRule = "--------------------";

std::string fault_of_output_name(const Lexeme& lexeme) {
  if (is_name_or_function(lexeme)) return {};
  if (lexeme.is(kLabel)) return "%err- Label is invalid after the OUTPUT statement";
  if (is_numeric_constant(lexeme.code)) {
    return message("%err- Name of OUTPUT begins from the ",
                   lexeme.text[0] == '.' ? "period" : " digit");
  }
  return invalid_after(lexeme, "OUTPUT");
}

void enter_output(const Lexeme& name, Position head) {
  if (procedure_table.count - kMainProcedure == kMaxOutputs) {
    stop_with_listing(message("%fat- Number of OUTPUT statements > ", kMaxOutputs));
  }
  // The block's name counts too: it is an entry of the same table.
  if (find_procedure(name.view()) != 0) {
    count_error_at(name.column, "%err- Multiple definition of OUTPUT");
    return;
  }
  add_procedure(name.view(), head);
}

std::string_view target_of(const GotoStatement& jump) {
  return trim_right_char({jump.target, kLabelWidth}, ' ');
}

// Gives each GOTO the position of its label; false when a label is missing.
bool resolve_gotos() {
  ControlTables& tables = control_tables;
  bool resolved = true;
  for (int k = 1; k <= tables.jumps; ++k) {
    GotoStatement& jump = tables.jump[k];
    if (const Label* const label = find_label(target_of(jump)); label != nullptr) {
      jump.label = label->position;
      continue;
    }
    count_error(message("%err- Label in \"GOTO ", target_of(jump), "\" not found"));
    resolved = false;
  }
  return resolved;
}

// The depth of the deepest DO block that contains the position; 0 outside every block.
// The DO is inside, the ENDDO is not; so a label in front of ENDDO is inside, one in front of DO is
// not.
int do_depth_at(Position position) {
  int depth = 0;
  for (int k = 1; k <= control_tables.dos; ++k) {
    const DoBlock& block = control_tables.do_block[k];
    if (position >= block.head && position < block.enddo && block.depth > depth) {
      depth = block.depth;
    }
  }
  return depth;
}

void check_branches() {
  for (int k = 1; k <= control_tables.jumps; ++k) {
    const GotoStatement& jump = control_tables.jump[k];
    if (do_depth_at(jump.label) > do_depth_at(jump.position)) {
      count_error(message("%err- Invalid branch into DO block. See GOTO ", target_of(jump)));
    }
  }
}

// Reads on to the next END keyword and the lexeme after it, which is given back.
void skip_block(int unit) {
  Lexeme lexeme;
  do {
    const LexStatus status = next_lexeme(unit, lexeme);
    if (status == LexStatus::kEnd) {
      stop_with_listing("%fat- Unclosed block BEGIN...END. END not found");
    }
    if (status == LexStatus::kError) {
      report_lexical_error(lexeme);
      lexeme.code = 0;  // what is malformed is no END, whatever it began as
    }
  } while (!lexeme.is(kEnd));
  if (next_lexeme(unit, lexeme) == LexStatus::kEnd) {
    stop_with_listing("%fat- MAIN procedure. Missing END statement");
  }
  give_back(lexeme);
}

// Goes back to the block's BEGIN, listing from there again, and takes the keyword.
void enter_block(int unit) {
  issue_message(listing_unit, kBlockRule);
  const Position head = procedure_table.procedure[kBlockProcedure].head;
  u16pxy(unit, head.line, head.column);
  Lexeme begin;
  next_lexeme(unit, begin);
  statement_state.context = Context::kBlock;
}

// Goes on just after MAIN's END.
void leave_block(int unit) {
  issue_message(listing_unit, kBlockRule);
  return_to(unit, statement_state.main_end.line, statement_state.main_end.column);
  Lexeme end;
  next_lexeme(unit, end);
}

}  // namespace

Outcome check_output(int unit, const Lexeme& head) {
  StatementState& state = statement_state;
  if (state.context != Context::kNone) {
    stop_with_listing_at(head.column, "%fat- Statement OUTPUT is invalid inside procedures");
  }
  // From here on a procedure is open, even when its name is in error: its statements are checked
  // and its END must come.
  state.context = Context::kOutput;
  state.procedure_closed = false;
  Lexeme name;
  switch (next_lexeme(unit, name)) {
    case LexStatus::kEnd:
      count_error_at(head.column, "%err- OUTPUT name is absent");
      return Outcome::kTextEnded;
    case LexStatus::kError:
      report_lexical_error(name);
      return recover_from(unit, name);
    case LexStatus::kLexeme:
      break;
  }
  const std::string fault = fault_of_output_name(name);
  if (!fault.empty()) return reject(unit, name, fault);
  enter_output(name, position_of(head));
  take_semicolon(unit);
  return Outcome::kDone;
}

Outcome check_begin(int unit, const Lexeme& head) {
  // Each of these ends the run: of a block in a wrong place it is not known which END is its own.
  if (statement_state.context != Context::kMain) {
    stop_with_listing("%fat- BEGIN...END block is valid in MAIN procedure only");
  }
  if (procedure_table.has_block) {
    stop_with_listing_at(head.column, "%fat- Multiple definition of statement BEGIN in MAIN proc.");
  }
  if (statement_state.do_depth > 0) {
    stop_with_listing_at(head.column, "%fat- Invalid control staructure using BEGIN and DO");
  }
  procedure_table.has_block = true;
  add_procedure(kBlockName, position_of(head));
  skip_block(unit);
  return Outcome::kDone;
}

void end_procedure(int unit, const Lexeme& head) {
  StatementState& state = statement_state;
  state.procedure_closed = true;
  const bool block_follows = state.context == Context::kMain && procedure_table.has_block;
  if (block_follows) {
    state.main_end = position_of(head);
    enter_block(unit);
  } else if (state.context == Context::kBlock) {
    leave_block(unit);
  }
  // MAIN's tables still stand, whatever the text is positioned at: all below is about the procedure
  // that ends here.
  const bool resolved = resolve_gotos();
  // Where an open DO ends is not known, and a GOTO without its label leads nowhere: then no branch
  // is judged.
  if (state.do_depth > 0) {
    count_error("%err- Unclosed DO ... ENDDO block(s)");
  } else if (resolved) {
    check_branches();
  }
  write_jump_records();
  const int if_depth = state.if_depth;
  if (if_depth > 0) count_error("%err- Unclosed IF ... ENDIF block(s)");
  write_if_record();
  reset_control_tables();
  state.do_depth = state.if_depth = 0;
  if (!block_follows) state.context = Context::kNone;
}

void check_out_targets() {
  for (int k = 1; k <= procedure_table.out_count; ++k) {
    const std::string_view target =
        trim_right_char({procedure_table.out[k].target, kProcedureNameWidth}, ' ');
    if (find_output(target) == 0) {
      count_error(message("%err- Procedure name in \"OUT ", target, "\" not found"));
    }
  }
}

}  // namespace zorvik
