// Properties of water and steam: against published values in the sample tables, and every status
// in small tables whose interpolated values are plain formulas.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <string>

#include "driver/units.h"
#include "sample/property_file.h"
#include "support/run_directory.h"
#include "wsp/cubic_patch.h"
#include "wsp/property_file.h"
#include "wsp/property_messages.h"
#include "wsp/property_tables.h"
#include "wsp/single_phase.h"

namespace zorvik {
namespace {

void load(const std::string& bytes) {
  static const support::RunDirectory directory;
  const std::string path = directory.path("tables");
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
  load_property_tables(kPropertyUnit, path, 99, 0.0);
}

PropertyArray properties;
std::string text;

int saturation_line(int phase, char kind, double value) {
  return NWS1P1(phase, kind, value, 2, 15, properties, text);
}
int single_phase(int phase, const char* kind, double pressure, double second) {
  return NWS2P1(phase, kind, pressure, second, 3, 15, properties, text);
}

TEST(SampleTables, AgreeWithThePublishedVerificationValues) {
  load(sample::sample_property_file_bytes());
  EXPECT_TRUE(property_tables.ascending);  // rows are found by halving
  // Saturation line; region 1 and region 2 by property 3, 4, 9, 5 (as specific volume), 11 and 8.
  const struct {
    char kind;
    double given;
    int property;
    double published;
  } kSaturation[] = {{'T', 300, 1, 3536.58941},   {'T', 500, 1, 2.63889776e6},
                     {'T', 600, 1, 1.23443146e7}, {'P', 1e5, 2, 372.755919},
                     {'P', 1e6, 2, 453.035632},   {'P', 1e7, 2, 584.149488}};
  for (const auto& c : kSaturation) {
    ASSERT_EQ(saturation_line(kWaterPhase, c.kind, c.given), 0) << text;
    EXPECT_NEAR(properties.value[c.property] / c.published, 1, 1e-3) << c.kind << c.given;
  }
  const struct {
    double pressure, temperature, s, h, u, v, cp, w, tolerance;
  } kStates[] = {
      {3e6, 300, 392.294792, 115331.273, 112324.818, 0.100215168e-2, 4173.01218, 1507.73921, 3e-4},
      {80e6, 300, 368.563852, 184142.828, 106448.356, 0.971180894e-3, 4010.08987, 1634.69054, 3e-4},
      {3e6, 500, 2580.41912, 975542.239, 971934.985, 0.1202418e-2, 4655.80682, 1240.71337, 3e-4},
      {3500, 300, 8522.38967, 2549911.45, 2411691.60, 39.4913866, 1913.00162, 427.920172, 3e-4},
      {3500, 700, 10174.9996, 3335683.75, 3012628.19, 92.3015898, 2081.41274, 644.289068, 3e-4},
      {30e6, 700, 5175.40298, 2631494.74, 2468610.76, 0.542946619e-2, 10350.5092, 480.386523, 5e-3},
  };
  for (const auto& c : kStates) {
    ASSERT_EQ(single_phase(kAnyPhase, "PT", c.pressure, c.temperature), 0) << text;
    const double* const p = properties.value;
    const double kPairs[][2] = {{p[3], c.s},     {p[4], c.h},   {p[9], c.u},
                                {1 / p[5], c.v}, {p[11], c.cp}, {p[8], c.w}};
    for (const auto& [value, published] : kPairs) {
      EXPECT_NEAR(value / published, 1, c.tolerance) << c.pressure << " " << c.temperature;
    }
    // Back from the published enthalpy and internal energy to the temperature.
    for (const auto& [kind, given] : {std::pair{"PH", c.h}, std::pair{"pu", c.u}}) {
      ASSERT_EQ(single_phase(kAnyPhase, kind, c.pressure, given), 0) << text;
      EXPECT_NEAR(properties.value[2], c.temperature, 0.2) << kind;
      EXPECT_EQ(properties.value[kind[1] == 'H' ? 4 : 9], given);
    }
  }
}

// Small tables. Saturation: P = 1 .. 5 MPa at 300, 400, 500, 520, 540 K. Single phase, P in MPa:
//   enthalpy  water 10000 (T - 290) + 10000 P   steam 2.0E6 + 2000 (T - 290) - 10000 P
//   internal energy 5000 less;  any other property k  water T + 100 k + P, steam -(T + 100 k + P)
constexpr double kTemperatures[] = {300, 400, 500, 520, 540};
constexpr double kPatchCubic = 0.001;  // added to the enthalpy in the patches: 0.001 (T - 300)^3

double enthalpy(bool steam, double t, double mpa) {
  return steam ? 2.0e6 + 2000 * (t - 290) - 1e4 * mpa : 1e4 * (t - 290) + 1e4 * mpa;
}

double grid_value(bool steam, int property, double t, double mpa) {
  if (property == kEnthalpyProperty) return enthalpy(steam, t, mpa);
  if (property == kEnergyProperty) return enthalpy(steam, t, mpa) - 5000;
  return (steam ? -1 : 1) * (t + 100 * property + mpa);
}

void add_patch(std::vector<double>& patches, std::size_t k, bool steam, double t, double mpa) {
  const double x = t - 300;
  const double c[] = {enthalpy(steam, t, mpa) + kPatchCubic * x * x * x,
                      (steam ? 2e3 : 1e4) + 3 * kPatchCubic * x * x, 3 * kPatchCubic * x,
                      kPatchCubic, steam ? -0.01 : 0.01};
  std::copy(c, c + 5, patches.begin() + static_cast<std::ptrdiff_t>(16 * k));
  patches[16 * k + 5] = 1e-7;  // x y, y y and y y y of the pressure offset y in Pa
  patches[16 * k + 8] = 1e-9;
  patches[16 * k + 12] = 1e-15;
}

void load_small_tables() {
  sample::PropertyFile file = sample::empty_property_file(5, 3, 4, 1, 4);
  const double kColumns[][6] = {
      {1, 1e6, 2e6, 3e6, 4e6, 5e6},       {2, 300, 400, 500, 520, 540},
      {4, 1e5, 2e5, 4e5, 6e5, 8e5},       {9, 9e4, 19e4, 39e4, 59e4, 79e4},
      {11, 25e5, 27e5, 28e5, 26e5, 20e5}, {15, 24e5, 26e5, 27e5, 25e5, 19e5},
      {6, 0.5, 0.4, 0.3, 0.2, 0.1},
  };
  for (const auto& column : kColumns) {
    const auto c = static_cast<std::size_t>(column[0]);
    for (std::size_t row = 0; row < 5; ++row) {
      file.saturation[(c - 1) * 5 + row] = column[row + 1];
      if (c > 1 && row < 4) {
        file.saturation_slope[(c - 2) * 5 + row] = (column[row + 2] - column[row + 1]) / 1e6;
      }
    }
  }
  for (std::size_t row = 0; row < 5; ++row) {
    file.saturation_more[row] = 10 * static_cast<double>(row);           // property 10, water
    file.saturation_more[6 * 5 + row] = -10 * static_cast<double>(row);  // and steam
    // T(w) reaches the next row's temperature half by w and half by w cubed.
    const double slope = file.saturation_slope[row];
    file.saturation_cubic[row] = slope / 2;
    file.saturation_cubic[2 * 5 + row] = slope / 2e12;
  }
  file.k1 = file.k2 = 3;
  file.pressure = {0.5e6, 1.5e6, 10e6};
  file.temperature = {290, 390, 490, 590};
  const int kBlockProperties[] = {3, 4, 5, 7, 8, 9, 10, 11, 12, 13, 14, 15};
  std::size_t k = 0;
  for (const int property : kBlockProperties) {
    for (const double t : file.temperature) {
      for (const double p : file.pressure) {
        file.water_grid[k] = grid_value(false, property, t, p / 1e6);
        file.steam_grid[k++] = grid_value(true, property, t, p / 1e6);
      }
    }
  }
  for (k = 0; k < 25; ++k) {
    const double mpa = static_cast<double>(k % 5 + 1);
    add_patch(file.water_enthalpy, k, false, kTemperatures[k / 5], mpa);
    if (k < 20) add_patch(file.steam_enthalpy, k, true, file.temperature[k / 5], mpa);
  }
  file.water_density = file.water_enthalpy;
  load(sample::property_file_bytes(file));
}

TEST(SaturationLine, InterpolatesAllColumnsFromAnyQuantity) {
  load_small_tables();
  // The same place, a quarter of the way from row 2 to row 3, named by each quantity.
  const struct {
    int phase;
    char kind;
    double value;
  } kNames[] = {{1, 'P', 2.25e6}, {1, 't', 425}, {1, 'H', 2.5e5},   {1, 'u', 2.4e5},
                {2, '?', 2.25e6}, {2, 'T', 425}, {2, 'h', 27.25e5}, {2, 'U', 26.25e5}};
  for (const auto& name : kNames) {
    ASSERT_EQ(saturation_line(name.phase, name.kind, name.value), 0) << text;
    const double* const p = properties.value;
    const bool water = name.phase == 1;
    EXPECT_DOUBLE_EQ(p[1], 2.25e6) << name.kind;
    EXPECT_DOUBLE_EQ(p[2], 425);
    EXPECT_DOUBLE_EQ(p[4], water ? 2.5e5 : 27.25e5);
    EXPECT_DOUBLE_EQ(p[6], 0.375);
    EXPECT_DOUBLE_EQ(p[9], water ? 2.4e5 : 26.25e5);
    EXPECT_DOUBLE_EQ(p[10], water ? 12.5 : -12.5);
  }
  properties.value[3] = properties.value[5] = -1;  // only what is wanted is stored
  ASSERT_EQ(NWS1P1(1, 'P', 2.25e6, 4, 4, properties, text), 0);
  EXPECT_EQ(properties.value[3] + properties.value[5], -2);
  // The maximum maps to its row from both sides; the last row is the critical point.
  for (const double branch : {400.0, 530.0}) {
    ASSERT_EQ(saturation_line(2, 'T', branch), 0);
    ASSERT_EQ(saturation_line(2, 'H', 28e5), 0) << text;
    EXPECT_EQ(properties.value[1], 3e6);
  }
  // Elsewhere a value has two places; up to the maximum's own temperature it is the lower one.
  const struct {
    char kind;
    double before, value, temperature;
  } kBranches[] = {{'H', 507.848, 27e5, 400},
                   {'H', 507.849, 27e5, 510},
                   {'U', 509.014, 26e5, 400},
                   {'U', 509.015, 26e5, 510}};
  for (const auto& b : kBranches) {
    saturation_line(2, 'T', b.before);
    ASSERT_EQ(saturation_line(2, b.kind, b.value), 0) << text;
    EXPECT_DOUBLE_EQ(properties.value[2], b.temperature) << b.before;
  }
  saturation_line(2, 'T', 530);
  ASSERT_EQ(saturation_line(2, 'U', 19e5), 0) << text;
  EXPECT_EQ(properties.value[2], 540);
  EXPECT_EQ(properties.value[10], -40);
}

TEST(SinglePhase, TakesTheTableOfTheState) {
  load_small_tables();
  const struct {
    int phase;
    const char* kind;
    double mpa, second;
    double temperature;
    bool steam;  // table used
  } kCases[] = {
      {0, "PT", 2, 399.999, 399.999, false},
      {0, "PT", 2, 400.0009, 400.0009, false},  // saturated: given as water
      {0, "PT", 2, 400.0011, 400.0011, true},
      {1, "PT", 2, 450, 450, false},  // 50 K superheated water
      {2, "PT", 2, 350, 350, true},
      {0, "PT", 5, 540, 540, false},  // at the critical point: the table of the request
      {2, "PT", 5, 540, 540, true},
      {0, "PT", 10, 590, 590, false},        // the grids' last corner
      {0, "PT", 0.75, 275 + 15, 290, true},  // below the first row: Tsat is 275 K
      {1, "PH", 2, enthalpy(false, 440, 2), 440, false},
      {2, "PH", 2, enthalpy(true, 360, 2), 360, true},
      {0, "PH", 6, enthalpy(false, 560, 6), 560, false},
      // Steam by h" = 2.3 MJ/kg, though the column has it 62.5 K below the saturated 530 K.
      {0, "PH", 4.5, 2.31e6, 467.5, true},
  };
  for (const auto& c : kCases) {
    ASSERT_EQ(single_phase(c.phase, c.kind, c.mpa * 1e6, c.second), 0) << text;
    EXPECT_NEAR(properties.value[2], c.temperature, 1e-9);
    EXPECT_NEAR(properties.value[5], grid_value(c.steam, 5, c.temperature, c.mpa), 1e-6)
        << c.kind << " " << c.mpa << " " << c.second;
    EXPECT_EQ(properties.value[6], 0);
  }
  ASSERT_EQ(single_phase(0, "PH", 2e6, 1e6), 0);  // between h' and h"
  EXPECT_DOUBLE_EQ(properties.value[2], 400);
  EXPECT_EQ(properties.value[4], 1e6);
  EXPECT_DOUBLE_EQ(properties.value[9], grid_value(false, 9, 400, 2));
}

TEST(Statuses, OfASinglePhaseHaveTheirTexts) {
  load_small_tables();
  const std::string blank(8, ' '), wide(17, ' ');
  const std::string is_water = ";        P => Pcr , T < Tcr. It is a water. NWS2P1 requires steam.";
  const std::string is_steam = ";        P < Pcr , T > Tcr. It is a steam. NWS2P1 requires water.";
  const auto phase_case = [](int status, int phase, const char* kind, double pressure,
                             double second, const std::string& expected) {
    EXPECT_EQ(single_phase(phase, kind, pressure, second), -status);
    EXPECT_EQ(text, expected);
  };
  phase_case(9, 1, "PH", 4e5, 1e99,
             "%WSP-9:" + blank + " Pressure = 4.0000000E+05;        Pressure out of [ 615.2 , " +
                 " 1.0000000E+07 ]");
  phase_case(10, 0, "PT", 1e6, 289,
             "%WSP-10:" + blank + " Pressure = 1.0000000E+06 Temperature= 289.00;" + wide +
                 "Temperature out of [ 273.25 , 6000 ]");
  phase_case(11, 0, "PH", 1e6, -1,
             "%WSP-11:" + blank + " Pressure = 1.0000000E+06;         Enthalpy   =-1.0000000E+00" +
                 " out of [  1.0000000E+04 ,  3.0100000E+06 ]");
  phase_case(11, 0, "PU", 1e6, 2.9e6,  // in the range of water, beyond the steam it would be
             "%WSP-11:" + blank + " Pressure = 1.0000000E+06;         Int.Energy = 2.9000000E+06" +
                 " out of [  1.9850000E+06 ,  2.5850000E+06 ]");
  phase_case(12, 2, "PT", 6e6, 500, "%WSP-12: Water.  Temperature = 500.00" + is_water);
  phase_case(13, 1, "PT", 2e6, 545, "%WSP-13: Steam.  Temperature = 545.00" + is_steam);
  phase_case(14, 2, "PH", 6e6, enthalpy(true, 490, 6),
             "%WSP-14: Water.  Enthalpy   = 2.3400000E+06 T = 490.00" + is_water);
  phase_case(15, 1, "PU", 2e6, enthalpy(false, 550, 2) - 5000,
             "%WSP-15: Steam.  Int.Energy = 2.6150000E+06 T = 550.00" + is_steam);
  phase_case(16, 1, "PT", 2e6, 450.01,
             "%WSP-16: too superheated water: T - Tsat > Steam.   50.00; Pressure = 2.0000000E+06 "
             "Temperature= 450.01 Tsat= 400.00");
  phase_case(17, 2, "PH", 2e6, enthalpy(true, 345, 2),
             "%WSP-17: too subcooled steam: Tsat - T > Water.   50.00; Pressure = 2.0000000E+06 "
             "Enthalpy   = 2.0900000E+06 Tsat= 400.00");
  load_property_tables(0, "", 99, -10.0);  // the extended range
  phase_case(19, 1, "PT", 2e6, 541,
             "%WSP-20:" + blank + " Pressure = 2.0000000E+06 Temperature= 541.00;" + wide +
                 "Temperature out of [ 273.25 , 647.27 ]");
  NWS0MS(-18, text, false);
  EXPECT_EQ(text, "%WSP-18:" + blank + " Pressure = 2.0000000E+06 Temperature= 541.00; Pressure" +
                      " out of [ 615.2 , 100e6 ]");
  EXPECT_EQ(NWS0MS(-20, text, false), 94);
  EXPECT_EQ(text, "%WSP-21:" + blank + " Temperature = 541.00;" + wide +
                      "Temperature out of [ 273.25 ,  590.00 ]");
  phase_case(16, 1, "PT", 2e6, 410.5,  // the option's tolerance; Tsat is on the row
             "%WSP-16: too superheated water: T - Tsat > Steam.   10.00; Pressure = 2.0000000E+06 "
             "Temperature= 410.50 Tsat= 400.00");
}

TEST(ExtendedRange, TakesEnthalpyAndItsDerivativesFromThePatches) {
  load_small_tables();
  load_property_tables(0, "", 1, -50.0);
  // Between 2 and 3 MPa, y = 5E5; the water's cell begins at 400 K, the steam's at 490 K.
  const auto cubic = [](double t, double cell = 400) {
    return kPatchCubic * std::pow(t - 300, 3) + 0.05 * (t - cell) + 250 + 125;
  };
  ASSERT_EQ(single_phase(1, "PT", 2.5e6, 430), 0) << text;
  EXPECT_NEAR(properties.value[4], enthalpy(false, 430, 2.5) + cubic(430), 1e-6);
  EXPECT_NEAR(properties.value[11], 1e4 + 3 * kPatchCubic * 130 * 130 + 0.05, 1e-9);
  EXPECT_NEAR(properties.value[12], 0.01 + 3e-6 + 0.001 + 0.00075, 1e-12);
  EXPECT_NEAR(properties.value[3], grid_value(false, 3, 430, 2.5), 1e-9);
  // The density's patches are the same: itself, over temperature, over pressure.
  EXPECT_EQ(properties.value[5], properties.value[4]);
  EXPECT_EQ(properties.value[14], properties.value[11]);
  EXPECT_EQ(properties.value[15], properties.value[12]);
  ASSERT_EQ(single_phase(1, "PH", 2.5e6, enthalpy(false, 430, 2.5) + cubic(430)), 0) << text;
  EXPECT_NEAR(properties.value[2], 430, 1e-8);
  ASSERT_EQ(single_phase(2, "PH", 2.5e6, enthalpy(true, 510, 2.5) + cubic(510, 490)), 0) << text;
  EXPECT_NEAR(properties.value[2], 510, 1e-8);
  load_property_tables(0, "", 99, -50.0);
  ASSERT_EQ(single_phase(1, "PT", 2.5e6, 430), 0);
  EXPECT_NEAR(properties.value[11], grid_value(false, 11, 430, 2.5), 1e-9);
  // Half of the interval: 100 K * (0.5 * 0.5 + 0.5 * 0.125).
  ASSERT_EQ(saturation_line(1, 'P', 1.5e6), 0);
  EXPECT_NEAR(properties.value[2], 331.25, 1e-9);
  ASSERT_EQ(saturation_line(1, 'T', 331.25), 0);
  EXPECT_NEAR(properties.value[1], 1.5e6, 1e-2);
}

TEST(Nwsri2, FindsTheRootNearestItsStart) {
  const PatchTarget target{2, 3, 1e5, 0.5};
  const struct {
    Cubic cubic;
    double start, lowest, highest, root;
  } kCases[] = {
      {{{-6, 11, -6, 1}}, 1.9, 0, 4, 2},  // (x - 1)(x - 2)(x - 3)
      {{{-6, 11, -6, 1}}, 2.9, 0, 4, 3},
      {{{-6, 11, -6, 1}}, 2.9, 0, 1.5, 1},  // the nearest root is outside
      {{{-1, 1, -1, 1}}, 0, -5, 5, 1},      // one real root
      {{{-3, 2, 0, 0}}, 0, 0, 4, 1.5},
      {{{-2, 0, 1, 1e-9}}, 0, 0, 4, 1.41421356184},
  };
  for (const auto& c : kCases) {
    EXPECT_NEAR(NWSRI2(c.cubic, c.start, c.lowest, c.highest, 1e-7, target), c.root, 1e-6);
  }
  const auto run = support::ended_run([&] { NWSRI2({{1, 0, 0, 0}}, 0.5, 0, 1, 1e-5, target); });
  EXPECT_EQ(
      run.console,
      " %dbg- NWSRI2,lab.1: roots of cub. equation\n       Tlin,i1,i2s,P,H=5.000000000E-01 2 3 "
      "1.000000000E+05 5.000000000E-01\n");
}

TEST(Nws0ms, WritesLongTextsInTwoLinesAndTheContext) {
  std::string context(90, 'c'), lines = std::string(40, 'a') + ";" + std::string(38, 'b');
  const auto run = support::ended_run([&] {
    NWS0MS(1, context, false);
    std::string shorter(lines, 1);  // 78 characters
    NWS0MS(0, shorter, false);
    NWS0MS(0, lines, true);
  });
  EXPECT_EQ(run.console, std::string(" ").append(lines, 1) + "\n " + std::string(80, 'c') + "\n " +
                             std::string(40, 'a') + ";\n " + std::string(38, 'b') + "\n " +
                             std::string(80, 'c') + "\n Water/Steam Properties. Stop\n");
  EXPECT_EQ(support::ended_run([&] { NWS0MS(-21, lines, false); }).console,
            " %WSP_F- NWS0MS: 1st parameter > 20\n Water/Steam Properties. Stop\n");
  load_small_tables();
  EXPECT_EQ(support::ended_run([] { single_phase(0, "PT", 1e6, 123456); }).console,
            " %WSP_F- NWS1P1 or NWS2P1: Input parameters don't fit format\n 1pe14.7 or f7.2\n "
            "Water/Steam Properties. Stop\n");
}

}  // namespace
}  // namespace zorvik
