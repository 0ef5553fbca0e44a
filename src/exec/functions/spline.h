// The cubic interpolating spline of Forsythe, Malcolm and Moler (their routine SPLINE), and its
// integral.
#ifndef ZORVIK_EXEC_FUNCTIONS_SPLINE_H_
#define ZORVIK_EXEC_FUNCTIONS_SPLINE_H_

namespace zorvik {

// For x[i] <= t <= x[i + 1]: s(t) = y[i] + b[i] (t - x[i]) + c[i] (t - x[i])^2 + d[i] (t - x[i])^3.
// x ascends strictly; with fewer than 2 points nothing is computed.
void spline_coefficients(int n, const double* x, const double* y, double* b, double* c, double* d);

// The integral of the spline from x[0] to x[n - 1], from its coefficients c.
double spline_quadrature(int n, const double* x, const double* y, const double* c);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_SPLINE_H_
