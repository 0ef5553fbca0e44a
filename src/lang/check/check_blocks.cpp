// THEN, ELSE, ENDIF and ENDDO: the nesting of blocks and the positions that jumps will need. IFs
// and DOs have a stack each; a block notes how deep the other stack was at its head, and at ELSE,
// ENDIF and ENDDO it must be as deep again. When it is not, the keyword is in error but does its
// work, so that what follows is not in error because of it. None of these errors has a pointer or a
// line.
//   IF 1 THEN DO I = 1, 2; ENDIF ENDDO -> two errors, of the ENDIF and of the ENDDO
#include "driver/messages.h"
#include "lang/check/statement_handlers.h"

namespace zorvik {
namespace {

OpenIf* innermost_if() {
  StatementState& state = statement_state;
  return state.if_depth == 0 ? nullptr : &state.open_if[state.if_depth];
}

}  // namespace

void check_then(const Lexeme& head) {
  OpenIf* const open = innermost_if();
  if (open == nullptr || open->then_seen || open->else_seen) {
    count_error("%err- Invalid control structure using THEN");
    return;
  }
  open->then_seen = true;
  open->then = position_of(head);
}

// That a THEN came before is not asked for: without one the IF was in error already.
void check_else(const Lexeme& head) {
  OpenIf* const open = innermost_if();
  if (open == nullptr || open->else_seen) {
    count_error("%err- Invalid control structure using ELSE");
    return;
  }
  open->else_seen = true;
  open->else_part = position_of(head);
  if (open->do_depth != statement_state.do_depth) {
    count_error("%err- Invalid control structure using IF...ELSE and DO...ENDDO statements");
  }
}

void check_endif(const Lexeme& head) {
  const OpenIf* const open = innermost_if();
  if (open == nullptr) {
    count_error("%err- Invalid control structure using ENDIF");
    return;
  }
  IfBlock& block = control_tables.if_block[open->number];
  block.then = open->then;
  block.endif = position_of(head);
  block.else_part = open->else_part;
  // A false condition leads to the ELSE, or past the whole block.
  block.then_end = open->else_seen ? open->else_part : block.endif;
  if (open->do_depth != statement_state.do_depth) {
    count_error("%err- Invalid control structure using IF...ENDIF and DO...ENDDO statements");
  }
  --statement_state.if_depth;
}

void check_enddo(const Lexeme& head) {
  StatementState& state = statement_state;
  if (state.do_depth == 0) {
    count_error("%err- Invalid control structure using ENDDO");
    return;
  }
  const OpenDo& open = state.open_do[state.do_depth];
  control_tables.do_block[open.number] = {open.head, position_of(head), state.do_depth};
  if (open.if_depth != state.if_depth) {
    count_error("%err- Invalid control structure using DO...ENDDO and IF...ENDIF statements");
  }
  --state.do_depth;
}

}  // namespace zorvik
