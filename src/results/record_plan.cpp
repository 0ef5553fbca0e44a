// What is wanted of a record is read span by span, or, when the spans leave out little, buffer by
// buffer with everything between them. What the system would have to fetch from the disk is read in
// large blocks instead, unless the records are so large that most of a block would be for nothing:
//   3 values of 10,000 in memory  -> a read of 24 bytes a record
//   the same on the disk          -> a read of 1 MB every 13 records
#include "results/record_plan.h"

#include <algorithm>
#include <cstring>

#include "results/results_variables.h"
#include "stores/keys.h"

namespace zorvik {
namespace {

constexpr int kMergedGap = 512;  // values that are cheaper to read than to jump over

constexpr int kDiskValues = 1 << 17;           // read at a time from the disk: 1 MB
constexpr std::int64_t kNearRecord = 1 << 15;  // values of a record of which blocks hold several
constexpr int kTimeEvery = 64;                 // records

struct RecordBuffer {
  double value[kDiskValues];
  std::int64_t start;  // in the file, bytes
  std::int64_t bytes;
};
RecordBuffer buffer;

void add_run(RecordPlan& plan, std::int64_t value, int position, int count) {
  while (count > 0) {  // no run is longer than a span may be
    const int part = std::min(count, kBlockValues);
    plan.runs.push_back({value, position, part});
    value += part;
    position += part;
    count -= part;
  }
}

// An entry's values follow each other in the record; in its variable's block they do so as far as a
// column goes, or altogether when the entry has all rows of the variable.
void add_entry_runs(RecordPlan& plan, const Entry& entry, const Descriptor& block) {
  const auto rows = static_cast<int>(entry.rows());
  const auto columns = static_cast<int>(entry.columns());
  const int first = block.start + (entry.lo2 - 1) * block.d1 + entry.lo1 - 1;
  const bool whole_columns = rows == block.d1;
  const int pieces = whole_columns ? 1 : columns;
  const int length = whole_columns ? rows * columns : rows;
  for (int k = 0; k < pieces; ++k) {
    add_run(plan, entry.start - 1 + std::int64_t{k} * rows, first + k * block.d1, length);
  }
}

void add_runs(RecordPlan& plan, bool named_only) {
  for (int v = 1; v <= results_variables.count; ++v) {
    const ResultsVariable& variable = results_variables.variable[v];
    if (named_only && !variable.named) continue;
    for (int e = variable.first_entry; e != 0; e = results_variables.next_of_chain[e]) {
      add_entry_runs(plan, entry_table.entry[e], results_store.descriptor[variable.descriptor]);
    }
  }
}

// A run begins a new span when the gap before it is too wide or the span would pass a block.
void form_spans(RecordPlan& plan) {
  for (std::size_t r = 0; r < plan.runs.size(); ++r) {
    const Run& run = plan.runs[r];
    if (!plan.spans.empty()) {
      Span& span = plan.spans.back();
      const std::int64_t end = std::max(span.value + span.count, run.value + run.count);
      if (run.value - (span.value + span.count) <= kMergedGap && end - span.value <= kBlockValues) {
        span.count = static_cast<int>(end - span.value);
        span.end_run = r + 1;
        continue;
      }
    }
    plan.spans.push_back({run.value, run.count, r, r + 1});
  }
}

// True when a read for each span of a record, which costs as much as kMergedGap values, would not
// cost less than reading the record.
bool spans_are_dense(const RecordPlan& plan) {
  std::int64_t cost = 0;
  for (const Span& span : plan.spans) cost += span.count + kMergedGap;
  return !plan.spans.empty() && cost >= plan.record_values;
}

// Reads into the buffer from `start` on, at least `bytes` bytes.
ReadStatus fill_buffer(File& file, const RecordPlan& plan, std::int64_t start, std::int64_t bytes) {
  const auto upto_end = [&](std::int64_t values) {
    return std::min(values * kValueBytes, std::max(plan.data_end - start, bytes));
  };
  buffer.start = start;
  buffer.bytes = plan.reads_ahead ? upto_end(kBlockValues) : bytes;
  if (file.read_cached_at(start, buffer.value, static_cast<std::size_t>(buffer.bytes))) {
    return ReadStatus::kOk;
  }
  if (plan.reads_ahead || plan.record_values <= kNearRecord) buffer.bytes = upto_end(kDiskValues);
  ReadStatus status = file.read_at(start, buffer.value, static_cast<std::size_t>(buffer.bytes));
  if (status != ReadStatus::kOk && buffer.bytes > bytes) {  // a fault in what is not wanted yet
    buffer.bytes = bytes;
    status = file.read_at(start, buffer.value, static_cast<std::size_t>(bytes));
  }
  if (status != ReadStatus::kOk) buffer.bytes = 0;
  return status;
}

// Makes the buffer hold the span; kOk with `from` at its first value.
ReadStatus fetch(File& file, const RecordPlan& plan, std::int64_t start, int count,
                 const double*& from) {
  const std::int64_t bytes = count * kValueBytes;
  if (start < buffer.start || start + bytes > buffer.start + buffer.bytes) {
    const ReadStatus status = fill_buffer(file, plan, start, bytes);
    if (status != ReadStatus::kOk) return status;
  }
  from = buffer.value + (start - buffer.start) / kValueBytes;
  return ReadStatus::kOk;
}

}  // namespace

void plan_records(RecordPlan& plan, const ResultsHeader& header, std::int64_t first_record,
                  std::int64_t records, bool named_only) {
  plan.runs.clear();
  plan.spans.clear();
  plan.first_record = first_record;
  plan.record_values = header.record_values();
  plan.data_end = first_record + records * header.record_bytes();
  add_runs(plan, named_only);
  plan.time_value = header.extended_values();
  plan.loads_time = !named_only || results_variables.time_named;
  if (plan.loads_time) add_run(plan, plan.time_value, results_store.descriptor[kTau].start, 1);
  std::sort(plan.runs.begin(), plan.runs.end(),  // no two have the same place in the record
            [](const Run& a, const Run& b) { return a.value < b.value; });
  form_spans(plan);
  plan.reads_ahead = spans_are_dense(plan);
}

ReadStatus load_record(File& file, const RecordPlan& plan, std::int64_t number) {
  const std::int64_t record = (number - 1) * plan.record_values;
  // The first record is one of them, so that the problem time has a value from the beginning.
  if (!plan.loads_time && number % kTimeEvery == 1) {
    const ReadStatus status = load_time(file, plan, number);
    if (status != ReadStatus::kOk) return status;
  }
  for (const Span& span : plan.spans) {
    const double* from = nullptr;
    const std::int64_t start = plan.first_record + (record + span.value) * kValueBytes;
    const ReadStatus status = fetch(file, plan, start, span.count, from);
    if (status != ReadStatus::kOk) return status;
    for (std::size_t r = span.first_run; r < span.end_run; ++r) {
      const Run& run = plan.runs[r];
      std::memcpy(results_store.value + run.position, from + (run.value - span.value),
                  static_cast<std::size_t>(run.count) * sizeof(double));
    }
  }
  return ReadStatus::kOk;
}

ReadStatus load_time(File& file, const RecordPlan& plan, std::int64_t number) {
  const std::int64_t value = (number - 1) * plan.record_values + plan.time_value;
  return file.read_at(plan.first_record + value * kValueBytes, &main_key_value(kTau),
                      sizeof(double));
}

}  // namespace zorvik
