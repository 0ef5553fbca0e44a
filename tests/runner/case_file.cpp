// A case file is cut into sections first: a heading, split into words, and the lines under it.
#include "runner/case_file.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "sample/binary_text.h"
#include "sample/sample_plant.h"

namespace zorvik::runner {
namespace {

struct Section {
  std::string where;  // in which file, on which line
  std::string title;  // the heading
  std::vector<std::string> heading;
  std::vector<std::string> lines;

  std::string word(std::size_t k) const { return k < heading.size() ? heading[k] : ""; }
};

[[noreturn]] void reject(const std::string& where, const std::string& why) {
  std::cout << where << ": " << why << '\n';
  std::exit(2);
}

// Replaces each {i}, {i+K}, {i-K}, with ":W" for W digits at least.
std::string with_counter(std::string text, int i) {
  for (std::size_t at = text.find("{i"); at != std::string::npos; at = text.find("{i", at)) {
    int offset = 0, width = 1, used = 0;
    const char* rest = text.c_str() + at + 2;
    if (*rest == '+' || *rest == '-') {
      std::sscanf(rest, "%d%n", &offset, &used);
      rest += used;
    }
    if (*rest == ':') {
      std::sscanf(rest + 1, "%d%n", &width, &used);
      rest += used + 1;
    }
    char number[32];
    std::snprintf(number, sizeof number, "%0*d", width, i + offset);
    text.replace(at, static_cast<std::size_t>(rest + 1 - (text.c_str() + at)), number);
  }
  return text;
}

std::vector<std::string> parts_of(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(separator, begin)) != std::string::npos;) {
    parts.push_back(text.substr(begin, end - begin));
    begin = end + separator.size();
  }
  parts.push_back(text.substr(begin));
  return parts;
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
  std::string text;
  for (const std::string& part : parts) text += (&part == parts.data() ? "" : separator) + part;
  return text;
}

void append_expanded(std::vector<std::string>& lines, const std::string& line) {
  int times = 0, used = 0;
  if (std::sscanf(line.c_str(), "repeat %d | %n", &times, &used) != 1 || used == 0) {
    lines.push_back(line);
    return;
  }
  const std::string pattern = line.substr(line.find("| ") + 2);
  for (int i = 1; i <= times; ++i) lines.push_back(with_counter(pattern, i));
}

std::string text_of(const Section& section) {
  std::string text;
  for (std::string line : section.lines) {
    for (std::size_t k = line.size(); k > 0 && line[k - 1] == '~'; --k) line[k - 1] = ' ';
    text += line + '\n';
  }
  return text;
}

std::string bytes_of(const Section& section) {
  std::string bytes;
  const std::string error = sample::append_binary_text(section.lines, bytes);
  if (!error.empty()) reject(section.where, error);
  return bytes;
}

// `form_at` is the heading's word that tells the form; a name may follow "sample".
std::string content_as(const Section& section, const std::string& name, std::size_t form_at) {
  const std::string form = section.word(form_at), other = section.word(form_at + 1);
  if (form == "text" || form.empty()) return text_of(section);
  if (form == "binary") return bytes_of(section);
  for (const auto& file : sample::sample_files()) {
    if (form == "sample" && file.name == (other.empty() ? name : other)) return file.bytes();
  }
  reject(section.where, "neither text nor binary nor a file of the sample plant");
}

void add_expectation(const Section& section, Case& c, std::size_t name_at) {
  static const std::map<std::string, Match> matches = {{"contains", Match::kContains},
                                                       {"lacks", Match::kLacks},
                                                       {"any", Match::kAny},
                                                       {"absent", Match::kAbsent}};
  const std::string name = section.word(name_at);
  const std::string how = section.word(0) == "absent" ? "absent" : section.word(name_at + 1);
  if (const auto found = matches.find(how); found != matches.end()) {
    if ((how == "contains" || how == "lacks") == section.lines.empty()) {
      reject(section.where, "lines where none belong, or none where some do");
    }
    c.expectations.push_back({name, found->second, false, text_of(section)});
  } else {
    c.expectations.push_back({name, Match::kWhole, how == "binary" || how == "sample",
                              content_as(section, name, name_at + 1)});
  }
}

