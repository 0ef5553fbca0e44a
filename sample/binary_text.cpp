#include "sample/binary_text.h"

#include <algorithm>
#include <charconv>
#include <type_traits>

#include "sample/bytes.h"

namespace zorvik::sample {

using sample::append_int32;
using sample::append_real;
using sample::append_text;
using sample::kUndefinedMarker;

namespace {

template <class Number>
bool read_number(std::string_view text, Number& number, int base = 10) {
  const char* end = text.data() + text.size();
  std::from_chars_result result{};
  if constexpr (std::is_floating_point_v<Number>) {
    result = std::from_chars(text.data(), end, number);
  } else {
    result = std::from_chars(text.data(), end, number, base);
  }
  return result.ec == std::errc() && result.ptr == end;
}

std::string_view without_comment(std::string_view line) {
  bool quoted = false;
  for (std::size_t k = 0; k < line.size(); ++k) {
    if (line[k] == '"') quoted = !quoted;
    const bool starts_word = k == 0 || line[k - 1] == ' ';
    if (line[k] == '#' && !quoted && starts_word) return line.substr(0, k);
  }
  return line;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view unquoted(std::string_view text) {
  const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
  return quoted ? text.substr(1, text.size() - 2) : text;
}

// The first word of the text, which then loses it and the blanks after it.
std::string_view take_word(std::string_view& text) {
  const std::size_t end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text = trimmed(text.substr(end));
  return word;
}

bool append_value(std::string& bytes, std::string_view kind, std::string_view word) {
  if (kind == "int32") {
    std::int32_t value = 0;
    if (!read_number(word, value)) return false;
    append_int32(bytes, value);
  } else if (kind == "real") {
    double value = kUndefinedMarker;
    if (word != "undefined" && !read_number(word, value)) return false;
    append_real(bytes, value);
  } else {
    unsigned value = 0;
    if (!read_number(word, value, 16) || value > 255) return false;
    bytes += static_cast<char>(value);
  }
  return true;
}

bool append_values(std::string& bytes, std::string_view kind, std::string_view values) {
  while (!values.empty()) {
    std::string_view word = take_word(values);
    int times = 1;
    if (const std::size_t star = word.find('*'); star != std::string_view::npos) {
      if (!read_number(word.substr(0, star), times)) return false;
      word.remove_prefix(star + 1);
    }
    for (int k = 0; k < times; ++k) {
      if (!append_value(bytes, kind, word)) return false;
    }
  }
  return true;
}

bool append_line(std::string& bytes, std::string_view line) {
  std::string_view rest = trimmed(without_comment(line));
  if (rest.empty()) return true;
  const std::string_view kind = take_word(rest);
  if (kind == "int32" || kind == "real" || kind == "byte") return append_values(bytes, kind, rest);
  std::size_t width = 40;
  if (kind == "text" && !read_number(take_word(rest), width)) return false;
  if (kind == "name" || kind == "text") {
    append_text(bytes, unquoted(rest), width);
    return unquoted(rest).size() <= width;
  }
  if (kind == "chars") {
    bytes += unquoted(rest);
    return true;
  }
  std::size_t count = 0;
  if (kind != "cut" || !read_number(rest, count) || count > bytes.size()) return false;
  bytes.resize(bytes.size() - count);
  return true;
}

}  // namespace

std::string append_binary_text(const std::vector<std::string>& lines, std::string& bytes) {
  for (const std::string& line : lines) {
    if (!append_line(bytes, line)) return "not understood: " + line;
  }
  return {};
}

}  // namespace zorvik::sample
