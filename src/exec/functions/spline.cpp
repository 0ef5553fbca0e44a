// The second derivatives at the points solve a tridiagonal system: b is its diagonal, d what stands
// beside it, c the right side. The two end conditions match the third derivatives of the cubics
// through the first and the last four points.
#include "exec/functions/spline.h"

namespace zorvik {
namespace {

void set_up_system(int n, const double* x, const double* y, double* b, double* c, double* d) {
  d[0] = x[1] - x[0];
  c[1] = (y[1] - y[0]) / d[0];
  for (int i = 1; i < n - 1; ++i) {
    d[i] = x[i + 1] - x[i];
    b[i] = 2 * (d[i - 1] + d[i]);
    c[i + 1] = (y[i + 1] - y[i]) / d[i];
    c[i] = c[i + 1] - c[i];
  }
  b[0] = -d[0];
  b[n - 1] = -d[n - 2];
  c[0] = c[n - 1] = 0;
  // Three points have no cubic of four: the third derivatives at the ends are then 0.
  if (n == 3) return;
  c[0] = c[2] / (x[3] - x[1]) - c[1] / (x[2] - x[0]);
  c[n - 1] = c[n - 2] / (x[n - 1] - x[n - 3]) - c[n - 3] / (x[n - 2] - x[n - 4]);
  c[0] = c[0] * (d[0] * d[0]) / (x[3] - x[0]);
  c[n - 1] = -c[n - 1] * (d[n - 2] * d[n - 2]) / (x[n - 1] - x[n - 4]);
}

void solve_system(int n, double* b, double* c, const double* d) {
  for (int i = 1; i < n; ++i) {
    const double t = d[i - 1] / b[i - 1];
    b[i] -= t * d[i - 1];
    c[i] -= t * c[i - 1];
  }
  c[n - 1] /= b[n - 1];
  for (int i = n - 2; i >= 0; --i) c[i] = (c[i] - d[i] * c[i + 1]) / b[i];
}

// From c, a sixth of the second derivatives, to the coefficients.
void finish(int n, const double* y, double* b, double* c, double* d) {
  b[n - 1] = (y[n - 1] - y[n - 2]) / d[n - 2] + d[n - 2] * (c[n - 2] + 2 * c[n - 1]);
  for (int i = 0; i < n - 1; ++i) {
    b[i] = (y[i + 1] - y[i]) / d[i] - d[i] * (c[i + 1] + 2 * c[i]);
    d[i] = (c[i + 1] - c[i]) / d[i];
    c[i] = 3 * c[i];
  }
  c[n - 1] = 3 * c[n - 1];
  d[n - 1] = d[n - 2];
}

}  // namespace

void spline_coefficients(int n, const double* x, const double* y, double* b, double* c, double* d) {
  if (n < 2) return;
  if (n == 2) {
    b[0] = b[1] = (y[1] - y[0]) / (x[1] - x[0]);
    c[0] = c[1] = d[0] = d[1] = 0;
    return;
  }
  set_up_system(n, x, y, b, c, d);
  solve_system(n, b, c, d);
  finish(n, y, b, c, d);
}

double spline_quadrature(int n, const double* x, const double* y, const double* c) {
  constexpr double kHalf = 0.5;
  constexpr double kTwelfth = 0.083333333333;  // not the nearest double to 1/12
  double sum = 0;
  for (int i = 0; i < n - 1; ++i) {
    const double h = x[i + 1] - x[i];
    sum += h * ((y[i] + y[i + 1]) * kHalf - h * kTwelfth * h * (c[i] + c[i + 1]));
  }
  return sum;
}

}  // namespace zorvik
