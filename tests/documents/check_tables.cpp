// check_tables PAGES: holds the tables of the manual pages in the directory PAGES against the
// tables and constants of the program: functions, keywords, keys, quantities and limits.
#include <algorithm>
#include <cctype>
#include <iostream>
#include <map>
#include <memory>
#include <set>

#include "documents/page.h"
#include "driver/source_line.h"
#include "driver/text.h"
#include "exec/values/call_stack.h"
#include "exec/values/evaluation_stack.h"
#include "lang/code/code_store.h"
#include "lang/code/constant_pool.h"
#include "lang/code/control_tables.h"
#include "lang/code/procedure_table.h"
#include "lang/compile/pass_two.h"
#include "lang/text/constants.h"
#include "lang/text/expression_items.h"
#include "lang/text/language_tables.h"
#include "results/entry_table.h"
#include "results/header.h"
#include "service/service_command.h"
#include "service/text_reader.h"
#include "stores/keys.h"
#include "stores/notkeys.h"
#include "stores/results_store.h"
#include "wsp/property_tables.h"

namespace zorvik::documents {
namespace {

using Page = std::vector<std::string>;
using Rows = std::set<std::string>;

void compare(std::string_view table, const Rows& program, const Rows& page) {
  for (const std::string& row : program) {
    if (!page.contains(row)) complain(message(table, ", missing from the page"), row);
  }
  for (const std::string& row : page) {
    if (!program.contains(row)) complain(message(table, ", only in the page"), row);
  }
  std::cout << program.size() << ' ' << table << '\n';
}

// The cells of a row of a table; none when the line is no row.
std::vector<std::string> cells_of(const std::string& line) {
  std::vector<std::string> cells;
  if (!line.starts_with(".It ")) return cells;
  std::string rest = line.substr(4);
  for (std::size_t end; (end = rest.find(" Ta ")) != std::string::npos; rest.erase(0, end + 4)) {
    cells.push_back(shown(rest.substr(0, end)));
  }
  cells.push_back(shown(rest));
  return cells;
}

bool is_number(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(),
                                      [](unsigned char c) { return std::isdigit(c) != 0; });
}

void check_functions(const Page& page) {
  Rows program, shown_rows;
  for (const Function& f : kFunctions) program.insert(message(f.name, " ", f.arguments));
  for (const std::string& line : section_of(page, "FUNCTIONS")) {
    if (!line.starts_with(".It Fn ")) continue;
    const auto arguments = std::count(line.begin(), line.end(), '"') / 2;
    const std::string name = line.substr(7, line.find(' ', 7) - 7);
    shown_rows.insert(message(name, " ", static_cast<int>(arguments)));
  }
  compare("functions with their numbers of arguments", program, shown_rows);
}

void check_keywords(const Page& page) {
  const Rows program(kKeywords.begin(), kKeywords.end());
  Rows shown_rows;
  for (const std::string& line : section_of(page, "STATEMENTS")) {
    for (std::size_t at = 0; (at = line.find("Ic ", at)) != std::string::npos; at += 3) {
      shown_rows.insert(line.substr(at + 3, line.find(' ', at + 3) - at - 3));
    }
  }
  compare("keywords", program, shown_rows);
}

void check_keys(const Page& page) {
  Rows program, shown_rows;
  for (int k = kFirstMainKey; k <= kLastOutputKey; ++k) {
    program.insert(message(key_of(k).name, k <= kLastMainKey ? " MAIN " : " OUTPUT ",
                           key_of(k).base_type == kReal ? "real" : "whole"));
  }
  for (const std::string& line : section_of(page, "Keys")) {
    const auto cells = cells_of(line);
    if (cells.size() > 2 && cells[0].starts_with("Va ")) {
      shown_rows.insert(message(cells[0].substr(3), " ", cells[1], " ", cells[2]));
    }
  }
  compare("keys with their procedures and kinds", program, shown_rows);
}

// The name of a quantity of element 7 with 58 cells as the page writes it.
std::string with_letters(std::string_view name) {
  std::string text;
  for (std::size_t k = 0; k < name.size(); ++k) {
    const bool faces = name.substr(k, 2) == "59", cells = name.substr(k, 2) == "58";
    if (faces || cells) ++k;
    text += faces ? "N+1" : cells ? "N" : name[k] == '7' ? "k" : std::string(1, name[k]);
  }
  return text;
}

// One element of each kind, number 7 with 58 cells, shows the names and shapes.
void check_quantities(const Page& page) {
  const auto header = std::make_unique<ResultsHeader>();
  header->sizes[0] = -1;
  std::fill(std::begin(header->counts), std::end(header->counts), 1);
  header->parts[1] = 10000;
  for (int kind = 0; kind < kElementKindCount; ++kind) {
    header->elements[kind] = {7, 58};
    header->list_start[kind] = kind;
  }
  Rows program, shown_rows;
  if (build_entry_table(*header) != HeaderStatus::kOk) complain("refused", "the catalogue");
  for (int e = 1; e <= entry_table.count; ++e) {
    program.insert(with_letters(entry_table.entry[e].full_name()));
  }
  for (const std::string& line : section_of(page, "QUANTITIES")) {
    const auto cells = cells_of(line);
    if (cells.size() == 3 && !cells[0].empty() && !cells[0].starts_with("Sy ")) {
      shown_rows.insert(cells[0]);
    }
  }
  compare("quantities of the catalogue", program, shown_rows);
}

void check_limits(std::string_view table, const std::map<std::string, int>& limits,
                  const Page& section) {
  Rows program, shown_rows;
  for (const auto& [words, limit] : limits) program.insert(message(limit, " ", words));
  for (const std::string& line : section) {
    const auto cells = cells_of(line);
    if (cells.size() == 2 && is_number(cells[0])) {
      shown_rows.insert(message(cells[0], " ", cells[1]));
    }
  }
  compare(table, program, shown_rows);
}

const std::map<std::string, int> kLanguageLimits = {
    {"columns of a line that count", kProgramColumns},
    {"lines of a program", kMaxSourceLines},
    {"characters of a name or a number", kMaxIdentifierLength},
    {"characters of a text between apostrophes", kMaxCharacterConstant},
    {"the largest whole number that can be written", kMaxInteger},
    {"operands and operators of an expression", kMaxItems},
    {"numbers at work in an expression", kValueCapacity},
    {"characters of the texts of an expression", kTextAreaCapacity},
    {"GOTOs, labels, IFs and DOs of a procedure, of each", kMaxControlStatements},
    {"IFs inside each other; so too DOs", kMaxNesting},
    {"OUTPUTs, the block being one", kMaxOutputs},
    {"OUT statements", kMaxOuts},
    {"OUTPUTs that have called each other", kMaxCalls},
    {"jumps of a run of a procedure", kMaxJumps},
    {"variables of your own, TITLE being one", kMaxNotkeys},
    {"numbers in all variables of your own", kNotkeyCapacity},
    {"characters in all text variables, TITLE among them", kTextPoolCapacity},
    {"number constants, equal ones counted again", kMaxNumbers},
    {"characters of all texts between apostrophes", kTextConstantCapacity},
    {"words of the compiled program, some ten a statement", kCodeCapacity},
    {"errors before the check of names gives up", kMaxErrors},
    {"values of the results variables, a few more for keys", kResultsCapacity},
    {"results variables and keys", kDescriptorCapacity},
    {"characters of a service command", kMaxCommand},
    {"records that KEEP can be given", kMaxListLength},
};

const std::map<std::string, int> kResultsLimits = {
    {"entries of a results file, one less in the catalogue", kMaxEntries},
    {"values of its variables", kResultsCapacity},
    {"characters of its title", kMaxTitle},
    {"characters of a title that goes into text", kTitleColumns},
};

const std::map<std::string, int> kPropertyLimits = {
    {"N, rows of the saturation line", kMaxSaturationRows},
    {"NP, pressures, and NT, temperatures", kMaxGridRows},
    {"NC, numbers that are read over", kMaxBucketRows},
    {"M, rows of coefficients of steam", kMaxSteamRows},
};

void check_all(const std::string& directory) {
  const Page language = lines_of(directory + "/zorvik_language.7");
  const Page files = lines_of(directory + "/zorvik_files.5");
  check_functions(language);
  check_keywords(language);
  check_keys(language);
  check_quantities(files);
  check_limits("limits of programs", kLanguageLimits, section_of(language, "LIMITS"));
  check_limits("limits of results files", kResultsLimits, section_of(files, "What is refused"));
  check_limits("limits of property tables", kPropertyLimits,
               section_of(files, "Limits of the tables"));
}

}  // namespace
}  // namespace zorvik::documents

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  zorvik::documents::check_all(argv[1]);
  return zorvik::documents::exit_status();
}
