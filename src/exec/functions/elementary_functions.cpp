// A row of the table is a function of one number: its name, the type of its value, how it is worked
// out, and what is outside its domain.
#include "exec/functions/elementary_functions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "driver/number_format.h"
#include "driver/text.h"
#include "exec/functions/function_arguments.h"
#include "exec/functions/random.h"
#include "exec/values/run_state.h"
#include "exec/values/scalar_operations.h"
#include "lang/text/language_tables.h"

namespace zorvik {
namespace {

constexpr double kLowestExponent = -700.0;  // EXP of less is EXP of this, about 1e-304

enum class ResultType { kAsArgument, kInteger, kReal };

struct Elementary {
  std::string_view name;
  ResultType type;
  double (*value)(double x);
  bool (*outside)(double x) = nullptr;  // outside the function's domain
  std::string_view refusal = {};
};

constexpr std::array<Elementary, 18> kElementary = {{
    {"ABS", ResultType::kAsArgument, [](double x) { return std::fabs(x); }},
    // A denormal argument counts as 0.
    {"LOG", ResultType::kReal, [](double x) { return std::log(x); },
     [](double x) { return x < kSmallestDivisor; }, "%fat- LOG(X); X <= 0"},
    // No negative zero comes of -0.5.
    {"INT", ResultType::kInteger, [](double x) { return std::trunc(x) + 0.0; }},
    {"FLOAT", ResultType::kReal, [](double x) { return x; }},
    {"NINT", ResultType::kInteger, [](double x) { return round_half_away(x); }},
    {"SQRT", ResultType::kReal, [](double x) { return std::sqrt(x); }, outside_square_root,
     "%fat- SQRT(X); X < 0"},
    {"EXP", ResultType::kReal, [](double x) { return std::exp(std::max(x, kLowestExponent)); }},
    {"SIN", ResultType::kReal, [](double x) { return std::sin(x); }},
    {"COS", ResultType::kReal, [](double x) { return std::cos(x); }},
    {"TAN", ResultType::kReal, [](double x) { return std::tan(x); }},
    {"ASIN", ResultType::kReal, [](double x) { return std::asin(x); },
     [](double x) { return std::fabs(x) > 1; }, "%fat- ASIN(X); abs(X) > 1"},
    {"ACOS", ResultType::kReal, [](double x) { return std::acos(x); },
     [](double x) { return std::fabs(x) > 1; }, "%fat- ACOS(X); abs(X) > 1"},
    {"ATAN", ResultType::kReal, [](double x) { return std::atan(x); }},
    {"SINH", ResultType::kReal, [](double x) { return std::sinh(x); }},
    {"COSH", ResultType::kReal, [](double x) { return std::cosh(x); }},
    {"TANH", ResultType::kReal, [](double x) { return std::tanh(x); }},
    {"TETA", ResultType::kReal, [](double x) { return x > 0 ? 1.0 : 0.0; }},
    {"RAND", ResultType::kReal, [](double x) { return x * urand(); }},
}};

constexpr bool stand_at_their_numbers() {
  for (std::size_t k = 0; k < kElementary.size(); ++k) {
    if (kElementary[k].name != kFunctions[k + kFunctionAbs - 1].name) return false;
  }
  return true;
}
static_assert(stand_at_their_numbers());

const Elementary& elementary_of(int number) {
  return kElementary[static_cast<std::size_t>(number - kFunctionAbs)];
}

// The element that no other one beats, the first of equal ones. Four chains of comparisons go side
// by side; only zeros can be equal and differ.
template <class Better>
double best_of(const double* values, int count, Better better) {
  constexpr int kChains = 4;
  double best[kChains] = {values[0], values[0], values[0], values[0]};
  const auto choose = [&](double value, double& so_far) {
    so_far = better(value, so_far) ? value : so_far;
  };
  int k = 0;
  for (; k + kChains <= count; k += kChains) {
    for (int chain = 0; chain < kChains; ++chain) choose(values[k + chain], best[chain]);
  }
  for (; k < count; ++k) choose(values[k], best[0]);
  for (int chain = 1; chain < kChains; ++chain) choose(best[chain], best[0]);
  return best[0] == 0.0 ? *std::find(values, values + count, 0.0) : best[0];
}

// Replaces an array by its best element.
void replace_by_extreme(int number, double (*extreme)(const double* values, int count)) {
  require_numeric(number, 1, 1);
  const StackEntry entry = top_entry();
  // A range has no elements of its own, only its two bounds.
  if (entry.shape == kRange) {
    stop_on_error(message("%err- Meaningless shape <i1:i2> of argument in function ",
                          function_of(number).name));
  }
  replace_by_scalar(1, entry.base_type, extreme(values_of(entry), entry.length));
}

void keep_one_of_two(int number, double (*choose)(double, double)) {
  require_numeric_scalars(number, 2);
  const BaseType type = result_type(argument(1, 2).base_type, argument(2, 2).base_type);
  const double value = choose(argument_value(1, 2), argument_value(2, 2));
  replace_by_scalar(2, type, type == kInteger ? whole(value) : value);
}

}  // namespace

double smallest_of(const double* values, int count) {
  return best_of(values, count, [](double a, double b) { return a < b; });
}

double largest_of(const double* values, int count) {
  return best_of(values, count, [](double a, double b) { return a > b; });
}

void smallest_element(int number) { replace_by_extreme(number, smallest_of); }

void largest_element(int number) { replace_by_extreme(number, largest_of); }

ElementaryFunction elementary_function(int number) {
  return {elementary_of(number).value, elementary_of(number).outside};
}

BaseType elementary_type(int number, BaseType argument) {
  switch (elementary_of(number).type) {
    case ResultType::kAsArgument:
      return argument;
    case ResultType::kInteger:
      return kInteger;
    default:
      return kReal;
  }
}

void apply_elementary(int number) {
  require_numeric_scalars(number, 1);
  StackEntry& entry = top_entry();
  double& x = *values_of(entry);
  const ElementaryFunction function = elementary_function(number);
  if (function.outside != nullptr && function.outside(x)) {
    stop_at_statement(elementary_of(number).refusal);
  }
  x = function.value(x);
  entry.base_type = elementary_type(number, entry.base_type);
}

void remainder_of_two(int number) {
  require_numeric_scalars(number, 2);
  require_integers(number, 1, 2);
  double result;
  if (!remainder(argument_value(1, 2), argument_value(2, 2), result)) {
    stop_at_statement("%fat- Integer divide by zero");
  }
  replace_by_scalar(2, kInteger, result);
}

void larger_of_two(int number) { keep_one_of_two(number, larger); }

void smaller_of_two(int number) { keep_one_of_two(number, smaller); }

void normal_random_number(int number) {
  require_numeric_scalars(number, 2);
  const double mean = argument_value(1, 2), deviation = argument_value(2, 2);
  replace_by_scalar(2, kReal, mean + deviation * static_cast<double>(gauss()));
}

}  // namespace zorvik
