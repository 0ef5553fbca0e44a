#include "lang/check/statement_state.h"

namespace zorvik {

StatementState statement_state;

}  // namespace zorvik
