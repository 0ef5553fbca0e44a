// Every instruction tests what could make its statement not plain before it changes anything, and
// then leaves the statement to the general evaluator.
#include "exec/decoded_program.h"

#include <cmath>

#include "driver/language_tables.h"
#include "driver/number_format.h"
#include "exec/elementary_functions.h"
#include "exec/evaluation_stack.h"
#include "exec/operators.h"

namespace zorvik {
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
      result = std::fmod(a, b) + 0.0;
      return true;
    case Op::kMaximum:
      result = a > b ? a : b;
      return true;
    default:
      result = a < b ? a : b;
      return true;
  }
}

// One ENDDO; false when the general evaluator has something to say.
bool repeat_loop(const Instruction& i, int& position) {
  LoopRecord& loop = *i.loop;
  if (loop.variable == nullptr || *loop.variable != static_cast<double>(loop.current)) return false;
  position = advance_loop(loop) ? i.target : i.count;
  return true;
}

}  // namespace

int run_decoded(int position, int& jumps, int max_jumps) {
  const DecodedProgram& program = decoded_program;
  for (;;) {
    int start = program.start[position];
    if (start == 0) start = decode_statement(position);
    if (start <= 0) return position;
    const Instruction* next = program.instruction + start - 1;
    for (bool in_statement = true; in_statement;) {
      const Instruction& i = *next++;
      switch (i.op) {
        case Op::kAdd:
          if (undefined(*i.a) || undefined(*i.b)) return position;
          *i.to = *i.a + *i.b;
          break;
        case Op::kSubtract:
          if (undefined(*i.a) || undefined(*i.b)) return position;
          *i.to = *i.a - *i.b;
          break;
        case Op::kMultiply:
          if (undefined(*i.a) || undefined(*i.b)) return position;
          *i.to = *i.a * *i.b;
          break;
        case Op::kDivide:
          if (undefined(*i.a) || undefined(*i.b) || std::fabs(*i.b) < kSmallestDivisor) {
            return position;
          }
          *i.to = *i.a / *i.b;
          break;
        case Op::kAddWhole: {
          const double result = *i.a + *i.b;
          if (undefined(*i.a) || undefined(*i.b) || !is_whole(result)) return position;
          *i.to = result + 0.0;
          break;
        }
        case Op::kSubtractWhole: {
          const double result = *i.a - *i.b;
          if (undefined(*i.a) || undefined(*i.b) || !is_whole(result)) return position;
          *i.to = result + 0.0;
          break;
        }
        case Op::kMultiplyWhole: {
          const double result = *i.a * *i.b;
          if (undefined(*i.a) || undefined(*i.b) || !is_whole(result)) return position;
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
            return position;
          }
          *i.to = result;
          break;
        }
        case Op::kAnd:
          if (undefined(*i.a) || undefined(*i.b)) return position;
          *i.to = *i.a == 0.0 || *i.b == 0.0 ? 0.0 : 1.0;
          break;
        case Op::kOr:
          if (undefined(*i.a) || undefined(*i.b)) return position;
          *i.to = *i.a == 0.0 && *i.b == 0.0 ? 0.0 : 1.0;
          break;
        case Op::kLess:
        case Op::kGreater:
        case Op::kLessEqual:
        case Op::kNotEqual:
        case Op::kGreaterEqual:
        case Op::kEqual:
          if (undefined(*i.a) || undefined(*i.b)) return position;
          *i.to = holds(i.op, *i.a, *i.b) ? 1.0 : 0.0;
          break;
        case Op::kUnlessLess:
        case Op::kUnlessGreater:
        case Op::kUnlessLessEqual:
        case Op::kUnlessNotEqual:
        case Op::kUnlessGreaterEqual:
        case Op::kUnlessEqual:
          if (undefined(*i.a) || undefined(*i.b)) return position;
          if (!holds(i.op, *i.a, *i.b)) {
            position = i.target;
            in_statement = false;
          }
          break;
        case Op::kUnless:
          if (undefined(*i.a)) return position;
          if (*i.a == 0.0) {
            position = i.target;
            in_statement = false;
          }
          break;
        case Op::kCopy:
          if (undefined(*i.a)) return position;
          *i.to = *i.a;
          break;
        case Op::kNegate:
          if (undefined(*i.a)) return position;
          *i.to = -*i.a;
          break;
        case Op::kNot:
          if (undefined(*i.a)) return position;
          *i.to = *i.a == 0.0 ? 1.0 : 0.0;
          break;
        case Op::kFunction:
          if (undefined(*i.a)) return position;
          evaluation.line = i.target;
          *i.to = elementary_value(i.count, *i.a);
          break;
        case Op::kColumn:
          if (!is_subscript(*i.a, i.count)) return position;
          *i.to = (*i.a - 1.0) * i.target;
          break;
        case Op::kLoadElement:
          if (!is_subscript(*i.a, i.count)) return position;
          if (undefined(*element_at(i, 0.0))) return position;
          *i.to = *element_at(i, 0.0);
          break;
        case Op::kLoadElement2:
          if (!is_subscript(*i.a, i.count)) return position;
          if (undefined(*element_at(i, *i.b))) return position;
          *i.to = *element_at(i, *i.b);
          break;
        case Op::kStoreElement:
          if (!is_subscript(*i.a, i.count) || undefined(*i.b)) return position;
          *element_at(i, 0.0) = *i.b;
          break;
        case Op::kStoreElement2:
          if (!is_subscript(*i.a, i.count) || undefined(*i.b)) return position;
          *element_at(i, *i.to) = *i.b;
          break;
        case Op::kGo:
          position = i.target;
          in_statement = false;
          break;
        case Op::kJump:
          if (jumps == max_jumps) return position;
          ++jumps;
          position = i.target;
          in_statement = false;
          break;
        case Op::kEnddo:
          if (!repeat_loop(i, position)) return position;
          in_statement = false;
          break;
      }
    }
  }
}

}  // namespace zorvik
