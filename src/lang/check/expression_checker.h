// Pass 1's check of an expression: its syntax, and the classes of its operands.
#ifndef ZORVIK_LANG_CHECK_EXPRESSION_CHECKER_H_
#define ZORVIK_LANG_CHECK_EXPRESSION_CHECKER_H_

#include "lang/text/expression_reader.h"

namespace zorvik {

// As read_expression, and besides: text constants only where texts may stand, array sections only
// where arrays may, the right number of arguments and subscripts. Nothing that it builds survives
// the call.
ExpressionEnd check_expression(int unit, ExpressionMode mode, Lexeme& lexeme);

}  // namespace zorvik

#endif  // ZORVIK_LANG_CHECK_EXPRESSION_CHECKER_H_
