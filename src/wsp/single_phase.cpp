// Each phase has a grid table over pressures and temperatures; between grid points a property is
// bilinear. An enthalpy or internal energy is turned into a temperature along the column that the
// pressure cuts out of the table, which is linear in each temperature interval.
#include "wsp/single_phase.h"

#include <algorithm>

#include "driver/text.h"
#include "wsp/extended_range.h"
#include "wsp/property_messages.h"
#include "wsp/property_tables.h"

namespace zorvik {
namespace {

// Kelvin on both sides of the saturation temperature that count as saturated: a pressure and its
// own saturation temperature, both given in decimals, should not decide for a phase.
constexpr double kSaturationMargin = 0.001;

// Block of each property in a grid table; property 6 belongs to the saturation line only.
constexpr int kBlocks[kPropertyCount + 1] = {0, 0, 0, 1, 2, 3, 0, 4, 5, 6, 7, 8, 9, 10, 11, 12};

// Place between two neighbours of a grid; on its last value both are the same.
struct GridPlace {
  int row, next;
  double fraction;
};

GridPlace place_in(const double* grid, int count, double x, int& last_row_found) {
  const int row = row_near(grid, count, x, last_row_found);
  if (row == count) return {row, row, 0};
  return {row, row + 1, (x - grid[row - 1]) / (grid[row] - grid[row - 1])};
}

GridPlace place_of_pressure(double pressure) {
  PropertyTables& tables = property_tables;
  return place_in(tables.pressure, tables.header.np, pressure, tables.pressure_row);
}

GridPlace place_of_temperature(double temperature) {
  PropertyTables& tables = property_tables;
  return place_in(tables.temperature, tables.header.nt, temperature, tables.temperature_row);
}

struct Inquiry {
  int phase;
  InputKind kind;
  double pressure, second;
  bool below_critical;
  SaturationPlace saturation;  // these two below the critical pressure only
  double saturation_temperature;

  bool wants_water() const { return phase == kWaterPhase; }
  bool wants_steam() const { return phase != kWaterPhase && phase != kAnyPhase; }
  int given_property() const {
    return kind == InputKind::kEnthalpy ? kEnthalpyProperty : kEnergyProperty;
  }
};

struct StateFound {
  PhaseState state;
  PhaseTable table;
  double temperature;
};

// One quantity of a grid table along the temperatures, at a pressure.
class GridColumn {
 public:
  GridColumn(PhaseTable table, int property, double pressure)
      : place_(place_of_pressure(pressure)) {
    const PropertyTables& tables = property_tables;
    const double* const grid = table == PhaseTable::kWater ? tables.water_grid : tables.steam_grid;
    block_ = grid + (kBlocks[property] - 1) * tables.header.nt * tables.header.np;
  }

  double at_row(int row) const {
    const double* const values = block_ + (row - 1) * property_tables.header.np;
    const double low = values[place_.row - 1];
    return low + place_.fraction * (values[place_.next - 1] - low);
  }

  double at(const GridPlace& temperature) const {
    const double low = at_row(temperature.row);
    return low + temperature.fraction * (at_row(temperature.next) - low);
  }

  // The temperature at which the column has `value`, which lies in the column's range.
  double temperature_of(double value) const {
    const PropertyTables& tables = property_tables;
    const int nt = tables.header.nt;
    const int row = last_row(1, nt, [&](int candidate) { return at_row(candidate) <= value; });
    const double lowest = tables.temperature[row - 1];
    if (row == nt) return lowest;
    const double low = at_row(row);
    const double fraction = (value - low) / (at_row(row + 1) - low);
    return lowest + fraction * (tables.temperature[row] - lowest);
  }

