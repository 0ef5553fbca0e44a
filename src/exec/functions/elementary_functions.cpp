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

constexpr double kLowestExponent = -700.0;

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
    {"LOG", ResultType::kReal, [](double x) { return std::log(x); },
     [](double x) { return x < kSmallestDivisor; }, "%fat- LOG(X); X <= 0"},
    {"INT", ResultType::kInteger, [](double x) { return std::trunc(x) + 0.0; }},
    {"FLOAT", ResultType::kReal, [](double x) { return x; }},
    {"NINT", ResultType::kInteger, [](double x) { return round_half_away(x); }},
    {"SQRT", ResultType::kReal, [](double x) { return std::sqrt(x); },
     [](double x) { return x < 0; }, "%fat- SQRT(X); X < 0"},
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

// Replaces an array by the element that no other one beats.
template <class Better>
void best_element(int number, Better better) {
  require_numeric(number, 1, 1);
  const StackEntry entry = top_entry();
  if (entry.shape == kRange) {
    stop_on_error(message("%err- Meaningless shape <i1:i2> of argument in function ",
                          function_of(number).name));
  }
  const double* const values = values_of(entry);
  double best = values[0];
  for (int k = 1; k < entry.length; ++k) {
    if (better(values[k], best)) best = values[k];
  }
  replace_by_scalar(1, entry.base_type, best);
}

void keep_one_of_two(bool first) {
  const bool integer = argument(1, 2).base_type == kInteger && argument(2, 2).base_type == kInteger;
  const double value = argument_value(first ? 1 : 2, 2);
  replace_by_scalar(2, integer ? kInteger : kReal, integer ? round_half_away(value) : value);
}

}  // namespace

void smallest_element(int number) {
  best_element(number, [](double a, double b) { return a < b; });
}

void largest_element(int number) {
  best_element(number, [](double a, double b) { return a > b; });
}

bool elementary_accepts(int number, double x) {
  const Elementary& function = elementary_of(number);
  return function.outside == nullptr || !function.outside(x);
}

double elementary_value(int number, double x) { return elementary_of(number).value(x); }

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
  if (!elementary_accepts(number, x)) stop_at_statement(elementary_of(number).refusal);
  x = elementary_value(number, x);
  entry.base_type = elementary_type(number, entry.base_type);
}

void remainder_of_two(int number) {
  require_numeric_scalars(number, 2);
  require_integers(number, 1, 2);
  const double dividend = round_half_away(argument_value(1, 2));
  const double divisor = round_half_away(argument_value(2, 2));
  if (divisor == 0) stop_at_statement("%fat- Integer divide by zero");
  replace_by_scalar(2, kInteger, std::fmod(dividend, divisor) + 0.0);
}

void larger_of_two(int number) {
  require_numeric_scalars(number, 2);
  keep_one_of_two(argument_value(1, 2) > argument_value(2, 2));
}

void smaller_of_two(int number) {
  require_numeric_scalars(number, 2);
  keep_one_of_two(argument_value(1, 2) < argument_value(2, 2));
}

void normal_random_number(int number) {
  require_numeric_scalars(number, 2);
  const double mean = argument_value(1, 2), deviation = argument_value(2, 2);
  replace_by_scalar(2, kReal, mean + deviation * static_cast<double>(gauss()));
}

}  // namespace zorvik
