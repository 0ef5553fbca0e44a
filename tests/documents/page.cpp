#include "documents/page.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace zorvik::documents {
namespace {

int complaints = 0;

struct Escape {
  std::string_view source, text;
};
constexpr Escape kEscapes[] = {{"\\(dq", "\""}, {"\\(aq", "'"}, {"\\(ha", "^"}, {"\\-", "-"},
                               {"\\ ", " "},    {"\\e", "\\"},  {"\\&", ""}};

}  // namespace

std::string content_of(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::cerr << path << ": cannot be read\n";
    std::exit(2);
  }
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> lines_of(const std::string& path) {
  std::istringstream in(content_of(path));
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> section_of(const std::vector<std::string>& page,
                                    std::string_view heading) {
  std::vector<std::string> lines;
  bool inside = false;
  for (const std::string& line : page) {
    const bool is_heading = line.starts_with(".Sh ") || line.starts_with(".Ss ");
    if (is_heading) inside = std::string_view(line).substr(4) == heading;
    if (inside && !is_heading) lines.push_back(line);
  }
  if (lines.empty()) complain("no such section", heading);
  return lines;
}

std::string shown(std::string_view source) {
  std::string text;
  while (!source.empty()) {
    if (source.starts_with("\\fI")) {
      text += kArgument;
      const auto end = source.find("\\fP");
      source.remove_prefix(end == std::string_view::npos ? source.size() : end + 3);
      continue;
    }
    Escape found{source.substr(0, 1), source.substr(0, 1)};
    for (const Escape& escape : kEscapes) {
      if (source.starts_with(escape.source)) found = escape;
    }
    text += found.text;
    source.remove_prefix(found.source.size());
  }
  return text;
}

void complain(std::string_view what, std::string_view about) {
  std::string visible(about);
  for (char& c : visible) {
    if (c == kArgument) c = '*';
  }
  std::cerr << what << ": " << visible << '\n';
  ++complaints;
}

int exit_status() { return complaints == 0 ? EXIT_SUCCESS : EXIT_FAILURE; }

}  // namespace zorvik::documents
