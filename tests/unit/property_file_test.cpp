// Reading of property tables files, good ones and damaged ones.
#include "wsp/property_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "driver/units.h"
#include "sample/property_file.h"
#include "support/run_directory.h"
#include "wsp/property_tables.h"

namespace zorvik {
namespace {

using sample::empty_property_file;
using sample::property_file_bytes;
using sample::PropertyFile;

support::RunDirectory directory;
const std::string kPath = directory.path("tables");

void write_file(const std::string& bytes) {
  std::ofstream(kPath, std::ios::binary | std::ios::trunc) << bytes;
}

// What the console shows when the file of those bytes is refused.
std::string refusal(const std::string& bytes) {
  const auto run = directory.run({{"tables", bytes}},
                                 [] { load_property_tables(kPropertyUnit, "tables", 99, 0.0); });
  EXPECT_EQ(run.status, 1);
  return run.console;
}

std::string stop(const std::string& text) {
  return " " + text + "\n Water/Steam Properties. Stop\n";
}

TEST(PropertyFile, CutAnywhereItEndsPrematurely) {
  std::vector<std::size_t> borders;
  const std::string good = property_file_bytes(empty_property_file(2, 2, 3, 2, 1), &borders);
  // Records: 1 + 15 + 12 + 4 + 14 + 4 + 2, the grids 2 * 12 * 3, M, patches 4 + 4 + 2 + 2, V1 to
  // V3.
  ASSERT_EQ(borders.size(), 52u + 72 + 1 + 12 + 3 + 1);
  const std::string expected = stop("%WSP_F- Premature end-of-file detected;File tables");
  for (std::size_t k = 0; k + 1 < borders.size(); ++k) {
    for (const std::size_t cut : {borders[k], (borders[k] + borders[k + 1]) / 2}) {
      ASSERT_EQ(refusal(good.substr(0, cut)), expected) << "record " << k + 1 << " cut at " << cut;
    }
  }
  EXPECT_EQ(refusal(good.substr(0, good.size() - 1)), expected);
}

TEST(PropertyFile, CountsAreHeldAgainstTheirLimits) {
  const struct {
    std::int32_t PropertyFile::*count;
    std::int32_t value;
    const char* text;
  } kCases[] = {
      {&PropertyFile::n, 151, "N > 150"},        {&PropertyFile::np, 250, "NP > 249"},
      {&PropertyFile::nt, 250, "NT > 249"},      {&PropertyFile::nc, 600, "NC > 599"},
      {&PropertyFile::m, 211, "M > 210"},        {&PropertyFile::n, 1, "N < 2"},
      {&PropertyFile::np, 1, "NP < 2"},          {&PropertyFile::nt, -2147483647 - 1, "NT < 2"},
      {&PropertyFile::nc, 0, "NC < 1"},          {&PropertyFile::k1, 0, "K1 out of [1,N]"},
      {&PropertyFile::k1, 3, "K1 out of [1,N]"}, {&PropertyFile::k2, -1, "K2 out of [1,N]"},
      {&PropertyFile::k2, 3, "K2 out of [1,N]"},
  };
  for (const auto& c : kCases) {
    PropertyFile file = empty_property_file(2, 2, 2, 1, 0);
    file.*c.count = c.value;
    EXPECT_EQ(refusal(property_file_bytes(file)), stop(std::string("%WSP_F- NWS0SM: ") + c.text));
  }
  PropertyFile largest = empty_property_file(150, 249, 249, 599, 210);
  largest.k1 = largest.k2 = 150;
  largest.saturation_cubic.back() = 2.5;
  write_file(property_file_bytes(largest));
  EXPECT_EQ(load_property_tables(kPropertyUnit, kPath, 99, 0.0), 0);
  EXPECT_EQ(property_tables.saturation_cubic[3 * 150 - 1], 2.5);
}

TEST(PropertyFile, WithoutSteamPatchesTheLastRecordsFollowDirectly) {
  for (const int m : {0, -5}) {
    PropertyFile file = empty_property_file(2, 2, 2, 1, 0);
    file.m = m;
    file.saturation_cubic = {1, 2, 3, 4, 5, 6};
    file.temperature = {300, 400};
    write_file(property_file_bytes(file));
    load_property_tables(kPropertyUnit, kPath, 99, 0.0);
    EXPECT_EQ(property_tables.saturation_cubic[5], 6);
    load_property_tables(0, "", 99, -1.0);  // TG(M) with M = 0 is not before the first temperature
    EXPECT_EQ(property_tables.temperature_limit, 300);
  }
}

TEST(PropertyFile, FramesOfRecordsAreHeldAgainstEachOther) {
  std::vector<std::size_t> borders;
  const std::string good = property_file_bytes(empty_property_file(2, 2, 2, 1, 0), &borders);
  const std::size_t second = borders[1], third = borders[2];  // a record of 16 bytes
  const std::string read_error = stop("%WSP_F- Read error.File tables Iostat =          5");
  std::string shorter = good, negative = good, unequal = good, longer = good;
  shorter[second] = 8;
  EXPECT_EQ(refusal(shorter), read_error);
  negative[second + 3] = '\x80';
  EXPECT_EQ(refusal(negative), read_error);
  unequal[third - 4] = 17;
  EXPECT_EQ(refusal(unequal), read_error);
  longer[second] = longer[third - 4] = 24;
  longer.insert(third - 4, "surplus.");
  write_file(longer);
  EXPECT_EQ(load_property_tables(kPropertyUnit, kPath, 99, 0.0), 0);
  PropertyFile large = empty_property_file(2, 60, 60, 1, 0);  // several buffers long
  large.saturation_cubic.back() = 2.5;
  longer = property_file_bytes(large, &borders);
  const std::size_t late = borders[borders.size() - 5], after = borders[borders.size() - 4];
  longer[late] = longer[after - 4] = static_cast<char>(after - late);
  longer.insert(after - 4, "surplus.");
  write_file(longer);
  EXPECT_EQ(load_property_tables(kPropertyUnit, kPath, 99, 0.0), 0);
  EXPECT_EQ(property_tables.saturation_cubic[5], 2.5);
}

TEST(PropertyFile, NamesAreHeldAgainstTheirLimit) {
  const auto load = [](const std::string& name) {
    return support::ended_run([&] { load_property_tables(kPropertyUnit, name, 99, 0.0); }).console;
  };
  EXPECT_EQ(load("missing"), stop("%WSP_F- Open error.File missing Iostat =          2"));
  EXPECT_EQ(load(std::string(81, 'x')),
            stop("%WSP_F- NWS0SM: Length of input file specification > 80"));
  EXPECT_EQ(load(std::string(80, 'x')),  // split at a ";" it would be, had it one
            stop("%WSP_F- Open error.File " + std::string(80, 'x') + " Iostat =          2"));
}

}  // namespace
}  // namespace zorvik
