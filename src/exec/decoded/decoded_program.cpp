// Every instruction tests what could make its statement not plain before it changes anything, and
// then leaves the statement to the general evaluator.
#include "exec/decoded/decoded_program.h"

#include <cmath>

#include "driver/interruption.h"
#include "driver/number_format.h"
#include "exec/functions/elementary_functions.h"
#include "exec/values/scalar_operations.h"
#include "lang/text/language_tables.h"
#include "stores/value_types.h"

namespace zorvik {

constinit DecodedProgram decoded_program;

namespace {

bool undefined(double value) { return value == kUndefined; }

// Magnitudes up to 2^51 without a fraction: adding 1.5 * 2^52 drops whatever lies behind the point.
bool is_whole(double value) {
  constexpr double kDropFraction = 6755399441055744.0;
  return (value + kDropFraction) - kDropFraction == value && std::fabs(value) < 2251799813685248.0;
}

// Subscripts are whole and lie in 1 .. extent.
bool is_subscript(double value, int extent) {
  return value >= 1.0 && value <= extent && is_whole(value);
}

double* element_at(const Instruction& i, double before) {
  return i.block + static_cast<int>(before) + static_cast<int>(*i.a) - 1;
}

bool holds(Op op, double a, double b) {
  switch (op) {
    case Op::kLess:
    case Op::kUnlessLess:
      return a < b;
    case Op::kGreater:
    case Op::kUnlessGreater:
      return a > b;
    case Op::kLessEqual:
    case Op::kUnlessLessEqual:
      return a <= b;
    case Op::kNotEqual:
    case Op::kUnlessNotEqual:
      return a != b;
    case Op::kGreaterEqual:
    case Op::kUnlessGreaterEqual:
      return a >= b;
    default:
      return a == b;
  }
}

// The result of two operands, of which neither is undefined; false when it is not plain.
bool apply_rare(const Instruction& i, double a, double b, double& result) {
  switch (i.op) {
    case Op::kPower:
      result = raise_to_power(a, b, false, false);
      return true;
    case Op::kPowerWhole:
      if (a == 0.0 && b < 0.0) return false;
      result = raise_to_power(a, b, true, i.count != 0);
      if (i.count != 0) result = round_half_away(result);
      return true;
    case Op::kDivideWhole:
      if (b == 0.0 || !is_whole(a) || !is_whole(b)) return false;
      result = divide(a, b, true);
      return true;
    case Op::kRemainder:
      if (b == 0.0 || !is_whole(a) || !is_whole(b)) return false;
      result = static_cast<double>(static_cast<std::int64_t>(a) % static_cast<std::int64_t>(b));
      return true;
    case Op::kMaximum:
      result = a > b ? a : b;
      if (i.count != 0) result = round_half_away(result);
      return true;
    default:
      result = a < b ? a : b;
      if (i.count != 0) result = round_half_away(result);
      return true;
  }
}

// Starts a loop; false when the general evaluator has something to say.
bool start_loop(const Instruction& i, bool& enters) {
  if (!is_whole(*i.a) || !is_whole(*i.b) || !is_whole(*i.c) || *i.c == 0.0) {
    return false;
  }
  const auto initial = static_cast<std::int64_t>(*i.a);
  *i.loop = {i.to, initial, static_cast<std::int64_t>(*i.b), static_cast<std::int64_t>(*i.c),
             initial};
  *i.to = static_cast<double>(initial);
  enters = loop_continues(*i.loop);
  return true;
}

bool may_repeat(const LoopRecord& loop) {
  return loop.variable != nullptr && *loop.variable == static_cast<double>(loop.current);
}

// The first instruction of the statement at the code position; null when it is not decoded.
const Instruction* first_instruction(int position) {
  int start = decoded_program.start[position];
  if (start == 0) start = decode_statement(position);
  return start <= 0 ? nullptr : decoded_program.instruction + start - 1;
}

// The instruction that a branch leads to, found once.
const Instruction* taken(const Instruction* i) {
  Instruction& branch = decoded_program.instruction[i - decoded_program.instruction];
  if (branch.other == nullptr) branch.other = first_instruction(branch.target);
  return branch.other;
}

// What follows a finished statement; the instruction before the kGo leads there directly from now
// on.
const Instruction* go_on(const Instruction* i) {
  const Instruction* const found = taken(i);
  const auto k = i - decoded_program.instruction;
  if (found != nullptr && k > 0) {
    Instruction& before = decoded_program.instruction[k - 1];
    if (before.statement == i->statement) before.next = found;
  }
  return found;
}

}  // namespace

int run_decoded(int position, int& jumps, int max_jumps) {
  const Instruction* next = first_instruction(position);
  if (next == nullptr) return position;
  for (;;) {
    const Instruction& i = *next;
    next = i.next;
    switch (i.op) {
      case Op::kAdd:
        if (undefined(*i.a) || undefined(*i.b)) return i.statement;
        *i.to = *i.a + *i.b;
        break;
      case Op::kSubtract:
        if (undefined(*i.a) || undefined(*i.b)) return i.statement;
        *i.to = *i.a - *i.b;
        break;
      case Op::kMultiply:
        if (undefined(*i.a) || undefined(*i.b)) return i.statement;
        *i.to = *i.a * *i.b;
        break;
      case Op::kDivide:
        if (undefined(*i.a) || undefined(*i.b) || std::fabs(*i.b) < kSmallestDivisor) {
          return i.statement;
        }
        *i.to = *i.a / *i.b;
        break;
      case Op::kAddWhole: {
        const double result = *i.a + *i.b;
        if (undefined(*i.a) || undefined(*i.b) || !is_whole(result)) return i.statement;
        *i.to = result + 0.0;
        break;
      }
      case Op::kSubtractWhole: {
        const double result = *i.a - *i.b;
        if (undefined(*i.a) || undefined(*i.b) || !is_whole(result)) return i.statement;
        *i.to = result + 0.0;
        break;
      }
      case Op::kMultiplyWhole: {
        const double result = *i.a * *i.b;
        if (undefined(*i.a) || undefined(*i.b) || !is_whole(result)) return i.statement;
        *i.to = result + 0.0;
        break;
      }
      case Op::kPower:
      case Op::kPowerWhole:
      case Op::kDivideWhole:
      case Op::kRemainder:
      case Op::kMaximum:
      case Op::kMinimum: {
        double result;
        if (undefined(*i.a) || undefined(*i.b) || !apply_rare(i, *i.a, *i.b, result)) {
          return i.statement;
        }
        *i.to = result;
        break;
      }
      case Op::kAnd:
        if (undefined(*i.a) || undefined(*i.b)) return i.statement;
        *i.to = *i.a == 0.0 || *i.b == 0.0 ? 0.0 : 1.0;
        break;
      case Op::kOr:
        if (undefined(*i.a) || undefined(*i.b)) return i.statement;
        *i.to = *i.a == 0.0 && *i.b == 0.0 ? 0.0 : 1.0;
        break;
      case Op::kLess:
      case Op::kGreater:
      case Op::kLessEqual:
      case Op::kNotEqual:
      case Op::kGreaterEqual:
      case Op::kEqual:
        if (undefined(*i.a) || undefined(*i.b)) return i.statement;
        *i.to = holds(i.op, *i.a, *i.b) ? 1.0 : 0.0;
        break;
      case Op::kUnlessLess:
      case Op::kUnlessGreater:
      case Op::kUnlessLessEqual:
      case Op::kUnlessNotEqual:
      case Op::kUnlessGreaterEqual:
      case Op::kUnlessEqual:
        if (undefined(*i.a) || undefined(*i.b)) return i.statement;
        if (holds(i.op, *i.a, *i.b)) break;
        if (next = taken(&i); next == nullptr) return i.target;
        break;
      case Op::kUnless:
        if (undefined(*i.a)) return i.statement;
        if (*i.a != 0.0) break;
        if (next = taken(&i); next == nullptr) return i.target;
        break;
      case Op::kCopy:
        if (undefined(*i.a)) return i.statement;
        *i.to = *i.a;
        break;
      case Op::kNegate:
        if (undefined(*i.a)) return i.statement;
        *i.to = -*i.a;
        break;
      case Op::kNot:
        if (undefined(*i.a)) return i.statement;
        *i.to = *i.a == 0.0 ? 1.0 : 0.0;
        break;
      case Op::kFunction:
        if (undefined(*i.a) || !elementary_accepts(i.count, *i.a)) return i.statement;
        *i.to = elementary_value(i.count, *i.a);
        break;
      case Op::kColumn:
        if (!is_subscript(*i.a, i.count)) return i.statement;
        *i.to = (*i.a - 1.0) * i.target;
        break;
      case Op::kLoadElement:
      case Op::kLoadElement2: {
        if (!is_subscript(*i.a, i.count)) return i.statement;
        const double element = *element_at(i, i.b == nullptr ? 0.0 : *i.b);
        if (undefined(element)) return i.statement;
        *i.to = element;
        break;
      }
      case Op::kStoreElement:
      case Op::kStoreElement2:
        if (!is_subscript(*i.a, i.count) || undefined(*i.b)) return i.statement;
        *element_at(i, i.to == nullptr ? 0.0 : *i.to) = *i.b;
        break;
      case Op::kGo:
        if (next = go_on(&i); next == nullptr) return i.target;
        break;
      case Op::kJump:
        if (jumps == max_jumps) return i.statement;
        ++jumps;
        if (next = taken(&i); next == nullptr) return i.target;
        break;
      case Op::kDo: {
        bool enters;
        if (!start_loop(i, enters)) return i.statement;
        if (!enters) {
          if (next = first_instruction(i.count); next == nullptr) return i.count;
        } else if (next = taken(&i); next == nullptr) {
          return i.target;
        }
        break;
      }
      case Op::kEnddo:
        if (!may_repeat(*i.loop) || is_interrupted()) return i.statement;
        if (!advance_loop(*i.loop)) {
          if (next = first_instruction(i.count); next == nullptr) return i.count;
        } else if (next = taken(&i); next == nullptr) {
          return i.target;
        }
        break;
    }
  }
}

}  // namespace zorvik
