// A case file is cut into sections first: a heading, split into words, and the lines under it.
#include "runner/case_file.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>

#include "sample/binary_text.h"
#include "sample/sample_plant.h"

namespace zorvik::runner {
namespace {

using Lines = std::vector<std::string>;

struct Section {
  std::string where;  // in which file, on which line
  int line;
  std::string title;  // the heading
  Lines heading;      // its words
  Lines lines;

  std::string word(std::size_t k) const { return k < heading.size() ? heading[k] : ""; }
};

[[noreturn]] void reject(const std::string& where, const std::string& why) {
  std::cout << where << ": " << why << '\n';
  std::exit(2);
}

Lines parts_of(std::string text, const std::string& separator) {
  Lines parts;
  for (std::size_t end; (end = text.find(separator)) != std::string::npos;) {
    parts.push_back(text.substr(0, end));
    text.erase(0, end + separator.size());
  }
  parts.push_back(text);
  return parts;
}

std::string joined(const Lines& parts, const std::string& separator) {
  std::string text;
  for (const std::string& part : parts) text += (&part == parts.data() ? "" : separator) + part;
  return text;
}

Lines words_of(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), {}};
}

// Replaces each {i}, {i+K}, {i-K}, with ":W" for W digits at least.
std::string with_counter(std::string text, int i) {
  for (std::size_t at; (at = text.find("{i")) != std::string::npos;) {
    int offset = 0, width = 1, used = 2;
    std::sscanf(text.c_str() + at, "{i%d%n", &offset, &used);
    std::sscanf(text.c_str() + at + used, ":%d", &width);
    char number[32];
    std::snprintf(number, sizeof number, "%0*d", width, i + offset);
    text.replace(at, text.find('}', at) + 1 - at, number);
  }
  return text;
}

void append_expanded(Lines& lines, const std::string& line) {
  int times = 0, used = 0;
  if (std::sscanf(line.c_str(), "repeat %d |%n", &times, &used) != 1 || used == 0) {
    lines.push_back(line);
  }
  for (int i = 1; i <= times; ++i) {
    lines.push_back(with_counter(line.substr(static_cast<std::size_t>(used) + 1), i));
  }
}

// The lines of a row, which stand between "\\"s in it, repeated ones told as in a section.
Lines lines_of_row(const std::string& row) {
  Lines lines;
  for (const std::string& line : parts_of(row, " \\ ")) append_expanded(lines, line);
  return lines;
}

std::string text_of(const Lines& lines) {
  std::string text;
  for (std::string line : lines) {
    std::fill(line.begin() + static_cast<std::ptrdiff_t>(line.find_last_not_of('~') + 1),
              line.end(), ' ');
    text += line + '\n';
  }
  return text;
}

std::string bytes_of(const std::string& where, const Lines& lines) {
  std::string bytes;
  const std::string error = sample::append_binary_text(lines, bytes);
  if (!error.empty()) reject(where, error);
  return bytes;
}

std::string program_at(const std::string& where, const std::string& path) {
  if (!std::filesystem::is_regular_file(path)) reject(where, "no file " + path);
  return support::content_of(path);
}

// `form_at` is the heading's word that tells the form; a name may follow "sample".
std::string content_as(const Section& section, const std::string& name, std::size_t form_at) {
  const std::string form = section.word(form_at), other = section.word(form_at + 1);
  if (form == "text" || form.empty()) return text_of(section.lines);
  if (form == "binary") return bytes_of(section.where, section.lines);
  for (const auto& file : sample::sample_files()) {
    if (form == "sample" && file.name == (other.empty() ? name : other)) return file.bytes();
  }
  reject(section.where, "no such form, or no such file of the sample plant");
}

void add_expectation(const Section& section, Case& c, std::size_t name_at) {
  static const std::map<std::string, Match> matches = {{"contains", Match::kContains},
                                                       {"lacks", Match::kLacks},
                                                       {"any", Match::kAny},
                                                       {"absent", Match::kAbsent}};
  const std::string name = section.word(name_at);
  const auto found = matches.find(section.word(name_at + 1));
  if (found == matches.end()) {
    c.expectations.push_back({name, Match::kWhole, content_as(section, name, name_at + 1)});
    return;
  }
  const Match match = found->second;
  if ((match == Match::kContains || match == Match::kLacks) == section.lines.empty()) {
    reject(section.where, "lines where none belong, or none where some do");
  }
  c.expectations.push_back({name, match, text_of(section.lines)});
}

void add_stop(Case& c, const std::string& listing, Match match) {
  c.status = 1;
  c.expectations.push_back({"console", Match::kWhole, " Errors detected. See listing\n"});
  c.expectations.push_back({"zrvlis", match, listing});
}

// Takes the "`"s out of the text and returns the pointer line of each, the text's first line
// beginning at column `begin` of its line.
Lines take_pointers(std::string& text, std::size_t begin) {
  Lines pointers;
  for (std::size_t at; (at = text.find('`')) != std::string::npos;) {
    text.erase(at, 1);
    const std::size_t line = text.rfind('\n', at);
    const std::size_t column = line == std::string::npos ? begin + at : at - line - 1;
    pointers.push_back("%_____" + std::string(column, '_') + '^');
  }
  return pointers;
}

