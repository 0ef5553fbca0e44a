// Pass 2's use of expressions: constants go to the pools, names are looked up.
#ifndef ZORVIK_LANG_COMPILE_EXPRESSION_COMPILER_H_
#define ZORVIK_LANG_COMPILE_EXPRESSION_COMPILER_H_

#include "lang/compile/name_lookup.h"
#include "lang/text/expression_reader.h"

namespace zorvik {

// Compiles the expression whose first lexeme is `lexeme`. kFailed when a constant could not be
// stored or a name not resolved (written with the statement's line, counted): malformed constants,
// "%err- Space for constants in procedures is full", "%err- Space for text constants in procedures
// is full", and lookup_name's errors.
ExpressionEnd compile_expression(int unit, ExpressionMode mode, Lexeme& lexeme,
                                 const NameScope& scope, ItemList& items);

}  // namespace zorvik

#endif  // ZORVIK_LANG_COMPILE_EXPRESSION_COMPILER_H_
