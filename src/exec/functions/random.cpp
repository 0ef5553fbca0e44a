// y' = (843314861 y + 453816693) mod 2^31, with the steps in the order of the published routine.
#include "exec/functions/random.h"

#include <cmath>
#include <cstdint>

#include "stores/results_store.h"

namespace zorvik {
namespace {

constexpr std::int64_t kHalfModulus = std::int64_t{1} << 30;
constexpr std::int64_t kModulus = 2 * kHalfModulus;
constexpr std::int64_t kMultiplier = 843314861;  // 8 trunc(2^30 atan(1) / 8) + 5
constexpr std::int64_t kIncrement = 453816693;   // 2 trunc(2^30 (1/2 - sqrt(3)/6)) + 1

}  // namespace

double urand() {
  double& state = results_store.value[kRandomStatePosition];
  // Both factors are below 2^32, so the product is exact.
  std::int64_t y = kMultiplier * static_cast<std::int64_t>(state) % kModulus;
  if (y > kModulus - kIncrement) y -= kModulus;
  y += kIncrement;
  if (y / 2 > kHalfModulus) y -= kModulus;
  if (y < 0) y += kModulus;
  state = static_cast<double>(y);
  return state / static_cast<double>(kModulus);
}

float gauss() {
  for (;;) {
    const auto u = static_cast<float>(urand());
    const auto w = static_cast<float>(urand());
    const float p = 2.0F * u - 1.0F, q = 2.0F * w - 1.0F;
    const float s = p * p + q * q;
    if (s > 1.0F) continue;
    // The centre of the circle: the logarithm has no value there, and p is 0.
    if (s == 0.0F) return 0.0F;
    return p * std::sqrt(-2.0F * std::log(s) / s);
  }
}

}  // namespace zorvik