 private:
  GridPlace place_;
  const double* block_;
};

// True when the given enthalpy or internal energy occurs in the table at the pressure.
// The range is noted for the message of status 11.
bool is_in_range(const Inquiry& inquiry, PhaseTable table) {
  double& lower = property_inquiry.lower;
  double& upper = property_inquiry.upper;
  const int property = inquiry.given_property();
  if (property == kEnthalpyProperty && is_patched(table, property)) {
    patched_enthalpy_range(table, inquiry.pressure, lower, upper);
  } else {
    const GridColumn column(table, property, inquiry.pressure);
    lower = column.at_row(1);
    upper = column.at_row(property_tables.header.nt);
  }
  return inquiry.second >= lower && inquiry.second <= upper;
}

double temperature_of_given(const Inquiry& inquiry, PhaseTable table) {
  const int property = inquiry.given_property();
  if (property == kEnthalpyProperty && is_patched(table, property)) {
    return patched_temperature(table, inquiry.pressure, inquiry.second);
  }
  return GridColumn(table, property, inquiry.pressure).temperature_of(inquiry.second);
}

// The critical temperature itself, at a critical pressure or above, is no water any more.
PhaseState natural_state(const Inquiry& inquiry, double temperature) {
  if (!inquiry.below_critical) {
    return temperature < critical_temperature() ? PhaseState::kWater : PhaseState::kSupercritical;
  }
  if (temperature <= inquiry.saturation_temperature - kSaturationMargin) return PhaseState::kWater;
  if (temperature < inquiry.saturation_temperature + kSaturationMargin) return PhaseState::kMixture;
  return PhaseState::kSteam;
}

// The phase rules for a temperature. Sets the state and the table and returns 0, or the status of a
// conflict with the phase asked for.
int judge_phase(const Inquiry& inquiry, StateFound& found) {
  const bool given = inquiry.kind == InputKind::kTemperature;
  // Below the critical pressure only.
  const double above = found.temperature - inquiry.saturation_temperature;
  found.state = natural_state(inquiry, found.temperature);
  if (!inquiry.below_critical) {
    if (inquiry.wants_steam() && found.state == PhaseState::kWater) return given ? 12 : 14;
    found.table = inquiry.wants_steam() ? PhaseTable::kSteam : PhaseTable::kWater;
    return 0;
  }
  if (inquiry.wants_water()) {
    if (found.temperature > critical_temperature()) return given ? 13 : 15;
    // The state is still the natural one: the message of 16 speaks of steam, that of 17 of water.
    if (!(above <= property_tables.tolerance)) return 16;
    found.state = PhaseState::kWater;
  } else if (inquiry.wants_steam()) {
    if (!(-above <= property_tables.tolerance)) return 17;
    found.state = PhaseState::kSteam;
  }
  // A mixture takes its properties from the water table.
  found.table = found.state == PhaseState::kSteam ? PhaseTable::kSteam : PhaseTable::kWater;
  return 0;
}

int state_at_temperature(const Inquiry& inquiry, StateFound& found) {
  const PropertyTables& tables = property_tables;
  const bool water_limit = tables.extended && inquiry.wants_water();
  const double limit = water_limit ? critical_temperature() : tables.temperature_limit;
  found.temperature = inquiry.second;
  if (!(inquiry.second >= tables.temperature[0] && inquiry.second <= limit)) {
    return water_limit ? 19 : 10;
  }
  return judge_phase(inquiry, found);
}

// Below the critical pressure, whichever phase: the saturated values of the given quantity decide
// the state. The temperature is the one found in the column of the grid, even where it lies a
// little on the other side of the saturation temperature, as the two tables are interpolated in
// different ways.
int state_by_saturated_values(const Inquiry& inquiry, StateFound& found) {
  const int property = inquiry.given_property();
  if (inquiry.second < saturated_property(kWaterPhase, property, inquiry.saturation)) {
    found = {PhaseState::kWater, PhaseTable::kWater,
             temperature_of_given(inquiry, PhaseTable::kWater)};
  } else if (inquiry.second > saturated_property(kSteamPhase, property, inquiry.saturation)) {
    if (!is_in_range(inquiry, PhaseTable::kSteam)) return 11;
    found = {PhaseState::kSteam, PhaseTable::kSteam,
             temperature_of_given(inquiry, PhaseTable::kSteam)};
  } else {
    found = {PhaseState::kMixture, PhaseTable::kWater, inquiry.saturation_temperature};
  }
  return 0;
}

int state_at_given_quantity(const Inquiry& inquiry, StateFound& found) {
  found.table = inquiry.wants_steam() ? PhaseTable::kSteam : PhaseTable::kWater;
  if (!is_in_range(inquiry, found.table)) return 11;
  // For whichever phase the water table's range counted; where the state turns out to be steam,
  // that of the steam table counts too.
  if (inquiry.below_critical && inquiry.phase == kAnyPhase) {
    return state_by_saturated_values(inquiry, found);
  }
  found.temperature = temperature_of_given(inquiry, found.table);
  return judge_phase(inquiry, found);
}

double property_at(const Inquiry& inquiry, const StateFound& found, int property,
                   const GridPlace& temperature) {
  if (kBlocks[property] == 0) return 0;
  if (is_patched(found.table, property)) {
    return patched_property(found.table, property, inquiry.pressure, found.temperature);
  }
  return GridColumn(found.table, property, inquiry.pressure).at(temperature);
}

int find_state(Inquiry& inquiry, StateFound& found) {
  const PropertyTables& tables = property_tables;
  if (!(inquiry.pressure >= tables.pressure[0] && inquiry.pressure <= tables.pressure_limit)) {
    return 9;
  }
  inquiry.below_critical = inquiry.pressure < critical_pressure();
  if (inquiry.below_critical) {
    inquiry.saturation = saturation_at_pressure(inquiry.pressure);
    inquiry.saturation_temperature = saturation_temperature(inquiry.saturation);
    // Noted also when the state is refused: messages 16 and 17 show it.
    property_inquiry.saturation_temperature = inquiry.saturation_temperature;
  }
  return inquiry.kind == InputKind::kTemperature ? state_at_temperature(inquiry, found)
                                                 : state_at_given_quantity(inquiry, found);
}

InputKind kind_of(std::string_view kind) {
  const char letter = kind.size() > 1 ? upper_case(kind[1]) : ' ';
  if (letter == 'H') return InputKind::kEnthalpy;
  return letter == 'U' ? InputKind::kEnergy : InputKind::kTemperature;
}

}  // namespace

int NWS2P1(int phase, std::string_view kind, double pressure, double second, int lowest,
           int highest, PropertyArray& properties, std::string& text) {
  Inquiry inquiry{phase, kind_of(kind), pressure, second, false, {1, 0}, 0};
  StateFound found{PhaseState::kNone, PhaseTable::kWater, 0};
  const int status = find_state(inquiry, found);
  PropertyInquiry& notes = property_inquiry;
  notes.kind = inquiry.kind;
  notes.state = found.state;
  notes.given = second;
  notes.pressure = pressure;
  notes.temperature = found.temperature;
  if (status != 0) {
    NWS0MS(-status, text, false);
    return -status;
  }

  double* const property = properties.value;
  property[kPressureProperty] = pressure;
  property[kTemperatureProperty] = found.temperature;
  const GridPlace temperature = place_of_temperature(found.temperature);
  const int last = std::min(highest, kPropertyCount);
  for (int k = std::max(lowest, kTemperatureProperty + 1); k <= last; ++k) {
    property[k] = property_at(inquiry, found, k, temperature);
  }
  if (inquiry.kind != InputKind::kTemperature) property[inquiry.given_property()] = second;
  return 0;
}

}  // namespace zorvik
