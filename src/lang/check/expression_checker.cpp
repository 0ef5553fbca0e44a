// The postfix items are run over a stack of class letters: V a value, C a character constant, A an
// array section.   X(1:3)+1 -> 1 3 : -> A, X subscripted -> A, 1 -> V, + -> V
#include "lang/check/expression_checker.h"

#include <algorithm>
#include <string>

#include "driver/messages.h"
#include "driver/text.h"

namespace zorvik {
namespace {

// Gives operands their form without looking anything up: names are known in pass 2 only.
class UnresolvedOperands : public OperandResolver {
 public:
  bool constant(const Lexeme& lexeme, Item& item) override {
    // Number 0 is no constant: in this pass only the type counts.
    item = make_constant(0, static_cast<BaseType>(lexeme.code - kIntegerConstant));
    return true;
  }
  bool variable(const Lexeme&, bool target, Item& item) override {
    item = make_variable(0, kResultsStore, 0, kInteger, target);
    return true;
  }
};

// The syntax has seen to it that an operator finds its operands on the stack, and an opener its
// arguments. What it does not see is one that is left over: A ^ B, 2(3).
class ClassChecker {
 public:
  // The message of the first class error, or an empty text.
  std::string check(const ItemList& items) {
    for (int k = 0; k < items.count; ++k) {
      std::string fault = apply(items.item[k]);
      if (!fault.empty()) return fault;
    }
    if (depth_ == 1) return {};
    return "%err- Number of operands incompatible with some oprations";
  }

 private:
  void push(char letter) { stack_[depth_++] = letter; }

  // Replaces the `count` topmost letters by one.
  void reduce(int count, char letter) {
    depth_ -= count;
    push(letter);
  }

  bool among(int count, char letter) const {
    const char* const end = stack_ + depth_;
    return std::find(end - count, end, letter) != end;
  }

  std::string apply(const Item& item) {
    switch (item.item_class()) {
      case ItemClass::kOperator:
        return apply_operator(item);
      case ItemClass::kFunction:
        return apply_function(item);
      case ItemClass::kSubscripted:
        return apply_subscripts(item.subscripts());
      default:
        push(item.item_class() == ItemClass::kConstant && item.base_type() == kCharacter ? 'C'
                                                                                         : 'V');
        return {};
    }
  }

  std::string apply_operator(const Item& item) {
    const int operands = item.operands();
    if (item.first == kColon) {  // a range is an array to what uses it
      if (among(operands, 'A')) return "%err- Invalid usage of subarray in operation \":\"";
      if (among(operands, 'C')) return "%err- Invalid usage of text operand in operation \":\"";
      reduce(operands, 'A');
      return {};
    }
    if (item.first == kEqual) {
      if (among(operands, 'A')) return "%err- Invalid usage of subarray in operation \"==\"";
      // Two texts may be compared, and two values, but not one with the other.
      if ((stack_[depth_ - 1] == 'C') != (stack_[depth_ - 2] == 'C')) {
        return "%err- Invalid usage of character operand in operation \"==\"";
      }
    } else if (among(operands, 'C')) {
      return "%err- Invalid usage of text constant";
    }
    reduce(operands, 'V');
    return {};
  }

  std::string apply_function(const Item& item) {
    // The number of arguments is judged before any of them, and the leftmost in error is told.
    const Function& function = function_of(item.first);
    if (item.operands() != function.arguments) {
      return message("%err- Invalid number of arguments. Function \"", function.name, '"');
    }
    for (int k = 1; k <= function.arguments; ++k) {
      const char wanted = function.signature[static_cast<std::size_t>(k)];
      const char given = stack_[depth_ - function.arguments + k - 1];
      if (given == 'A' && wanted != 'A') {
        return message("%err- Invalid subarray argument. Function \"", function.name, '"');
      }
      if (given == 'C' && wanted != 'C') {
        return message("%err- Invalid text argument. Function \"", function.name, '"');
      }
    }
    reduce(function.arguments, function.signature[0] == 'A' ? 'A' : 'V');
    return {};
  }

  std::string apply_subscripts(int count) {
    if (count > 2) return "%err- Number of dimensions of array > 2";
    if (among(count, 'C')) return "%err- Invalid text index of array";
    reduce(count, among(count, 'A') ? 'A' : 'V');
    return {};
  }

  char stack_[kMaxItems + 1];
  int depth_ = 0;
};

}  // namespace

ExpressionEnd check_expression(int unit, ExpressionMode mode, Lexeme& lexeme) {
  UnresolvedOperands resolver;
  ItemList items;
  const ExpressionEnd end = read_expression(unit, mode, lexeme, resolver, items);
  if (end == ExpressionEnd::kFailed) return end;
  const std::string fault = ClassChecker().check(items);
  if (fault.empty()) return end;
  // Both lines are one error. The pointer shows the lexeme that ended the expression: where inside
  // it the fault lies is no longer known.
  issue_pointed_message(listing_unit, "%err- See expression before the pointer", lexeme.column);
  count_error(fault);
  return ExpressionEnd::kFailed;
}

}  // namespace zorvik
