// The saturation line: properties of saturated water and steam from one given quantity.
//
// Pressures are in Pa, temperatures in K, enthalpies and internal energies in J/kg. The tables have
// been read (property_file.h); nothing here ends a run but NWSRI2 and NWS0MS.
#ifndef ZORVIK_WSP_SATURATION_H_
#define ZORVIK_WSP_SATURATION_H_

#include <string>

#include "wsp/property_tables.h"

namespace zorvik {

struct PropertyArray {
  double value[kPropertyCount + 1];  // from 1
};

// Phase requests; any other number is steam too. The saturation line has no kAnyPhase: it counts as
// steam.
constexpr int kAnyPhase = 0, kWaterPhase = 1, kSteamPhase = 2;

// Places on the saturation line: a row of its table, from 1, and the pressure offset from that row,
// Pa.
struct SaturationPlace {
  int row;
  double offset;
};

// The place at a pressure; below the table's first pressure row 1 is extended, above its last one
// the last.
SaturationPlace saturation_at_pressure(double pressure);

double saturation_temperature(const SaturationPlace& place);

// Property 3 to 15 of one side (kWaterPhase, else steam) at a place.
double saturated_property(int phase, int property, const SaturationPlace& place);

// NWS1P1, as messages call it: properties `lowest` .. `highest` (taken as 2..15 at the widest; 1
// and 2 are always stored) from the quantity that `kind` names in either letter case: T
// temperature, H enthalpy or U internal energy of the side asked for, anything else pressure.
// Returns 0, or minus the number of the range that the value is out of, 1 to 8, with the message
// for it in `text`.
int NWS1P1(int phase, char kind, double value, int lowest, int highest, PropertyArray& properties,
           std::string& text);

}  // namespace zorvik

#endif  // ZORVIK_WSP_SATURATION_H_
