// The one instance; pass 1 sets it to its start state and its handlers keep it up to date.
// Capacities of the stacks are judged where a block is opened (check_values.cpp).
#include "lang/check/statement_state.h"

namespace zorvik {

StatementState statement_state;

}  // namespace zorvik
