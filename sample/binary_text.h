// Commented binary text: the bytes of an input or expected file, written so that a reader can
// follow them. A line is a word and its values; "#" after a blank or at the line's start begins a
// comment.
//   int32 5 1 6 0        little-endian integers
//   real  0.5 3*2.5      doubles; N*V is V N times; "undefined" is the undefined-value marker
//   byte  0A ff          bytes in hexadecimal
//   name  X(1:2)         a text padded with blanks to 40 characters
//   text  20 EVENT       a text padded with blanks to the given width
//   chars A title        a text as it is
//   cut   3              drops the last 3 bytes: a damaged end
// A text may stand between double quotes to keep blanks or "#" in it.
#ifndef ZORVIK_SAMPLE_BINARY_TEXT_H_
#define ZORVIK_SAMPLE_BINARY_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorvik::sample {

// The bytes that the lines describe, appended to `bytes`. Returns an empty text, or what is wrong.
std::string append_binary_text(const std::vector<std::string>& lines, std::string& bytes);

}  // namespace zorvik::sample

#endif  // ZORVIK_SAMPLE_BINARY_TEXT_H_
