// INTEG and FOURT: the integral of a sampled function and its Fourier coefficients, both by the
// cubic spline through the samples. All their messages are fatal and carry the statement's line.
//
// What is refused, the last argument first: an argument that is not real (INTEG: nor integer) or
// not an array (m and k of FOURT: not integer, not scalar), arrays of different lengths, fewer than
// 3 points, no work space for three arrays of that length in the value buffer, abscissae that do
// not ascend strictly.
#ifndef ZORVIK_EXEC_FUNCTIONS_SPLINE_FUNCTIONS_H_
#define ZORVIK_EXEC_FUNCTIONS_SPLINE_FUNCTIONS_H_

namespace zorvik {

// INTEG(X, Y): the integral of y over x.
void spline_integral(int number);

// FOURT(m, k, X, Y): the cosine (|m| = 1) or sine coefficient of order |k| of y, one period being
// the range of x.
void fourier_coefficient(int number);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_SPLINE_FUNCTIONS_H_
