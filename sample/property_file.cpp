#include "sample/property_file.h"

#include <algorithm>
#include <cmath>

#include "sample/bytes.h"
#include "sample/water_equations.h"

namespace zorvik::sample {
namespace {

constexpr int kIndexRows = 600;
constexpr int kBlocks = 12, kPatchSize = 16;
using Values = std::vector<double>;

class RecordWriter {
 public:
  explicit RecordWriter(std::vector<std::size_t>* borders) : borders_(borders) { mark(); }

  void record(const std::string& contents) {
    append_int32(bytes_, static_cast<std::int32_t>(contents.size()));
    bytes_ += contents;
    append_int32(bytes_, static_cast<std::int32_t>(contents.size()));
    mark();
  }

  void reals(const Values& values, int a_record) {
    a_record = std::max(a_record, 1);  // counts of damaged files
    for (std::size_t k = 0; k < values.size();) {
      std::string contents;
      for (int j = 0; j < a_record && k < values.size(); ++j) append_real(contents, values[k++]);
      record(contents);
    }
  }

  // Bucket tables that let every search begin at row 1.
  void bucket_tables(int count, int rows) {
    std::string contents;
    for (int row = 0; row < rows; ++row) append_int32(contents, 1);
    for (int k = 0; k < count; ++k) record(contents);
  }

  const std::string& bytes() const { return bytes_; }

 private:
  void mark() {
    if (borders_ != nullptr) borders_->push_back(bytes_.size());
  }

