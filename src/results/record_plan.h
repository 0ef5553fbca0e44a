// The plan by which records are loaded: worked out once, executed for every record.
//
// A run is a stretch of values that is contiguous both in the record and in the results store. Runs
// that lie close together in the file form a span, which is read in one go; what lies between spans
// is never read.
#ifndef ZORVIK_RESULTS_RECORD_PLAN_H_
#define ZORVIK_RESULTS_RECORD_PLAN_H_

#include <cstdint>
#include <vector>

#include "driver/file.h"
#include "results/header.h"

namespace zorvik {

struct Run {
  std::int64_t value;  // first value in the record, from 0
  int position;        // first position in the results store
  int count;
};

struct Span {
  std::int64_t value;
  int count;  // values; at most kBlockValues
  std::size_t first_run, end_run;
};

struct RecordPlan {
  std::vector<Run> runs;  // in file order
  std::vector<Span> spans;
  std::int64_t first_record;  // in the file, bytes
  std::int64_t data_end;      // of the last complete record
  std::int64_t record_values;
  std::int64_t time_value;  // the problem time's, in the record
  bool loads_time;          // with every record
  bool reads_ahead;         // reading everything costs less than a read for each span
};

// Plans the loading of the results variables that are named and of the problem time if it is, or of
// all of them, from `records` complete records, the first of which begins at byte `first_record`.
void plan_records(RecordPlan& plan, const ResultsHeader& header, std::int64_t first_record,
                  std::int64_t records, bool named_only);

// Loads record `number` (from 1) into the results store; a problem time that no one has named every
// 64 records, which is enough to see how far the run is. kEnd or kCut when the file ends before its
// end, kError with file.io_status(); in these cases nothing is promised of the store.
ReadStatus load_record(File& file, const RecordPlan& plan, std::int64_t number);

// Loads the problem time alone.
ReadStatus load_time(File& file, const RecordPlan& plan, std::int64_t number);

}  // namespace zorvik

#endif  // ZORVIK_RESULTS_RECORD_PLAN_H_
