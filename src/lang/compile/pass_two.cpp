// The text is read in its own order, MAIN up to its END. The block stands inside MAIN's text: MAIN
// passes over it, and when MAIN is complete the text is positioned back to BEGIN and then forward
// again. So procedures are compiled in the order of their numbers, which is that of the scratch
// file.
//   MAIN: header, statements, for BEGIN an OUT of procedure 2, END | the block | OUTPUTs
#include "lang/compile/pass_two.h"

#include <algorithm>

#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"
#include "lang/code/code_store.h"
#include "lang/code/constant_pool.h"
#include "lang/code/jump_table.h"
#include "lang/compile/statement_compiler.h"
#include "lang/text/statement_recovery.h"
#include "results/results_reader.h"
#include "stores/keys.h"
#include "stores/notkeys.h"

namespace zorvik {
namespace {

// An OUTPUT's file has the procedure's number and 10 as its number: those below belong to the fixed
// files.
constexpr int kFixedFiles = 10;

// Line numbers begin again; the listing stays as pass 1 left it.
void restart_text(int unit) {
  if (const int status = file_on(unit).rewind(); status != 0) {
    stop_on_console("%fat- Rewind error. File <zrvdat>", status);
  }
  reset_source_line();
  error_count = 0;
}

void reset_tables() {
  reset_code_store();
  reset_constants();
  reset_notkeys();
  reset_results_store();
  // No record will give the problem time its value.
  if (no_results_file) main_key_value(kTau) = 0.0;
  // The seed of random numbers: the same in every run of a program, another one after a change of
  // its calls.
  results_store.value[kRandomStatePosition] = procedure_table.out_count;
}

// Writes the header of procedure `number` and makes it the one being compiled.
void open_procedure(Compilation& compilation, int number, Context context) {
  read_next_control_tables();
  reset_jumps();
  compilation.context = context;
  compilation.failed = false;
  compilation.scope.first_key_descriptor = 0;
  procedure_table.procedure[number].start = code_store.next_free;
  for (int k = 0; k < kHeaderWords; ++k) append_code_word(0, compilation.scope.line);
}

void append_plain(const Compilation& compilation, StatementCode code) {
  append_code_word(make_head(code, compilation.scope.line), compilation.scope.line);
}

[[noreturn]] void stop_on_invalid(const Compilation& compilation, const Lexeme& lexeme) {
  stop_on_console(message("%dbg- Invalid ", lexeme.view(), routine_of(compilation.context)));
}

// BEGIN stands in MAIN as a call of the block, whose text is passed over.
void compile_begin(Compilation& compilation) {
  append_plain(compilation, kCodeOut);
  append_code_word(kBlockProcedure, compilation.scope.line);
  Lexeme lexeme;
  do {
    if (next_lexeme(compilation.unit, lexeme) == LexStatus::kEnd)
      stop_on_invalid(compilation, lexeme);
  } while (!lexeme.is(kEnd));
}

void compile_statement(Compilation& compilation, const Lexeme& head) {
  switch (head.code) {
    case kIf:
      return compile_if(compilation, head);
    case kElse:
      return compile_else(compilation, head);
    case kEndif:
      return compile_endif(compilation, head);
    case kGoto:
      return compile_goto(compilation, head);
    case kPrint:
    case kWrite:
    case kWrite1:
      return compile_output_statement(compilation, head);
    case kStop:
      return append_plain(compilation, kCodeStop);
    case kReturn:
      return append_plain(compilation, kCodeReturn);
    case kOut:
      return compile_out(compilation, head);
    case kBegin:
      return compile_begin(compilation);
    case kDo:
      return compile_do(compilation, head);
    case kEnddo:
      return compile_enddo(compilation, head);
    // An IF has taken its THEN, and OUTPUTs are met between procedures only.
    case kThen:
    case kOutput:
      stop_on_invalid(compilation, head);
    default:
      return compile_assignment(compilation, head);
  }
}

// Compiles statements up to the procedure's END, whose place in the text is returned.
Position compile_body(Compilation& compilation, int procedure) {
  Lexeme lexeme;
  for (;;) {
    // Before the statement: the hundred and first error is told, and this after it.
    if (error_count > kMaxErrors) {
      stop_with_listing(message("%fat- Number of errors > ", kMaxErrors), source_line.number);
    }
    if (next_lexeme(compilation.unit, lexeme) == LexStatus::kEnd)
      stop_on_invalid(compilation, lexeme);
    compilation.scope.line = lexeme.line;
    if (lexeme.is(kEnd)) break;
    if (lexeme.is(kSemicolon)) continue;
    if (lexeme.is(kLabel)) {
      record_position(JumpTarget::kLabel, position_of(lexeme), code_store.next_free);
    } else {
      compile_statement(compilation, lexeme);
    }
  }
  header_word(procedure, kEndPosition) = code_store.next_free;
  append_plain(compilation, kCodeEnd);
  if (!compilation.failed) resolve_jumps_of_procedure();
  return position_of(lexeme);
}

// Gives the OUTPUT its own copies of the OUTPUT keys, at the next free places of the results store;
// they are passed by only when the OUTPUT is complete.
void make_key_copies(Compilation& compilation, int procedure) {
  ResultsStore& store = results_store;
  if (store.next_value + kOutputKeyCount > kResultsCapacity + 1) {
    stop_with_listing("%fat- Space (values) for keys is full");
  }
  if (store.next_descriptor + kOutputKeyCount > kDescriptorCapacity + 1) {
    stop_with_listing("%fat- Space (descriptors) for keys is full");
  }
  // TURN_ON, DT_OUT, FIRST and a spare place. An OUTPUT starts switched on and with its first call
  // ahead of it; the key table's defaults, FIRST 0 among them, are not for these copies.
  constexpr double kStartValues[kKeyCopySlack] = {1.0, 0.0, 1.0, 0.0};
  std::copy_n(kStartValues, kKeyCopySlack, store.value + store.next_value);
  for (int k = 0; k < kOutputKeyCount; ++k) {
    store.descriptor[store.next_descriptor + k] = {store.next_value + k, 1, 1};
  }
  compilation.scope.first_key_descriptor = store.next_descriptor;
  header_word(procedure, kFirstKeyDescriptor) = store.next_descriptor;
}

// Compiles one OUTPUT, from the lexeme after OUTPUT to its END.
void u91ou2(Compilation& compilation, int procedure) {
  Lexeme name;
  next_lexeme(compilation.unit, name);
  open_procedure(compilation, procedure, Context::kOutput);
  make_key_copies(compilation, procedure);
  header_word(procedure, kFileUnit) = procedure + kFixedFiles;
  header_word(procedure, kFileIsNew) = 1;
  compile_body(compilation, procedure);
  results_store.next_value += kKeyCopySlack;
  results_store.next_descriptor += kKeyCopySlack;
}

// Compiles the BEGIN...END block, whose text lies behind, and returns to the end of MAIN.
void u91be2(Compilation& compilation, Position main_end) {
  const Position head = procedure_table.procedure[kBlockProcedure].head;
  u16pxy(compilation.unit, head.line, head.column);
  Lexeme keyword;
  next_lexeme(compilation.unit, keyword);
  open_procedure(compilation, kBlockProcedure, Context::kBlock);
  header_word(kBlockProcedure, kFileIsNew) = 1;
  compile_body(compilation, kBlockProcedure);
  u16pxy(compilation.unit, main_end.line, main_end.column);
  next_lexeme(compilation.unit, keyword);
}

void compile_outputs(Compilation& compilation) {
  int procedure = procedure_table.has_block ? kBlockProcedure : kMainProcedure;
  Lexeme lexeme;
  while (next_lexeme(compilation.unit, lexeme) != LexStatus::kEnd) {
    compilation.scope.line = lexeme.line;
    if (lexeme.is(kOutput)) u91ou2(compilation, ++procedure);
  }
}

}  // namespace

void u91ps2(int unit) {
  restart_text(unit);
  reset_tables();
  rewind_scratch_file();
  open_results_file();
  Compilation compilation{unit, Context::kMain, {1, 0}, false};
  open_procedure(compilation, kMainProcedure, Context::kMain);
  const Position main_end = compile_body(compilation, kMainProcedure);
  if (procedure_table.has_block) u91be2(compilation, main_end);
  compile_outputs(compilation);
  report_space_usage(unit);
}

}  // namespace zorvik
