// Jumps of the procedure being compiled: where their targets stand in the code, and the words that
// wait for them.
#ifndef ZORVIK_LANG_CODE_JUMP_TABLE_H_
#define ZORVIK_LANG_CODE_JUMP_TABLE_H_

#include <algorithm>

#include "driver/messages.h"
#include "lang/code/control_tables.h"

namespace zorvik {

enum class JumpTarget { kLabel, kIfPart, kDo, kEnddo };  // kIfPart: an ELSE or an ENDIF

// Forgets everything: a new procedure begins.
void reset_jumps();

// What stands at `position` of the text (a label, or the keyword ELSE, ENDIF, DO or ENDDO) is
// reached in the code at `code_position` (from 1): for a label the statement behind it, for a DO
// the first one of its body, else the head word. Places of one kind come in the order of the text.
// More than a procedure may have, which pass 1 has refused: "%dbg- IU96BS", and the run ends.
void record_position(JumpTarget kind, Position position, int code_position);

// The word at `code_position` shall become the code position of what stands at `target` of the
// text. The same limit and message.
void record_jump(JumpTarget kind, Position target, int code_position);

// Fills in the words that wait. "%dbg- IU96BS", and the run ends, when a target is missing.
void resolve_jumps_of_procedure();

// Replaces every reference to a key of a named OUTPUT by the descriptor of that OUTPUT's copy of
// it.
void resolve_output_keys();

// The row (from 1) among `count` rows whose position is the given one; "%dbg- IU96BS" and the end
// of the run when there is none. Rows in increasing order are searched by halving.
enum class SearchOrder { kIncreasing, kAny };
template <class Row>
int IU96BS(const Row* rows, Position Row::*position, int count, Position wanted,
           SearchOrder order) {
  const Row* const end = rows + count + 1;
  const Row* const found = order == SearchOrder::kIncreasing
                               ? std::ranges::lower_bound(rows + 1, end, wanted, {}, position)
                               : std::ranges::find(rows + 1, end, wanted, position);
  if (found == end || !(found->*position == wanted)) stop_on_console("%dbg- IU96BS");
  return static_cast<int>(found - rows);
}

}  // namespace zorvik

#endif  // ZORVIK_LANG_CODE_JUMP_TABLE_H_
