#include "exec/values/scalar_operations.h"

#include <cmath>
#include <cstdint>

#include "driver/number_format.h"
#include "exec/values/run_state.h"

namespace zorvik {
namespace {

// base raised to a whole power by repeated multiplication, squaring on the way.
double whole_power(double base, double exponent) {
  double result = 1.0;
  for (double rest = std::fabs(exponent); rest >= 1.0; rest = std::floor(rest / 2.0)) {
    if (std::fmod(rest, 2.0) == 1.0) result *= base;
    base *= base;
    if (!std::isfinite(rest)) return NAN;
  }
  return exponent < 0.0 ? 1.0 / result : result;
}

}  // namespace

double divide(double left, double right, bool integer) {
  if (!integer) {
    if (std::fabs(right) < kSmallestDivisor) {
      stop_at_statement("%fat- Floating divide by zero");
    }
    return left / right;
  }
  const double a = round_half_away(left), b = round_half_away(right);
  if (b == 0.0) stop_at_statement("%fat- Integer divide by zero");
  constexpr double kExact = 9.0e18;
  if (std::fabs(a) < kExact && std::fabs(b) < kExact) {
    return static_cast<double>(static_cast<std::int64_t>(a) / static_cast<std::int64_t>(b));
  }
  return std::trunc(a / b);
}

double raise_to_power(double left, double right, bool integer_exponent, bool integer_result) {
  if (!integer_exponent) return std::pow(left, right);
  const double exponent = round_half_away(right);
  if (left == 0.0 && exponent < 0.0) {
    stop_at_statement(integer_result ? "%fat- Integer divide by zero"
                                     : "%fat- Floating divide by zero");
  }
  return whole_power(left, exponent);
}

}  // namespace zorvik
