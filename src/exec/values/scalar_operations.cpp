// Whole numbers below 9e18 are divided as 64-bit integers, which is exact; beyond, as doubles.
//   7/2 -> 3    MOD(-7, 2) -> -1    2**3 -> 8    2**0.5 by the library
#include "exec/values/scalar_operations.h"

namespace zorvik {
namespace {

// base raised to a whole power by repeated multiplication, squaring on the way.
double whole_power(double base, double exponent) {
  double result = 1.0;
  for (double rest = std::fabs(exponent); rest >= 1.0; rest = std::floor(rest / 2.0)) {
    if (std::fmod(rest, 2.0) == 1.0) result *= base;
    base *= base;
    // Halving an infinite exponent would never end.
    if (!std::isfinite(rest)) return NAN;
  }
  return exponent < 0.0 ? 1.0 / result : result;
}

bool are_integers(double a, double b) {
  constexpr double kExact = 9.0e18;  // below 2^63
  return std::fabs(a) < kExact && std::fabs(b) < kExact;
}

}  // namespace

bool divide_whole(double left, double right, double& result) {
  const double a = whole(left), b = whole(right);
  if (b == 0.0) return false;
  if (are_integers(a, b)) {
    const std::int64_t quotient = static_cast<std::int64_t>(a) / static_cast<std::int64_t>(b);
    result = static_cast<double>(quotient);
  } else {
    result = whole(std::trunc(a / b));
  }
  return true;
}

bool remainder(double left, double right, double& result) {
  const double a = whole(left), b = whole(right);
  if (b == 0.0) return false;
  result = are_integers(a, b)
               ? static_cast<double>(static_cast<std::int64_t>(a) % static_cast<std::int64_t>(b))
               : std::fmod(a, b) + 0.0;
  return true;
}

bool raise_to_power(double left, double right, bool whole_exponent, double& result) {
  if (!whole_exponent) {
    result = std::pow(left, right);
    return true;
  }
  const double exponent = whole(right);
  if (left == 0.0 && exponent < 0.0) return false;
  // A reciprocal may hold a fraction: of whole operands the caller rounds it, so 2**(-1) is 1.
  result = whole_power(left, exponent);
  return true;
}

}  // namespace zorvik
