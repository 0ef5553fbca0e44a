// A new variable takes its shape from its subscripts or from its value; an existing one keeps its
// own:
//   A(1:4) = 1, 2 (new) -> 1 2 0 0    X = 9 (three elements) -> 9 9 9    X(2:3) = 7, 8, 9 -> X(2)
//   7, X(3) 8
#include "exec/assignment.h"

#include <algorithm>
#include <string>

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/evaluator.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "exec/values/scalar_operations.h"
#include "lang/code/code_store.h"
#include "stores/notkeys.h"

namespace zorvik {
namespace {

const StackEntry& value_entry() { return evaluation.entry[1]; }

bool another_value(int position) { return code_store.word[position] == kListSeparator; }

// Elements that do not fit into the store are many enough.
int clamped(double extent) {
  constexpr double kTooMany = kNotkeyCapacity + 1;
  return static_cast<int>(std::min(extent, kTooMany));
}

// Copies `count` elements of a numeric entry from the k-th on.
void copy_elements(const StackEntry& entry, std::int64_t k, std::int64_t count, double* to) {
  if (entry.shape != kRange) {
    std::copy_n(values_of(entry) + k - 1, count, to);
  } else {
    for (std::int64_t j = 0; j < count; ++j) to[j] = element_of(entry, k + j);
  }
}

// ---- A target that exists ----

// Where the next value of a list goes.
struct WriteCursor {
  int row, column;
};

// Copies the value into the region from the cursor on, column by column; the cursor stays where the
// value or the region ends.
void store_values(const Variable& variable, const Region& region, WriteCursor& cursor,
                  std::int64_t count) {
  const StackEntry& value = value_entry();
  double* const to = variable.values();
  for (std::int64_t k = 1; k <= count && cursor.column <= region.last_column;) {
    const auto part = std::min<std::int64_t>(region.last_row - cursor.row + 1, count - k + 1);
    copy_elements(value, k, part, to + (cursor.column - 1) * variable.block.d1 + cursor.row - 1);
    k += part;
    cursor.row += static_cast<int>(part);
    if (cursor.row > region.last_row) {
      cursor.row = region.first_row;
      ++cursor.column;
    }
  }
}

// A value of one element, an array of one included, fills the region.
void store_one_value(const Variable& variable, const Region& region) {
  const StackEntry& value = value_entry();
  if (element_count(value) != 1) {
    WriteCursor cursor{region.first_row, region.first_column};
    return store_values(variable, region, cursor, element_count(value));
  }
  const double element = element_of(value, 1);
  for (int column = region.first_column; column <= region.last_column; ++column) {
    double* const first =
        variable.values() + (column - 1) * variable.block.d1 + region.first_row - 1;
    std::fill_n(first, region.rows(), element);
  }
}

void store_text(const Variable& variable) {
  copy_padded(notkeys.text + variable.block.start, static_cast<std::size_t>(variable.block.d1),
              text_of(value_entry()));
}

// The reason why the value may not be assigned to the whole variable, or an empty text.
// Questions in the order of their messages: the first that applies is told.
std::string_view fault_of_whole(const Variable& variable, const StackEntry& value, bool is_list) {
  const bool is_text = value.base_type == kCharacter;
  if (!may_hold(variable.base_type, value.base_type)) {
    return " Integer = not_integer_value";
  }
  // A scalar that holds a place of the results store is a number, too.
  const bool takes_numbers =
      variable.base_type == kReal || (variable.base_type == kPointerValue && variable.rank == 0);
  if (takes_numbers && is_text) return " Real = character_value";
  if (variable.rank == 0 && (value.shape != kScalar || is_list)) return " Scalar = array";
  if (variable.base_type == kCharacter && !is_text) return " Character = not_character_value";
  if (variable.rank > 0 && is_text) return " Array = character_value";
  return {};
}

// With subscripts the order is another one, and the type of the target comes last.
std::string_view fault_of_region(const Reference& target, const StackEntry& value, bool is_list) {
  if (value.base_type == kCharacter) return " Array = character_value";
  if (target.region.is_element && (value.shape != kScalar || is_list)) {
    return " One_array_element = array";
  }
  if (!may_hold(target.variable.base_type, value.base_type)) {
    return " Integer = not_integer_value";
  }
  return {};
}

std::string_view fault_of_further_part(const Variable& variable, const StackEntry& value) {
  if (value.base_type == kCharacter) return " Array = character_value";
  if (!may_hold(variable.base_type, value.base_type)) {
    return " Integer = not_integer_value";
  }
  return {};
}

void stop_on_fault(std::string_view fault) {
  if (!fault.empty()) stop_in_procedure(fault);
}

int assign_to_existing(const Reference& target, int position) {
  const Variable& variable = target.variable;
  position = u92xt3(position);
  const bool is_list = another_value(position);
  stop_on_fault(target.subscripts == 0 ? fault_of_whole(variable, value_entry(), is_list)
                                       : fault_of_region(target, value_entry(), is_list));
  // A list and subscripts have been refused.
  if (variable.base_type == kCharacter) {
    store_text(variable);
    return position;
  }
  if (!is_list) {
    store_one_value(variable, target.region);
    return position;
  }
  WriteCursor cursor{target.region.first_row, target.region.first_column};
  store_values(variable, target.region, cursor, element_count(value_entry()));
  while (another_value(position)) {
    position = u92xt3(position + 1);
    stop_on_fault(fault_of_further_part(variable, value_entry()));
    store_values(variable, target.region, cursor, element_count(value_entry()));
  }
  return position;
}

// ---- A notkey that comes into being ----

// Until it is defined its values lie in the free part of the store: when a part fails, nothing has
// happened.
struct NewNotkey {
  int number;
  std::string_view name;
  bool has_shape;  // given by subscripts
  int rank, d1, d2;
  BaseType base_type;
  std::int64_t stored;  // values so far
};

int extent_of(const NewNotkey& notkey, const Reference::Subscript& subscript,
              std::string_view shape_text, std::string_view bound_text) {
  if (!subscript.is_range) {
    stop_at_statement(
        message("%fat- ", notkey.name, shape_text, " The shape of * is not \"1:integer\""));
  }
  if (subscript.first != 1.0) {
    stop_at_statement(
        message("%fat- ", notkey.name, bound_text, " Expression E1 must be equal to 1"));
  }
  return clamped(subscript.last);
}

void take_shape(NewNotkey& notkey, const Reference& target) {
  notkey.has_shape = target.subscripts > 0;
  notkey.rank = target.subscripts;
  notkey.d1 = notkey.d2 = 1;
  if (target.subscripts >= 1) {
    notkey.d1 = extent_of(notkey, target.subscript[0], "(*)=...", "(E1:E2)=...");
  }
  if (target.subscripts == 2) {
    notkey.d2 = extent_of(notkey, target.subscript[1], "(...,*)=...", "(...,E1:E2)=...");
  }
}

std::int64_t shape_size(const NewNotkey& notkey) { return std::int64_t{notkey.d1} * notkey.d2; }

// Asked before anything is written; the same message as define_notkey's.
void check_room(std::int64_t values) {
  if (notkeys.next_value + values - 1 > kNotkeyCapacity) {
    stop_at_statement("%fat- Space for notkeys is full");
  }
}

void create_text(const NewNotkey& notkey, bool is_list) {
  if (notkey.has_shape) {
    stop_at_statement(message("%fat- Array ", notkey.name, " = character_value"));
  }
  if (is_list) stop_at_statement(message("%fat- Character ", notkey.name, " = array"));
  const std::string_view text = text_of(value_entry());
  define_notkey(notkey.number, kCharacter, 0, static_cast<int>(text.size()), 1, evaluation.line);
  std::copy(text.begin(), text.end(),
            notkeys.text + notkeys.notkey[notkey.number].descriptor.start);
}

// Appends the value behind what is stored, within the shape when there is one.
void append_value(NewNotkey& notkey) {
  const StackEntry& value = value_entry();
  std::int64_t count = element_count(value);
  if (notkey.has_shape) {
    count = std::min(count, shape_size(notkey) - notkey.stored);
  } else {
    check_room(notkey.stored + count);
  }
  double* const to = notkeys.value + notkeys.next_value + notkey.stored;
  copy_elements(value, 1, count, to);
  notkey.stored += count;
}

void append_further_part(NewNotkey& notkey) {
  const BaseType type = value_entry().base_type;
  if (type == kCharacter) {
    stop_at_statement(message("%fat- Array ", notkey.name, " = character_value"));
  }
  if (!may_hold(notkey.base_type, type)) {
    stop_in_procedure(" Integer = not_integer_value");
  }
  append_value(notkey);
}

// Allocates and fills a new notkey; the value e1 is on the stack, further ones follow at
// `position`.
int create_notkey(NewNotkey& notkey, int position) {
  const bool is_list = another_value(position);
  // A copy: further parts of a list take the place of the first.
  const StackEntry value = value_entry();
  if (value.base_type == kCharacter) {
    create_text(notkey, is_list);
    return position;
  }
  notkey.base_type = value.base_type == kPointerVariable ? kPointerValue : value.base_type;
  if (notkey.has_shape) check_room(shape_size(notkey));
  append_value(notkey);
  while (another_value(position)) {
    position = u92xt3(position + 1);
    append_further_part(notkey);
  }
  // Always one dimension, whatever the value came from.
  if (!notkey.has_shape) {
    notkey.rank = is_list || value.shape != kScalar ? 1 : 0;
    notkey.d1 = static_cast<int>(notkey.stored);
  }
  double* const to = notkeys.value + notkeys.next_value;
  // A scalar fills the shape; of anything else the rest of the shape is 0.
  const bool fills = !is_list && value.shape == kScalar;
  std::fill(to + notkey.stored, to + shape_size(notkey), fills ? to[0] : 0.0);
  define_notkey(notkey.number, notkey.base_type, notkey.rank, notkey.d1, notkey.d2,
                evaluation.line);
  return position;
}

}  // namespace

int execute_assignment(int position) {
  Reference target;
  position = evaluate_target(position, target);
  if (target.variable.defined) return assign_to_existing(target, position);
  NewNotkey notkey{target.variable.number, name_of(target.variable), false, 0, 1, 1, kReal, 0};
  take_shape(notkey, target);
  return create_notkey(notkey, u92xt3(position));
}

}  // namespace zorvik
