// A patch covers one temperature row (x: water, the saturation temperatures; steam, the temperature
// grid) and one row of the saturation pressures (y). Rows reach to the next one; below the first
// and above the last row they are extended.
#include "wsp/extended_range.h"

#include <algorithm>

#include "wsp/cubic_patch.h"
#include "wsp/property_tables.h"

namespace zorvik {
namespace {

struct PatchRows {
  const double* enthalpy;
  const double* property5;
  const double* temperature;
  int rows;
};

PatchRows rows_of(PhaseTable table) {
  const PropertyTables& tables = property_tables;
  const int n = tables.header.n;
  if (table == PhaseTable::kWater) {
    // The second column of the saturation table are its temperatures.
    return {tables.water_enthalpy, tables.water_property5, tables.saturation + n, n};
  }
  // M may be 0, then steam has no patches, or pass the grid.
  return {tables.steam_enthalpy, tables.steam_property5, tables.temperature,
          std::min(tables.steam_rows, tables.header.nt)};
}

// Pressure row and offset shared by all patches looked at for one pressure.
struct PressurePlace {
  int row;
  double offset;
};

PressurePlace pressure_place(double pressure) {
  const PropertyTables& tables = property_tables;
  const int row = row_of(tables.saturation, tables.header.n, pressure);
  return {row, pressure - tables.saturation[row - 1]};
}

const double* patch_of(const double* patches, int x_row, int y_row) {
  return patches + ((x_row - 1) * property_tables.header.n + y_row - 1) * kPatchSize;
}

enum class Part { kValue, kOverTemperature, kOverPressure };

// By the entry of the list of patched properties.
struct PatchedQuantity {
  int entry;
  const double* PatchRows::*patches;
  Part part;
};
constexpr PatchedQuantity kPatchedQuantities[] = {
    {4, &PatchRows::enthalpy, Part::kValue},
    {5, &PatchRows::property5, Part::kValue},
    {11, &PatchRows::enthalpy, Part::kOverTemperature},
    {12, &PatchRows::enthalpy, Part::kOverPressure},
    {14, &PatchRows::property5, Part::kOverTemperature},
    {15, &PatchRows::property5, Part::kOverPressure},
};

const PatchedQuantity* quantity_of(int property) {
  const int entry = property_tables.patched[property - 1];
  for (const PatchedQuantity& quantity : kPatchedQuantities) {
    if (quantity.entry == entry) return &quantity;
  }
  return nullptr;
}

double enthalpy_at_row(const PatchRows& rows, int x_row, const PressurePlace& place) {
  return patch_at(patch_of(rows.enthalpy, x_row, place.row), place.offset)(0);
}

}  // namespace

bool is_patched(PhaseTable table, int property) {
  return property_tables.extended && rows_of(table).rows > 0 && quantity_of(property) != nullptr;
}

double patched_property(PhaseTable table, int property, double pressure, double temperature) {
  const PatchedQuantity& quantity = *quantity_of(property);
  const PatchRows rows = rows_of(table);
  const PressurePlace place = pressure_place(pressure);
  const int x_row = row_of(rows.temperature, rows.rows, temperature);
  const double x = temperature - rows.temperature[x_row - 1];
  const double* const patch = patch_of(rows.*quantity.patches, x_row, place.row);
  switch (quantity.part) {
    case Part::kOverTemperature:
      return patch_at(patch, place.offset).slope(x);
    case Part::kOverPressure:
      return patch_slope_at(patch, place.offset)(x);
    default:
      return patch_at(patch, place.offset)(x);
  }
}

void patched_enthalpy_range(PhaseTable table, double pressure, double& lower, double& upper) {
  const PatchRows rows = rows_of(table);
  const PressurePlace place = pressure_place(pressure);
  lower = enthalpy_at_row(rows, 1, place);
  upper = enthalpy_at_row(rows, rows.rows, place);
}

double patched_temperature(PhaseTable table, double pressure, double enthalpy) {
  const PatchRows rows = rows_of(table);
  const PressurePlace place = pressure_place(pressure);
  const int x_row = last_row(
      1, rows.rows, [&](int row) { return enthalpy_at_row(rows, row, place) <= enthalpy; });
  const double lowest = rows.temperature[x_row - 1];
  // The upper end of the range is the lower edge of the last row's patch.
  if (x_row == rows.rows) return lowest;
  const double width = rows.temperature[x_row] - lowest;
  Cubic cubic = patch_at(patch_of(rows.enthalpy, x_row, place.row), place.offset);
  const double at_row = cubic(0);
  // As if the enthalpy were linear between the rows.
  const double start =
      width * (enthalpy - at_row) / (enthalpy_at_row(rows, x_row + 1, place) - at_row);
  cubic.a[0] -= enthalpy;
  return lowest +
         NWSRI2(cubic, start, 0, width, kPatchTolerance, {x_row, place.row, pressure, enthalpy});
}

}  // namespace zorvik