  std::vector<std::size_t>* borders_;
  std::string bytes_;
};

// Quantities in the order of the grid blocks, and of the columns of the saturation tables.
constexpr Quantity kBlockOrder[kBlocks] = {
    kEntropy,       kEnthalpy,     kDensity,       kCompressibility, kSoundSpeed,   kEnergy,
    kIsochoricHeat, kIsobaricHeat, kEnthalpyOverP, kExpansion,       kDensityOverT, kDensityOverP};
constexpr int kFirstHalf = 6;  // blocks 1 to 6 are properties 3 to 9, 7 to 12 properties 10 to 15

// Saturation temperatures spaced half evenly and half by the logarithm of the pressure.
double saturation_temperature_of_row(int row, int n) {
  constexpr double kLowest = 273.25;
  const double way = static_cast<double>(row) / (n - 1), low = saturation_pressure(kLowest);
  if (row == 0 || row == n - 1) return row == 0 ? kLowest : kCriticalTemperature;
  return (kLowest + way * (kCriticalTemperature - kLowest) +
          saturation_temperature_at(low * std::pow(kCriticalPressure / low, way))) /
         2;
}

void fill_saturation(PropertyFile& file) {
  const auto n = static_cast<std::size_t>(file.n);
  for (std::size_t row = 0; row < n; ++row) {
    const double t = saturation_temperature_of_row(static_cast<int>(row), file.n);
    const WaterState water = saturated_water(t), steam = saturated_steam(t);
    // Column 6 is the same for both sides, so block 4 on stands one column further for water.
    double* const column = file.saturation.data() + row;
    column[0] = row + 1 == n ? kCriticalPressure : saturation_pressure(t);
    column[n] = t;
    column[5 * n] = surface_tension(t);
    for (std::size_t b = 0; b < kBlocks; ++b) {
      if (b < kFirstHalf) {
        column[(b < 3 ? b + 2 : b + 3) * n] = water[kBlockOrder[b]];
        column[(b + 9) * n] = steam[kBlockOrder[b]];
      } else {
        file.saturation_more[(b - kFirstHalf) * n + row] = water[kBlockOrder[b]];
        file.saturation_more[b * n + row] = steam[kBlockOrder[b]];
      }
    }
  }
  for (std::size_t c = 1; c < 15; ++c) {
    for (std::size_t row = 0; row + 1 < n; ++row) {
      const double* const value = file.saturation.data() + c * n + row;
      const double* const p = file.saturation.data() + row;
      file.saturation_slope[(c - 1) * n + row] = (value[1] - value[0]) / (p[1] - p[0]);
    }
  }
  const auto row_of_maximum = [&](std::size_t column) {
    const auto first = file.saturation.begin() + static_cast<std::ptrdiff_t>((column - 1) * n);
    return static_cast<std::int32_t>(std::max_element(first, first + file.n) - first) + 1;
  };
  file.k1 = row_of_maximum(11);
  file.k2 = row_of_maximum(15);
  // The temperature cubics: the chord, so the extended range has the same saturation line.
  std::copy_n(file.saturation_slope.begin(), n, file.saturation_cubic.begin());
}

void fill_grids(PropertyFile& file) {
  const int below = file.np * 7 / 10;  // the critical pressure is one of the grid's
  for (int i = 0; i < file.np; ++i) {
    const double low = i < below ? 615.2 : kCriticalPressure;
    const double high = i < below ? kCriticalPressure : 1e8;
    const double way = i < below ? static_cast<double>(i) / below
                                 : static_cast<double>(i - below) / (file.np - 1 - below);
    file.pressure[static_cast<std::size_t>(i)] = low * std::pow(high / low, way);
  }
  constexpr double kFineUpTo = 723.25;
  const int fine = file.nt * 7 / 10;
  for (int i = 0; i < file.nt; ++i) {
    file.temperature[static_cast<std::size_t>(i)] =
        i < fine ? 273.25 + (kFineUpTo - 273.25) * i / (fine - 1)
                 : kFineUpTo + (kHottest - kFineUpTo) * (i - fine + 1) / (file.nt - fine);
  }
  const auto np = static_cast<std::size_t>(file.np), nt = static_cast<std::size_t>(file.nt);
  for (std::size_t t = 0; t < nt; ++t) {
    for (std::size_t i = 0; i < np; ++i) {
      const WaterState water = water_at(file.pressure[i], file.temperature[t]);
      const WaterState steam = steam_at(file.pressure[i], file.temperature[t]);
      for (std::size_t b = 0; b < kBlocks; ++b) {
        file.water_grid[(b * nt + t) * np + i] = water[kBlockOrder[b]];
        file.steam_grid[(b * nt + t) * np + i] = steam[kBlockOrder[b]];
      }
    }
  }
}

// Bilinear patches through the values f(i, j) over temperatures x and pressures y; constant beyond
// the last row of either.
Values patches(const Values& x, const Values& y, const Values& f) {
  const std::size_t n = y.size();
  Values result(f.size() * kPatchSize);
  for (std::size_t k = 0; k < f.size(); ++k) {
    const std::size_t i = k / n, j = k % n;
    const std::size_t right = i + 1 < x.size() ? n : 0, up = j + 1 < n ? 1 : 0;
    const double dx = right > 0 ? x[i + 1] - x[i] : 1, dy = up > 0 ? y[j + 1] - y[j] : 1;
    double* const c = result.data() + k * kPatchSize;
    c[0] = f[k];
    c[1] = (f[k + right] - f[k]) / dx;
    c[4] = (f[k + up] - f[k]) / dy;
    c[5] = (f[k + right + up] - f[k + right] - f[k + up] + f[k]) / (dx * dy);
  }
  return result;
}

void fill_patches(PropertyFile& file) {
  const auto n = static_cast<std::ptrdiff_t>(file.n);
  const Values pressures(file.saturation.begin(), file.saturation.begin() + n);
  const auto fill = [&](const Values& x, WaterState (*state)(double, double), Values& enthalpy,
                        Values& density) {
    Values h, rho;
    for (const double t : x) {
      for (const double p : pressures) {
        const WaterState at = state(p, t);
        h.push_back(at[kEnthalpy]);
        rho.push_back(at[kDensity]);
      }
    }
    enthalpy = patches(x, pressures, h);
    density = patches(x, pressures, rho);
  };
  fill({file.saturation.begin() + n, file.saturation.begin() + 2 * n}, water_at,
       file.water_enthalpy, file.water_density);
  if (file.m > 0) {
    fill({file.temperature.begin(), file.temperature.begin() + file.m}, steam_at,
         file.steam_enthalpy, file.steam_density);
  }
}

}  // namespace

std::string property_file_bytes(const PropertyFile& file, std::vector<std::size_t>* borders) {
  RecordWriter out(borders);
  std::string header;
  for (const std::int32_t count : {file.n, file.np, file.nt, file.nc, file.k1, 1, file.k2, 1}) {
    append_int32(header, count);
  }
  for (int k = 0; k < 12; ++k) append_real(header, 1e9);  // steps that make one bucket of all
  append_int32(header, 1);
  append_int32(header, 1);
  out.record(header);
  out.reals(file.saturation, file.n);
  out.reals(file.saturation_more, file.n);
  out.bucket_tables(4, file.nc);
  out.reals(file.saturation_slope, file.n);
  out.bucket_tables(4, kIndexRows);
  out.reals(file.pressure, file.np);
  out.reals(file.temperature, file.nt);
  out.reals(file.water_grid, file.np);
  out.reals(file.steam_grid, file.np);
  std::string count;
  append_int32(count, file.m);
  out.record(count);
  for (const Values* patch :
       {&file.water_enthalpy, &file.water_density, &file.steam_enthalpy, &file.steam_density}) {
    out.reals(*patch, kPatchSize);
  }
  out.reals(file.saturation_cubic, file.n);
  return out.bytes();
}

PropertyFile empty_property_file(int n, int np, int nt, int nc, int m) {
  const auto zeros = [](int count) { return Values(static_cast<std::size_t>(std::max(count, 0))); };
  const int grid = kBlocks * nt * np, water = kPatchSize * n * n, steam = kPatchSize * m * n;
  return {n,
          np,
          nt,
          nc,
          1,
          1,
          m,
          zeros(15 * n),
          zeros(12 * n),
          zeros(14 * n),
          zeros(np),
          zeros(nt),
          zeros(grid),
          zeros(grid),
          zeros(water),
          zeros(water),
          zeros(steam),
          zeros(steam),
          zeros(3 * n)};
}

PropertyFile sample_property_tables(const SampleSizes& sizes) {
  PropertyFile file = empty_property_file(sizes.n, sizes.np, sizes.nt, 1, sizes.m);
  fill_saturation(file);
  fill_grids(file);
  fill_patches(file);
  return file;
}

std::string sample_property_file_bytes() { return property_file_bytes(sample_property_tables()); }

}  // namespace zorvik::sample
