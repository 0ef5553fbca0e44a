// Items are laid down behind one another in a line buffer, numbers without a copy, and the line is
// written when the next item would pass its last column:
//   PRINT 1, 2.5, 'A' -> "1 2.500000000E+00 A", the trailing blank left out
#include "exec/output_statement.h"

#include <cstring>

#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "driver/units.h"
#include "exec/evaluator.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "stores/keys.h"
#include "stores/notkeys.h"

namespace zorvik {
namespace {

// Last column that a text may end at; a real may end one column later. The console and the listing
// have a blank in front that is not counted.
constexpr int kLastColumn = 78;
constexpr int kLastOutputColumn = 198;

// A text of the pool fills it at most, or a number begins behind the last column.
constexpr int kLineBuffer = 230;
static_assert(kLineBuffer > kLastOutputColumn + 3 + 1 + kMaxNumberWidth &&
              kLineBuffer > kTextPoolCapacity);

class LineWriter {
 public:
  LineWriter(int unit, bool is_output) : unit_(unit), is_output_(is_output) {}

  void add_time(double time) { append(format_real(time)); }

  void add_text(std::string_view text) { add(text, last_column()); }

  // The number is written behind the line and moved when it turns out to belong to the next one.
  void add_number(double value, BaseType base_type) {
    const bool is_real = base_type == kReal;
    char* const first = line_ + length_;
    char* end = first;
    if (is_output_ && !(value < 0.0)) *end++ = ' ';  // where a sign would stand
    end = is_real ? put_real(end, value) : put_integer(end, round_half_away(value));
    const auto width = static_cast<int>(end - first);
    if (length_ + width > last_column() + is_real) {
      wrap();
      std::memmove(line_, first, static_cast<std::size_t>(width));
    }
    end_item(width);
  }

  // Writes the line without its trailing blank; an empty line is not written.
  void flush() {
    if (length_ == 0) return;
    const std::string_view line(line_, static_cast<std::size_t>(length_ - 1));
    length_ = 0;
    if (is_output_) {
      write_line(line);
    } else {
      issue_message(unit_, line);  // nothing for a text of no characters
    }
  }

 private:
  int last_column() const { return is_output_ ? kLastOutputColumn : kLastColumn; }

  void add(std::string_view text, int last) {
    if (length_ + static_cast<int>(text.size()) > last) wrap();
    append(text);
  }

  void wrap() {
    if (length_ == 0) return;
    flush();
    note(Hazard::kWrappedLine, [&] {
      return message("line ", evaluation.line, ": the values do not fit into one line of ",
                     last_column() + 1, " columns and go on in the next");
    });
  }

  void append(std::string_view text) {
    std::memcpy(line_ + length_, text.data(), text.size());
    end_item(static_cast<int>(text.size()));
  }

  void end_item(int width) {
    length_ += width;
    line_[length_++] = ' ';
  }

  void write_line(std::string_view line) const {
    const int status = file_on(unit_).write_line({}, line);
    if (status == 0) return;
    stop_run(-listing_unit, message("%fat- Write error. Procedure ", running_name()),
             Stop::kWithNotice, evaluation.line, status);
  }

  int unit_;
  bool is_output_;
  int length_ = 0;
  char line_[kLineBuffer];
};

void add_values(LineWriter& writer, const StackEntry& entry) {
  if (entry.base_type == kCharacter) return writer.add_text(text_of(entry));
  const std::int64_t count = element_count(entry);
  for (std::int64_t k = 1; k <= count; ++k) {
    writer.add_number(element_of(entry, k), entry.base_type);
  }
}

// The unit of the running OUTPUT's file, opened by the first statement that writes to it.
int open_output_file() {
  const int unit = kFirstOutputUnit + header_word(run_state.procedure, kFileUnit);
  std::int32_t& is_new = header_word(run_state.procedure, kFileIsNew);
  if (is_new != 0) {
    open_file(unit, "OUT", running_name());
    set_write_error_subject(unit, message("Procedure ", running_name()));
    is_new = 0;
  }
  return unit;
}

LineWriter writer_of(StatementCode code) {
  if (code == kCodePrint) return {kConsole, false};
  if (run_state.context != Context::kOutput) return {listing_unit, false};
  return {open_output_file(), true};
}

}  // namespace

int execute_output_statement(StatementCode code, int position) {
  adopt_format_key(main_key_value(kFormat));
  LineWriter writer = writer_of(code);
  if (code == kCodeWrite && run_state.context == Context::kOutput) {
    writer.add_time(main_key_value(kTau));
  }
  for (;;) {
    BaseType type;
    if (const double* const number = number_in_variable(position, type)) {
      writer.add_number(*number, type);
      position = after_expression(position);
    } else {
      position = u92xt3(position);
      add_values(writer, evaluation.entry[1]);
    }
    if (code_store.word[position] != kListSeparator) break;
    ++position;
  }
  writer.flush();
  return position;
}

}  // namespace zorvik
