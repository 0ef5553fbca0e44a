// Labels, GOTOs, IF and DO blocks of one procedure, and their way from pass 1 to pass 2 through the
// scratch file.
//
// Scratch file: for each procedure in turn three records of little-endian int32, without marks:
// clang-format off
//   1  number of GOTOs g, of IFs i, of DOs d
//   2  max(g,1) GOTO lines, as many GOTO columns, label lines, label columns;
//      max(d,1) DO lines, DO columns, ENDDO lines, ENDDO columns
//   3  max(i,1) THEN lines, THEN columns, lines and columns of the end of the THEN part,
//      of the ELSE, of the ENDIF
// clang-format on
// A table without entries has one that means nothing.
#ifndef ZORVIK_LANG_CODE_CONTROL_TABLES_H_
#define ZORVIK_LANG_CODE_CONTROL_TABLES_H_

#include <string_view>

#include "lang/code/procedure_table.h"

namespace zorvik {

constexpr int kMaxControlStatements = 100;  // GOTOs, labels, IFs and DOs of a procedure, each
constexpr int kMaxNesting = 5;              // open IFs, open DOs
constexpr int kLabelWidth = 20;

struct Label {
  char name[kLabelWidth];
  Position position;
};

// Positions are those of the keywords, of a label that of its name.
struct GotoStatement {
  char target[kLabelWidth];
  Position position;
  Position label;  // once resolved
};

struct IfBlock {
  Position then;
  Position then_end;  // where a false condition leads: the ELSE, or the ENDIF of an IF without one
  Position else_part, endif;
};

struct DoBlock {
  Position head, enddo;
  int depth;  // of nesting, the outermost DO having 1
};

struct ControlTables {
  Label label[kMaxControlStatements + 1];  // all from 1
  GotoStatement jump[kMaxControlStatements + 1];
  IfBlock if_block[kMaxControlStatements + 1];
  DoBlock do_block[kMaxControlStatements + 1];
  int labels, jumps, ifs, dos;
};
extern ControlTables control_tables;

void reset_control_tables();

// The label of that name, blanks behind it or not; nullptr when the procedure has none.
const Label* find_label(std::string_view name);

// Append the tables of the procedure that has just been checked: records 1 and 2, then record 3. A
// failed write gives "%fat- Write error. Scratch file" with the I/O status and ends the run.
void write_jump_records();
void write_if_record();

// Between the passes. "%fat- I/O error. Scratch file" with the I/O status ends the run.
void rewind_scratch_file();

// Reads the tables of the next procedure: pass 2 meets them in the order in which pass 1 left them.
// "%fat- I/O error. Scratch file" with the I/O status, "%dbg- Premature End_of_File. u16psc".
void read_next_control_tables();

}  // namespace zorvik

#endif  // ZORVIK_LANG_CODE_CONTROL_TABLES_H_
