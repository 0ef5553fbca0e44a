// Variables at run time: fetching values, subscripts, and references to what is to be assigned.
#ifndef ZORVIK_EXEC_VALUES_VARIABLES_H_
#define ZORVIK_EXEC_VALUES_VARIABLES_H_

#include <string_view>

#include "lang/text/expression_items.h"
#include "stores/value_types.h"

namespace zorvik {

// A variable as it is now. An undefined notkey has no place, rank or base type yet.
struct Variable {
  StoreNumber store;
  int number;  // of the notkey, or of the descriptor in the results store
  bool defined;
  int rank;
  BaseType base_type;
  Descriptor block;

  double* values() const;  // of a numeric variable: its first element
};

// The variable of an item (class variable or subscripted).
Variable variable_of(const Item& item);

// As messages name it.
std::string_view name_of(const Variable& variable);

// Rows first_row .. last_row of columns first_column .. last_column, from 1.
struct Region {
  int first_row, last_row, first_column, last_column;
  bool is_element;  // all subscripts are scalars
  int columns() const { return last_column - first_column + 1; }
  int rows() const { return last_row - first_row + 1; }
};

Region whole_of(const Variable& variable);

// Pushes the whole value of the variable (in messages: ia95fZ). A value that is not defined ends
// the run with "%err- Undefined value(s) in expression", an undefined notkey with its name.
void ia95fZ(const Variable& variable);

// The region that the `count` topmost entries, the subscripts, select; they are dropped. Every
// error ends the run.
Region select_region(const Variable& variable, int count);

// Pushes the selected elements. An undefined one ends the run.
void push_region(const Variable& variable, const Region& region);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_VARIABLES_H_
