// A variable's elements are copied from its store column by column, and looked at for the undefined
// marker after that; a pointer variable gives the places of its elements instead:
//   A(1:2,1:3) = 11 21 12 22 13 23    A(1:2,2) -> 12 22    A(2,1:3) -> 21 22 23
#include "exec/values/variables.h"

#include <algorithm>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "exec/values/scalar_operations.h"
#include "results/results_variables.h"
#include "stores/keys.h"
#include "stores/notkeys.h"
#include "stores/value_types.h"

namespace zorvik {
namespace {

constexpr std::string_view kUndefinedValues = "Undefined value(s) in expression";

std::string_view name_of_descriptor(int descriptor) {
  if (const int number = variable_of_descriptor(descriptor); number != 0) {
    return name_of(results_variables.variable[number]);
  }
  // Behind MAIN's keys come the results variables, then for each OUTPUT its keys and a spare place.
  if (descriptor <= kLastMainKey) return key_of(descriptor).name;
  const int first_copy = kFirstFreeDescriptor + results_variables.count;
  return key_of(kFirstOutputKey + (descriptor - first_copy) % kKeyCopySlack).name;
}

bool is_results_variable(const Variable& variable) {
  return variable.store == kResultsStore && variable_of_descriptor(variable.number) != 0;
}

std::string undefined_in_file(const Variable& variable) {
  return message("      Some values of variable ", name_of(variable),
                 " did not define in <vnxres>");
}

void push_text_of(const Descriptor& block) {
  std::copy_n(notkeys.text + block.start, block.d1, push_text(block.d1));
}

// Room for the elements of a scalar or an array.
// A scalar's value is overwritten by the caller as an array's are filled in.
double* push_elements(BaseType base_type, bool is_scalar, int count) {
  if (!is_scalar) return push_array(base_type, count);
  push_scalar(base_type, 0.0);
  return values_of(top_entry());
}

[[noreturn]] void stop_on_index(std::string_view text, std::string_view more = {}) {
  issue_message(listing_unit, text);
  issue_message(listing_unit, more);
  stop_at_statement("      See beginning of statement at");
}

struct Bounds {
  int first, last;
  bool is_scalar;
};

[[noreturn]] void stop_on_bounds(std::string_view name, double first, double last, int extent) {
  // Only a scalar can be below 1: ":" has refused such bounds of a range.
  if (!(whole(first) >= 1.0)) {
    stop_on_index(message("%fat- Subscript of array ", name,
                          " <= 0. Index = ", std::string_view(format_integer(whole(first)))));
  }
  stop_on_index(message("%fat- Index of array ", name, " out of subscripts."),
                message("      Actual index = ", std::string_view(format_integer(whole(last))),
                        ", Max.index = ", extent));
}

// Shape, type and bounds are judged in this order, and the rows before the columns.
Bounds check_subscript(const Variable& variable, const StackEntry& entry, int extent) {
  const std::string_view name = name_of(variable);
  if (entry.shape == kArray) {
    stop_on_index(message("%fat- Index of array ", name, " is not scalar."));
  }
  if (entry.base_type != kInteger) {
    stop_on_index(message("%fat- Index of array ", name, " is not integer."));
  }
  const bool is_scalar = entry.shape == kScalar;
  const double* const values = values_of(entry);
  const double first = values[0], last = is_scalar ? first : values[1];
  const Bounds bounds{subscript(first, extent), subscript(last, extent), is_scalar};
  if (bounds.first == 0 || bounds.last == 0) stop_on_bounds(name, first, last, extent);
  return bounds;
}

}  // namespace

double* Variable::values() const {
  return (store == kResultsStore ? results_store.value : notkeys.value) + block.start;
}

Variable variable_of(const Item& item) {
  if (item.store() == kResultsStore) {
    return {kResultsStore, item.first,       true,
            item.rank(),   item.base_type(), results_store.descriptor[item.first]};
  }
  const int number = item.first / kNotkeyLink;
  const Notkey& notkey = notkeys.notkey[number];
  return {kNotkeyStore, number, notkey.defined, notkey.rank, notkey.base_type, notkey.descriptor};
}

std::string_view name_of(const Variable& variable) {
  return variable.store == kNotkeyStore ? notkey_name(variable.number)
                                        : name_of_descriptor(variable.number);
}

Region whole_of(const Variable& variable) {
  return {1, variable.block.d1, 1, variable.block.d2, variable.rank == 0};
}

void ia95fZ(const Variable& variable) {
  if (!variable.defined) {
    stop_in_procedure(message(" Undefined ", name_of(variable)));
  }
  if (variable.base_type == kCharacter) {
    return push_text_of(variable.block);
  }
  const int count = variable.block.d1 * variable.block.d2;
  double* const to = push_elements(variable.base_type, variable.rank == 0, count);
  // What the record holds for its elements is not looked at, the undefined marker included.
  if (variable.base_type == kPointerVariable) {
    for (int k = 0; k < count; ++k) to[k] = variable.block.start + k;
    return;
  }
  std::copy_n(variable.values(), count, to);
  if (!any_undefined(to, count)) return;
  stop_on_error(message("%err- ", kUndefinedValues),
                is_results_variable(variable) ? undefined_in_file(variable) : "");
}

Region select_region(const Variable& variable, int count) {
  // Before any subscript is looked at: with another number of them it would not be known what each
  // means.
  if (count != variable.rank) {
    stop_on_index(message("%fat- Invalid rank of array ", name_of(variable), " in expression."),
                  message("      Actual rank = ", variable.rank, ", rank in expression = ", count));
  }
  const StackEntry* const entries = evaluation.entry + evaluation.depth - count + 1;
  const Bounds rows = check_subscript(variable, entries[0], variable.block.d1);
  const Bounds columns =
      count == 2 ? check_subscript(variable, entries[1], variable.block.d2) : Bounds{1, 1, true};
  pop_entries(count);
  return {rows.first, rows.last, columns.first, columns.last, rows.is_scalar && columns.is_scalar};
}

void push_region(const Variable& variable, const Region& region) {
  const bool is_pointer = variable.base_type == kPointerVariable;
  const BaseType base_type = is_pointer ? kPointerValue : variable.base_type;
  // A region lies inside its variable, so the count cannot overflow.
  const int count = region.rows() * region.columns();
  double* to = push_elements(base_type, region.is_element, count);
  const double* const pushed = to;
  for (int column = region.first_column; column <= region.last_column; ++column) {
    const int offset = (column - 1) * variable.block.d1 + region.first_row - 1;
    if (is_pointer) {
      for (int k = 0; k < region.rows(); ++k) *to++ = variable.block.start + offset + k;
    } else {
      to = std::copy_n(variable.values() + offset, region.rows(), to);
    }
  }
  // Other than of a whole variable, this ends the run without naming the procedure.
  if (is_pointer || !any_undefined(pushed, count)) return;
  if (!is_results_variable(variable)) stop_at_statement(message("%fat- ", kUndefinedValues));
  issue_message(listing_unit, message("%fat- ", kUndefinedValues));
  stop_at_statement(undefined_in_file(variable));
}

}  // namespace zorvik
