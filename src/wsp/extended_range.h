// The extended range of the property tables: enthalpy and property 5, and their derivatives, from
// cubic patches below 22 MPa. A run of the utility does not select it.
#ifndef ZORVIK_WSP_EXTENDED_RANGE_H_
#define ZORVIK_WSP_EXTENDED_RANGE_H_

namespace zorvik {

// The two tables of single-phase properties.
enum class PhaseTable { kWater, kSteam };

// True when the options in use take the property from the patches.
bool is_patched(PhaseTable table, int property);

double patched_property(PhaseTable table, int property, double pressure, double temperature);

// Enthalpies at the lowest and the highest temperature of the patches.
void patched_enthalpy_range(PhaseTable table, double pressure, double& lower, double& upper);

// The temperature that has an enthalpy of that range. NWSRI2 (cubic_patch.h) may end the run.
double patched_temperature(PhaseTable table, double pressure, double enthalpy);

}  // namespace zorvik

#endif  // ZORVIK_WSP_EXTENDED_RANGE_H_
