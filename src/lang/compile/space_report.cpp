// The end of pass 2: what the program takes of the fixed tables. Errors end the run after the
// report, so that a program too large and in error shows both; the first record is loaded only for
// a program that will run.
//   Usage of space: Variables (<vnxres>), Descriptors, Procedures
//   Used   space:           9.67%            2.25%        0.20%
#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "driver/units.h"
#include "lang/code/code_store.h"
#include "lang/code/jump_table.h"
#include "lang/compile/pass_two.h"
#include "results/results_reader.h"
#include "stores/keys.h"

namespace zorvik {
namespace {

NumberText used_percentage(int next_free, int capacity) {
  return format_percentage((next_free - 1) * 100.0 / capacity);
}

void list_usage() {
  write_blank_line(listing_unit);
  issue_message(listing_unit, "Usage of space: Variables (<vnxres>), Descriptors, Procedures");
  // The blanks set each percentage below its word.
  issue_message(
      listing_unit,
      message("Used   space:         ", used_percentage(results_store.next_value, kResultsCapacity),
              "%          ", used_percentage(results_store.next_descriptor, kDescriptorCapacity),
              "%      ", used_percentage(code_store.next_free, kCodeCapacity), "% "));
  write_blank_line(listing_unit);
}

}  // namespace

void report_space_usage(int unit) {
  set_initial_values_of_main();
  list_usage();
  resolve_output_keys();
  if (error_count > 0) {
    stop_with_notice();
  }
  load_first_record();
  if (const int status = file_on(unit).close(); status != 0) {
    stop_with_listing("%fat- Close error. File <zrvdat>", kNoLine, status);
  }
  if (const int status = file_on(kScratchUnit).close(); status != 0) {
    stop_with_listing("%fat- Close error. Scratch file", kNoLine, status);
  }
}

}  // namespace zorvik
