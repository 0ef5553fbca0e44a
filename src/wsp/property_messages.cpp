// A status text is a pattern; "$" and a letter stand for what the inquiry has noted:
//   $w phase word        $g given quantity    $l its label      $p pressure
//   $a $b range in the table                  $h pressure limit
//   $t temperature found $s saturation temperature  $k tolerance  $u temperature limit
// Temperatures are written F7.2, all other values 1PE14.7.
#include "wsp/property_messages.h"

#include <cstdlib>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "driver/units.h"
#include "wsp/property_tables.h"

namespace zorvik {

PropertyInquiry property_inquiry{PhaseState::kNone, InputKind::kTemperature, 0, 0, 0, 0, 0, 0};

namespace {

constexpr std::size_t kContextCapacity = 80;
constexpr std::size_t kLongestLine = 78;
std::string context_line;

// By status, from 1. The labels of the last two are one ahead: none carries the number 19. The
// ranges are texts and not the file's; no routine gives 18 or 20.
constexpr std::string_view kStatusTexts[kLastPropertyStatus] = {
    "%WSP-1:$w Sat. Pressure =$g out of [ 615.2 , 2.2115e7 ]",
    "%WSP-2:$w Sat. Temperature =$g out of [ 273.25 , 647.27 ]",
    "%WSP-3:$w Sat. Enthalpy' =$g out of [ 380.165 , 2095200 ]",
    "%WSP-4:$w Sat. Int.Energy'=$g out of [ 379.5497 , 2025604 ]",
    "%WSP-5:$w;        Sat. Enthalpy\" =$g out of [2501163 , 2801892] T <= 507.848",
    "%WSP-6:$w;        Sat. Enthalpy\" =$g out of [2801892 , 2095200] T > 507.848",
    "%WSP-7:$w;        Sat. Int.Energy\"=$g out of [2375108 , 2602067] T<= 509.014",
    "%WSP-8:$w;        Sat. Int.Energy\"=$g out of [2602067 , 2025604] T > 509.014",
    "%WSP-9:$w Pressure =$p;        Pressure out of [ 615.2 , $h ]",
    "%WSP-10:$w Pressure =$p$l$g;                 Temperature out of [ 273.25 , 6000 ]",
    "%WSP-11:$w Pressure =$p;        $l$g out of [ $a , $b ]",
    "%WSP-12:$w Temperature =$g;        P => Pcr , T < Tcr. It is a water. NWS2P1 requires steam.",
    "%WSP-13:$w Temperature =$g;        P < Pcr , T > Tcr. It is a steam. NWS2P1 requires water.",
    "%WSP-14:$w$l$g T =$t;        P => Pcr , T < Tcr. It is a water. NWS2P1 requires steam.",
    "%WSP-15:$w$l$g T =$t;        P < Pcr , T > Tcr. It is a steam. NWS2P1 requires water.",
    "%WSP-16: too superheated water: T - Tsat >$w$k; Pressure =$p$l$g Tsat=$s",
    "%WSP-17: too subcooled steam: Tsat - T >$w$k; Pressure =$p$l$g Tsat=$s",
    "%WSP-18:$w Pressure =$p$l$g; Pressure out of [ 615.2 , 100e6 ]",
    "%WSP-20:$w Pressure =$p$l$g;                 Temperature out of [ 273.25 , 647.27 ]",
    "%WSP-21:$w Temperature =$g;                 Temperature out of [ 273.25 , $u ]",
};

// Eight characters for every state, blanks for none and for one above the critical point.
std::string_view phase_word(PhaseState state) {
  switch (state) {
    case PhaseState::kMixture:
      return " Mixture";
    case PhaseState::kWater:
      return " Water. ";
    case PhaseState::kSteam:
      return " Steam. ";
    default:
      return "        ";
  }
}

std::string_view input_label(InputKind kind) {
  switch (kind) {
    case InputKind::kEnthalpy:
      return " Enthalpy   =";
    case InputKind::kEnergy:
      return " Int.Energy =";
    default:
      return " Temperature=";
  }
}

// 14 characters hold every number in 1PE14.7: a sign, eight digits, the point and an exponent of
// four.
std::string_view scientific(double value, NumberText& text) {
  text = format_scientific(value, 14, 7);
  return text;
}

// 7 characters hold -999.99 to 9999.99, more than the tables reach.
std::string_view temperature_text(double value, NumberText& text) {
  text = format_fixed(value, 7, 2);
  // The field is full of them when the number does not fit.
  if (text.text[0] == '*') {
    issue_message(kConsole, "%WSP_F- NWS1P1 or NWS2P1: Input parameters don't fit format");
    stop_with_property_message("1pe14.7 or f7.2");
  }
  return text;
}

std::string_view noted_text(char letter, NumberText& text) {
  const PropertyInquiry& inquiry = property_inquiry;
  switch (letter) {
    case 'w':
      return phase_word(inquiry.state);
    case 'l':
      return input_label(inquiry.kind);
    case 'g':
      return inquiry.kind == InputKind::kTemperature ? temperature_text(inquiry.given, text)
                                                     : scientific(inquiry.given, text);
    case 'p':
      return scientific(inquiry.pressure, text);
    case 'a':
      return scientific(inquiry.lower, text);
    case 'b':
      return scientific(inquiry.upper, text);
    case 'h':
      return scientific(property_tables.pressure_limit, text);
    case 't':
      return temperature_text(inquiry.temperature, text);
    case 's':
      return temperature_text(inquiry.saturation_temperature, text);
    case 'k':
      return temperature_text(property_tables.tolerance, text);
    case 'u':
      return temperature_text(property_tables.temperature_limit, text);
    default:
      std::abort();
  }
}

std::string status_text(int status) {
  std::string text;
  NumberText number;
  const std::string_view pattern = kStatusTexts[status - 1];
  for (std::size_t k = 0; k < pattern.size(); ++k) {
    if (pattern[k] != '$') {
      text.push_back(pattern[k]);
    } else {
      text.append(noted_text(pattern[++k], number));
    }
  }
  return text;
}

// The ";" ends the first line and is written, other than in the listing of a function's message.
void write_text(std::string_view text) {
  const std::size_t split = split_position(text);
  if (split == std::string_view::npos) {
    issue_message(kConsole, text);
  } else {
    issue_message(kConsole, text.substr(0, split + 1));
    issue_message(kConsole, text.substr(split + 1));
  }
  issue_message(kConsole, context_line);
}

}  // namespace

void reset_property_inquiry() {
  property_inquiry = {PhaseState::kNone, InputKind::kTemperature, 0, 0, 0, 0, 0, 0};
}

std::size_t split_position(std::string_view text) {
  return text.size() > kLongestLine ? text.find(';') : std::string_view::npos;
}

int NWS0MS(int code, std::string& text, bool stop) {
  if (code > kLastPropertyStatus || code < -kLastPropertyStatus) {
    stop_with_property_message("%WSP_F- NWS0MS: 1st parameter > 20");
  }
  if (code > 0) {
    context_line = text.substr(0, kContextCapacity);
  } else if (code < 0) {
    text = status_text(-code);
  } else {
    if (stop) stop_with_property_message(text);
    write_text(text);
  }
  return static_cast<int>(text.size());
}

void stop_with_property_message(std::string_view text) {
  write_text(text);
  stop_on_console("Water/Steam Properties. Stop");
}

}  // namespace zorvik
