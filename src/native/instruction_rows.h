// Instructions of decoded statements as rows of processor instructions that do the same to the last
// bit, except those that begin and end what is translated: kGo, kJump, kReturn and kEnddo.
//
// Registers: rbx is where decoded_program begins, from which the compiler's code model has every
// table within 2 GB; r12 holds the bits of the marker of undefined values; xmm0 and following the
// results of a statement that calls no routine; rax, rcx, xmm13 and xmm14 are for use within a row.
#ifndef ZORVIK_NATIVE_INSTRUCTION_ROWS_H_
#define ZORVIK_NATIVE_INSTRUCTION_ROWS_H_

#include <vector>

#include "exec/decoded/decoded_program.h"
#include "exec/decoded/going_on.h"
#include "native/x86_64_assembler.h"

namespace zorvik::native {

inline constexpr Register kRax = Register::kRax, kRcx = Register::kRcx, kBase = Register::kRbx,
                          kMarker = Register::kR12;
inline constexpr Xmm kWork{13}, kOther{14};

// Where the place of a table, a variable, a constant or a result is, seen from rbx.
Memory at(const volatile void* place);

// The routine that does the work of an instruction; null when a row of its own does.
using Routine = GoingOn (*)(const Instruction&);
Routine routine_of(Op op);

// How a jump goes on: in the same form, in the form that holds nothing in registers, or out of the
// code, since the statement is not plain.
enum class Way { kOn, kPlain, kOut };

// A jump to a statement, whose distance is set when everything has its place.
struct Jump {
  Byte* end;
  int position;
  Way way;
};

// A variable that stays in a register while a loop runs.
struct Held {
  const double* place;
  Xmm in;
};

class InstructionRows {
 public:
  // The first so many results of a statement get registers.
  InstructionRows(Assembler& code, int results, std::vector<Held> held = {})
      : code_(code), results_(results), held_(std::move(held)) {}

  // Held variables are defined, always. One of them is the counter of a loop: its value as a whole
  // number is in that register.
  void set_counter(const double* place, Register in);

  // `next` is the position of the statement behind the one that begins.
  void begin_statement(int position, int next, const Instruction* first, const Instruction* end);

  void write(const Instruction& i);

  void call(std::uint64_t routine, const Instruction& i);  // eax: what the routine says
  void leave_if_not_plain();
  void leave_if(Condition condition) {
    jumps.push_back({code_.jcc(condition), position_, Way::kOut});
  }
  void jump_to(int position) { jumps.push_back({code_.jmp(), position, Way::kOn}); }
  void jump_if(Condition condition, int position, Way way = Way::kOn) {
    jumps.push_back({code_.jcc(condition), position, way});
  }

  std::vector<Jump> jumps;

 private:
  using Operation = void (Assembler::*)(Xmm, const Operand&);

  const Held* held(const double* place) const;
  bool has_register(const double* place) const;
  Operand operand(const double* place) const;
  void look_at(const double* place);
  void load(Xmm to, const double* place);
  Xmm begin(const Instruction& i);
  void keep(const Instruction& i);
  void calculate(const Instruction& i, Operation operation, bool is_whole);
  void divide(const Instruction& i);
  void mask(const Instruction& i, Operation operation, const void* bits);
  void square_root(const Instruction& i);
  void compare(const Instruction& i, const Operand& b, Predicate predicate);
  void combine_truths(const Instruction& i, Operation operation);
  void branch_unless_greater(const Instruction& i, Condition branches);
  void branch_unless_equal(const Instruction& i);
  void branch_if_equal(const Instruction& i, const Operand& b);
  void subscript(const double* place, int extent);
  Memory element(const Instruction& i);
  void load_element(const Instruction& i);
  void store_element(const Instruction& i);
  void call_routine(const Instruction& i);

  Assembler& code_;
  int results_;
  std::vector<Held> held_;
  const double* counter_ = nullptr;
  Register counter_register_ = kRax;
  int position_ = 0, next_ = 0;
  bool calls_routine_ = false;
  std::vector<const double*> looked_at_;  // in this statement
};

}  // namespace zorvik::native

#endif  // ZORVIK_NATIVE_INSTRUCTION_ROWS_H_
