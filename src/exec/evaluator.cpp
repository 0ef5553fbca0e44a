// Postfix items are carried out one after the other: constants and variables are pushed, operators
// and functions replace their operands on the stack.   A + B*2 -> A B 2 * + -> one entry
// An expression that has become plain is evaluated in its decoded form from its second time on.
#include "exec/evaluator.h"

#include <algorithm>

#include "exec/decoded/decoded_program.h"
#include "exec/functions/functions.h"
#include "exec/operators.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "lang/code/code_store.h"
#include "lang/code/constant_pool.h"

namespace zorvik {
namespace {

void push_constant(const Item& item) {
  if (item.base_type() != kCharacter) {
    push_scalar(item.base_type(), number_constant(item.first));
    return;
  }
  const std::string_view text = text_constant(item.first);
  std::copy(text.begin(), text.end(), push_text(static_cast<int>(text.size())));
}

// A notkey that has come into being since the code was compiled: its item takes its resolved form,
// with rank and base type, in the code itself.
void resolve_notkey(int position, int count, int k, const Variable& variable) {
  std::int32_t* const second = code_store.word + position + 1 + count + k;
  std::int32_t* const kind = second + count;
  // Compiled with the unknown rank and base type 0, so the differences are added.
  *second += variable.rank - kUnknownRank;
  *kind += variable.base_type;
}

Variable find_variable(int position, int count, int k, const Item& item) {
  const Variable variable = variable_of(item);
  if (item.rank() == kUnknownRank && variable.defined) {
    resolve_notkey(position, count, k, variable);
  }
  return variable;
}

void push_subscripted(const Variable& variable, int subscripts) {
  if (!variable.defined) return ia95fZ(variable);  // ends the run
  push_region(variable, select_region(variable, subscripts));
}

void evaluate_items(int position, int first, int last) {
  const int count = code_store.word[position];
  for (int k = first; k < last; ++k) {
    const Item item = code_item(position, count, k);
    switch (item.item_class()) {
      case ItemClass::kConstant:
        push_constant(item);
        break;
      case ItemClass::kVariable:
        ia95fZ(find_variable(position, count, k, item));
        break;
      case ItemClass::kOperator:
        apply_operator(item.first, item.operands());
        break;
      case ItemClass::kFunction:
        iu9fn2(item.first, item.operands());
        break;
      case ItemClass::kSubscripted:
        push_subscripted(find_variable(position, count, k, item), item.subscripts());
        break;
    }
  }
}

Reference::Subscript shape_subscript(const StackEntry& entry) {
  if (entry.shape != kRange) return {false, 0.0, 0.0};
  return {true, values_of(entry)[0], values_of(entry)[1]};
}

}  // namespace

int u92xt3(int position) {
  reset_evaluation();
  double value;
  BaseType type;
  if (evaluate_decoded(position, value, type)) {
    push_scalar(type, value);
  } else {
    evaluate_items(position, 0, code_store.word[position]);
  }
  return after_expression(position);
}

int evaluate_target(int position, Reference& reference) {
  reset_evaluation();
  const int count = code_store.word[position];
  // The last item is the target: it is looked up, and its value is not.
  evaluate_items(position, 0, count - 1);
  const Item item = code_item(position, count, count - 1);
  reference.variable = find_variable(position, count, count - 1, item);
  reference.subscripts = item.item_class() == ItemClass::kSubscripted ? item.subscripts() : 0;
  if (!reference.variable.defined) {
    for (int k = 0; k < reference.subscripts; ++k) {
      reference.subscript[k] = shape_subscript(evaluation.entry[k + 1]);
    }
  } else if (reference.subscripts == 0) {
    reference.region = whole_of(reference.variable);
  } else {
    reference.region = select_region(reference.variable, reference.subscripts);
  }
  return after_expression(position);
}

}  // namespace zorvik