// Puts a row's text where it belongs: a file's place, what it changes there, or the program's "@";
// returns its pointers.
Lines place_row(const Section& section, const std::string& row, Case& c) {
  std::string name = section.word(1), from = "@", to = row;
  if (section.word(0) == "change") {
    from = joined(lines_of_row(parts_of(row, " => ")[0]), "\n");
    to = parts_of(row, " => ").at(1);
  } else if (name == "program") {
    c.inputs["zrvdat"] = program_at(section.where, words_of(row).at(0));
    return {};
  } else if (!name.empty() && name != "before" && name != "then") {
    const Lines lines = lines_of_row(row);
    c.inputs[name] = name.ends_with("txt") ? text_of(lines) : bytes_of(section.where, lines);
    return {};
  } else {
    name = "zrvdat";
  }
  std::string& content = c.inputs[name];
  const std::size_t at = content.find(from);
  if (at == std::string::npos) reject(section.where, "not in " + name + ": " + from);
  std::string text = joined(lines_of_row(to), "\n");
  Lines pointers = take_pointers(text, at - (content.rfind('\n', at) + 1));
  content.replace(at, from.size(), text);
  return pointers;
}

// The arrow that comes first in the row.
std::string arrow_of(const std::string& row) {
  std::size_t first = row.size();
  for (const char* arrow : {" -> ", " >> ", " !> ", " ~> "})
    first = std::min(first, row.find(arrow));
  return first == row.size() ? " -> " : row.substr(first, 4);
}

// A row with the lines under it.
void add_row(const Section& section, std::string row, const Lines& under, Case& c) {
  const std::string arrow = arrow_of(row + ' ');
  if (row.ends_with(arrow.substr(0, 3))) row.resize(row.size() - 3);
  Lines said = parts_of(row, arrow);
  said.insert(said.end(), under.begin(), under.end());
  c.rule += ": " + said[0];
  const Lines pointers = place_row(section, said[0], c);
  said.erase(said.begin());
  if (said.size() < pointers.size()) reject(section.where, "a pointer without an error: " + row);
  for (std::size_t p = 0; p < pointers.size(); ++p) {
    said.insert(said.begin() + static_cast<std::ptrdiff_t>(2 * p), pointers[p]);
  }
  const Lines then = parts_of(section.title, " then ");
  if (section.word(1) == "before") {
    said.insert(said.begin() + !pointers.empty(), then[0].substr(std::strlen("each before ")));
  }
  if (then.size() > 1) said.push_back(then[1]);
  const std::string text = ' ' + joined(said, "\n ") + '\n';
  if (arrow == " -> ") {
    add_stop(c, text, Match::kContains);
  } else if (arrow == " ~> ") {
    c.expectations.push_back({"zrvlis", Match::kContains, text});
  } else {
    c.status = arrow == " !> " ? 1 : 0;
    c.expectations.push_back({"console", Match::kWhole, text});
  }
}

// One case for each line of the section that does not begin with a blank; see case_file.h.
void add_rows(const Section& section, std::vector<Case>& cases) {
  const Case pattern = cases.back();
  cases.pop_back();
  for (auto line = section.lines.begin(); line != section.lines.end();) {
    const std::string row = *line++;
    Lines under;
    for (; line != section.lines.end() && line->starts_with(' '); ++line) {
      under.push_back(line->substr(1));
    }
    cases.push_back(pattern);
    add_row(section, row, under, cases.back());
  }
}

void add_section(const Section& section, Case& c) {
  const std::string kind = section.word(0), name = section.word(1);
  if (kind == "zrvdat") {
    c.inputs[kind] = text_of(section.lines);
  } else if (kind == "program") {
    c.inputs["zrvdat"] = text_of(section.lines) + program_at(section.where, name);
  } else if (kind == "vnxres" || kind == "vnxsav" || kind == "nwsp_dat") {
    c.inputs[kind] = bytes_of(section.where, section.lines);
  } else if (kind == "input") {
    c.inputs[name] = content_as(section, name, 2);
  } else if (kind == "console" || kind == "errors" || kind == "zrvlis") {
    add_expectation(section, c, 0);
  } else if (kind == "file") {
    add_expectation(section, c, 1);
  } else if (kind == "stops") {
    add_stop(c, text_of(section.lines), name == "whole" ? Match::kWhole : Match::kContains);
  } else if (kind == "status") {
    c.status = std::atoi(name.c_str());
  } else if (kind == "argument") {
    c.argument = name;
  } else if (kind == "environment") {
    c.environment = name;
  } else if (kind == "room") {
    c.room = std::strtoul(name.c_str(), nullptr, 10);
  } else {
    reject(section.where, "unknown section: " + kind);
  }
}

std::vector<Section> sections_of(const std::string& path) {
  std::vector<Section> sections;
  std::ifstream in(path);
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.starts_with("=== ") || line.starts_with("--- ")) {
      const std::string title = line.substr(4), where = path + ':' + std::to_string(number);
      sections.push_back({where, number, title, {}, {}});
      if (line[0] == '-') sections.back().heading = words_of(title);
    } else if (!sections.empty()) {
      append_expanded(sections.back().lines, line);
    }
  }
  return sections;
}

}  // namespace

std::vector<Case> read_case_file(const std::string& path) {
  std::vector<Case> cases;
  Case common;  // what stands before the first case
  for (Section& section : sections_of(path)) {
    while (!section.lines.empty() && section.lines.back().empty()) section.lines.pop_back();
    if (section.heading.empty()) {
      cases.push_back(common);
      cases.back().rule = section.title;
      cases.back().line = section.line;
    } else if ((section.word(0) == "each" || section.word(0) == "change") && !cases.empty()) {
      add_rows(section, cases);
    } else {
      add_section(section, cases.empty() ? common : cases.back());
    }
  }
  if (cases.empty()) reject(path, "holds no case");
  return cases;
}

}  // namespace zorvik::runner
