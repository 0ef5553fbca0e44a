// Random numbers: the generator URAND of Forsythe, Malcolm and Moler, and normal deviates from it.
//
// Its one state is a whole number held in the results store at kRandomStatePosition; whoever sets
// that value starts the sequence anew.
#ifndef ZORVIK_EXEC_FUNCTIONS_RANDOM_H_
#define ZORVIK_EXEC_FUNCTIONS_RANDOM_H_

namespace zorvik {

// The next uniform number in [0, 1).
double urand();

// The next standard normal deviate, by the polar method in single precision; it takes at least two
// uniform numbers.
float gauss();

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_RANDOM_H_
