// Single-phase water and steam: properties from the pressure and one more quantity.
#ifndef ZORVIK_WSP_SINGLE_PHASE_H_
#define ZORVIK_WSP_SINGLE_PHASE_H_

#include <string>
#include <string_view>

#include "wsp/saturation.h"

namespace zorvik {

// NWS2P1: properties `lowest` (from 3) .. `highest` (to 15) of the phase asked for: kAnyPhase
// whichever the state has, kWaterPhase water, any other number steam. The second character of
// `kind`, in either letter case, names what `second` is: H enthalpy, U internal energy, anything
// else temperature. Properties 1 and 2 are always stored. Returns 0, or minus a status from 9 to
// 20 with the message for it in `text`:
//   9 pressure, 10 and 19 temperature, 11 enthalpy or internal energy out of range;
//   12, 14 steam asked for, but it is water;  13, 15 water asked for, but it is steam;
//   16 water too far above, 17 steam too far below the saturation temperature.
int NWS2P1(int phase, std::string_view kind, double pressure, double second, int lowest,
           int highest, PropertyArray& properties, std::string& text);

}  // namespace zorvik

#endif  // ZORVIK_WSP_SINGLE_PHASE_H_
