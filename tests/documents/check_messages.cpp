// check_messages SOURCES PAGE TESTS...: holds the message index against the sources and the tests.
//
// A message of the sources is a literal that begins with a mark, or with blanks when it goes on
// with the one before; texts put together of several pieces are known by their first. Each must
// begin an entry of the page. The other way round, what an entry says between its slanted pieces
// must be made of literals of the sources, so that no entry outlives its message. And each entry,
// but those of failing systems and of faults of the program itself, must be expected by a test.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <regex>
#include <set>

#include "documents/page.h"

namespace fs = std::filesystem;
using namespace zorvik::documents;

namespace {

constexpr std::string_view kMarks[] = {"%fat-", "%err-", "%inf-", "%dbg-", "dbg%-", "%WSP"};
constexpr std::string_view kOutOfReach[] = {"FAILURES OF THE SYSTEM", "FAULTS OF ZORVIK"};
constexpr std::size_t kShortestWord = 2;  // single letters could be put together to anything
constexpr std::size_t kIndent = 3;        // of a message that goes on

std::vector<std::string> files_below(const std::string& directory,
                                     const char* const (&endings)[2]) {
  std::vector<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(directory)) {
    const std::string name = entry.path().string();
    if (name.ends_with(endings[0]) || name.ends_with(endings[1])) files.push_back(name);
  }
  std::sort(files.begin(), files.end());
  return files;
}

// ---- The literals of the sources ----

// String and character literals, neighbours put together.
std::vector<std::string> literals_of(const std::string& text) {
  static const std::regex kToken(R"(//[^\n]*|"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)+'|[^\s"'/]+|/)");
  std::vector<std::string> literals;
  bool goes_on = false;
  for (std::sregex_iterator token(text.begin(), text.end(), kToken), end; token != end; ++token) {
    const std::string found = token->str();
    if (found.starts_with("//")) continue;
    const bool literal = found[0] == '"' || found[0] == '\'';
    if (literal && !goes_on) literals.emplace_back();
    for (std::size_t k = 1; literal && k + 1 < found.size(); ++k) {
      if (found[k] == '\\') ++k;
      literals.back() += found[k];
    }
    goes_on = literal && found[0] == '"';
  }
  return literals;
}

// In the texts about water and steam "$" and a letter stand for a value.
std::string with_arguments(const std::string& literal) {
  if (!literal.starts_with("%WSP-")) return literal;
  std::string text;
  for (std::size_t k = 0; k < literal.size(); ++k) {
    const bool value = literal[k] == '$';
    text += value ? kArgument : literal[k];
    if (value) ++k;
  }
  return text;
}

bool is_message(std::string_view literal) {
  const auto first = literal.find_first_not_of(' ');
  if (first == std::string_view::npos) return false;
  if (first >= kIndent) return true;
  for (const std::string_view mark : kMarks) {
    if (!literal.starts_with(mark)) continue;
    const auto behind = literal.find_first_of(' ');
    return behind == std::string_view::npos ||
           literal.find_first_not_of(' ', behind) != std::string_view::npos;
  }
  return false;
}

// ---- The entries of the page ----

struct Entry {
  std::string text;
  bool within_reach;
};

std::vector<Entry> entries_of(const std::string& page) {
  std::vector<Entry> entries;
  bool within_reach = true;
  for (const std::string& line : lines_of(page)) {
    if (line.starts_with(".Sh ")) {
      within_reach = std::find(std::begin(kOutOfReach), std::end(kOutOfReach), line.substr(4)) ==
                     std::end(kOutOfReach);
    }
    if (line.starts_with(".It \"")) {
      entries.push_back({shown(line.substr(5, line.size() - 6)), within_reach});
    }
  }
  return entries;
}

std::vector<std::string> fixed_pieces(const std::string& text) {
  std::vector<std::string> pieces(1);
  for (const char c : text) {
    if (c == kArgument) {
      pieces.emplace_back();
    } else {
      pieces.back() += c;
    }
  }
  std::erase(pieces, "");
  return pieces;
}

// Literals that may stand in for a piece of an entry.
using Pieces = std::set<std::string>;

bool is_usable(const std::string& piece) {
  const bool has_letter =
      std::any_of(piece.begin(), piece.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
  return !piece.empty() && (piece.size() >= kShortestWord || !has_letter);
}

bool made_of(const std::string& text, const Pieces& pieces) {
  std::vector<bool> reached(text.size() + 1, false);
  reached[0] = true;
  for (std::size_t k = 0; k < text.size(); ++k) {
    if (!reached[k]) continue;
    if (std::isdigit(static_cast<unsigned char>(text[k])) != 0) reached[k + 1] = true;
    for (const std::string& piece : pieces) {
      if (text.compare(k, piece.size(), piece) == 0) reached[k + piece.size()] = true;
    }
  }
  return reached[text.size()];
}

// ---- The tests ----

// Long texts about water and steam are written as two lines, cut at the semicolon.
bool stands_in(const std::string& entry, const std::vector<std::string>& lines) {
  const auto cut = entry.starts_with("%WSP-") ? entry.find(';') : std::string::npos;
  const auto pieces = fixed_pieces(entry.substr(0, cut));
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
    std::size_t at = 0;
    for (const std::string& piece : pieces) {
      at = line.find(piece, at);
      if (at == std::string::npos) return false;
      at += piece.size();
    }
    return true;
  });
}

std::vector<std::string> test_lines(int argc, char** argv) {
  std::vector<std::string> all;
  for (int k = 3; k < argc; ++k) {
    for (const std::string& file : files_below(argv[k], {".case", ".cpp"})) {
      for (std::string& line : lines_of(file)) {
        if (file.ends_with(".cpp")) std::erase(line, '\\');
        all.push_back(std::move(line));
      }
    }
  }
  return all;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return 2;
  const std::vector<Entry> entries = entries_of(argv[2]);
  std::set<std::string> messages;
  Pieces pieces;
  for (const std::string& file : files_below(argv[1], {".cpp", ".h"})) {
    for (const std::string& literal : literals_of(content_of(file))) {
      const std::string text = with_arguments(literal);
      if (is_message(text)) messages.insert(text);
      for (const std::string& piece : fixed_pieces(text)) {
        if (is_usable(piece)) pieces.insert(piece);
      }
    }
  }

  for (const std::string& message : messages) {
    const bool known = std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
      const auto at = entry.text.find(message);
      return at == 0 || (message[0] == ' ' && at != std::string::npos);
    });
    if (!known) complain("not in the index", message);
  }
  const std::vector<std::string> tests = test_lines(argc, argv);
  int reached = 0, within_reach = 0;
  for (const Entry& entry : entries) {
    for (const std::string& piece : fixed_pieces(entry.text)) {
      if (!made_of(piece, pieces)) complain("not in the sources", entry.text);
    }
    within_reach += entry.within_reach;
    const bool expected = stands_in(entry.text, tests);
    reached += expected;
    if (entry.within_reach && !expected) complain("expected by no test", entry.text);
  }
  std::cout << messages.size() << " messages in the sources, " << entries.size()
            << " entries in the index, " << within_reach << " within reach of a run, " << reached
            << " expected by tests\n";
  return exit_status();
}
