// Texts are views: trimming moves their ends and copies nothing.
// Fields are padded with blanks alone; trimming takes control characters away, too.
#include "driver/text.h"

#include <algorithm>
#include <charconv>

namespace zorvik {
namespace {

bool is_blank(char c) { return static_cast<unsigned char>(c) < 33; }

}  // namespace

std::string_view trim_right(std::string_view text) {
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view trim_left(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view trim_right_char(std::string_view text, char character) {
  while (!text.empty() && text.back() == character) text.remove_suffix(1);
  return text;
}

std::string_view trim_left_char(std::string_view text, char character) {
  while (!text.empty() && text.front() == character) text.remove_prefix(1);
  return text;
}

void to_upper_case(char* text, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) text[i] = upper_case(text[i]);
}

void to_lower_case(char* text, std::size_t length) {
  for (std::size_t i = 0; i < length; ++i) {
    if (text[i] >= 'A' && text[i] <= 'Z') text[i] = static_cast<char>(text[i] + 32);
  }
}

bool equal_padded(std::string_view a, std::string_view b) {
  return trim_right_char(a, ' ') == trim_right_char(b, ' ');
}

void copy_padded(char* field, std::size_t width, std::string_view text) {
  const std::size_t copied = std::min(width, text.size());
  std::copy_n(text.data(), copied, field);
  std::fill(field + copied, field + width, ' ');
}

void append_piece(std::string& text, std::string_view piece) { text.append(piece); }

void append_piece(std::string& text, char piece) { text.push_back(piece); }

void append_decimal(std::string& text, long long number) {
  char digits[24];
  const auto result = std::to_chars(digits, digits + sizeof digits, number);
  text.append(digits, result.ptr);
}

}  // namespace zorvik
