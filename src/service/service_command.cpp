// A command is one word (KEEP), two words, or a text with "=" (joining). Words may be shortened:
// the first keyword that begins with the word is meant.   "s  ev" -> SHOW EVENTS
#include "service/service_command.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <vector>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/run_end.h"
#include "driver/text.h"
#include "lang/code/procedure_table.h"
#include "results/results_reader.h"
#include "service/join_results.h"
#include "service/keep.h"
#include "service/repair.h"
#include "service/results_text.h"
#include "service/save_file.h"
#include "service/saving_text.h"
#include "stores/keys.h"

namespace zorvik {
namespace {

constexpr std::int32_t kLastInteger = std::numeric_limits<std::int32_t>::max();

using Run = void (*)(const ServiceArguments&);

[[noreturn]] void list_new_records() {
  issue_message(listing_unit, "%inf- New list of records in <vnxsav>");
  show_save_file(Listing::kRecords);
}

// What is not a record number in any file becomes 0 or the largest integer, which are refused.
std::int32_t to_record_number(double value) {
  const double rounded = round_half_away(value);
  if (!(rounded >= 1)) return 0;
  return static_cast<std::int32_t>(std::min(rounded, double{kLastInteger}));
}

// Of a range or an array the first value: commands that take one number use it.
double command_number(const ServiceArguments& arguments) {
  return round_half_away(arguments.numbers.front());
}

void run_saving_to_text(const ServiceArguments& arguments) {
  if (arguments.number_shape != kScalar) {
    stop_with_listing("%fat- Invalid 2nd argument of SCMD2. Integer scalar expected");
  }
  const double number = command_number(arguments);
  if (!(number >= 1)) stop_with_listing("%fat- 2nd argument of SCMD2 <= 0");
  saving_to_text(number);
}

[[noreturn]] void stop_on_long_list() {
  stop_with_listing("%fat- 2nd argument (array) of SCMD2 is too long");
}

// The numbers of the second argument, ascending, each once. The length is judged before repeated
// values are dropped, and a range before it is spelled out.
std::vector<std::int32_t> record_list(const ServiceArguments& arguments) {
  std::vector<std::int32_t> list;
  if (arguments.number_shape == kRange) {
    const double first = round_half_away(arguments.numbers[0]);
    const double last = round_half_away(arguments.numbers[1]);
    if (!(last - first + 1 <= kMaxListLength)) stop_on_long_list();
    for (double number = first; number <= last; ++number) list.push_back(to_record_number(number));
  } else {
    if (arguments.numbers.size() > std::size_t{kMaxListLength}) stop_on_long_list();
    for (const double number : arguments.numbers) list.push_back(to_record_number(number));
  }
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
  if (list.empty() || list.front() < 1) {
    stop_with_listing("%fat- Invalid 2nd argument of SCMD2. Values <= 0 detected.");
  }
  return list;
}

void run_keep(const ServiceArguments& arguments) {
  keep_records(record_list(arguments));
  list_new_records();
}

struct Object {
  std::string_view word;
  Run run;
};
struct Command {
  std::string_view word;
  std::array<Object, 3> objects;  // in the order tried
};
constexpr Command kCommands[] = {
    {"SHOW",
     {{{"SAVING", [](const ServiceArguments&) { show_save_file(Listing::kRecords); }},
       {"EVENTS", [](const ServiceArguments&) { show_save_file(Listing::kEvents); }},
       {"LIST", [](const ServiceArguments&) { list_parameters(); }}}}},
    {"REPAIR",
     {{{"RESULTS", [](const ServiceArguments&) { repair_results_file(); }},
       {"SAVING",
        [](const ServiceArguments&) {
          repair_save_file();
          list_new_records();
        }}}}},
    {"TO_TEXT",
     {{{"RESULTS", [](const ServiceArguments&) { results_to_text(); }},
       {"SAVING", run_saving_to_text}}}},
    {"FROM_TEXT",
     {{{"RESULTS", [](const ServiceArguments&) { results_from_text(); }},
       {"SAVING", [](const ServiceArguments&) { saving_from_text(); }}}}},
};

// The object is all that is left: "SAVING X" begins no object.
Run object_of(const Command& command, std::string_view word) {
  for (const Object& object : command.objects) {
    if (object.run != nullptr && object.word.starts_with(word)) return object.run;
  }
  stop_with_listing(message("%fat- Invalid argument of ", command.word, " command in SCMD2"));
}

// The command of a text in upper case without blanks around it.
Run command_of(std::string_view text) {
  // A tab separates the words only of a text without a blank.
  std::size_t end = text.find(' ');
  if (end == std::string_view::npos) end = text.find('\t');
  if (end == std::string_view::npos) {
    if (std::string_view("KEEP").starts_with(text)) return run_keep;
    stop_with_listing("%fat- Invalid 1st argument of SCMD2. KEEP command expected");
  }
  const std::string_view word = text.substr(0, end);
  for (const Command& command : kCommands) {
    if (command.word.starts_with(word)) return object_of(command, trim_left(text.substr(end)));
  }
  issue_message(listing_unit, "%fat- Invalid 1st argument of SCMD2. SHOW or REPAIR or");
  stop_with_listing("      TO_TEXT or FROM_TEXT command expected");
}

// Checks the arguments' types and returns the command text without blanks around it.
std::string_view checked_command(const ServiceArguments& arguments) {
  if (!equal_padded(arguments.procedure_name, kMainName)) {
    stop_with_listing("%fat- Function SCMD2 can be called from MAIN procedure only");
  }
  // The command's own lists and texts follow FORMAT as PRINT does.
  adopt_format_key(main_key_value(kFormat));
  if (arguments.number_type != kInteger) {
    stop_with_listing("%fat- 2nd argument of SCMD2 is not integer");
  }
  if (arguments.command_type != kCharacter) {
    stop_with_listing("%fat- 1st argument of SCMD2 is not character");
  }
  if (arguments.command.size() > std::size_t{kMaxCommand}) {
    stop_with_listing(
        message("%fat- 1st argument of SCMD2 is longer than ", kMaxCommand, " characters"));
  }
  const std::string_view text = trim_right(arguments.command);
  if (text.empty()) stop_with_listing("%fat- 1st argument of SCMD2 consists of spaces only");
  return trim_left(text);
}

}  // namespace

void run_service_command(const ServiceArguments& arguments) {
  const std::string_view text = checked_command(arguments);
  // Names of files keep their case; every other command is read in upper case.
  if (text.find('=') != std::string_view::npos) {
    join_results_files(text, command_number(arguments));
  } else {
    std::string upper(text);
    to_upper_case(upper.data(), upper.size());
    command_of(upper)(arguments);
  }
  end_run(RunEnd::kNormal);
}

}  // namespace zorvik
