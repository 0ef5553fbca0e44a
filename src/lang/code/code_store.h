// The code store: one array of 32-bit words that holds every compiled procedure. Pass 2 appends,
// the executor reads and writes the loop records.
//
// A procedure is 8 header words (HeaderWord) and its statements.
// clang-format off
// A statement is a head word, code * 100000 - line, and its operands:
//   IF          condition; then the pair -200000 - line of THEN, position of the ELSE or ENDIF pair
//   ELSE        position of the ENDIF pair
//   ENDIF       0
//   GOTO        position of the labelled statement
//   OUT         number of the called procedure
//   PRINT, WRITE, WRITE1  expressions, -4000000 between them
//   DO          position of the ENDDO pair, loop variable, bounds with -4000000 between them,
//               5 words that belong to the loop's record
//   ENDDO       position after the DO's words
//   assignment  target, value, then -4000000 and a value for each further one
// STOP, END and RETURN have none.
// clang-format on
#ifndef ZORVIK_LANG_CODE_CODE_STORE_H_
#define ZORVIK_LANG_CODE_CODE_STORE_H_

#include <cstdint>
#include <string_view>

#include "lang/code/procedure_table.h"
#include "lang/text/expression_items.h"

namespace zorvik {

constexpr int kCodeCapacity = 20000;
constexpr int kHeaderWords = 8;
constexpr int kLoopRecordWords = 5;
constexpr int kPairWords = 2;  // of an ELSE, ENDIF, GOTO, OUT or ENDDO
constexpr std::int32_t kListSeparator = -4000000;

enum StatementCode : int {
  kCodeIf = -1,
  kCodeThen = -2,  // the pair behind an IF's condition
  kCodeElse = -3,
  kCodeEndif = -4,
  kCodeGoto = -5,
  kCodeOut = -6,
  kCodePrint = -7,
  kCodeStop = -9,
  kCodeEnd = -10,
  kCodeWrite = -15,
  kCodeReturn = -16,
  kCodeWrite1 = -17,
  kCodeDo = -18,
  kCodeEnddo = -19,
  kCodeAssignment = -20,
};

constexpr std::int32_t make_head(StatementCode code, int line) { return code * 100000 - line; }
constexpr int head_code(std::int32_t head) { return head / 100000; }
constexpr int head_line(std::int32_t head) { return -(head % 100000); }
static_assert(head_code(make_head(kCodeAssignment, 99999)) == kCodeAssignment);
static_assert(head_line(make_head(kCodeThen, 17)) == 17);

// The header words in use, from 1; the others are 0.
enum HeaderWord : int {
  kEndPosition = 1,         // of the procedure's END
  kFirstKeyDescriptor = 2,  // of an OUTPUT: of its copies of the OUTPUT keys
  kFileUnit = 7,            // of an OUTPUT: of its file, counted from kFirstOutputUnit
  kFileIsNew = 8,           // 1 in the block and in OUTPUTs; in an OUTPUT until its file is open
};

struct CodeStore {
  std::int32_t word[kCodeCapacity + 1];  // from 1
  int next_free;
};
extern CodeStore code_store;

void reset_code_store();

// Each appends at the next free position, append_code_word returning it. What does not fit ends the
// run with `full` and the line of its statement.
inline constexpr std::string_view kProceduresFull = "%fat- Space for procedures is full";
inline constexpr std::string_view kBlocksFull =
    "%fat- Space for OUTPUTs or BEGIN...END block is full";
int append_code_word(std::int32_t word, int line, std::string_view full = kProceduresFull);
void append_expression(const ItemList& items, int line, std::string_view full = kProceduresFull);

// A header word of the procedure, which pass 2 has opened.
inline std::int32_t& header_word(int procedure, HeaderWord word) {
  return code_store.word[procedure_table.procedure[procedure].start + word - 1];
}

// Item k (from 0) of the expression whose item count stands at `position`.
inline Item code_item(int position, int count, int k) {
  const std::int32_t* const first = code_store.word + position + 1 + k;
  return {first[0], first[count], first[2 * count]};
}

// First position after the expression.
inline int after_expression(int position) { return position + 3 * code_store.word[position] + 1; }

}  // namespace zorvik

#endif  // ZORVIK_LANG_CODE_CODE_STORE_H_
