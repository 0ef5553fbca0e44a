// Properties of water and steam from the IAPWS Industrial Formulation 1997: its regions 1 (water),
// 2 (steam) and 4 (saturation line), and a smooth continuation where tables need values outside
// them: each phase beyond the saturation line, and the region around the critical point.
#ifndef ZORVIK_SAMPLE_WATER_EQUATIONS_H_
#define ZORVIK_SAMPLE_WATER_EQUATIONS_H_

#include <array>

namespace zorvik::sample {

enum Quantity {
  kEntropy,          // J/(kg K)
  kEnthalpy,         // J/kg
  kDensity,          // kg/m3
  kCompressibility,  // p v / (R T)
  kSoundSpeed,       // m/s
  kEnergy,           // J/kg
  kIsochoricHeat,    // J/(kg K)
  kIsobaricHeat,     // J/(kg K), the derivative of enthalpy over temperature
  kEnthalpyOverP,    // derivative of enthalpy over pressure
  kExpansion,        // 1/v times the derivative of v over temperature
  kDensityOverT,     // derivatives of density over temperature and pressure
  kDensityOverP,
  kQuantityCount
};
using WaterState = std::array<double, kQuantityCount>;

constexpr double kCriticalPressure = 22.064e6, kCriticalTemperature = 647.096;
constexpr double kHottest = 1073.15;  // of region 2

// Pressures in Pa, temperatures in K.
WaterState region1(double pressure, double temperature);
WaterState region2(double pressure, double temperature);
double saturation_pressure(double temperature);
double saturation_temperature_at(double pressure);

WaterState saturated_water(double temperature);
WaterState saturated_steam(double temperature);
double surface_tension(double temperature);  // N/m

// Water and steam at any pressure up to 100 MPa and any temperature from 273.15 to 1073.15 K.
WaterState water_at(double pressure, double temperature);
WaterState steam_at(double pressure, double temperature);

}  // namespace zorvik::sample

#endif  // ZORVIK_SAMPLE_WATER_EQUATIONS_H_
