// Reads one expression from the lexer and turns it into postfix items, checking its syntax.
//
// Both passes use it: pass 1 to check the text, pass 2 to compile the text it knows to be valid.
// What a constant or a name means is for the caller's resolver to say.
#ifndef ZORVIK_LANG_TEXT_EXPRESSION_READER_H_
#define ZORVIK_LANG_TEXT_EXPRESSION_READER_H_

#include "lang/text/expression_items.h"
#include "lang/text/lexer.h"

namespace zorvik {

class OperandResolver {
 public:
  virtual ~OperandResolver() = default;
  // Each is called once an operand in the order of the text; false after an error that it has
  // reported and counted.
  virtual bool constant(const Lexeme& lexeme, Item& item) = 0;
  virtual bool variable(const Lexeme& lexeme, bool target, Item& item) = 0;
};

enum class ExpressionEnd {
  kSemicolon,  // taken
  kComma,      // taken: another expression follows
  kKeyword,    // given back
  kTarget,     // target mode: the lexeme after the target is the next to be read
  kTextEnded,
  kFailed,  // an error, reported and counted
};

enum class ExpressionMode {
  kValue,
  kTarget,  // a name with its subscripts, if any: the left side of an assignment or of a DO
};

// Reads the expression whose first lexeme is `lexeme`, already read. At the end `lexeme` is the one
// that ended the expression or, when it failed, the offending one. Lexemes are read with label
// recognition as it stands. Syntax errors are written under the current lexeme.
ExpressionEnd read_expression(int unit, ExpressionMode mode, Lexeme& lexeme,
                              OperandResolver& resolver, ItemList& items);

// True when a value may begin with the lexeme: anything but an operator, or "+", "-", "(" or "^".
bool may_begin_expression(const Lexeme& lexeme);

}  // namespace zorvik

#endif  // ZORVIK_LANG_TEXT_EXPRESSION_READER_H_
