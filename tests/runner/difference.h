// Readable differences between what was expected and what there is.
#ifndef ZORVIK_TESTS_RUNNER_DIFFERENCE_H_
#define ZORVIK_TESTS_RUNNER_DIFFERENCE_H_

#include <string>

namespace zorvik::runner {

// Empty when both are equal. Else the lines of `expected` that are not in `actual` after "-", the
// lines there are instead after "+", with some equal lines around; "~" for blanks at a line's end.
// Bytes that are no text are shown in hexadecimal.
std::string difference(const std::string& expected, const std::string& actual);

}  // namespace zorvik::runner

#endif  // ZORVIK_TESTS_RUNNER_DIFFERENCE_H_
