// Which properties come from the patches is a list by property: an entry is the number of the
// quantity that a patch gives (extended_range.cpp), 0 where there is none.
#include "wsp/property_tables.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace zorvik {

constinit PropertyTables property_tables{};

namespace {

constexpr int kPatchedInRunMode[kPropertyCount] = {1, 2, 0, 4, 5, 0, 0, 0, 0, 0, 0, 12, 0, 0, 15};
constexpr int kPatchedOtherwise[kPropertyCount] = {1, 2, 0, 4, 5, 0, 0, 0, 0, 0, 11, 12, 0, 14, 15};
constexpr double kExtendedPressureLimit = 22000000.0;
constexpr double kWidestTolerance = 50.0;

}  // namespace

void start_searches() {
  PropertyTables& tables = property_tables;
  const auto ascends = [](const double* values, int count) {
    const auto falls = [](double low, double high) { return !(low <= high); };  // not a number too
    return std::adjacent_find(values, values + count, falls) == values + count;
  };
  tables.ascending = ascends(tables.saturation, tables.header.n) &&
                     ascends(tables.pressure, tables.header.np) &&
                     ascends(tables.temperature, tables.header.nt);
  tables.saturation_row = tables.pressure_row = tables.temperature_row = 1;
}

void set_property_options(int mode, double option) {
  PropertyTables& tables = property_tables;
  const int np = tables.header.np, nt = tables.header.nt;
  tables.patched = mode == kRunMode || mode == -kRunMode ? kPatchedInRunMode : kPatchedOtherwise;
  tables.extended = option < 0;
  const double width = std::fabs(option);
  tables.tolerance = width >= 1 ? std::min(width, kWidestTolerance) : kWidestTolerance;
  tables.pressure_limit = tables.extended ? kExtendedPressureLimit : tables.pressure[np - 1];
  // TG(M), as far as the grid reaches.
  const int last_row = tables.extended ? std::clamp<int>(tables.steam_rows, 1, nt) : nt;
  tables.temperature_limit = tables.temperature[last_row - 1];
}

}  // namespace zorvik
