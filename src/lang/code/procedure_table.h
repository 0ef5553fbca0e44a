// The procedures of a program and the OUT statements that call them. Pass 1 fills the table, pass 2
// and the executor read it.
//
// Procedures are numbered 1 for MAIN, 2 for the BEGIN...END block when there is one, then the
// OUTPUTs in the order of the text. MAIN has no name in the table.
#ifndef ZORVIK_LANG_CODE_PROCEDURE_TABLE_H_
#define ZORVIK_LANG_CODE_PROCEDURE_TABLE_H_

#include <string_view>

#include "lang/text/lexer.h"

namespace zorvik {

constexpr int kMainProcedure = 1;
constexpr int kBlockProcedure = 2;  // when the program has a block
constexpr int kMaxOutputs = 100;    // OUTPUTs and the block
constexpr int kMaxOuts = 100;
constexpr int kProcedureNameWidth = 20;
inline constexpr std::string_view kBlockName = "BEG...END";
inline constexpr std::string_view kMainName = "MAIN_procedure";  // while it runs

// The kind of procedure being checked, compiled or run; also the execution context.
enum class Context { kNone = 0, kMain = 1, kBlock = 3, kOutput = 4 };

struct Procedure {
  char name[kProcedureNameWidth];  // blank-padded
  Position head;                   // of OUTPUT or BEGIN
  int start;                       // first code word, set by pass 2
};

struct OutStatement {
  char target[kProcedureNameWidth];
};

struct ProcedureTable {
  Procedure procedure[kMaxOutputs + 2];  // from 1
  int count;                             // MAIN included
  bool has_block;
  OutStatement out[kMaxOuts + 1];  // from 1
  int out_count;
};
extern ProcedureTable procedure_table;

void reset_procedure_table();

std::string_view procedure_name(int number);  // without trailing blanks

// The number of the procedure of that name (the block's included), or of the OUTPUT of that name; 0
// when there is none.
int find_procedure(std::string_view name);
int find_output(std::string_view name);

// Append, a longer name being cut; the caller has checked the capacity (kMaxOutputs, kMaxOuts).
void add_procedure(std::string_view name, Position head);
void add_out(std::string_view target);

}  // namespace zorvik

#endif  // ZORVIK_LANG_CODE_PROCEDURE_TABLE_H_
