// State of pass 1 within a procedure, which its statement handlers share.
#ifndef ZORVIK_LANG_CHECK_STATEMENT_STATE_H_
#define ZORVIK_LANG_CHECK_STATEMENT_STATE_H_

#include "lang/code/control_tables.h"
#include "lang/text/statement_recovery.h"

namespace zorvik {

struct OpenIf {
  bool then_seen, else_seen;
  int number;    // of the IF in its procedure
  int do_depth;  // at the IF
  Position then, else_part;
};

struct OpenDo {
  Position head;
  int number;
  int if_depth;  // at the DO
};

struct StatementState {
  Context context;
  bool procedure_closed;            // the last procedure's END was met
  OpenIf open_if[kMaxNesting + 1];  // from 1
  OpenDo open_do[kMaxNesting + 1];
  int if_depth, do_depth;
  Position main_end;  // MAIN's END, while the block is checked
};
extern StatementState statement_state;

}  // namespace zorvik

#endif  // ZORVIK_LANG_CHECK_STATEMENT_STATE_H_
