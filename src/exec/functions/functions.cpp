// A table from function number to routine; the compiler proves that its rows stand in the order of
// the language's own table of functions.
#include "exec/functions/functions.h"

#include <array>
#include <string_view>

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/functions/elementary_functions.h"
#include "exec/functions/interpolation.h"
#include "exec/functions/property_functions.h"
#include "exec/functions/results_info.h"
#include "exec/functions/service_call.h"
#include "exec/functions/spline_functions.h"
#include "lang/text/language_tables.h"

namespace zorvik {
namespace {

struct FunctionRoutine {
  std::string_view name;
  void (*apply)(int number);
};

constexpr std::array<FunctionRoutine, kFunctions.size()> kRoutines = {{
    {"MINA", smallest_element},      {"MAXA", largest_element},
    {"ABS", apply_elementary},       {"LOG", apply_elementary},
    {"INT", apply_elementary},       {"FLOAT", apply_elementary},
    {"NINT", apply_elementary},      {"SQRT", apply_elementary},
    {"EXP", apply_elementary},       {"SIN", apply_elementary},
    {"COS", apply_elementary},       {"TAN", apply_elementary},
    {"ASIN", apply_elementary},      {"ACOS", apply_elementary},
    {"ATAN", apply_elementary},      {"SINH", apply_elementary},
    {"COSH", apply_elementary},      {"TANH", apply_elementary},
    {"TETA", apply_elementary},      {"RAND", apply_elementary},
    {"MOD", remainder_of_two},       {"MAX", larger_of_two},
    {"MIN", smaller_of_two},         {"RANDG", normal_random_number},
    {"LINA", evenly_spaced_array},   {"LINS", interpolate_linearly},
    {"WS1P1", saturation_property},  {"WS2P1", single_phase_property},
    {"SCMD2", call_service_command}, {"INTEG", spline_integral},
    {"FOURT", fourier_coefficient},  {"GINFO", results_variable_info},
}};

constexpr bool stand_at_their_numbers() {
  for (std::size_t k = 0; k < kRoutines.size(); ++k) {
    if (kRoutines[k].name != kFunctions[k].name) return false;
  }
  return true;
}
static_assert(stand_at_their_numbers());

// For numbers and counts that the compiler never produces.
[[noreturn]] void stop_on_unknown_function(int argument_count) {
  if (argument_count < 2 || argument_count > 5) {
    stop_on_console("%dbg- iu9fn2: invalid function number");
  }
  // Of the four texts that for two arguments has no blank.
  stop_on_console(message(argument_count == 2 ? "%dbg-iu9fn2" : "%dbg- iu9fn2",
                          ": unrecognized function (", argument_count, " arg-s)"));
}

}  // namespace

void iu9fn2(int function_number, int argument_count) {
  const bool known = function_number >= 1 && function_number <= std::ssize(kFunctions) &&
                     function_of(function_number).arguments == argument_count;
  if (!known) stop_on_unknown_function(argument_count);
  kRoutines[static_cast<std::size_t>(function_number) - 1].apply(function_number);
}

}  // namespace zorvik
