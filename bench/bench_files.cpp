// bench_files KIND: writes the file or files of a benchmark into the current directory.
//   header    vnxres: 3,908 entries of 20 values, one record
//   extended  vnxres: extended layout, 64,031 values a record, 256 records (131 MB)
//   standard  vnxres: standard layout, 2,001 values a record, 8,000 records (128 MB)
//   seven     vnxres: standard layout, 501 values a record, 32,000 records (128 MB)
//   text      vnxres: the same as seven, 5,000 records (20 MB)
//   join      run1 and run2: the same layout, 8,000 records each, one after the other in time
//   savings   savings, a save file: 400 records of 200 KB; kept: as many bytes as half of them
//   tables    nwsp_dat of the sample plant
//   largest   zrvdat and largest.c: the same program, nearly as large as it may be
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "sample/bytes.h"
#include "sample/property_file.h"
#include "sample/results_file.h"
#include "sample/save_file.h"

namespace zorvik::sample {
namespace {

using Values = std::vector<double>;

std::string bytes_of(const Values& values) {
  std::string bytes;
  for (const double value : values) append_real(bytes, value);
  return bytes;
}

// Writes the records with the problem time at value `time_at`, the others changing a little.
void write_records(std::ofstream& out, Values values, std::size_t time_at, int first, int count) {
  for (std::size_t k = 0; k < values.size(); ++k) {
    values[k] = std::exp(std::sin(static_cast<double>(k + 1)) * 20.0);
  }
  for (int record = first; record < first + count; ++record) {
    values[time_at] = record * 0.5;
    for (std::size_t k = time_at + 1; k < values.size(); k += 3) values[k] *= 1.0000123;
    out << bytes_of(values);
  }
}

std::ofstream created(const std::string& name) { return std::ofstream(name, std::ios::binary); }

void write_header_file() {
  ResultsFile file{};
  for (int k = 1; k <= 3908; ++k) {
    char name[32];
    std::snprintf(name, sizeof name, "Q%04d(1:20)", k);
    file.entries.push_back({name, 1, 20, 1, 1, 20001});
  }
  file.standard_values = 1 + 3908 * 20;
  std::ofstream out = created("vnxres");
  out << results_header_bytes(file);
  write_records(out, Values(static_cast<std::size_t>(file.standard_values)), 0, 0, 1);
}

void write_extended_file() {
  ResultsFile file{};
  file.catalogue.emplace();
  for (int k = 1; k <= 8; ++k) file.catalogue->ch.push_back({k, 1000});
  constexpr int kExtended = 1 + 8 * (8 * 1000 + 2);
  file.catalogue->dt_flag = 1;
  file.catalogue->blocks = kExtended / 20000;
  file.catalogue->rest = kExtended % 20000;
  file.entries = {{"POWER", 1, 1, 1, 1, 1001}, {"LEVEL(1:12)", 1, 12, 1, 1, 12001}};
  file.standard_values = 14;
  std::ofstream out = created("vnxres");
  out << results_header_bytes(file);
  write_records(out, Values(kExtended + 14), kExtended, 0, 256);
}

// Twenty variables of `extent` values each.
void write_standard_file(const std::string& name, int extent, int first, int count) {
  ResultsFile file{};
  file.standard_values = 1 + 20 * extent;
  for (int k = 1; k <= 20; ++k) {
    char entry[32];
    std::snprintf(entry, sizeof entry, "S%d(1:%d)", k, extent);
    file.entries.push_back({entry, 1, extent, 1, 1, 1000 * extent + 1});
  }
  std::ofstream out = created(name);
  out << results_header_bytes(file);
  write_records(out, Values(static_cast<std::size_t>(file.standard_values)), 0, first, count);
}

void write_savings() {
  SaveFile file{};
  file.controls.title = "BENCHMARK";
  file.controls.state_values = 25000;
  std::ofstream out = created("savings"), kept = created("kept");
  out << control_structures_bytes(file.controls);
  for (std::int32_t number = 1; number <= 400; ++number) {
    SaveRecord record{};
    record.time = number;
    record.number = number;
    record.events = {{"BREAK", 1}};
    record.state.assign(25000, number * 0.5);
    const std::string bytes = save_record_bytes(record);
    out << bytes;
    if (number % 2 == 0) kept << bytes;
  }
}

void write_largest_program() {
  std::ofstream program = created("zrvdat"), c = created("largest.c");
  std::string begin = "START:\n",
              c_begin = "#include <math.h>\n#include <stdio.h>\nint main(void) {\n", body, c_body;
  constexpr int kNames = 290, kStatements = 820;
  const auto name = [](int k) { return "VALUE_" + std::to_string(k % kNames); };
  for (int k = 0; k < kNames; ++k) {
    begin += name(k) + " = 1.5;\n";
    c_begin += "double " + name(k) + " = 1.5;\n";
  }
  for (int k = 0; k < kStatements; ++k) {
    const std::string statement =
        name(k * 7) + " = " + name(k * 11 + 3) + " * 1.25 + " + name(k * 13 + 5) + ";\n";
    body += statement;
    c_body += statement;
  }
  program << begin << body << "PRINT " << name(7) << "; END\n";
  c << c_begin << c_body << "printf(\"%g\", " << name(7) << "); return 0; }\n";
}

constexpr struct {
  std::string_view kind;
  void (*write)();
} kKinds[] = {
    {"header", write_header_file},
    {"extended", write_extended_file},
    {"standard", [] { write_standard_file("vnxres", 100, 0, 8000); }},
    {"seven", [] { write_standard_file("vnxres", 25, 0, 32000); }},
    {"text", [] { write_standard_file("vnxres", 25, 0, 5000); }},
    {"join",
     [] {
       write_standard_file("run1", 25, 0, 8000);
       write_standard_file("run2", 25, 8000, 8000);
     }},
    {"savings", write_savings},
    {"tables", [] { created("nwsp_dat") << sample_property_file_bytes(); }},
    {"largest", write_largest_program},
};

bool write_files(std::string_view kind) {
  for (const auto& row : kKinds) {
    if (row.kind != kind) continue;
    row.write();
    return true;
  }
  return false;
}

}  // namespace
}  // namespace zorvik::sample

int main(int argc, char** argv) {
  if (argc == 2 && zorvik::sample::write_files(argv[1])) return 0;
  std::fputs("usage: bench_files KIND\n", stderr);
  return 2;
}
