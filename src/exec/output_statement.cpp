// Items are laid down behind one another in a line buffer, numbers without a copy, and the line is
// written when the next item would pass its last column:
//   PRINT 1, 2.5, 'A' -> "1 2.500000000E+00 A", the trailing blank left out
#include "exec/output_statement.h"

#include <cstddef>
#include <cstring>

#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "driver/units.h"
#include "exec/decoded/decoded_program.h"
#include "exec/evaluator.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "exec/values/scalar_operations.h"
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
  LineWriter(int unit, bool is_output)
      : unit_(unit), is_output_(is_output), last_(line_ + last_column()) {}
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  void add_time(double time) { end_item(put_real(end_, time)); }

  void add_text(std::string_view text) {
    if (static_cast<std::ptrdiff_t>(text.size()) > last_ - end_) wrap();
    std::memcpy(end_, text.data(), text.size());
    end_item(end_ + text.size());
  }

  // The number is written behind the line and moved when it turns out to belong to the next one.
  void add_number(double value, BaseType base_type) {
    const bool is_real = base_type == kReal;
    char* const first = end_;
    char* end = first;
    if (is_output_ && !(value < 0.0)) *end++ = ' ';  // where a sign would stand
    end = is_real ? put_real(end, value) : put_integer(end, round_half_away(value));
    if (end > last_ + is_real) {
      wrap();
      const auto width = static_cast<std::size_t>(end - first);
      end = static_cast<char*>(std::memmove(end_, first, width)) + width;
    }
    end_item(end);
  }

  // Writes the line without its trailing blank; an empty line is not written.
  void flush() {
    if (end_ == line_) return;
    const std::string_view line(line_, static_cast<std::size_t>(end_ - 1 - line_));
    end_ = line_;
    if (is_output_) {
      write_line(line);
    } else {
      issue_message(unit_, line);  // nothing for a text of no characters
    }
  }

 private:
  int last_column() const { return is_output_ ? kLastOutputColumn : kLastColumn; }

  void wrap() {
    if (end_ == line_) return;
    flush();
    note(Hazard::kWrappedLine, [&] {
      return message("line ", evaluation.line, ": the values do not fit into one line of ",
                     last_column() + 1, " columns and go on in the next");
    });
  }

  void end_item(char* end) {
    *end = ' ';
    end_ = end + 1;
  }

  void write_line(std::string_view line) const {
    const int status = file_on(unit_).write_line({}, line);
    if (status == 0) return;
    stop_run(-listing_unit, message("%fat- Write error. Procedure ", running_name()),
             Stop::kWithNotice, evaluation.line, status);
  }

  int unit_;
  bool is_output_;
  const char* last_;   // behind the last column
  char* end_ = line_;  // of the line so far
  char line_[kLineBuffer];
};

// The decoded form of an expression that is nothing but one number in its place; null for any other
// and for an undefined number. It spares what is printed most a way over the stack.
const Instruction* number_in_place(int position) {
  if (code_store.word[position] != 1) return nullptr;
  int start = decoded_program.start[position];
  if (start == kNotDecoded) start = decode_expression(position);
  if (start <= 0) return nullptr;
  const Instruction* const number = decoded_program.instruction + start - 1;
  return is_undefined(*number->a) ? nullptr : number;
}

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
    if (const Instruction* const number = number_in_place(position)) {
      writer.add_number(*number->a, static_cast<BaseType>(number->type));
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
