// What an evaluation of properties was asked, and the texts of its range messages.
//
// The property routines note here what they were given and how far they came; a negative status
// then has its text made from these notes.
#ifndef ZORVIK_WSP_PROPERTY_MESSAGES_H_
#define ZORVIK_WSP_PROPERTY_MESSAGES_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace zorvik {

enum class InputKind { kPressure, kTemperature, kEnthalpy, kEnergy };

enum class PhaseState {
  kMixture,
  kWater,
  kSteam,
  kSupercritical,
  kNone,
};

struct PropertyInquiry {
  PhaseState state;
  InputKind kind;
  double given;  // the quantity of that kind
  double pressure;
  double temperature;             // found for an enthalpy or internal energy
  double saturation_temperature;  // kept from one evaluation to the next: it chooses the branch of
                                  // a steam enthalpy or internal energy that has two solutions
  double lower, upper;            // range of the given quantity in the table
};
extern PropertyInquiry property_inquiry;

void reset_property_inquiry();

constexpr int kLastPropertyStatus = 20;

// NWS0MS, the writer of the package's messages; the name stands in one of them.
//   code > 0: keeps the text (its first 80 characters) as the line that follows later messages;
//   code 0: writes the text on the console, in two lines when it has 79 characters or more and a
//     ";", then the kept line; with `stop` set the run ends with "Water/Steam Properties. Stop";
//   code -1 to -20: makes the text of that status from property_inquiry.
// Returns the length of the text. A code beyond 20 either way ends the run with "%WSP_F- NWS0MS:
// 1st parameter > 20", a temperature that needs more than 7 characters with "%WSP_F- NWS1P1 or
// NWS2P1: Input parameters don't fit format" and "1pe14.7 or f7.2".
int NWS0MS(int code, std::string& text, bool stop);

// The commonest use of it: code 0 with the stop.
[[noreturn]] void stop_with_property_message(std::string_view text);

// Where a message of 79 characters or more is split: the position of its first ";". npos for a
// message that is one line.
std::size_t split_position(std::string_view text);

}  // namespace zorvik

#endif  // ZORVIK_WSP_PROPERTY_MESSAGES_H_
