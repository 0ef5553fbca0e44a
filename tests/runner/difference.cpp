// Equal lines at the beginning and at the end are cut off; what is left is shown whole.
#include "runner/difference.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <vector>

namespace zorvik::runner {
namespace {

using Lines = std::vector<std::string>;
constexpr std::ptrdiff_t kContext = 3;  // equal lines shown
constexpr std::ptrdiff_t kMostLines = 100;
constexpr std::size_t kBytesPerLine = 16;

Lines lines_of(const std::string& text) {
  Lines lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  if (!text.empty() && text.back() != '\n') lines.back() += "(no line end)";
  return lines;
}

Lines hexadecimal_lines_of(const std::string& bytes) {
  Lines lines;
  char piece[24];
  for (std::size_t k = 0; k < bytes.size(); ++k) {
    std::snprintf(piece, sizeof piece, "%6zu:", k);
    if (k % kBytesPerLine == 0) lines.emplace_back(piece);
    std::snprintf(piece, sizeof piece, " %02x", static_cast<unsigned char>(bytes[k]));
    lines.back() += piece;
  }
  return lines;
}

std::string marked(char mark, Lines::iterator from, Lines::iterator to) {
  std::string report;
  const auto end = from + std::min(to - from, kMostLines);
  for (auto line = from; line != end; ++line) {
    std::fill(line->begin() + static_cast<std::ptrdiff_t>(line->find_last_not_of(' ') + 1),
              line->end(), '~');
    report += std::string("    ") + mark + *line + '\n';
  }
  return report + (end == to ? "" : "    ...\n");
}

}  // namespace

std::string difference(const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  const bool binary = (expected + actual).find('\0') != std::string::npos;
  Lines e = binary ? hexadecimal_lines_of(expected) : lines_of(expected);
  Lines a = binary ? hexadecimal_lines_of(actual) : lines_of(actual);
  const auto [head, other_head] = std::mismatch(e.begin(), e.end(), a.begin(), a.end());
  const auto [tail, other_tail] = std::mismatch(e.rbegin(), std::make_reverse_iterator(head),
                                                a.rbegin(), std::make_reverse_iterator(other_head));
  return marked(' ', head - std::min(head - e.begin(), kContext), head) +
         marked('-', head, tail.base()) + marked('+', other_head, other_tail.base()) +
         marked(' ', tail.base(), tail.base() + std::min(e.end() - tail.base(), kContext));
}

}  // namespace zorvik::runner
