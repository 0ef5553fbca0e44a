// Equal lines at the beginning and at the end are cut off; what is left is shown whole.
#include "runner/difference.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <vector>

namespace zorvik::runner {
namespace {

using Lines = std::vector<std::string>;
constexpr std::size_t kContext = 3;  // equal lines shown
constexpr std::size_t kMostLines = 100;
constexpr std::size_t kBytesPerLine = 16;

Lines lines_of(const std::string& text) {
  Lines lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  if (!text.empty() && text.back() != '\n') lines.back() += "(no line end)";
  return lines;
}

void append_marked(std::string& report, char mark, const Lines& lines, std::size_t from,
                   std::size_t to) {
  for (std::size_t k = from; k < std::min(to, from + kMostLines); ++k) {
    std::string line = lines[k];
    for (std::size_t c = line.size(); c > 0 && line[c - 1] == ' '; --c) line[c - 1] = '~';
    report += std::string("    ") + mark + line + '\n';
  }
  if (to > from + kMostLines) report += "    ...\n";
}

std::string hexadecimal(const std::string& bytes) {
  std::string text;
  for (std::size_t k = 0; k < bytes.size(); ++k) {
    char piece[24];
    if (k % kBytesPerLine == 0) std::snprintf(piece, sizeof piece, "%s%6zu:", k ? "\n" : "", k);
    if (k % kBytesPerLine == 0) text += piece;
    std::snprintf(piece, sizeof piece, " %02x", static_cast<unsigned char>(bytes[k]));
    text += piece;
  }
  return text + '\n';
}

}  // namespace

std::string text_difference(const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  const Lines e = lines_of(expected), a = lines_of(actual);
  const std::size_t shorter = std::min(e.size(), a.size());
  std::size_t head = 0, tail = 0;
  while (head < shorter && e[head] == a[head]) ++head;
  while (tail < shorter - head && e[e.size() - 1 - tail] == a[a.size() - 1 - tail]) ++tail;
  std::string report;
  append_marked(report, ' ', e, head - std::min(head, kContext), head);
  append_marked(report, '-', e, head, e.size() - tail);
  append_marked(report, '+', a, head, a.size() - tail);
  append_marked(report, ' ', e, e.size() - tail, e.size() - tail + std::min(tail, kContext));
  return report;
}

std::string binary_difference(const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  return text_difference(hexadecimal(expected), hexadecimal(actual));
}

}  // namespace zorvik::runner
