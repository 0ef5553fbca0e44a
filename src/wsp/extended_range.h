// The extended range of the property tables: enthalpy and property 5, and their derivatives, from
// cubic patches below 22 MPa. A run of the utility does not select it.
#ifndef ZORVIK_WSP_EXTENDED_RANGE_H_
#define ZORVIK_WSP_EXTENDED_RANGE_H_

namespace zorvik {

// Pressures are in Pa, temperatures in K, enthalpies in J/kg; the numbers of properties are those
// of property_tables.h. Beyond the tables' first and last rows the patch of that row is extended.
// Only NWSRI2 reports anything.

// The two tables of single-phase properties.
enum class PhaseTable { kWater, kSteam };

// True when the options in use take the property (1 to 15) from the patches, and the file has some
// for the phase.
bool is_patched(PhaseTable table, int property);

// The property, for which is_patched holds, at a state of the phase.
double patched_property(PhaseTable table, int property, double pressure, double temperature);

// Enthalpies at the lowest and the highest temperature of the patches, at the pressure.
void patched_enthalpy_range(PhaseTable table, double pressure, double& lower, double& upper);

// The temperature at which the phase has an enthalpy of that range, within kPatchTolerance. A patch
// without such a temperature ends the run (NWSRI2 in cubic_patch.h).
double patched_temperature(PhaseTable table, double pressure, double enthalpy);

}  // namespace zorvik

#endif  // ZORVIK_WSP_EXTENDED_RANGE_H_
