// Cubic patches: f(x, y) = sum of c(i, j) x^i y^j, i, j = 0..3, over one cell of a table, x and y
// being the offsets from the cell's lower corner; i varies fastest in the 16 coefficients.
#ifndef ZORVIK_WSP_CUBIC_PATCH_H_
#define ZORVIK_WSP_CUBIC_PATCH_H_

namespace zorvik {

// a0 + a1 x + a2 x^2 + a3 x^3
struct Cubic {
  double a[4];
  double operator()(double x) const { return a[0] + x * (a[1] + x * (a[2] + x * a[3])); }
  double slope(double x) const { return a[1] + x * (2 * a[2] + x * 3 * a[3]); }
};

// The patch at a fixed y as a cubic in x, and its derivative over y as a cubic in x.
Cubic patch_at(const double* patch, double y);
Cubic patch_slope_at(const double* patch, double y);

// What is being solved, for the message of a failure: row indices, pressure and target value.
struct PatchTarget {
  int x_row, y_row;
  double pressure, target;
};

constexpr double kPatchTolerance = 1e-5;
constexpr double kSaturationTolerance = 1e-7;

// NWSRI2: x in [lowest, highest] where the cubic is 0 within `tolerance`, of several the one
// nearest `start`. A cubic without a change of sign in the cell ends the run with "%dbg- NWSRI2,
// lab.1: roots of cub. equation" and a line of the values it was given, on the console.
double NWSRI2(const Cubic& cubic, double start, double lowest, double highest, double tolerance,
              const PatchTarget& target);

}  // namespace zorvik

#endif  // ZORVIK_WSP_CUBIC_PATCH_H_
