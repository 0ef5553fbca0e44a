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
constexpr std::size_t kMostLines = 60;

Lines lines_of(const std::string& text) {
  Lines lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  if (!text.empty() && text.back() != '\n') lines.back() += "(no line end)";
  return lines;
}

void append_marked(std::string& report, char mark, const Lines& lines, std::size_t from,
                   std::size_t to) {
  for (std::size_t k = from; k < to; ++k) {
    if (k - from == kMostLines) {
      report += "    ...\n";
      return;
    }
    std::string line = lines[k];
    for (std::size_t c = line.size(); c > 0 && line[c - 1] == ' '; --c) line[c - 1] = '~';
    report += std::string("    ") + mark + line + '\n';
  }
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
  const std::size_t shorter = std::min(expected.size(), actual.size());
  std::size_t at = 0;
  while (at < shorter && expected[at] == actual[at]) ++at;
  std::string report = "    " + std::to_string(expected.size()) + " bytes expected, " +
                       std::to_string(actual.size()) + " found; byte " + std::to_string(at) +
                       " (from 0) differs\n";
  for (const auto& [mark, bytes] : {std::pair('-', &expected), std::pair('+', &actual)}) {
    report += std::string("    ") + mark;
    for (std::size_t k = at; k < std::min(at + 16, bytes->size()); ++k) {
      char hex[4];
      std::snprintf(hex, sizeof hex, " %02x", static_cast<unsigned char>((*bytes)[k]));
      report += hex;
    }
    report += '\n';
  }
  return report;
}

std::string marked_lines(char mark, const std::string& text) {
  std::string report;
  const Lines lines = lines_of(text);
  append_marked(report, mark, lines, 0, lines.size());
  return report;
}

}  // namespace zorvik::runner
