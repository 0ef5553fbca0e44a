// All statements that a translation takes are found first, each behind the one that leads to it
// where that can be; then they are written in this order, and jumps get their distances. Each can
// be entered by itself, with all values in their places in memory.
//
// A loop without another one inside, in which no routine is called, is written a second time: there
// the variables that it uses most and its counts stay in registers (xmm6 to xmm12, r8 to r10), and
// are brought to their places on every way out. Its ENDDO enters this form when all of them are
// defined.
#include "native/translator.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <map>
#include <set>

#include "driver/interruption.h"
#include "native/instruction_rows.h"

namespace zorvik::native {

NativeCode native_code;

namespace {

// Room for the longest row, and for the ways out that an instruction may need: its own and those of
// what it leads to.
constexpr std::ptrdiff_t kBytesOfRow = 170, kBytesOfWayOut = 10;
constexpr std::ptrdiff_t kBytesOfInstruction = kBytesOfRow + 3 * kBytesOfWayOut;

constexpr int kResultsInRegisters = 12, kResultsInLoop = 6, kMostHeld = 7;
constexpr Register kCurrent = Register::kR8, kStep = Register::kR9, kRounds = Register::kR10;
// Room for the code of bring_back with a way out, and of hold_variables.
constexpr std::ptrdiff_t kBytesToReturn = 60 + 9 * kMostHeld;
constexpr std::ptrdiff_t kBytesToHold = 60 + 22 * kMostHeld;

// The whole of rax is the position: it is the index of the caller's code.
std::int64_t run_return(const Instruction&) { return return_from_output(); }

// ---- Decoded statements ----

// Whether the instruction names a statement to go on with.
bool has_branch(Op op) {
  return (op >= Op::kUnlessLess && op <= Op::kUnless) || (op >= Op::kGo && op <= Op::kOut);
}

// The instructions of a statement.
struct Statement {
  const Instruction *first, *last;

  const Instruction* begin() const { return first; }
  const Instruction* end() const { return last + 1; }
  std::ptrdiff_t bytes() const { return (end() - first) * kBytesOfInstruction; }
  // The position behind it; its own when it never goes on behind.
  int next() const { return last->op == Op::kReturn ? last->statement : last->with.branch.target; }
  // Whether it is one that ends or leaves a loop.
  bool leads_out() const {
    return first->op == Op::kEnddo || last->op == Op::kJump || last->op == Op::kReturn;
  }
  bool calls_routine() const {
    return std::any_of(first, last,
                       [](const Instruction& i) { return routine_of(i.op) != nullptr; });
  }
};

// The statement at the position; its first instruction is null when it is not decoded.
Statement statement_at(int position) {
  int start = decoded_program.start[position];
  if (start == kNotDecoded && kPatience == 0) start = decode_statement(position);
  if (start <= 0) return {};
  const Instruction* const first = decoded_program.instruction + start - 1;
  const Instruction* last = first;
  while (last->op != Op::kGo && last->op != Op::kJump && last->op != Op::kReturn) ++last;
  return {first, last};
}

// Positions of statements in the order in which they are written, from `position` on, as far as the
// caller takes them.
template <typename Takes>
std::vector<int> statements_from(int position, Takes takes) {
  std::vector<int> found, waiting = {position};
  std::set<int> seen;
  while (!waiting.empty()) {
    position = waiting.back();
    waiting.pop_back();
    if (!seen.insert(position).second || !takes(position)) continue;
    found.push_back(position);
    // What goes on behind is taken next.
    for (const Instruction& i : statement_at(position)) {
      if (has_branch(i.op)) waiting.push_back(i.with.branch.target);
    }
  }
  return found;
}

// ---- Loops that hold variables ----

struct Loop {
  std::vector<int> statements;  // the last one is its ENDDO
  std::vector<Held> held;       // first the loop's variable; none when it cannot have this form

