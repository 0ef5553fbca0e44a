// The tables of water and steam properties: storage, accessors, limits and options.
//
// One instance for the whole run, filled by the reader of property_file.h. The tables stand densely
// at the front of their arrays, so a small file touches little of the zero-initialised storage.
// Rows, columns and properties count from 1.
//
// Properties: 1 pressure (Pa), 2 temperature (K), 4 enthalpy and 9 internal energy (J/kg); what the
// others are is fixed by the file.
#ifndef ZORVIK_WSP_PROPERTY_TABLES_H_
#define ZORVIK_WSP_PROPERTY_TABLES_H_

#include <cstdint>

namespace zorvik {

constexpr int kPropertyCount = 15;
constexpr int kPressureProperty = 1, kTemperatureProperty = 2;
constexpr int kEnthalpyProperty = 4, kEnergyProperty = 9;

constexpr int kMaxSaturationRows = 150;  // N
constexpr int kMaxGridRows = 249;        // NP and NT
constexpr int kMaxBucketRows = 599;      // NC
constexpr int kMaxSteamRows = 210;       // M
constexpr int kGridBlocks = 12;          // quantities of a grid table
constexpr int kPatchSize = 16;           // coefficients of a cubic patch

constexpr int kSaturationColumns = 15, kMoreColumns = 12, kSlopeColumns = 14;

// Columns of the saturation table that are searched.
constexpr int kPressureColumn = 1, kTemperatureColumn = 2;
constexpr int kWaterEnthalpyColumn = 4, kWaterEnergyColumn = 9;
constexpr int kSteamEnthalpyColumn = 11, kSteamEnergyColumn = 15;

// The file's first record, exactly as it stands there.
struct PropertyHeader {
  std::int32_t n, np, nt, nc;   // rows: saturation, pressure grid, temperature grid, bucket tables
  std::int32_t k1, l1, k2, l2;  // K1, K2: rows of the maxima of steam enthalpy and internal energy
  double c[12];                 // C1 to C12: steps of the bucket tables
  std::int32_t k3, k4;
};
static_assert(sizeof(PropertyHeader) == 136);

struct PropertyTables {
  PropertyHeader header;
  double saturation[kSaturationColumns * kMaxSaturationRows];                    // SAT1
  double saturation_more[kMoreColumns * kMaxSaturationRows];                     // SAT2
  double saturation_slope[kSlopeColumns * kMaxSaturationRows];                   // SAT3
  double pressure[kMaxGridRows];                                                 // PG
  double temperature[kMaxGridRows];                                              // TG
  double water_grid[kGridBlocks * kMaxGridRows * kMaxGridRows];                  // G1
  double steam_grid[kGridBlocks * kMaxGridRows * kMaxGridRows];                  // G2
  std::int32_t steam_rows;                                                       // M
  double water_enthalpy[kPatchSize * kMaxSaturationRows * kMaxSaturationRows];   // B1
  double water_property5[kPatchSize * kMaxSaturationRows * kMaxSaturationRows];  // B2
  double steam_enthalpy[kPatchSize * kMaxSteamRows * kMaxSaturationRows];        // B3
  double steam_property5[kPatchSize * kMaxSteamRows * kMaxSaturationRows];       // B4
  double saturation_cubic[3 * kMaxSaturationRows];                               // V1, V2, V3

  // Options, set by each selection of the tables.
  bool extended;             // cubic patches instead of bilinear interpolation where chosen
  double tolerance;          // K, allowed on the wrong side of the saturation line
  double pressure_limit;     // highest pressure accepted, Pa
  double temperature_limit;  // highest temperature accepted, K
  const int* patched;        // entry k - 1 not 0: property k comes from the patches

  // The rows found last, at which the next search begins. A damaged table that does not ascend is
  // always searched from its middle, so that a row never depends on the one before.
  bool ascending;
  int saturation_row, pressure_row, temperature_row;
};
extern PropertyTables property_tables;

// The mode in which the language's functions use the tables.
constexpr int kRunMode = 99;

// Sets limits, tolerance and the list of patched properties from the tables in use, which have been
// read. `mode` chooses the list: kRunMode or its negative that of a run, any other number another
// one. A negative option chooses the extended range; its absolute value in K, 1 to 50, is the
// tolerance (below 1, and above: 50).
void set_property_options(int mode, double option);

// An entry of the saturation table: of its first 15 columns (1 pressure in Pa, 2 temperature in K),
// of its 12 further ones. Columns and rows (up to N) count from 1.
inline double saturation(int column, int row) {
  const PropertyTables& tables = property_tables;
  return tables.saturation[(column - 1) * tables.header.n + row - 1];
}
inline double saturation_more(int column, int row) {
  const PropertyTables& tables = property_tables;
  return tables.saturation_more[(column - 1) * tables.header.n + row - 1];
}
// Slope over pressure, per Pa, of a column (2 to 15) of the saturation table in the interval above
// `row`.
inline double saturation_slope(int column, int row) {
  const PropertyTables& tables = property_tables;
  return tables.saturation_slope[(column - 2) * tables.header.n + row - 1];
}
// The critical point, Pa and K: the last row.
inline double critical_pressure() { return saturation(kPressureColumn, property_tables.header.n); }
inline double critical_temperature() {
  return saturation(kTemperatureColumn, property_tables.header.n);
}

// Last of the rows first .. last for which `not_beyond(row)` holds, `first` when it holds for none.
// Once false it has to stay false; in a damaged table the result is still one of the rows.
template <class Predicate>
int last_row(int first, int last, Predicate not_beyond) {
  for (int size = last - first + 1; size > 1;) {
    const int half = size / 2;
    if (not_beyond(first + half)) first += half;
    size -= half;
  }
  return first;
}

// The last row of an ascending table of `count` values whose value is not above x; 1 if none is.
inline int row_of(const double* values, int count, double x) {
  return last_row(1, count, [=](int row) { return values[row - 1] <= x; });
}

// The same, looking first at the row found last, `row`, which becomes the one found.
inline int row_near(const double* values, int count, double x, int& row) {
  const bool same =
      property_tables.ascending && row < count && values[row - 1] <= x && x < values[row];
  if (!same) row = row_of(values, count, x);
  return row;
}

// Begins all searches anew in tables that have just been read.
void start_searches();

}  // namespace zorvik

#endif  // ZORVIK_WSP_PROPERTY_TABLES_H_
