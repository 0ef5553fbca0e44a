// LINA and LINS: evenly spaced values, and linear interpolation in a table.
#ifndef ZORVIK_EXEC_FUNCTIONS_INTERPOLATION_H_
#define ZORVIK_EXEC_FUNCTIONS_INTERPOLATION_H_

namespace zorvik {

// LINA(a, b, n): |n| values, at least 2, from a to b. "%err- Text or pointer arg. in function ",
// "%err- Array argument in function ", "%err- Not integer argument(s) in function ", "%fat-
// Function LINA. 3rd argument is too large".
void evenly_spaced_array(int number);

// LINS(Y, X, n, x): the table's value at x from its first n points; beyond its ends the value
// there. X ascends or descends. Besides the messages above: "%err- Function LINS. " and "1st
// (and/or 2nd) argument not array", "3rd argument < 2" or "Length of 1st (and/or 2nd) argument <
// 3rd argument".
void interpolate_linearly(int number);

// The interpolation itself; n >= 2.
double interpolate_linearly(const double* y, const double* x, int n, double at);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_INTERPOLATION_H_
