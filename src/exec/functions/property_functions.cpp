#include "exec/functions/property_functions.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/functions/function_arguments.h"
#include "exec/values/run_state.h"
#include "lang/text/language_tables.h"
#include "wsp/property_file.h"
#include "wsp/property_messages.h"
#include "wsp/single_phase.h"

namespace zorvik {
namespace {

constexpr int kKindWidth = 2;

// The checks of both functions; the last argument is the property number. The texts differ in what
// they call the function and its last argument.
void check_arguments(int number, std::string_view integer_text) {
  const int count = function_of(number).arguments;
  if (argument(1, count).base_type != kInteger || argument(count, count).base_type != kInteger) {
    stop_on_error(integer_text);
  }
  if (argument(2, count).base_type != kCharacter) {
    stop_on_error(message("%err- 2nd argument not character. Function ", function_of(number).name));
  }
  require_numeric(number, 3, count - 1);
  require_scalars(number, 1, 1);
  require_scalars(number, 3, count);
}

// The property number, 1 to 15; the run ends with `text` for any other.
int property_number(int count, std::string_view text) {
  const int given = rounded_argument(count, count);
  if (given == 0 || given > kPropertyCount || given < -kPropertyCount) stop_at_statement(text);
  return std::abs(given);
}

// The first characters of the text argument, padded with blanks.
struct KindText {
  char text[kKindWidth];
  explicit KindText(int count) { copy_padded(text, kKindWidth, text_of(argument(2, count))); }
};

[[noreturn]] void stop_out_of_range(std::string_view text, int number) {
  const std::size_t split = split_position(text);
  if (split == std::string_view::npos) stop_at_statement(text);
  issue_message(listing_unit, text.substr(0, split));
  stop_at_statement(message(text.substr(split + 1), " See ", function_of(number).name));
}

// Replaces the arguments by property k, or ends the run with the text of a negative status.
void finish(int number, int status, int k, const PropertyArray& properties, std::string_view text) {
  if (status < 0) stop_out_of_range(text, number);
  replace_by_scalar(function_of(number).arguments, kReal, properties.value[k]);
}

}  // namespace

void saturation_property(int number) {
  constexpr int kArguments = 4;
  check_arguments(number, "%err- Function WS1P1. 1st (and/or 4th) argument not integer");
  const int k = property_number(kArguments, "%fat- WS1P1: invalid 4th argument");
  select_property_tables();
  PropertyArray properties;
  std::string text;
  const int status = NWS1P1(rounded_argument(1, kArguments), KindText(kArguments).text[0],
                            argument_value(3, kArguments), k, k, properties, text);
  finish(number, status, k, properties, text);
}

void single_phase_property(int number) {
  constexpr int kArguments = 5;
  check_arguments(number, "%err- Function WS1P2. 1st (and/or 5th) argument not integer");
  const int k = property_number(kArguments, "%fat- WS2P1: invalid 5th argument");
  select_property_tables();
  const KindText kind(kArguments);
  PropertyArray properties;
  std::string text;
  const int status =
      NWS2P1(rounded_argument(1, kArguments), {kind.text, kKindWidth},
             argument_value(3, kArguments), argument_value(4, kArguments), k, k, properties, text);
  finish(number, status, k, properties, text);
}

}  // namespace zorvik