  // Room for its code.
  std::ptrdiff_t bytes() const {
    std::ptrdiff_t sum = kBytesToHold + kBytesToReturn;
    for (const int position : statements) {
      sum += statement_at(position).bytes() + 3 * kBytesToReturn;
    }
    return sum;
  }
};

// The variable of the loop with this ENDDO; null when neither its DO has run nor is decoded.
const double* loop_variable(const Instruction& enddo) {
  const auto& loop = enddo.with.loop_end;
  if (loop.record->variable != nullptr) return loop.record->variable;
  const Instruction* const begin = decoded_program.instruction;
  const Instruction* const end = begin + decoded_program.count;
  const Instruction* const found = std::find_if(begin, end, [&loop](const Instruction& i) {
    return i.op == Op::kDo && i.with.loop.body == loop.target;
  });
  return found == end ? nullptr : found->to;
}

// Whether a statement of a loop sets its variable, or may name it in another way: as an element.
bool is_in_the_way(const Statement& statement, const double* variable) {
  return std::any_of(statement.begin(), statement.end(), [variable](const Instruction& i) {
    if (i.to == variable) return true;
    if (i.op < Op::kLoad || i.op > Op::kStore2) return false;
    const auto& [first, rows, columns, value] = i.with.block;
    return variable >= first && variable < first + rows * columns;
  });
}

// Counts how often each variable is used in the statements.
std::map<const double*, int> count_uses(const std::vector<int>& statements) {
  std::map<const double*, int> uses;
  for (const int position : statements) {
    for (const Instruction& i : statement_at(position)) {
      const bool stores = i.op == Op::kStore || i.op == Op::kStore2;
      for (const double* const place : std::initializer_list<const double*>{
               i.to, i.a, i.b, stores ? i.with.block.value : nullptr}) {
        if (place != nullptr && !is_temporary(place) && !is_constant(place)) ++uses[place];
      }
    }
  }
  return uses;
}

// The variables that are used most get the registers behind those of results.
void choose_held(Loop& loop, const double* variable) {
  auto uses = count_uses(loop.statements);
  uses.erase(variable);
  loop.held = {{variable, {kResultsInLoop}}};
  while (!uses.empty() && loop.held.size() < kMostHeld) {
    const auto most = std::max_element(
        uses.begin(), uses.end(), [](const auto& x, const auto& y) { return x.second < y.second; });
    const auto number = static_cast<Byte>(kResultsInLoop + loop.held.size());
    loop.held.push_back({most->first, {number}});
    uses.erase(most);
  }
}

// All that the body leads to without leaving the loop; one statement that is not fit for this form
// spoils it, but one that is not decoded, a GOTO or a RETURN is only a way out.
Loop find_loop(const Instruction& enddo) {
  const double* const variable = loop_variable(enddo);
  if (variable == nullptr) return {};
  bool is_plain = true;
  Loop loop{statements_from(enddo.with.branch.target,
                            [&](int position) {
                              const Statement statement = statement_at(position);
                              if (statement.first == nullptr || statement.leads_out()) return false;
                              is_plain = is_plain && !statement.calls_routine() &&
                                         !is_in_the_way(statement, variable);
                              return is_plain;
                            }),
            {}};
  if (!is_plain || loop.statements.empty()) return {};
  choose_held(loop, variable);
  loop.statements.push_back(enddo.statement);
  return loop;
}

class Translation {
 public:
  explicit Translation(int position) : plain_(code_, kResultsInRegisters) {
    code_.next = native_code.next;
    const auto statements = statements_from(position, [this](int p) { return takes(p); });
    for (std::size_t k = 0; k < statements.size(); ++k) {
      write(statements[k], k + 1 < statements.size() ? statements[k + 1] : 0);
    }
    for (const Jump& jump : plain_.jumps) Assembler::land(jump.end, destination(jump));
    native_code.next = code_.next;
  }

 private:
  std::ptrdiff_t room() const { return native_code.end - code_.next - owed_; }

  // Whether the statement is to be translated now: not yet done, decoded, and with room for it.
  bool takes(int position) {
    if (native_code.code[position] != nullptr) return false;
    const Statement statement = statement_at(position);
    if (statement.first == nullptr || statement.bytes() > room()) return false;
    owed_ += statement.bytes();
    return true;
  }