void add_stop(Case& c, const std::string& listing, bool whole) {
  c.status = 1;
  c.expectations.push_back({"console", Match::kWhole, false, " Errors detected. See listing\n"});
  c.expectations.push_back({"zrvlis", whole ? Match::kWhole : Match::kContains, false, listing});
}

// The lines of a row, which stand between "\\"s in it, repeated ones told as in a section.
std::vector<std::string> lines_of_row(const std::string& row) {
  std::vector<std::string> lines;
  for (const std::string& line : parts_of(row, " \\ ")) append_expanded(lines, line);
  return lines;
}

// The arrow that comes first in the row.
std::string arrow_of(const std::string& row) {
  std::size_t first = std::string::npos;
  for (const char* arrow : {" -> ", " >> ", " !> ", " ~> "})
    first = std::min(first, row.find(arrow));
  return first == std::string::npos ? "" : row.substr(first, 4);
}

// Takes the "`"s out of the text and returns the pointer line of each, the text's first line
// beginning at column `begin` of its line.
std::vector<std::string> take_pointers(std::string& text, std::size_t begin) {
  std::vector<std::string> pointers;
  for (std::size_t at; (at = text.find('`')) != std::string::npos;) {
    text.erase(at, 1);
    const std::size_t line = text.rfind('\n', at);
    const std::size_t column = line == std::string::npos ? begin + at : at - line - 1;
    pointers.push_back("%_____" + std::string(column, '_') + '^');
  }
  return pointers;
}

// Puts a row's text where it belongs: a file's place, what it changes there, or the program's "@".
std::vector<std::string> place_row(const Section& section, const std::string& row, Case& c,
                                   const std::string& repository) {
  const std::string kind = section.word(0), name = section.word(1);
  if (kind == "change") {
    const std::vector<std::string> parts = parts_of(row, " => ");
    std::string& content = c.inputs.at(name);
    const std::string from = joined(lines_of_row(parts.at(0)), "\n");
    const std::size_t at = content.find(from);
    if (at == std::string::npos) reject(section.where, "not in the file: " + from);
    content.replace(at, from.size(), joined(lines_of_row(parts.at(1)), "\n"));
    return {};
  }
  if (name == "program") {
    c.inputs["zrvdat"] = content_of(repository + '/' + row.substr(0, row.find(' ')));
    return {};
  }
  if (!name.empty() && name != "before" && name != "then") {
    const Section file{section.where, {}, {}, lines_of_row(row)};
    c.inputs[name] = name.ends_with("txt") ? text_of(file) : bytes_of(file);
    return {};
  }
  std::string& program = c.inputs.at("zrvdat");
  const std::size_t at = program.find('@');
  if (at == std::string::npos) reject(section.where, "no @ in the program");
  std::string text = joined(lines_of_row(row), "\n");
  const auto pointers = take_pointers(text, at - (program.rfind('\n', at) + 1));
  program.replace(at, 1, text);
  return pointers;
}

// One case for each line of the section that does not begin with a blank; see case_file.h.
void add_rows(const Section& section, std::vector<Case>& cases, const std::string& repository) {
  const Case pattern = cases.back();
  cases.pop_back();
  const auto words_behind = [&](const std::string& word) {
    const std::size_t at = section.title.find(' ' + word + ' ');
    return at == std::string::npos ? "" : section.title.substr(at + word.size() + 2);
  };
  const std::string before = parts_of(words_behind("before"), " then ")[0];
  const std::string then = words_behind("then");
  for (std::size_t k = 0; k < section.lines.size();) {
    Case c = pattern;
    std::string line = section.lines[k++];
    if (arrow_of(line).empty() && !arrow_of(line + ' ').empty()) line += ' ';
    if (arrow_of(line).empty()) line += " -> ";  // all is said under the row
    const std::string arrow = arrow_of(line);
    std::vector<std::string> said = parts_of(line, arrow);
    c.rule += ": " + said[0];
    const auto pointers = place_row(section, said[0], c, repository);
    said.erase(said.begin());
    if (said[0].empty()) said.clear();
    for (; k < section.lines.size() && section.lines[k].starts_with(' '); ++k) {
      said.push_back(section.lines[k].substr(1));
    }
    if (said.size() < pointers.size()) reject(section.where, "a pointer without an error: " + line);
    for (std::size_t p = 0; p < pointers.size(); ++p) {
      said.insert(said.begin() + static_cast<std::ptrdiff_t>(2 * p), pointers[p]);
    }
    if (!before.empty()) said.insert(said.begin() + !pointers.empty(), before);
    if (!then.empty()) said.push_back(then);
    const std::string text = ' ' + joined(said, "\n ") + '\n';
    if (arrow == " -> ") {
      add_stop(c, text, false);
    } else if (arrow == " ~> ") {
      c.expectations.push_back({"zrvlis", Match::kContains, false, text});
    } else {
      c.status = arrow == " !> " ? 1 : 0;
      c.expectations.push_back({"console", Match::kWhole, false, text});
    }
    cases.push_back(c);
  }
}

