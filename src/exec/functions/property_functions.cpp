// A call is judged argument by argument, then looked up. A call whose arguments are known to be
// good when it is compiled needs the look-up alone:
//   WS2P1(0, 'PT', P, T, 5) -> phase 0, kind PT, property 5 at P and T
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

bool is_property(int number) {
  return number != 0 && number <= kPropertyCount && number >= -kPropertyCount;
}

// The property number, 1 to 15; the run ends with `text` for any other.
int property_number(int count, std::string_view text) {
  const int given = rounded_argument(count, count);
  // The sign says nothing, and 0 is no property.
  if (!is_property(given)) stop_at_statement(text);
  return std::abs(given);
}

// Property k of the kind asked for, from one or two quantities; the status of the property routine.
int look_up(const PropertyKind& kind, int phase, int k, double first, double second,
            PropertyArray& properties, std::string& text) {
  if (kind.is_saturated) return NWS1P1(phase, kind.text[0], first, k, k, properties, text);
  return NWS2P1(phase, {kind.text, sizeof kind.text}, first, second, k, k, properties, text);
}

// The ";" itself is in neither of the two lines.
[[noreturn]] void stop_out_of_range(std::string_view text, int number) {
  const std::size_t split = split_position(text);
  if (split == std::string_view::npos) stop_at_statement(text);
  issue_message(listing_unit, text.substr(0, split));
  stop_at_statement(message(text.substr(split + 1), " See ", function_of(number).name));
}

// Replaces the arguments by a property, or ends the run with the text of a negative status.
void replace_by_property(int number, bool is_saturated, int k) {
  const int count = function_of(number).arguments;
  select_property_tables();
  PropertyArray properties;
  std::string text;
  const int status =
      look_up(property_kind(is_saturated, text_of(argument(2, count))), rounded_argument(1, count),
              k, argument_value(3, count), argument_value(count - 1, count), properties, text);
  if (status < 0) stop_out_of_range(text, number);
  replace_by_scalar(count, kReal, properties.value[k]);
}

}  // namespace

PropertyKind property_kind(bool is_saturated, std::string_view text) {
  PropertyKind kind{is_saturated, {}};
  copy_padded(kind.text, sizeof kind.text, text);
  return kind;
}

bool may_be_asked_again(const PropertyKind& kind) {
  const char letter = upper_case(kind.text[0]);
  return !kind.is_saturated || (letter != 'H' && letter != 'U');
}

bool find_property(const PropertyRequest& request, double first, double second, double& result) {
  const int number = rounded_to_int(*request.property);
  if (!has_property_tables() || !is_property(number)) return false;
  const int k = std::abs(number);
  PropertyArray properties;
  std::string text;
  const int status =
      look_up(request.kind, rounded_to_int(*request.phase), k, first, second, properties, text);
  if (status == 0) result = properties.value[k];
  return status == 0;
}

void saturation_property(int number) {
  constexpr int kArguments = 4;
  check_arguments(number, "%err- Function WS1P1. 1st (and/or 4th) argument not integer");
  const int k = property_number(kArguments, "%fat- WS1P1: invalid 4th argument");
  replace_by_property(number, true, k);
}

void single_phase_property(int number) {
  constexpr int kArguments = 5;
  check_arguments(number, "%err- Function WS1P2. 1st (and/or 5th) argument not integer");
  const int k = property_number(kArguments, "%fat- WS2P1: invalid 5th argument");
  replace_by_property(number, false, k);
}

}  // namespace zorvik