  // The code of the statement that the jump leads to, or a way out with its position.
  const Byte* destination(const Jump& jump) {
    const Byte* const code = native_code.code[jump.position];
    return code != nullptr && jump.way != Way::kOut ? code : way_out(jump.position);
  }
  // Each statement has one way out, written when the first jump needs it.
  const Byte* way_out(int position) {
    const Byte*& place = native_code.way_out[position];
    if (place == nullptr) {
      place = code_.next;
      code_.mov32(kRax, position);
      Assembler::land(code_.jmp(), native_code.leave);
    }
    return place;
  }

  // Writes the statement; `following` is what is written behind it.
  void write(int position, int following) {
    const Statement statement = statement_at(position);
    const Instruction& last = *statement.last;
    native_code.code[position] = code_.next;
    plain_.begin_statement(position, statement.next(), statement.begin(), statement.end());
    for (const Instruction* i = statement.first; i != &last; ++i) {
      i->op == Op::kEnddo ? end_loop(*i) : write_row(plain_, *i);
    }
    if (last.op == Op::kReturn) return return_to_caller(last);
    if (last.op == Op::kJump) {
      plain_.call(reinterpret_cast<std::uint64_t>(&jump), last);
      plain_.leave_if_not_plain();
    }
    if (statement.next() != following) plain_.jump_to(statement.next());
  }

  void write_row(InstructionRows& rows, const Instruction& i) {
    [[maybe_unused]] const Byte* const begin = code_.next;
    rows.write(i);
    assert(code_.next - begin <= kBytesOfRow);
  }

  // Goes on at the position that the routine gives, in its code when there is some.
  void return_to_caller(const Instruction& i) {
    Memory code = at(native_code.code);
    code.is_indexed = true;
    plain_.call(reinterpret_cast<std::uint64_t>(&run_return), i);
    code_.cmp32(kRax, 0);
    plain_.leave_if(Condition::kEqual);
    code_.mov(kRcx, code);
    code_.test(kRcx, kRcx);
    Assembler::land(code_.jcc(Condition::kEqual), native_code.leave);
    code_.jmp(kRcx);
  }

  // As may_repeat and advance_loop, but for a variable that is the count up to its last bit.
  void end_loop(const Instruction& i) {
    LoopRecord& record = *i.with.loop_end.record;
    const Memory variable{kRcx, 0};
    leave_if_interrupted(plain_);
    code_.mov(kRcx, at(&record.variable));
    code_.test(kRcx, kRcx);
    plain_.leave_if(Condition::kEqual);
    code_.movsd(kWork, variable);
    code_.ucomisd(kWork, at(&record.count));
    plain_.leave_if(Condition::kNotEqual);
    plain_.leave_if(Condition::kParity);
    code_.mov(kRax, at(&record.current));
    code_.add(kRax, at(&record.step));
    code_.mov(at(&record.current), kRax);
    convert(kWork, kRax);
    code_.movsd(at(&record.count), kWork);
    code_.dec(at(&record.rounds));
    Byte* const is_over = code_.jcc(Condition::kSign);
    code_.movsd(variable, kWork);
    hold_variables(i);
    plain_.jump_to(i.with.branch.target);
    Assembler::land(is_over, code_.next);
    convert(kWork, at(&record.initial));
    code_.movsd(variable, kWork);
  }

  void leave_if_interrupted(InstructionRows& rows) {
    code_.cmp32(at(&pending_signal), 0);
    rows.leave_if(Condition::kNotEqual);
  }
  void convert(Xmm to, const Operand& from) {
    code_.xorpd(to, to);  // else it would wait for its old value
    code_.cvtsi2sd(to, from);
  }

  // ---- The form of a loop that holds variables ----

  // Goes on in that form, if there can be one; not when a variable is undefined. rcx: the address
  // of the loop's variable.
  void hold_variables(const Instruction& enddo) {
    const Loop loop = find_loop(enddo);
    if (loop.held.empty() || loop.bytes() > room()) return;
    const LoopRecord& record = *enddo.with.loop_end.record;
    const int body = enddo.with.branch.target;
    // A DO over an element may run the loop with another one each time.
    code_.mov(kRax, reinterpret_cast<std::uint64_t>(loop.held[0].place));
    code_.cmp(kRcx, kRax);
    plain_.jump_if(Condition::kNotEqual, body);
    for (const Held& held : loop.held) {
      code_.cmp(at(held.place), kMarker);
      plain_.jump_if(Condition::kGreaterOrEqual, body);
      code_.movsd(held.in, at(held.place));
    }
    code_.mov(kCurrent, at(&record.current));
    code_.mov(kStep, at(&record.step));
    code_.mov(kRounds, at(&record.rounds));
    write_loop(loop, enddo);
  }

