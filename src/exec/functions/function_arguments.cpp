// A check goes over some arguments and stops at the first that is not as asked for, so the order in
// which a function makes its checks is the order of its messages.
//   MOD(1.5, T), T being a text: "Text or pointer arg." although 1.5 is not integer
#include "exec/functions/function_arguments.h"

#include <algorithm>
#include <limits>
#include <string>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "exec/values/run_state.h"
#include "lang/text/language_tables.h"

namespace zorvik {
namespace {

// Ends the run with `text` and the function's name unless all arguments are as asked for.
template <class Predicate>
void require(int number, int first, int last, std::string_view text, Predicate as_wanted) {
  const int count = function_of(number).arguments;
  for (int k = first; k <= last; ++k) {
    if (!as_wanted(argument(k, count))) stop_on_error(message(text, function_of(number).name));
  }
}

}  // namespace

void require_numeric(int number, int first, int last) {
  require(number, first, last, "%err- Text or pointer arg. in function ",
          [](const StackEntry& entry) { return is_numeric(entry.base_type); });
}

void require_scalars(int number, int first, int last) {
  require(number, first, last, "%err- Array argument in function ",
          [](const StackEntry& entry) { return entry.shape == kScalar; });
}

void require_integers(int number, int first, int last) {
  require(number, first, last, "%err- Not integer argument(s) in function ",
          [](const StackEntry& entry) { return entry.base_type == kInteger; });
}

void require_numeric_scalars(int number, int count) {
  require_numeric(number, 1, count);
  require_scalars(number, 1, count);
}

int rounded_to_int(double given) {
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  const double value = round_half_away(given);
  if (!(value >= kLowest)) return std::numeric_limits<int>::min();  // not-a-number too
  return static_cast<int>(std::min(value, kHighest));
}

}  // namespace zorvik
