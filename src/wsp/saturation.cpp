// A quantity is looked up in its column of the saturation table. The columns of steam enthalpy and
// internal energy rise to a maximum at row K1 or K2 and then fall to the critical point, so that a
// value has two places; the side of the maximum is that of the previous evaluation:
//   rows 1 .. K1 ascending, status 5;   rows K1 .. N descending, status 6
#include "wsp/saturation.h"

#include <algorithm>

#include "driver/text.h"
#include "wsp/cubic_patch.h"
#include "wsp/property_messages.h"

namespace zorvik {
namespace {

// Saturation temperatures (K) of the maxima of steam enthalpy and steam internal energy; the
// messages name them too, so they are not taken from the file.
constexpr double kEnthalpyMaximum = 507.848;
constexpr double kEnergyMaximum = 509.014;

struct Search {
  int column;
  int first_row, last_row;
  bool descending;
  int status;  // when the value is outside
};

InputKind kind_of_letter(char letter) {
  switch (upper_case(letter)) {
    case 'T':
      return InputKind::kTemperature;
    case 'H':
      return InputKind::kEnthalpy;
    case 'U':
      return InputKind::kEnergy;
    default:
      return InputKind::kPressure;
  }
}

Search branch(int column, int top_row, double top_temperature, int status) {
  if (property_inquiry.saturation_temperature > top_temperature) {
    return {column, top_row, property_tables.header.n, true, status + 1};
  }
  return {column, 1, top_row, false, status};
}

Search search_for(InputKind kind, int phase) {
  const PropertyHeader& header = property_tables.header;
  const bool water = phase == kWaterPhase;
  switch (kind) {
    case InputKind::kPressure:
      return {kPressureColumn, 1, header.n, false, 1};
    case InputKind::kTemperature:
      return {kTemperatureColumn, 1, header.n, false, 2};
    case InputKind::kEnthalpy:
      if (water) return {kWaterEnthalpyColumn, 1, header.n, false, 3};
      return branch(kSteamEnthalpyColumn, header.k1, kEnthalpyMaximum, 5);
    case InputKind::kEnergy:
      break;
  }
  if (water) return {kWaterEnergyColumn, 1, header.n, false, 4};
  return branch(kSteamEnergyColumn, header.k2, kEnergyMaximum, 7);
}

// A value that is no number is in no range.
bool in_range(const Search& search, double value) {
  double low = saturation(search.column, search.first_row);
  double high = saturation(search.column, search.last_row);
  if (search.descending) std::swap(low, high);
  return value >= low && value <= high;
}

Cubic temperature_cubic(int row) {
  const int n = property_tables.header.n;
  const double* const v = property_tables.saturation_cubic + row - 1;
  return {{saturation(kTemperatureColumn, row), v[0], v[n], v[2 * n]}};
}

// The pressure offset at which the temperature cubic of the row reaches `temperature`.
double offset_on_cubic(int row, double temperature, double start) {
  // There is no interval above the critical point.
  if (row == property_tables.header.n) return 0;
  Cubic cubic = temperature_cubic(row);
  cubic.a[0] -= temperature;
  const double pressure = saturation(kPressureColumn, row);
  return NWSRI2(cubic, start, 0, saturation(kPressureColumn, row + 1) - pressure,
                kSaturationTolerance, {row, row, pressure, temperature});
}

SaturationPlace find_place(const Search& search, double value) {
  const int row = last_row(search.first_row, search.last_row, [&](int candidate) {
    const double entry = saturation(search.column, candidate);
    return search.descending ? entry >= value : entry <= value;
  });
  double offset = value - saturation(search.column, row);
  // On a row itself the slope is not asked for: it means nothing at the last one, nor at a maximum.
  if (search.column != kPressureColumn && offset != 0) {
    offset /= saturation_slope(search.column, row);
    if (search.column == kTemperatureColumn && property_tables.extended) {
      offset = offset_on_cubic(row, value, offset);
    }
  }
  return {row, offset};
}

double at_place(int column, const SaturationPlace& place) {
  return saturation(column, place.row) + place.offset * saturation_slope(column, place.row);
}

// Columns of properties 3 to 9, water and steam.
constexpr int kColumns[][2] = {{3, 10}, {4, 11}, {5, 12}, {6, 6}, {7, 13}, {8, 14}, {9, 15}};
constexpr int kFirstColumnProperty = 3, kLastColumnProperty = 9;
constexpr int kMoreColumnsOfASide = 6;  // properties 10 to 15

}  // namespace

SaturationPlace saturation_at_pressure(double pressure) {
  PropertyTables& tables = property_tables;
  const int row = row_near(tables.saturation, tables.header.n, pressure, tables.saturation_row);
  return {row, pressure - saturation(kPressureColumn, row)};
}

double saturation_temperature(const SaturationPlace& place) {
  if (property_tables.extended) return temperature_cubic(place.row)(place.offset);
  return at_place(kTemperatureColumn, place);
}

double saturated_property(int phase, int property, const SaturationPlace& place) {
  const int side = phase == kWaterPhase ? 0 : 1;
  if (property <= kLastColumnProperty) {
    return at_place(kColumns[property - kFirstColumnProperty][side], place);
  }
  const int column = property - kLastColumnProperty + side * kMoreColumnsOfASide;
  const int row = place.row;
  const double value = saturation_more(column, row);
  if (row == property_tables.header.n) return value;  // the critical point, offset 0
  const double interval = saturation(kPressureColumn, row + 1) - saturation(kPressureColumn, row);
  return value + place.offset / interval * (saturation_more(column, row + 1) - value);
}

int NWS1P1(int phase, char kind_letter, double value, int lowest, int highest,
           PropertyArray& properties, std::string& text) {
  PropertyInquiry& inquiry = property_inquiry;
  inquiry.kind = kind_of_letter(kind_letter);
  inquiry.state = phase == kWaterPhase ? PhaseState::kWater : PhaseState::kSteam;
  inquiry.given = value;

  const Search search = search_for(inquiry.kind, phase);
  if (!in_range(search, value)) {
    NWS0MS(-search.status, text, false);
    return -search.status;
  }
  const SaturationPlace place = find_place(search, value);
  double* const property = properties.value;
  property[kPressureProperty] = saturation(kPressureColumn, place.row) + place.offset;
  property[kTemperatureProperty] = saturation_temperature(place);
  const int last = std::min(highest, kPropertyCount);
  for (int k = std::max(lowest, kTemperatureProperty + 1); k <= last; ++k) {
    property[k] = saturated_property(phase, k, place);
  }
  // By input kind. The value comes back as it was given, not as its place would give it.
  constexpr int kGivenProperty[] = {kPressureProperty, kTemperatureProperty, kEnthalpyProperty,
                                    kEnergyProperty};
  property[kGivenProperty[static_cast<int>(inquiry.kind)]] = value;
  // A value out of range leaves the one before: the branch is chosen by the last state that was
  // found.
  inquiry.saturation_temperature = property[kTemperatureProperty];
  return 0;
}

}  // namespace zorvik
