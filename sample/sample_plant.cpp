// The values of a record are appended entry by entry in the order of the file: the catalogue's
// entries make up the extended part exactly, the listed entries follow the problem time.
#include "sample/sample_plant.h"

#include <algorithm>

#include "sample/property_file.h"

namespace zorvik::sample {
namespace {

constexpr double kTimeStep = 2.0;
constexpr std::int32_t kBlock = 20000;

struct State {
  double t, s, u, p, h;
};

State state_at(double t, double fall) {
  const double s = std::max(0.0, t - 10.0);
  const double u = std::max(0.0, s - 27.5);
  return {t, s, u, 1.55e7 - fall * s, std::max(0.0, std::min(t - 20.0, 44.0 - t))};
}

using Values = std::vector<double>;

// Appends f(i, j) for i = 1 .. rows and j = 1 .. columns, rows fastest.
template <class Formula>
void append_array(Values& values, int rows, int columns, Formula f) {
  for (int j = 1; j <= columns; ++j) {
    for (int i = 1; i <= rows; ++i) values.push_back(f(i, j));
  }
}

void append(Values& values, std::initializer_list<double> more) {
  values.insert(values.end(), more);
}

void append_ch(Values& values, const Element& e, const State& x) {
  const int n = e.cells;
  append_array(values, 1, n, [&](int, int j) { return x.p - 1.0e4 * e.number + 100.0 * (n - j); });
  append_array(values, 2, n,
               [&](int i, int j) { return 560.0 + j / 8.0 - x.s / 2.0 + 20.0 * (i - 1); });
  append_array(values, 1, n, [&](int, int j) { return x.s / 64.0 * (1.0 - j / 1024.0); });
  append_array(values, 2, n + 1,
               [&](int i, int j) { return i == 1 ? 4000.0 - 50.0 * x.s + j : 8.0 * x.s; });
  append_array(values, 2, n, [&](int i, int) { return i == 1 ? 100.0 - x.s : x.s / 4.0; });
}

void append_hcs(Values& values, const Element& e, const State& x) {
  append_array(values, 2, e.cells,
               [&](int i, int j) { return 600.0 + j + 20.0 * x.h - 15.0 * (i - 1); });
  append_array(values, 4, e.cells,
               [&](int i, int j) { return 1.0e6 - 1.0e4 * x.s + 1000.0 * i + j; });
}

void append_col(Values& values, const Element& e, const State& x) {
  append(values,
         {x.p + 1.0e4 * e.number, 600.0, 620.0, x.s / 64.0, 2000.0 - 10.0 * x.s, 4.0 * x.s});
}

void append_slves(Values& values, const Element& e, const State& x) {
  const double p = 6.0e6 + 1.0e5 * e.number + 1.0e4 * x.s;
  append(values, {p, 1000.0, 2000.0});
  append_array(values, 1, e.cells, [](int, int j) { return j / 8.0; });
  append_array(values, 1, e.cells, [&](int, int j) { return p + 100.0 * j; });
  append(values, {400.0 - 8.0 * x.s, 5000.0, 10000.0});
}

void append_tank(Values& values, const Element& e, const State& x) {
  append(values, {1.0e5 * e.number, 2.0e4 * e.number, 300.0 + e.number});
  append_array(values, 1, e.cells, [](int, int j) { return j / 8.0; });
  append_array(values, 1, e.cells, [](int, int j) { return 1.0e5 * j; });
  append(values, {x.s, x.s / 2.0, 1000.0 + 20.0 * x.s, 10.0});
}

void append_accum(Values& values, const Element& e, const State& x) {
  const double p = 1.0e7 - 2.0e5 * x.u;
  append(values, {p, 320.0, 325.0, 322.0, p + 1000.0 * e.number, 50.0, 30000.0 - 200.0 * x.u});
}

Values extended_part(const Catalogue& c, const State& x) {
  Values values{0.125};
  for (const Element& e : c.ch) append_ch(values, e, x);
  for (const Element& e : c.hcs) append_hcs(values, e, x);
  for (const Element& e : c.col) append_col(values, e, x);
  for (const Element& e : c.slves) append_slves(values, e, x);
  for (const Element& e : c.tank) append_tank(values, e, x);
  for (const Element& e : c.accum) append_accum(values, e, x);
  return values;
}

Values standard_part(const State& x) {
  Values values{x.t, x.t < 14.0 ? 3.0e9 : 1.875e8};
  append_array(values, 1, 4, [&](int, int i) { return x.t >= 10.0 * i ? 1.0 : 0.0; });
  append_array(values, 2, 6, [&](int i, int j) { return 100.0 * i + 10.0 * j + x.t; });
  return values;
}

Catalogue sample_catalogue() {
  Catalogue c{};
  c.ch = {{1, 20}, {2, 12}, {3, 600}};
  c.hcs = {{1, 20}, {2, 2500}};
  c.col = {{1, 1}, {2, 1}};
  c.slves = {{1, 4}, {2, 4}};
  c.tank = {{1, 6}, {2, 3}};
  c.accum = {{1, 1}, {2, 1}, {3, 1}, {4, 1}};
  c.dt_flag = 1;
  const auto size = static_cast<std::int32_t>(extended_part(c, State{}).size());
  c.blocks = size / kBlock;
  c.rest = size % kBlock;
  return c;
}

}  // namespace

ResultsFile sample_results(int first, int last, double fall) {
  ResultsFile file{};
  file.catalogue = sample_catalogue();
  file.title = "SAMPLE PLANT. SMALL BREAK IN THE COLD LEG";
  file.entries = {{"POWER", 1, 1, 1, 1, 1001},
                  {"VALVE(1:4)", 1, 4, 1, 1, 4003},
                  {"FLUX(1:2,1:3)", 1, 2, 1, 3, 2001},
                  {"FLUX(1:2,4:6)", 1, 2, 4, 6, 2001}};
  for (int k = first; k <= last; ++k) {
    const State x = state_at(k * kTimeStep, fall);
    Values record = extended_part(*file.catalogue, x);
    const Values standard = standard_part(x);
    file.standard_values = static_cast<std::int32_t>(standard.size());
    record.insert(record.end(), standard.begin(), standard.end());
    file.records.push_back(std::move(record));
  }
  return file;
}

SaveFile sample_savings() {
  SaveFile file{};
  file.controls.title = "SAMPLE PLANT. SAVINGS";
  file.controls.state_values = 3;
  for (std::int32_t number = 1; number <= 3; ++number) {
    const State x = state_at(20.0 * number, kFall);
    SaveRecord record{};
    record.time = x.t;
    record.largest_step = 0.125;
    record.number = number;
    record.events = {{"BREAK", 1}, {"SCRAM", 2}};
    record.state = {x.t, x.s, x.p};
    file.records.push_back(std::move(record));
  }
  return file;
}

const std::vector<SampleFile>& sample_files() {
  static const std::vector<SampleFile> files = {
      {"vnxres", [] { return results_file_bytes(sample_results()); }},
      {"vnxsav", [] { return save_file_bytes(sample_savings()); }},
      {"nwsp_dat", [] { return sample_property_file_bytes(); }},
      {"run1", [] { return results_file_bytes(sample_results(0, 20)); }},
      {"run2", [] { return results_file_bytes(sample_results(15)); }},
      {"variant", [] { return results_file_bytes(sample_results(0, 30, 1.5e5)); }},
      {"cut_results",
       [] {
         const std::string more = results_file_bytes(sample_results(0, 21));
         return more.substr(0, results_file_bytes(sample_results(0, 20)).size() + 1000);
       }},
      {"cut_savings",
       [] {
         const std::string whole = save_file_bytes(sample_savings());
         return whole.substr(0, whole.size() - 10);
       }},
  };
  return files;
}

}  // namespace zorvik::sample
