// The header is read before the program is compiled, the first record after it, when it is known
// which variables are wanted; then a record a call.
#include "results/results_reader.h"

#include <algorithm>
#include <string>

#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/number_format.h"
#include "driver/progress.h"
#include "driver/text.h"
#include "driver/units.h"
#include "results/record_plan.h"
#include "results/results_variables.h"
#include "stores/keys.h"
#include "stores/notkeys.h"
#include "stores/value_types.h"

namespace zorvik {

bool no_results_file = false;

namespace {

ResultsHeader header;
RecordPlan plan;

struct ReaderState {
  bool header_read;
  std::int64_t first_record;  // in the file, bytes
  std::int64_t records;       // complete records of the file
  std::int64_t loaded;        // of them so far
};
ReaderState state;

void stop_on_bad_header(HeaderStatus status) {
  switch (status) {
    case HeaderStatus::kOk:
      return;
    case HeaderStatus::kReadError:
      stop_on_console("%fat- Read error. File <vnxres>", file_on(kResultsUnit).io_status());
    case HeaderStatus::kEnd:
      stop_on_console("%fat- Premature End_of_file detected. File <vnxres>");
    case HeaderStatus::kInvalid:
      stop_on_console("%fat- Invalid header. File <vnxres>");
    case HeaderStatus::kTooLarge:
      stop_on_console("%fat- Header is too large. File <vnxres>");
    case HeaderStatus::kCatalogueFull:
      stop_on_console("%fat- Space is full. Increase parametermaxOUT in VARNOX utility");
  }
}

void define_title() {
  // The first notkey, before any name of the program.
  const int number = enter_notkey("TITLE", kNoLine);
  define_notkey(number, kCharacter, 0, header.nt(), 1, kNoLine);
  std::copy_n(header.title, header.nt(), notkeys.text + notkeys.notkey[number].descriptor.start);
}

void open_and_read_header() {
  open_file(kResultsUnit, "RES");
  File& file = file_on(kResultsUnit);
  stop_on_bad_header(read_header(file, header));
  stop_on_bad_header(build_entry_table(header));
  stop_on_bad_header(form_results_variables());
  state.header_read = true;
  state.loaded = 0;
  state.first_record = file.position();
  state.records =
      std::max<std::int64_t>(file.size() - state.first_record, 0) / header.record_bytes();
}

void note_cut_record(File& file) {
  const std::int64_t left_over =
      file.size() - state.first_record - state.records * header.record_bytes();
  if (left_over <= 0) return;
  note(Hazard::kCutResults, [&] {
    // The last record's time, which TAU holds already when the program uses it.
    load_time(file, plan, state.records);
    return message("vnxres ends inside a record: ", state.records,
                   " records read, the last at TAU = ",
                   trim_left(std::string_view(format_real(main_key_value(kTau)))), ", ", left_over,
                   " bytes left over; SCMD2('REPAIR RESULTS',0) cuts them off");
  });
}

// Positions that no entry covers hold the marker in every record: nothing but a record may write to
// them.
void clear_named_blocks() {
  for (int v = 1; v <= results_variables.count; ++v) {
    const ResultsVariable& variable = results_variables.variable[v];
    if (!variable.named) continue;
    const Descriptor& block = results_store.descriptor[variable.descriptor];
    std::fill_n(results_store.value + block.start, block.d1 * block.d2, kUndefined);
  }
}

}  // namespace

void open_results_file() {
  if (no_results_file) return;
  open_and_read_header();
  define_title();
  // Last, so that the faults of a header come before the emptiness of its file.
  if (state.records == 0) stop_with_listing("%fat- File <vnxres> has no records");
}

void load_first_record() {
  if (no_results_file) return;
  clear_named_blocks();
  plan_records(plan, header, state.first_record, state.records, true);
  show_progress_of({"records", &state.loaded, state.records, &main_key_value(kTau)});
  read_results_record();
}

int read_results_record() {
  if (no_results_file) return kNoMoreRecords;
  File& file = file_on(kResultsUnit);
  if (!file.is_open()) return kNoMoreRecords;
  if (state.loaded >= state.records) {
    note_cut_record(file);
    return kNoMoreRecords;
  }
  const ReadStatus status = load_record(file, plan, state.loaded + 1);
  if (status == ReadStatus::kError) stop_on_bad_header(HeaderStatus::kReadError);
  if (status != ReadStatus::kOk) {  // cut while it was being read
    state.records = 0;
    return kNoMoreRecords;
  }
  ++state.loaded;
  return kRecordLoaded;
}

int close_results_file() { return file_on(kResultsUnit).close(); }

void list_parameters() {
  if (!state.header_read) open_and_read_header();
  constexpr std::size_t kLastColumn = 74;
  issue_message(listing_unit, "%inf- List of parameters from <vnxres>");
  std::string line;
  for (int e = 1; e <= entry_table.count; ++e) {
    const std::string_view name = entry_table.entry[e].full_name();
    if (!line.empty() && line.size() + 1 + name.size() > kLastColumn) {
      issue_message(listing_unit, line);
      line.clear();
    }
    if (!line.empty()) line += ' ';
    line += name;
  }
  issue_message(listing_unit, line);
}

}  // namespace zorvik
