// Writer and reader are mirrors: both walk over the same columns in the same order. A table goes
// column by column, not row by row, and one without entries as one entry, whose numbers are those
// of whatever its first place holds.
//   one GOTO in line 3 to a label in line 5, both in column 1: record 1 is 1 0 0, record 2 begins
//   3 1 5 1, then a DO without meaning; record 3 is an IF without meaning
#include "lang/code/control_tables.h"

#include <algorithm>
#include <cstdint>

#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"

namespace zorvik {

ControlTables control_tables;

namespace {

// The scratch file lies in memory, so it has to stay small: the three numbers of record 1 and, at
// most, full tables of every procedure.
constexpr int kLargestProcedure = 4 * (3 + (4 + 4 + 8) * kMaxControlStatements);
static_assert((kMaxOutputs + 1) * kLargestProcedure < 1 << 20);

[[noreturn]] void stop_on_scratch_error(int status) {
  stop_with_listing("%fat- I/O error. Scratch file", kNoLine, status);
}

void stop_on_failed_write(int status) {
  if (status != 0) stop_with_listing("%fat- Write error. Scratch file", kNoLine, status);
}

void write_number(std::int32_t number) {
  stop_on_failed_write(file_on(kScratchUnit).write(&number, sizeof number));
}

// Pass 1 of this run has written the file: its end or a strange count tells of the machine, not of
// the program.
std::int32_t read_number() {
  std::int32_t number = 0;
  File& file = file_on(kScratchUnit);
  switch (file.read(&number, sizeof number)) {
    case ReadStatus::kOk:
      return number;
    case ReadStatus::kError:
      stop_on_scratch_error(file.io_status());
    default:
      stop_on_console("%dbg- Premature End_of_File. u16psc");
  }
}

// One column of a table: a line or a column number of each entry.
template <class Row>
struct Column {
  Position Row::*position;
  int Position::*part;
};

constexpr Column<GotoStatement> kGotoColumns[] = {{&GotoStatement::position, &Position::line},
                                                  {&GotoStatement::position, &Position::column},
                                                  {&GotoStatement::label, &Position::line},
                                                  {&GotoStatement::label, &Position::column}};
constexpr Column<DoBlock> kDoColumns[] = {{&DoBlock::head, &Position::line},
                                          {&DoBlock::head, &Position::column},
                                          {&DoBlock::enddo, &Position::line},
                                          {&DoBlock::enddo, &Position::column}};
constexpr Column<IfBlock> kIfColumns[] = {
    {&IfBlock::then, &Position::line},      {&IfBlock::then, &Position::column},
    {&IfBlock::then_end, &Position::line},  {&IfBlock::then_end, &Position::column},
    {&IfBlock::else_part, &Position::line}, {&IfBlock::else_part, &Position::column},
    {&IfBlock::endif, &Position::line},     {&IfBlock::endif, &Position::column}};

template <class Row, std::size_t N>
void write_table(const Row* rows, int count, const Column<Row> (&columns)[N]) {
  for (const Column<Row>& column : columns) {
    for (int k = 1; k <= std::max(count, 1); ++k) {
      write_number(rows[k].*column.position.*column.part);
    }
  }
}

template <class Row, std::size_t N>
void read_table(Row* rows, int count, const Column<Row> (&columns)[N]) {
  for (const Column<Row>& column : columns) {
    for (int k = 1; k <= std::max(count, 1); ++k) {
      rows[k].*column.position.*column.part = read_number();
    }
  }
}

// A count that pass 1 cannot have written is told as an early end of the file.
int read_count() {
  const int count = read_number();
  if (count < 0 || count > kMaxControlStatements) {
    stop_on_console("%dbg- Premature End_of_File. u16psc");
  }
  return count;
}

}  // namespace

void reset_control_tables() {
  control_tables.labels = control_tables.jumps = 0;
  control_tables.ifs = control_tables.dos = 0;
}

// At most a hundred, each asked for a few times: compared one by one.
const Label* find_label(std::string_view name) {
  for (int k = 1; k <= control_tables.labels; ++k) {
    const Label& label = control_tables.label[k];
    if (equal_padded(name, {label.name, kLabelWidth})) return &label;
  }
  return nullptr;
}

void write_jump_records() {
  const ControlTables& tables = control_tables;
  write_number(tables.jumps);
  write_number(tables.ifs);
  write_number(tables.dos);
  write_table(tables.jump, tables.jumps, kGotoColumns);
  write_table(tables.do_block, tables.dos, kDoColumns);
}

void write_if_record() {
  write_table(control_tables.if_block, control_tables.ifs, kIfColumns);
  stop_on_failed_write(file_on(kScratchUnit).flush());
}

void rewind_scratch_file() {
  if (const int status = file_on(kScratchUnit).rewind(); status != 0) stop_on_scratch_error(status);
}

void read_next_control_tables() {
  ControlTables& tables = control_tables;
  tables.jumps = read_count();
  tables.ifs = read_count();
  tables.dos = read_count();
  read_table(tables.jump, tables.jumps, kGotoColumns);
  read_table(tables.do_block, tables.dos, kDoColumns);
  read_table(tables.if_block, tables.ifs, kIfColumns);
}

}  // namespace zorvik
