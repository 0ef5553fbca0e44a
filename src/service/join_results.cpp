// All checks come first. Times are read from the records in place; then bytes are copied in two
// stretches, the earlier file's and the later one's, without looking into the records again.
#include "service/join_results.h"

#include <algorithm>
#include <cmath>

#include "driver/interruption.h"
#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/progress.h"
#include "driver/text.h"
#include "driver/units.h"
#include "service/join_command.h"
#include "service/join_input.h"

namespace zorvik {
namespace {

constexpr double kEqualTimes = 0.5e-5;  // problem times, s

ResultsHeader earlier_header, later_header;

// Time points of the two files, under the names that the messages use.
struct TimePoints {
  double t2b, t2e, t3b, t3e;
  double junction_step;  // the larger of the steps before and after the junction
  bool overlap;
};

// What the output takes of the inputs.
struct Joint {
  std::int64_t of_earlier;  // its first so many records
  std::int64_t from_later;  // its records from this one on
  double base_time;         // of the last record of the former with overlap, else of the latter
};

[[noreturn]] void stop_on_times(std::string_view one, double first, std::string_view other,
                                double second, std::string_view relation) {
  constexpr std::string_view kIndent = "                 ";
  issue_message(listing_unit, message("%fat- See SCMD2. Time ", one, " is ", format_real(first)));
  issue_message(listing_unit, message(kIndent, "Time ", other, " is ", format_real(second)));
  stop_with_listing(message(kIndent, relation));
}

// Both files are counted before their times are compared: one that is cut short is told first. A
// single record has no step.
TimePoints read_time_points(JoinInput& earlier, JoinInput& later, JoinMode mode) {
  count_records(earlier);
  const double t2b = time_of_record(earlier, 1);
  const double t2e = time_of_record(earlier, earlier.records);
  const double last_step =
      earlier.records > 1 ? t2e - time_of_record(earlier, earlier.records - 1) : 0.0;
  count_records(later);
  const double t3b = time_of_record(later, 1);
  const double t3e = time_of_record(later, later.records);
  const double first_step = later.records > 1 ? time_of_record(later, 2) - t3b : 0.0;
  const bool overlap = mode == JoinMode::kReplace && t3b < t2e - kEqualTimes;
  return {t2b, t2e, t3b, t3e, std::max(last_step, first_step), overlap};
}

// The texts call the first record of the third file its last and its "2st"; T3B is meant each time.
// Where a comparison is turned round, a time that is no number is refused.
void check_times(const TimePoints& t, JoinMode mode) {
  if (t.t2b > t.t3b) {
    stop_on_times("T2B of 1st record of 2nd file", t.t2b, "T3B of 1st record of 3rd file", t.t3b,
                  "T2B > T3B");
  }
  if (mode == JoinMode::kReplace && t.t3b - t.t2e > t.junction_step) {
    stop_on_times("T2E of last record of 2nd file", t.t2e, "T3B of last record of 3rd file", t.t3b,
                  message("(T3B - T2E) > ", format_real(t.junction_step)));
  }
  if (t.overlap) {
    if (!(std::fabs(t.t2b - t.t3b) > kEqualTimes)) {
      stop_on_times("T2B of 1st record of 2nd file", t.t2b, "T3B of 2st record of 3rd file", t.t3b,
                    "abs(T2b-T3b) <= 0.5e-5");
    }
  } else if (!(t.t3e > t.t2e + kEqualTimes)) {
    stop_on_times("T2E of last record of 2nd file", t.t2e, "T3E of last record of 3rd file", t.t3e,
                  "T3E <= T2E+0.5e-5");
  }
}

// The first record of the input whose time passes the test, or records + 1. Nothing says that times
// ascend inside a file, so they are asked for one after the other.
template <class Test>
std::int64_t first_record(JoinInput& input, Test test) {
  std::int64_t record = 1;
  while (record <= input.records && !test(time_of_record(input, record))) ++record;
  return record;
}

// The times have been checked, so that there is such a record; a "%dbg-" stop guards it.
Joint find_joint(JoinInput& earlier, JoinInput& later, const TimePoints& t) {
  if (t.overlap) {
    const std::int64_t kept =
        first_record(earlier, [&](double time) { return time + kEqualTimes > t.t3b; }) - 1;
    if (kept == 0) stop_on_console("%dbg-U9CONR: L22=0");
    return {kept, 1, time_of_record(earlier, kept)};
  }
  const std::int64_t first =
      first_record(later, [&](double time) { return time > t.t2e + kEqualTimes; });
  if (first > later.records) stop_on_console("%dbg-U9CONR: L33=0");
  return {earlier.records, first, time_of_record(later, first)};
}

[[noreturn]] void stop_on_failed_write(int status) {
  // Two blanks: the ordinal's place in this text is four characters wide.
  stop_on_console("%fat- Write error. 1st  file in SCMD2", status);
}

// Copies the bytes from `first` up to `end` of the input.
void copy_bytes(JoinInput& input, std::int64_t first, std::int64_t end, File& output) {
  switch (output.copy_from(input.file, first, end - first)) {
    case CopyStatus::kOk:
      return;
    case CopyStatus::kReadError:
      stop_on_record(input, ReadStatus::kError);
    case CopyStatus::kSourceEnds:
      stop_on_record(input, ReadStatus::kCut);
    case CopyStatus::kWriteError:
      stop_on_failed_write(output.io_status());
  }
}

void close_by_name(File& file, const std::string& name) {
  if (const int status = file.close(); status != 0) {
    stop_with_listing(message("%fat- File ", name, ". Close error"), kNoLine, status);
  }
}

void write_output(const JoinCommand& command, JoinInput& earlier, JoinInput& later,
                  const Joint& joint) {
  const bool append = command.mode == JoinMode::kAppend;
  const std::int64_t taken = earlier.offset_of(joint.of_earlier + 1);
  if (!append) open_file(kJoinedResultsUnit, "REW", command.output());
  File& output = append ? earlier.file : file_on(kJoinedResultsUnit);
  if (const int refusal = output.write_refusal(); refusal != 0) stop_on_failed_write(refusal);
  output.keep_on_failure(append ? taken : File::kNoFile);
  const std::int64_t first = later.offset_of(joint.from_later),
                     end = later.offset_of(later.records + 1);
  show_progress_of_copy(output, taken + end - first);
  if (append) {
    if (const int status = output.seek(taken); status != 0) stop_on_failed_write(status);
    output.reserve(end - first);
  } else {
    output.reserve(taken + end - first);
    copy_bytes(earlier, 0, taken, output);
  }
  copy_bytes(later, first, end, output);
  // Of a file that was there before, the disk must have what was added before success is told; a
  // new one has no name until it is whole.
  const int status = append ? output.sync() : output.flush();
  if (status != 0) stop_on_failed_write(status);
  close_by_name(output, command.output());
  if (!append) close_by_name(earlier.file, earlier.name);
  close_by_name(later.file, later.name);
}

void report(const JoinCommand& command, const TimePoints& t, double base_time) {
  const auto &name1 = command.output(), &name2 = command.earlier(), &name3 = command.later();
  const auto inform = [](const std::string& text) { issue_message(listing_unit, text); };
  inform(message("%inf- SCMD2: ", name1, "=", name2, "+", name3, " complited successfully"));
  inform(message("%inf- Let Beg_time = T2B , Last_time = T2E File ", name2));
  inform(message("%inf- Let Beg_time = T3B , Last_time = T3E File ", name3));
  inform(message("%inf- T2B , T2E = ", format_real(t.t2b), " , ", format_real(t.t2e)));
  inform(message("%inf- T3B , T3E = ", format_real(t.t3b), " , ", format_real(t.t3e)));
  const NumberText time = format_real(base_time);
  if (t.overlap) {
    inform(message("%inf- Base time points in ", name1, ": T2B,", time, ",T3B,T3E"));
    inform(message("      T2B,", time, " from ", name2, " T3B,T3E from ", name3));
  } else {
    inform(message("%inf- Base time points in ", name1, ": T2B,T2E,", time, ",T3E"));
    inform(message("      T2B,T2E from ", name2, ",T3E from ", name3));
  }
}

}  // namespace

void join_results_files(std::string_view text, double mode) {
  const JoinCommand command = parse_join_command(text, mode);
  open_file(kSecondResultsUnit, "REC", command.earlier(),
            command.mode == JoinMode::kAppend ? Use::kRewrite : Use::kRead);
  open_file(kThirdResultsUnit, "REC", command.later());
  JoinInput earlier{file_on(kSecondResultsUnit), command.earlier(), kFileOrdinals[1],
                    earlier_header};
  JoinInput later{file_on(kThirdResultsUnit), command.later(), kFileOrdinals[2], later_header};
  compare_headers(earlier, later);
  const TimePoints times = read_time_points(earlier, later, command.mode);
  check_times(times, command.mode);
  const Joint joint = find_joint(earlier, later, times);
  write_output(command, earlier, later, joint);
  report(command, times, joint.base_time);
}

}  // namespace zorvik
