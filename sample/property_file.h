// Writer of property tables files (nwsp_dat), and the tables of the sample plant.
#ifndef ZORVIK_SAMPLE_PROPERTY_FILE_H_
#define ZORVIK_SAMPLE_PROPERTY_FILE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace zorvik::sample {

// The contents in the order of the file. Lists of records are laid one after the other; the writer
// cuts them into records of the lengths that the counts give.
struct PropertyFile {
  std::int32_t n, np, nt, nc, k1, k2, m;
  std::vector<double> saturation, saturation_more, saturation_slope;  // 15, 12 and 14 columns of N
  std::vector<double> pressure, temperature;
  std::vector<double> water_grid, steam_grid;  // 12 * NT * NP, the pressures fastest
  std::vector<double> water_enthalpy, water_density, steam_enthalpy, steam_density;  // patches
  std::vector<double> saturation_cubic;                                              // 3 * N
};

// The file's bytes. `borders`, when given, receives the position of each record's start and the
// file's length.
std::string property_file_bytes(const PropertyFile& file, std::vector<std::size_t>* borders = {});

// A file whose lists have the lengths that the counts ask for, all values 0.
PropertyFile empty_property_file(int n, int np, int nt, int nc, int m);

// Sizes of the sample tables: saturation rows, pressures, temperatures, temperatures with patches.
struct SampleSizes {
  int n = 80, np = 100, nt = 120, m = 30;
};

// Tables from the equations of water_equations.h. Their properties: 3 entropy, 4 enthalpy, 5
// density, 6 surface tension, 7 compressibility factor, 8 speed of sound, 9 internal energy, 10 and
// 11 isochoric and isobaric heat capacity, 12 enthalpy over pressure, 13 expansion coefficient, 14
// and 15 density over temperature and over pressure.
PropertyFile sample_property_tables(const SampleSizes& sizes = {});
std::string sample_property_file_bytes();

}  // namespace zorvik::sample

#endif  // ZORVIK_SAMPLE_PROPERTY_FILE_H_
