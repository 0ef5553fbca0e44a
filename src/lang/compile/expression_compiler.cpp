// The reader turns the text into items; here is what an operand becomes: a constant the number that
// its pool gives it, a name what the lookup finds.
//   X + 2.5, X being notkey 3 and the constant the first: items -3000, 1, 7 with two operands
#include "lang/compile/expression_compiler.h"

#include <string>

#include "driver/messages.h"
#include "lang/code/constant_pool.h"
#include "lang/text/constants.h"

namespace zorvik {
namespace {

// The first operand that fails ends the expression: what was stored or entered for those before it
// stays.
class ResolvedOperands : public OperandResolver {
 public:
  explicit ResolvedOperands(const NameScope& scope) : scope_(scope) {}

  bool constant(const Lexeme& lexeme, Item& item) override {
    int number = 0;
    if (lexeme.is(kCharacterConstant)) {
      number = add_text_constant(lexeme.view());
      if (number == 0) return fail("%err- Space for text constants in procedures is full");
    } else {
      std::string error;
      const double value = lexeme.is(kIntegerConstant)
                               ? parse_integer_constant(lexeme.view(), error)
                               : parse_real_constant(lexeme.view(), error);
      if (!error.empty()) return fail(error);
      number = add_number_constant(value);
      if (number == 0) return fail("%err- Space for constants in procedures is full");
    }
    item = make_constant(number, static_cast<BaseType>(lexeme.code - kIntegerConstant));
    return true;
  }

  bool variable(const Lexeme& lexeme, bool target, Item& item) override {
    return lookup_name(lexeme, target, scope_, item);
  }

 private:
  bool fail(std::string_view text) {
    count_error(text, scope_.line);
    return false;
  }

  const NameScope& scope_;
};

}  // namespace

ExpressionEnd compile_expression(int unit, ExpressionMode mode, Lexeme& lexeme,
                                 const NameScope& scope, ItemList& items) {
  ResolvedOperands resolver(scope);
  return read_expression(unit, mode, lexeme, resolver, items);
}

}  // namespace zorvik
