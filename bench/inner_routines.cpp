// inner_routines: single routines under Google Benchmark. "items_per_second" counts numbers, passes
// of a loop, records or look-ups. Runs in a directory of its own, which it fills with the sample
// plant.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "driver/number_format.h"
#include "driver/units.h"
#include "exec/executor.h"
#include "lang/check/pass_one.h"
#include "lang/compile/pass_two.h"
#include "lang/text/lexer.h"
#include "results/record_plan.h"
#include "results/results_variables.h"
#include "sample/sample_plant.h"
#include "service/text_reader.h"
#include "stores/results_store.h"
#include "wsp/property_file.h"
#include "wsp/single_phase.h"

namespace zorvik {
namespace {

void format_reals(benchmark::State& state) {
  double value = 1.25e-30;
  for (auto _ : state) {
    benchmark::DoNotOptimize(format_real(value));
    value *= 1.0001;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(format_reals);

void read_text_reals(benchmark::State& state) {
  constexpr int kNumbers = 10000;
  std::string text;
  for (int k = 0; k < kNumbers; ++k) {
    text += format_real(1.0001 * k - 3000.0);
    text += k % 4 == 3 ? '\n' : ' ';
  }
  std::ofstream("numbers") << text;
  const TextForm form{"<numbers>", "<binary>", "", true};
  File& file = file_on(kTextUnit);
  File binary;
  binary.open_scratch();
  GroupWriter output(binary, form);
  for (auto _ : state) {
    file.open_to_read("numbers");
    TextReader reader(kTextUnit, form, output);
    for (int k = 0; k < kNumbers; ++k) benchmark::DoNotOptimize(reader.real(Sign::kPlusOrMinus));
    file.close();
  }
  state.SetItemsProcessed(state.iterations() * kNumbers);
}
BENCHMARK(read_text_reals);

// Loads records of the sample plant for one variable, or for all.
void load_records(benchmark::State& state, bool named_only) {
  static ResultsHeader header;
  File file;
  file.open_to_read("vnxres");
  reset_results_store();
  reset_results_variables();
  read_header(file, header);
  build_entry_table(header);
  form_results_variables();
  results_variables.variable[find_results_variable("T.CH3")].named = true;
  RecordPlan plan;
  constexpr int kRecords = 31;
  plan_records(plan, header, file.position(), kRecords, named_only);
  for (auto _ : state) {  // the first record is no longer in the buffer when the last one is
    for (int k = 1; k <= kRecords; ++k) load_record(file, plan, k);
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK_CAPTURE(load_records, of_one_variable, true);
BENCHMARK_CAPTURE(load_records, of_all, false);

void look_up_properties(benchmark::State& state, const char* kind, double second) {
  select_property_tables();
  PropertyArray properties;
  std::string text;
  double pressure = 1.0e6;
  for (auto _ : state) {
    pressure = pressure < 1.5e7 ? pressure + 1.0e3 : 1.0e6;
    NWS2P1(kAnyPhase, kind, pressure, second, 5, 5, properties, text);
    benchmark::DoNotOptimize(properties.value[5]);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(look_up_properties, of_a_temperature, "PT", 550.0);
BENCHMARK_CAPTURE(look_up_properties, of_an_enthalpy, "PH", 2.9e6);

constexpr int kPasses = 100000;

// There is one program in a process, which can be run again and again.
bool compile_loop() {
  std::ofstream("zrvdat") << "START:\nS = 0.0; X = 1.5;\nDO I = 1, " << kPasses
                          << ";\nX = X * 1.00001 - 0.25; S = S + X / I;\nENDDO\nEND\n";
  open_file(kProgramUnit, "DAT");
  open_file(kListingUnit, "LIS");
  reset_source_line();
  reset_lexer();
  parse_pass(kProgramUnit);
  u91ps2(kProgramUnit);
  return true;
}

void run_loop(benchmark::State& state) {
  static const bool compiled = compile_loop();
  for (auto _ : state) {
    benchmark::DoNotOptimize(compiled);
    S9XMA3();
  }
  state.SetItemsProcessed(state.iterations() * kPasses);
}
BENCHMARK(run_loop);

}  // namespace
}  // namespace zorvik

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  char directory[] = "/tmp/zorvik_inner_XXXXXX";
  if (::mkdtemp(directory) == nullptr || ::chdir(directory) != 0) {
    std::perror("inner_routines");
    return 1;
  }
  for (const auto& [name, bytes] : zorvik::sample::sample_files()) {
    std::ofstream(name, std::ios::binary) << bytes();
  }
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(directory);
}
