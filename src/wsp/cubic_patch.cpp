// A cubic whose leading coefficient counts is solved in closed form: Cardano's formula for one real
// root, the trigonometric form for three. What that leaves inexact, or has no leading coefficient,
// goes to Brent's method, the zero finder of Forsythe, Malcolm and Moler.
#include "wsp/cubic_patch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "driver/units.h"

namespace zorvik {
namespace {

// What halving 1 until 1 plus it is 1 arrives at.
constexpr double kMachineEpsilon = std::numeric_limits<double>::epsilon() / 2;
// Some 60 bisections are enough for doubles; with values that are no numbers none is.
constexpr int kMaxIterations = 200;

// Of two that are equally near the first.
double nearest(double x, double a, double b) {
  return std::fabs(a - x) <= std::fabs(b - x) ? a : b;
}

// The real root nearest `start`.
double closed_form_root(const Cubic& cubic, double start) {
  const double b = cubic.a[2] / cubic.a[3], c = cubic.a[1] / cubic.a[3];
  const double d = cubic.a[0] / cubic.a[3];
  const double shift = b / 3;  // x = t - shift makes it t^3 + p t + q
  const double p = c - b * shift;
  const double q = shift * (2 * shift * shift - c) + d;
  const double discriminant = q * q / 4 + p * p * p / 27;
  if (discriminant >= 0) {
    const double root = std::sqrt(discriminant);
    return std::cbrt(-q / 2 + root) + std::cbrt(-q / 2 - root) - shift;
  }
  const double radius = std::sqrt(-p / 3);
  const double cosine =
      std::clamp(-q / (2 * radius * radius * radius), -1.0, 1.0);  // rounding may pass 1
  const double angle = std::acos(cosine) / 3;
  const double third = std::numbers::pi / 3;
  return nearest(start, 2 * radius * std::cos(angle) - shift,
                 nearest(start, -2 * radius * std::cos(angle + third) - shift,
                         -2 * radius * std::cos(angle - third) - shift));
}

// State of Brent's method: b is the best point, the root lies between b and c, a is the previous b.
struct Bracket {
  double a, b, c, fa, fb, fc, step, previous_step;

  void restart_from_a() {
    c = a;
    fc = fa;
    step = previous_step = b - a;
  }
  void put_best_first() {
    if (!(std::fabs(fc) < std::fabs(fb))) return;
    a = b;
    b = c;
    c = a;
    fa = fb;
    fb = fc;
    fc = fa;
  }
  // Secant or inverse quadratic step, or half the interval when that goes too far.
  void choose_step(double half, double smallest) {
    if (std::fabs(previous_step) >= smallest && std::fabs(fa) > std::fabs(fb)) {
      const double s = fb / fa;
      double p = 2 * half * s, q = 1 - s;
      if (a != c) {
        const double r = fb / fc, t = fa / fc;
        p = s * (2 * half * t * (t - r) - (b - a) * (r - 1));
        q = (t - 1) * (r - 1) * (s - 1);
      }
      if (p > 0) q = -q;
      p = std::fabs(p);
      if (2 * p < 3 * half * q - std::fabs(smallest * q) && p < std::fabs(previous_step * q / 2)) {
        previous_step = step;
        step = p / q;
        return;
      }
    }
    step = previous_step = half;
  }
};

double zero_in(const Cubic& cubic, double lowest, double highest, double tolerance) {
  Bracket at{lowest, highest, 0, cubic(lowest), cubic(highest), 0, 0, 0};
  at.restart_from_a();
  for (int k = 0; k < kMaxIterations; ++k) {
    at.put_best_first();
    // Steps below this change nothing that the tolerance would show.
    const double smallest = 2 * kMachineEpsilon * std::fabs(at.b) + tolerance / 2;
    const double half = (at.c - at.b) / 2;
    if (std::fabs(half) <= smallest || at.fb == 0) break;
    at.choose_step(half, smallest);
    at.a = at.b;
    at.fa = at.fb;
    at.b += std::fabs(at.step) > smallest ? at.step : std::copysign(smallest, half);
    at.fb = cubic(at.b);
    if ((at.fb > 0) == (at.fc > 0)) at.restart_from_a();
  }
  return at.b;
}

[[noreturn]] void stop_without_root(double start, const PatchTarget& target) {
  issue_message(kConsole, "%dbg- NWSRI2,lab.1: roots of cub. equation");
  stop_on_console(message("      Tlin,i1,i2s,P,H=", format_real(start), " ", target.x_row, " ",
                          target.y_row, " ", format_real(target.pressure), " ",
                          format_real(target.target)));
}

}  // namespace

// c(i, j) is patch[i + 4 * j].
Cubic patch_at(const double* patch, double y) {
  Cubic cubic;
  for (int i = 0; i < 4; ++i) {
    cubic.a[i] = patch[i] + y * (patch[i + 4] + y * (patch[i + 8] + y * patch[i + 12]));
  }
  return cubic;
}

Cubic patch_slope_at(const double* patch, double y) {
  Cubic cubic;
  for (int i = 0; i < 4; ++i) {
    cubic.a[i] = patch[i + 4] + y * (2 * patch[i + 8] + y * 3 * patch[i + 12]);
  }
  return cubic;
}

double NWSRI2(const Cubic& cubic, double start, double lowest, double highest, double tolerance,
              const PatchTarget& target) {
  double x = start;
  // A leading coefficient below the tolerance counts as none: the formula would divide by it.
  if (std::fabs(cubic.a[3]) >= tolerance) x = closed_form_root(cubic, start);
  x = std::clamp(x, lowest, highest);  // a root may miss the cell by a rounding error
  if (std::fabs(cubic(x)) <= tolerance) return x;
  const double at_lowest = cubic(lowest), at_highest = cubic(highest);
  // Values that are no numbers change no sign.
  const bool changes_sign =
      (at_lowest <= 0 && at_highest >= 0) || (at_lowest >= 0 && at_highest <= 0);
  if (!changes_sign) stop_without_root(start, target);
  return zero_in(cubic, lowest, highest, tolerance);
}

}  // namespace zorvik
