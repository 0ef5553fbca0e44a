// Results variables: entries of one name form one variable with a block of its own in the results
// store.
#ifndef ZORVIK_RESULTS_RESULTS_VARIABLES_H_
#define ZORVIK_RESULTS_RESULTS_VARIABLES_H_

#include <string_view>

#include "results/entry_table.h"
#include "stores/value_types.h"

namespace zorvik {

struct ResultsVariable {
  int first_entry;  // of its chain; its base name is the variable's name
  int rank;         // 0, 1 or 2
  BaseType base_type;
  int descriptor;  // number in the results store
  bool named;      // the program names it, so its values are wanted
};

struct ResultsVariables {
  ResultsVariable variable[kMaxEntries + 1];  // from 1, in the order in which they are formed
  int count;
  bool time_named;                     // the program names TAU or writes it
  int next_of_chain[kMaxEntries + 1];  // by entry; 0 ends the chain
};
extern ResultsVariables results_variables;

void reset_results_variables();

// Groups the entries into variables and allocates their blocks. kInvalid for an entry outside its
// variable's block, kTooLarge when values or descriptors do not fit into the store.
HeaderStatus form_results_variables();

std::string_view name_of(const ResultsVariable& variable);  // without trailing blanks

// The number (from 1) of the variable of just that name, blanks behind it or not; or 0.
int find_results_variable(std::string_view name);

// The number of the variable whose descriptor it is, or 0 for a key's.
int variable_of_descriptor(int descriptor);

}  // namespace zorvik

#endif  // ZORVIK_RESULTS_RESULTS_VARIABLES_H_
