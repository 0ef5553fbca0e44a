// A program asks for the same variable again and again, in a loop over its elements or once a
// record: the answer for the last name is kept, as there may be thousands of names.
#include "exec/functions/results_info.h"

#include <algorithm>
#include <string_view>

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/functions/function_arguments.h"
#include "exec/values/run_state.h"
#include "results/results_reader.h"
#include "results/results_variables.h"
#include "stores/results_store.h"

namespace zorvik {
namespace {

constexpr int kArguments = 2;
constexpr std::size_t kNameCapacity = 100;
constexpr int kLastSelector = 2;

// The variable asked for last; programs ask for the same one again and again.
struct AskedVariable {
  char name[kNameCapacity];
  std::size_t length;             // 0: none
  int answer[kLastSelector + 1];  // rank, first extent, second extent
};
AskedVariable asked;

void check_arguments() {
  const StackEntry& selector = argument(1, kArguments);
  if (argument(2, kArguments).base_type != kCharacter) {
    stop_at_statement("%fat- 2nd argument of GINFO is not CHARACTER");
  }
  if (selector.base_type != kInteger) {
    stop_at_statement("%fat- 1st argument of GINFO is not INTEGER");
  }
  if (selector.shape != kScalar) stop_at_statement("%err- 1st argument of GINFO is not SCALAR");
}

void look_up(std::string_view name) {
  asked.length = name.copy(asked.name, kNameCapacity);
  const int number = find_results_variable(name);
  if (number == 0) stop_at_statement(message("%fat- Variable ", name, " is absent in <vnxres>"));
  const ResultsVariable& variable = results_variables.variable[number];
  const Descriptor& block = results_store.descriptor[variable.descriptor];
  asked.answer[0] = variable.rank;
  // A scalar has no first extent but a second one, that of its block.
  asked.answer[1] = variable.rank == 0 ? 0 : block.d1;
  asked.answer[2] = variable.rank == 1 ? 0 : block.d2;
}

}  // namespace

void results_variable_info(int) {
  check_arguments();
  const int selector = rounded_argument(1, kArguments);
  if (selector < 0 || selector > kLastSelector) {
    stop_at_statement("%fat- 1st argument of GINFO out of [0,2]");
  }
  char field[kNameCapacity];
  const std::size_t length = text_of(argument(2, kArguments)).copy(field, kNameCapacity);
  to_upper_case(field, length);
  const std::string_view name = trim_left(trim_right({field, length}));
  if (name.empty()) stop_at_statement("%err- 2nd argument of GINFO consists of spaces");
  if (no_results_file) {
    // The text calls the program vnxdat.
    issue_message(listing_unit, "%err- <vnxres> not opened because <vnxdat> starts from a label");
    stop_at_statement("%fat- See function GINFO");
  }
  if (name != std::string_view{asked.name, asked.length}) look_up(name);
  replace_by_scalar(kArguments, kInteger, asked.answer[selector]);
}

}  // namespace zorvik
