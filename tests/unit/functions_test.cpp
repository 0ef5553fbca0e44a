// The algorithms behind the built-in functions.
#include "exec/functions/functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <vector>

#include "exec/functions/random.h"
#include "exec/functions/spline.h"
#include "exec/values/evaluation_stack.h"
#include "sample/property_file.h"
#include "stores/results_store.h"
#include "wsp/property_file.h"

namespace zorvik {
namespace {

constexpr int kWs1p1 = 27, kInteg = 30, kFourt = 31;
using Values = std::vector<double>;

void push_values(const Values& values) {
  std::copy(values.begin(), values.end(), push_array(kReal, static_cast<int>(values.size())));
}

double integral(const Values& x, const Values& y) {
  reset_evaluation();
  push_values(x);
  push_values(y);
  iu9fn2(kInteg, 2);
  return *values_of(top_entry());
}

double coefficient(int m, int k, const Values& x, const Values& y) {
  reset_evaluation();
  push_scalar(kInteger, m);
  push_scalar(kInteger, k);
  push_values(x);
  push_values(y);
  iu9fn2(kFourt, 4);
  return *values_of(top_entry());
}

// y(x) on n points, the spaces between them growing towards the end when they are uneven.
template <class Function>
void sample(int n, double first, double last, bool even, Function f, Values& x, Values& y) {
  x.clear();
  y.clear();
  for (int k = 0; k < n; ++k) {
    const double way = static_cast<double>(k) / (n - 1);
    x.push_back(first + (last - first) * (even ? way : way * (1 + way) / 2));
    y.push_back(f(x.back()));
  }
}

std::uint64_t next_state(std::uint64_t y) { return (843314861 * y + 453816693) % (1ULL << 31); }

TEST(Random, StatesFollowTheCongruence) {
  double& state = results_store.value[kRandomStatePosition];
  state = 0;
  EXPECT_EQ(urand(), 453816693 / 2147483648.0);
  EXPECT_EQ(urand(), 1623591814 / 2147483648.0);
  EXPECT_EQ(urand(), 474883 / 2147483648.0);
  for (const std::uint64_t start : {0ULL, 1ULL, 7ULL, 2147483647ULL}) {
    state = static_cast<double>(start);
    std::uint64_t y = start;
    for (int k = 0; k < 1000; ++k) {
      y = next_state(y);
      ASSERT_EQ(urand(), static_cast<double>(y) / 2147483648.0) << start << " " << k;
      ASSERT_EQ(state, static_cast<double>(y));
    }
  }
}

TEST(Spline, ReproducesCubics) {
  const auto cubic = [](double t) { return 2 - 3 * t + 0.5 * t * t + 0.25 * t * t * t; };
  Values x, y;
  for (const int n : {4, 5, 40}) {
    sample(n, -1, 3, false, cubic, x, y);
    Values b(x.size()), c(x.size()), d(x.size());
    spline_coefficients(n, x.data(), y.data(), b.data(), c.data(), d.data());
    for (std::size_t i = 0; i < x.size(); ++i) {
      EXPECT_NEAR(b[i], -3 + x[i] + 0.75 * x[i] * x[i], 1e-9) << n << " " << i;
      EXPECT_NEAR(c[i], 0.5 + 0.75 * x[i], 1e-9);
      EXPECT_NEAR(d[i], 0.25, 1e-9);
    }
    // 2 t - 3/2 t^2 + 1/6 t^3 + 1/16 t^4 from -1 to 3 is 8 - 12 + 28/6 + 5.
    EXPECT_NEAR(integral(x, y), 17.0 / 3, 1e-9);
  }
  Values b(2), c(2), d(2), two_x{1, 3}, two_y{5, 9};
  spline_coefficients(2, two_x.data(), two_y.data(), b.data(), c.data(), d.data());
  EXPECT_EQ(b, (Values{2, 2}));
  EXPECT_EQ(c, (Values{0, 0}));
}

TEST(Fourier, CoefficientsOfClosedForms) {
  constexpr double kTurn = 2 * std::numbers::pi;
  Values x, y;
  // One period of 3 + 2 cos 2x - 5 sin 3x.
  const auto wave = [](double t) { return 3 + 2 * std::cos(2 * t) - 5 * std::sin(3 * t); };
  sample(400, 0, kTurn, true, wave, x, y);
  EXPECT_NEAR(coefficient(1, 0, x, y), 6, 1e-6);
  EXPECT_NEAR(coefficient(-1, 2, x, y), 2, 1e-6);
  EXPECT_NEAR(coefficient(2, -3, x, y), -5, 1e-6);
  EXPECT_NEAR(coefficient(7, 3, x, y), -5, 1e-6);  // anything but 1 is the sine
  EXPECT_NEAR(coefficient(1, 3, x, y), 0, 1e-6);
  EXPECT_EQ(coefficient(2, 0, x, y), 0);
  // The phase is that of the absolute abscissa: y = x - 1 from 1 to 3, w = pi:
  // integral of (x - 1) sin(pi x) from 1 to 3 is -2 cos(3 pi) / pi.
  sample(
      400, 1, 3, true, [](double t) { return t - 1; }, x, y);
  EXPECT_NEAR(coefficient(2, 1, x, y), 2 / std::numbers::pi, 1e-6);
}

TEST(PropertyFunctions, ReadTheTablesOnce) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(testing::TempDir());
  std::ofstream(std::string(kPropertyFileName), std::ios::binary)
      << sample::sample_property_file_bytes();
  for (int call = 1; call <= 2; ++call) {
    reset_evaluation();
    push_scalar(kInteger, 1);
    *push_text(1) = 'T';
    push_scalar(kInteger, 500);
    push_scalar(kInteger, -1);
    iu9fn2(kWs1p1, 4);
    EXPECT_NEAR(*values_of(top_entry()), 2.639e6, 5e3);
    EXPECT_EQ(evaluation.depth, 1);
    EXPECT_EQ(evaluation.text_used, 0);
    std::filesystem::remove(kPropertyFileName);
  }
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace zorvik
