// The one instance; pass 1 sets it to its start state and its handlers keep it up to date.
#include "lang/check/statement_state.h"

namespace zorvik {

StatementState statement_state;

}  // namespace zorvik
