// WS1P1 and WS2P1: properties of water and steam.
#ifndef ZORVIK_EXEC_FUNCTIONS_PROPERTY_FUNCTIONS_H_
#define ZORVIK_EXEC_FUNCTIONS_PROPERTY_FUNCTIONS_H_

#include <string_view>

namespace zorvik {

// What the text argument of a call says, blank-padded, and of which of the two functions it is.
struct PropertyKind {
  bool is_saturated;  // WS1P1
  char text[2];
};
PropertyKind property_kind(bool is_saturated, std::string_view text);

// False when the result depends on the look-up before, so that the same call may give another one.
bool may_be_asked_again(const PropertyKind& kind);

// A call whose arguments have the right types, but for the quantities given.
struct PropertyRequest {
  const double *phase, *property;
  PropertyKind kind;
};

// The property at `first`, and `second` for WS2P1. False when the tables are not loaded or the call
// would end the run.
bool find_property(const PropertyRequest& request, double first, double second, double& result);

// WS1P1(i, s, x, k): property k on the saturation line, from x. WS2P1(i, s, x1, x2, k): property k
// of one phase, from the pressure x1 and x2. The texts s name the given quantities. Refused: "%err-
// Function WS1P1. 1st (and/or 4th) argument not integer", for WS2P1 "%err- Function WS1P2. 1st
// (and/or 5th) argument not integer"; "%err- 2nd argument not character. Function "; "%err- Text or
// pointer arg. in function ", "%err- Array argument in function ". The run ends with "%fat- WS1P1:
// invalid 4th argument", "%fat- WS2P1: invalid 5th argument", with the message of a quantity out of
// range, or with a failure of the tables file (wsp/property_file.h).
void saturation_property(int number);
void single_phase_property(int number);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_PROPERTY_FUNCTIONS_H_
