#include "faults/scenarios.h"

#include "sample/property_file.h"
#include "sample/results_file.h"
#include "sample/save_file.h"

namespace zorvik::faults {
namespace {

using sample::Reals;

constexpr std::size_t kTorn = 20;  // bytes missing from a torn record

Reals ramp(int count, double first) {
  Reals values;
  for (int k = 0; k < count; ++k) values.push_back(first + k);
  return values;
}

// A record every half second from `start` on.
std::string results(Layout layout, int values, double start, int records) {
  sample::ResultsFile file{values + 2, {}, {}, "Plant", {}};
  int leading = 0;  // values of the catalogue's entries: 10 of CH
  if (layout != Layout::kStandard) {
    const bool extended = layout == Layout::kExtended;
    leading = extended ? 11 : 10;
    file.catalogue = sample::Catalogue{{{5, 1}}, {}, {}, {}, {}, {}, {}, extended, 0, 11};
    if (!extended) file.standard_values += leading;
  }
  file.entries = {{"A(1:9)", 1, values, 1, 1, 1000 * values + 1}, {"K", 1, 1, 1, 1, 1003}};
  for (int k = 0; k < records; ++k) {
    const double time = start + 0.5 * k;
    Reals record = ramp(leading, 100.0);
    record.insert(layout == Layout::kExtended ? record.end() : record.begin(), time);
    for (const double value : ramp(values, time)) record.push_back(value);
    record.push_back(k);
    file.records.push_back(record);
  }
  return results_file_bytes(file);
}

sample::SaveFile savings(int values) {
  sample::SaveFile file;
  file.controls = {7, "Plant", {1, 2}, {3}, {4, 5}, {-6}, values};
  for (int k = 1; k <= 3; ++k) {
    sample::SaveRecord record;
    record.variables = 3;
    record.time = k;
    record.largest_step = 0.5;
    record.number = k;
    record.names = {"PUMP"};
    record.pointers = record.more_pointers = record.lengths = {10};
    record.extents = {13, 14};
    record.first_extent = 1;
    record.value_pointers = {15};
    record.values = {-1.5};
    record.text = "on";
    record.constant_text = "c";
    record.events = {{"TRIP", 18}};
    record.event_code = {-20};
    record.rest = {5, {3.5}, {22}, {}};
    record.lists = {{"L1", 23}};
    record.list_items = {24};
    record.state = ramp(values, k);
    record.output_texts = {"a line"};
    file.records.push_back(record);
  }
  return file;
}

// A command that rewrites its first file, if any.
Scenario command(const std::string& text, Files files, const std::string& number = "1",
                 Rewrite rewrite = Rewrite::kNone, std::size_t header = 0, std::size_t record = 0) {
  const std::string rewritten = rewrite == Rewrite::kNone ? "" : files.begin()->first;
  Scenario scenario{text, files, {}, rewrite, rewritten, header, record};
  for (const auto& [name, content] : files) scenario.swept.push_back(name);
  scenario.files["zrvdat"] =
      "L: N(1:2) = 1; N(2) = 3; X = SCMD2('" + text + "', " + number + "); END\n";
  return scenario;
}

Scenario program(const std::string& vnxres, int values) {
  const std::string tables = property_file_bytes(sample::sample_property_tables({4, 4, 4, 2}));
  const std::string text =
      "S = 0.0; N = 9; ! a comment\n"
      "BEGIN; IF TAU => 0.5 THEN S = S + A(1) * 2; ENDIF \n"
      "OUT EACH; GOTO M; S = 0.0; M: END\n"
      "PRINT 'Sum', S, TITLE, WS1P1(1, 'T', 400.0, 4); WRITE N;\nEND\n"
      "OUTPUT EACH; DO J = 1, " +
      std::to_string(values) + ";\nWRITE A(J), K, 'of', J; ENDDO END\n";
  return {"run",
          {{"zrvdat", text}, {"vnxres", vnxres}, {"nwsp_dat", tables}},
          {"zrvdat", "vnxres", "nwsp_dat"},
          Rewrite::kNone,
          ""};
}

}  // namespace

std::vector<Scenario> all_scenarios(Layout layout, int values) {
  const std::string whole = results(layout, values, 0.0, 3),
                    later = results(layout, values, 0.5, 3);
  const std::size_t header = results(layout, values, 0.0, 0).size(),
                    record = results(layout, values, 0.0, 1).size() - header;
  const Files runs = {{"one", whole}, {"two", later}};
  const Scenario results_to_text = command("TO_TEXT RESULTS", {{"vnxres", whole}});
  Scenario joined = command("all = one + two", runs, "1");
  joined.swept.clear();  // its reading is the others'

  const sample::SaveFile file = savings(values);
  const std::string saved = save_file_bytes(file);
  const std::size_t saved_header = control_structures_bytes(file.controls).size(),
                    saved_record = save_record_bytes(file.records[0]).size();
  const Scenario savings_to_text = command("TO_TEXT SAVING", {{"vnxsav", saved}}, "2");

  const auto torn = [](const std::string& bytes) { return bytes.substr(0, bytes.size() - kTorn); };
  const auto made = [](const Scenario& scenario, const std::string& name) {
    return Files{{name, run(scenario.files).files[name]}};
  };
  return {program(whole, values),
          command("SHOW LIST", {{"vnxres", whole}}),
          command("REPAIR RESULTS", {{"vnxres", torn(whole)}}, "1", Rewrite::kCut, header, record),
          results_to_text,
          command("FROM_TEXT RESULTS", made(results_to_text, "restxt")),
          command("one = one + two", runs, "0", Rewrite::kLonger),
          joined,
          command("new = one + two", runs, "2"),
          command("SHOW SAVING", {{"vnxsav", saved}}),
          command("SHOW EVENTS", {{"vnxsav", saved}}),
          command("KEEP", {{"vnxsav", saved}}, "N", Rewrite::kReplaced),
          command("REPAIR SAVING", {{"vnxsav", torn(saved)}}, "1", Rewrite::kCut, saved_header,
                  saved_record),
          savings_to_text,
          command("FROM_TEXT SAVING", made(savings_to_text, "savtxt"))};
}

}  // namespace zorvik::faults
