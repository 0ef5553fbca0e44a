// Small text routines used everywhere, and the assembly of messages from pieces.
//
// "Blank" means every character whose code is below 33, so tabs and control characters count.
#ifndef ZORVIK_DRIVER_TEXT_H_
#define ZORVIK_DRIVER_TEXT_H_

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

namespace zorvik {

// The text without its trailing (leading) characters of code below 33.
std::string_view trim_right(std::string_view text);
std::string_view trim_left(std::string_view text);

// The same for copies of one given character.
std::string_view trim_right_char(std::string_view text, char character);
std::string_view trim_left_char(std::string_view text, char character);

// a-z to A-Z, or A-Z to a-z, in place; every other character stays as it is.
void to_upper_case(char* text, std::size_t length);
void to_lower_case(char* text, std::size_t length);
constexpr char upper_case(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// True when the texts agree up to the longer of the two, the shorter padded with blanks.
bool equal_padded(std::string_view a, std::string_view b);

// Copies `text` into the field of `width` characters, cut or padded with blanks.
void copy_padded(char* field, std::size_t width, std::string_view text);

// What message() below appends for one of its pieces.
void append_piece(std::string& text, std::string_view piece);
void append_piece(std::string& text, char piece);
void append_decimal(std::string& text, long long number);

template <std::integral Integer>
requires(!std::same_as<Integer, char>) void append_piece(std::string& text, Integer number) {
  append_decimal(text, static_cast<long long>(number));
}

// A text made of the pieces written one after the other, with nothing between them; whole numbers
// in plain decimal: message("%fat- Number of IF-s > ", 100).
template <class... Pieces>
std::string message(const Pieces&... pieces) {
  std::string text;
  (append_piece(text, pieces), ...);
  return text;
}

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_TEXT_H_