void add_section(const Section& section, Case& c, const std::string& repository) {
  const std::string kind = section.word(0), name = section.word(1);
  if (kind == "zrvdat") {
    c.inputs[kind] = text_of(section);
  } else if (kind == "program") {
    c.inputs["zrvdat"] = text_of(section) + content_of(repository + '/' + name);
  } else if (kind == "vnxres" || kind == "vnxsav" || kind == "nwsp_dat") {
    c.inputs[kind] = bytes_of(section);
  } else if (kind == "input") {
    c.inputs[name] = content_as(section, name, 2);
  } else if (kind == "console" || kind == "zrvlis") {
    add_expectation(section, c, 0);
  } else if (kind == "file" || kind == "absent") {
    add_expectation(section, c, 1);
  } else if (kind == "stops") {
    add_stop(c, text_of(section), name == "whole");
  } else if (kind == "status") {
    c.status = std::atoi(name.c_str());
  } else if (kind == "errors") {
    c.errors = text_of(section);
  } else if (kind == "argument") {
    c.argument = name;
  } else if (kind == "environment") {
    c.environment = name;
  } else if (kind == "room") {
    c.room = std::strtoul(name.c_str(), nullptr, 10);
  } else if (kind == "sweep") {
    if (!c.inputs.contains(name)) reject(section.where, "sweep of what is no input");
    const std::size_t integers = std::strtoul(section.word(3).c_str(), nullptr, 10);
    if (c.inputs[name].size() / 4 < integers) {
      reject(section.where, "fewer integers than the sweep names");
    }
    c.sweeps.push_back({name, integers});
  } else {
    reject(section.where, "unknown section: " + kind);
  }
}

std::vector<std::string> words_of(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), {}};
}

void close_section(Section& section, std::vector<Case>& cases, Case& common,
                   const std::string& repository) {
  if (section.heading.empty()) return;
  while (!section.lines.empty() && section.lines.back().empty()) section.lines.pop_back();
  const bool rows = section.word(0) == "each" || section.word(0) == "change";
  if (rows && !cases.empty()) {
    add_rows(section, cases, repository);
  } else {
    add_section(section, cases.empty() ? common : cases.back(), repository);
  }
  section = {};
}

}  // namespace

std::string content_of(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) reject(path, "cannot be read");
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<Case> read_case_file(const std::string& path, const std::string& repository) {
  std::istringstream in(content_of(path));
  std::vector<Case> cases;
  Case common{};  // what stands before the first case
  Section section{};
  int line_number = 0;
  for (std::string line; std::getline(in, line);) {
    ++line_number;
    const bool starts_case = line.starts_with("=== ");
    if (starts_case || line.starts_with("--- ")) {
      close_section(section, cases, common, repository);
    }
    if (starts_case) {
      cases.push_back(common);
      cases.back().rule = line.substr(4);
      cases.back().line = line_number;
    } else if (line.starts_with("--- ")) {
      section = {
          path + ':' + std::to_string(line_number), line.substr(4), words_of(line.substr(4)), {}};
    } else if (!section.heading.empty()) {
      append_expanded(section.lines, line);
    }
  }
  if (cases.empty()) reject(path, "holds no case");
  close_section(section, cases, common, repository);
  return cases;
}

}  // namespace zorvik::runner