  void write_loop(const Loop& loop, const Instruction& enddo) {
    InstructionRows rows(code_, kResultsInLoop, loop.held);
    rows.set_counter(loop.held[0].place, kCurrent);
    std::map<int, const Byte*> places;
    for (std::size_t k = 0; k < loop.statements.size(); ++k) {
      const int position = loop.statements[k];
      const Statement statement = statement_at(position);
      places[position] = code_.next;
      rows.begin_statement(position, statement.next(), statement.begin(), statement.end());
      if (position == enddo.statement) {
        repeat(loop, enddo, rows);
      } else {
        for (const Instruction* i = statement.first; i != statement.last; ++i) write_row(rows, *i);
        if (statement.next() != loop.statements[k + 1]) rows.jump_to(statement.next());
      }
    }
    std::map<std::pair<int, Way>, std::vector<Byte*>> ways_out;
    for (const Jump& jump : rows.jumps) {
      if (jump.way == Way::kOn && places.contains(jump.position)) {
        Assembler::land(jump.end, places[jump.position]);
      } else {
        ways_out[{jump.position, jump.way}].push_back(jump.end);
      }
    }
    for (const auto& [target, ends] : ways_out) {
      for (Byte* const end : ends) Assembler::land(end, code_.next);
      bring_back(loop, enddo);
      plain_.jumps.push_back({code_.jmp(), target.first, target.second});
    }
  }

  // The loop's ENDDO, while its variable is the count.
  void repeat(const Loop& loop, const Instruction& enddo, InstructionRows& rows) {
    const Held& variable = loop.held[0];
    leave_if_interrupted(rows);
    code_.add(kCurrent, kStep);
    convert(variable.in, kCurrent);
    code_.dec(kRounds);
    Byte* const is_over = code_.jcc(Condition::kSign);
    rows.jump_to(enddo.with.branch.target);
    Assembler::land(is_over, code_.next);
    bring_back(loop, enddo);
    convert(kWork, at(&enddo.with.loop_end.record->initial));
    code_.movsd(at(variable.place), kWork);
    plain_.jump_to(statement_at(enddo.statement).next());
  }

  // What is held gets to its places.
  void bring_back(const Loop& loop, const Instruction& enddo) {
    const LoopRecord& record = *enddo.with.loop_end.record;
    code_.mov(at(&record.current), kCurrent);
    code_.mov(at(&record.rounds), kRounds);
    code_.movsd(at(&record.count), loop.held[0].in);
    for (const Held& held : loop.held) code_.movsd(at(held.place), held.in);
  }

  Assembler code_;
  InstructionRows plain_;
  std::ptrdiff_t owed_ = 0;  // bytes of statements that are taken
};

}  // namespace

// Of the registers that routines keep for their callers, code uses rbx and r12.
void begin_native_code(Byte* begin, Byte* end) {
  native_code.end = end;
  Assembler code{begin};
  native_code.leave = code.next;
  code.pop(kRcx);
  code.pop(kMarker);
  code.pop(kBase);
  code.ret();
  native_code.enter = reinterpret_cast<int (*)(const Byte*)>(code.next);
  code.push(kBase);
  code.push(kMarker);
  code.push(kRcx);  // routines want the stack at a multiple of 16 bytes
  code.mov(kBase, reinterpret_cast<std::uint64_t>(&decoded_program));
  code.mov(kMarker, std::bit_cast<std::uint64_t>(kUndefined));
  code.jmp(Register::kRdi);
  native_code.next = code.next;
}

bool is_translatable(int position) {
  const Statement statement = statement_at(position);
  return statement.first != nullptr && statement.bytes() <= native_code.end - native_code.next;
}

void translate(int position) { Translation{position}; }

}  // namespace zorvik::native
