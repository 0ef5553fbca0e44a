// Both functions integrate the cubic spline through their samples; FOURT first multiplies y by a
// cosine or a sine of x, in the value buffer itself, since its arguments are copies. Arguments are
// judged from the last one to the first.
#include "exec/functions/spline_functions.h"

#include <array>
#include <cmath>
#include <string_view>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "exec/functions/function_arguments.h"
#include "exec/functions/spline.h"
#include "exec/values/run_state.h"
#include "lang/text/language_tables.h"

namespace zorvik {
namespace {

constexpr int kMinimalPoints = 3;
constexpr int kWorkArrays = 3;
constexpr double kPi = 3.14159265358;  // with these digits
constexpr std::array<std::string_view, 5> kOrdinals = {"", "1st", "2nd", "3rd", "4th"};

// What a function asks of an argument: the texts name it in the messages.
struct Demand {
  bool (*type_fits)(BaseType type);
  std::string_view type_text;
  Shape shape;
  std::string_view shape_text;
};

constexpr Demand kNumericArray = {is_numeric, "REAL or INTEGER", kArray, "ARRAY"};
constexpr Demand kRealArray = {[](BaseType type) { return type == kReal; }, "REAL", kArray,
                               "ARRAY"};
constexpr Demand kIntegerScalar = {[](BaseType type) { return type == kInteger; }, "INTEGER",
                                   kScalar, "SCALAR"};

// The samples: the two arrays, their length, and the function they are arguments of.
struct Samples {
  std::string_view function;
  int x_argument;  // y is the next one
  int n;
  double *x, *y;
};

void demand(std::string_view function, int k, int count, const Demand& wanted) {
  const StackEntry& entry = argument(k, count);
  const auto stop = [&](std::string_view text) {
    stop_at_statement(message("%fat- ", kOrdinals[static_cast<std::size_t>(k)], " argument of ",
                              function, " is not ", text));
  };
  if (!wanted.type_fits(entry.base_type)) stop(wanted.type_text);
  if (entry.shape != wanted.shape) stop(wanted.shape_text);
}

Samples take_samples(std::string_view function, int x_argument, int count) {
  const StackEntry& x = argument(x_argument, count);
  const StackEntry& y = argument(x_argument + 1, count);
  const std::string_view x_name = kOrdinals[static_cast<std::size_t>(x_argument)];
  const std::string_view y_name = kOrdinals[static_cast<std::size_t>(x_argument) + 1];
  const auto stop = [&](std::string_view ending) {
    stop_at_statement(message("%fat- Length of ", x_name, " argument of ", function, ending));
  };
  if (x.length != y.length) stop(message(" <> length of ", y_name, " argument"));
  if (x.length < kMinimalPoints) stop(message(" < ", kMinimalPoints));
  // The samples themselves are among the values in use.
  if (kWorkArrays * x.length > kValueCapacity - evaluation.values_used) {
    stop_at_statement(message("%fat- Work space for ", function, " is full"));
  }
  return {function, x_argument, x.length, values_of(x), values_of(y)};
}

// Three lines, of which only the last carries the statement's line. I counts from 1.
[[noreturn]] void stop_on_order(const Samples& samples, int i, std::string_view heading) {
  const std::string_view name = kOrdinals[static_cast<std::size_t>(samples.x_argument)];
  issue_message(listing_unit, heading);
  issue_message(listing_unit, message("      Example (let X is the ", name, " argument): I=", i + 1,
                                      "  X(I)=", format_real(samples.x[i]), ";"));
  stop_at_statement(message("      X(I+1)=", format_real(samples.x[i + 1]), "; X(I) => X(I+1)"));
}

// `heading` is the first line of the message; it may be empty.
void demand_ascent(const Samples& samples, std::string_view heading) {
  for (int i = 0; i < samples.n - 1; ++i) {
    if (samples.x[i + 1] <= samples.x[i]) stop_on_order(samples, i, heading);
  }
}

// The spline's coefficients are laid behind the values in use and dropped again.
double integral_of(const Samples& samples) {
  double* const b = evaluation.value + evaluation.values_used + 1;
  double* const c = b + samples.n;
  spline_coefficients(samples.n, samples.x, samples.y, b, c, c + samples.n);
  return spline_quadrature(samples.n, samples.x, samples.y, c);
}

}  // namespace

void spline_integral(int number) {
  constexpr int kArguments = 2;
  const std::string_view name = function_of(number).name;
  demand(name, 2, kArguments, kNumericArray);
  demand(name, 1, kArguments, kNumericArray);
  const Samples samples = take_samples(name, 1, kArguments);
  demand_ascent(samples, "");
  replace_by_scalar(kArguments, kReal, integral_of(samples));
}

void fourier_coefficient(int number) {
  constexpr int kArguments = 4;
  const std::string_view name = function_of(number).name;
  demand(name, 4, kArguments, kRealArray);
  demand(name, 3, kArguments, kRealArray);
  demand(name, 2, kArguments, kIntegerScalar);
  demand(name, 1, kArguments, kIntegerScalar);
  const Samples samples = take_samples(name, 3, kArguments);
  demand_ascent(samples,
                message("%fat- Values of 3rd argument of ", name, " not on ascending order"));

  const bool cosine =
      std::fabs(round_half_away(argument_value(1, kArguments))) == 1;  // any other number: the sine
  const double order = std::fabs(round_half_away(argument_value(2, kArguments)));
  const double period = samples.x[samples.n - 1] - samples.x[0];
  const double w = 2 * order * kPi / period;
  for (int i = 0; i < samples.n; ++i) {
    // Of the abscissa itself, not of its distance from the first.
    const double phase = w * samples.x[i];
    samples.y[i] = samples.y[i] * (cosine ? std::cos(phase) : std::sin(phase));
  }
  replace_by_scalar(kArguments, kReal, 2.0 / period * integral_of(samples));
}

}  // namespace zorvik
