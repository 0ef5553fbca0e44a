// print_tables: what the program knows of its language, its files and their limits, for the checks
// of the manual pages and the editor files: on each line a table's name, a tabulator and a row.
// The program's own tables are walked; of the limits the words of the pages stand here.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>
#include <utility>

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

template <class... Piece>
void print(std::string_view table, const Piece&... pieces) {
  std::cout << table << '\t';
  (std::cout << ... << pieces) << '\n';
}

void print_language() {
  for (const auto& keyword : kKeywords) print("keywords", keyword);
  for (const Function& f : kFunctions) print("functions", f.name, ' ', f.arguments);
  for (int k = kFirstMainKey; k <= kLastOutputKey; ++k) {
    print("keys", key_of(k).name, k <= kLastMainKey ? " MAIN " : " OUTPUT ",
          key_of(k).base_type == kReal ? "real" : "whole");
  }
}

// One element of each kind, number 7 with 58 cells, shows the names and shapes.
void print_quantities() {
  const auto header = std::make_unique<ResultsHeader>();
  header->sizes[0] = -1;
  std::fill(std::begin(header->counts), std::end(header->counts), 1);
  header->parts[1] = 10000;
  for (int kind = 0; kind < kElementKindCount; ++kind) {
    header->elements[kind] = {7, 58};
    header->list_start[kind] = kind;
  }
  if (build_entry_table(*header) != HeaderStatus::kOk) std::exit(1);
  for (int e = 1; e <= entry_table.count; ++e) {
    print("quantities", entry_table.entry[e].full_name());
  }
}

struct Limit {
  std::string_view table;
  int limit;
  std::string_view what;
};

constexpr std::string_view kOfPrograms = "limits of programs",
                           kOfResultsFiles = "limits of results files",
                           kOfPropertyTables = "limits of property tables";
constexpr Limit kLimits[] = {
    {kOfPrograms, kProgramColumns, "columns of a line that count"},
    {kOfPrograms, kMaxSourceLines, "lines of a program"},
    {kOfPrograms, kMaxIdentifierLength, "characters of a name or a number"},
    {kOfPrograms, kMaxCharacterConstant, "characters of a text between apostrophes"},
    {kOfPrograms, kMaxInteger, "the largest whole number that can be written"},
    {kOfPrograms, kMaxItems, "operands and operators of an expression"},
    {kOfPrograms, kValueCapacity, "numbers at work in an expression"},
    {kOfPrograms, kTextAreaCapacity, "characters of the texts of an expression"},
    {kOfPrograms, kMaxControlStatements, "GOTOs, labels, IFs and DOs of a procedure, of each"},
    {kOfPrograms, kMaxNesting, "IFs inside each other; so too DOs"},
    {kOfPrograms, kMaxOutputs, "OUTPUTs, the block being one"},
    {kOfPrograms, kMaxOuts, "OUT statements"},
    {kOfPrograms, kMaxCalls, "OUTPUTs that have called each other"},
    {kOfPrograms, kMaxJumps, "jumps of a run of a procedure"},
    {kOfPrograms, kMaxNotkeys, "variables of your own, TITLE being one"},
    {kOfPrograms, kNotkeyCapacity, "numbers in all variables of your own"},
    {kOfPrograms, kTextPoolCapacity, "characters in all text variables, TITLE among them"},
    {kOfPrograms, kMaxNumbers, "number constants, equal ones counted again"},
    {kOfPrograms, kTextConstantCapacity, "characters of all texts between apostrophes"},
    {kOfPrograms, kCodeCapacity, "words of the compiled program, some ten a statement"},
    {kOfPrograms, kMaxErrors, "errors before the check of names gives up"},
    {kOfPrograms, kResultsCapacity, "values of the results variables, a few more for keys"},
    {kOfPrograms, kDescriptorCapacity, "results variables and keys"},
    {kOfPrograms, kMaxCommand, "characters of a service command"},
    {kOfPrograms, kMaxListLength, "records that KEEP can be given"},
    {kOfResultsFiles, kMaxEntries, "entries of a results file, one less in the catalogue"},
    {kOfResultsFiles, kResultsCapacity, "values of its variables"},
    {kOfResultsFiles, kMaxTitle, "characters of its title"},
    {kOfResultsFiles, kTitleColumns, "characters of a title that goes into text"},
    {kOfPropertyTables, kMaxSaturationRows, "N, rows of the saturation line"},
    {kOfPropertyTables, kMaxGridRows, "NP, pressures, and NT, temperatures"},
    {kOfPropertyTables, kMaxBucketRows, "NC, numbers that are read over"},
    {kOfPropertyTables, kMaxSteamRows, "M, rows of coefficients of steam"},
};

}  // namespace
}  // namespace zorvik::documents

int main() {
  using namespace zorvik::documents;
  print_language();
  print_quantities();
  for (const auto& [table, limit, what] : kLimits) print(table, limit, ' ', what);
}
