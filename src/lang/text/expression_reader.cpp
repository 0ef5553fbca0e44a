// Shunting-yard: an operator first moves out every stacked operator of equal or higher precedence,
// so all group to the left.   A-B-C -> A B - C -    2**3**2 -> 2 3 ** 2 **    -A*B -> A B * neg
#include "lang/text/expression_reader.h"

#include <string_view>

#include "driver/messages.h"

namespace zorvik {
namespace {

// What a lexeme is to its neighbours. An opener is a function's name, or a variable's with "("
// behind it; a sign is "+" or "-", of one operand or of two.
enum Category {
  kStart,
  kBinary,
  kCommaSign,
  kOpenSign,
  kCloseSign,
  kOperand,
  kOpener,
  kSign,
  kColonSign
};

// Row: a lexeme's category; column: the category of the lexeme before it. Anything may come first:
// which lexemes begin an expression is for the callers to judge.
constexpr bool kMayFollow[9][9] = {
    //             start  bin    ,      (      )      opd    opn    sign   :
    /* start  */ {false, false, false, false, false, false, false, false, false},
    /* binary */ {true, false, false, false, true, true, false, false, false},
    /* ,      */ {true, false, false, false, true, true, false, false, false},
    /* (      */ {true, true, true, true, false, false, true, true, true},
    /* )      */ {true, false, false, false, true, true, false, false, false},
    /* operand*/ {true, true, true, true, false, false, false, true, true},
    /* opener */ {true, true, true, true, false, false, false, true, true},
    /* sign   */ {true, false, true, true, true, true, false, false, true},
    /* :      */ {true, false, false, false, true, true, false, false, false},
};

struct Precedence {
  int precedence, operands;
};
// By operator code; precedence 0 takes no part in the ordering. A sign of one operand stands
// between sums and products: -A*B is -(A*B), -A+B is (-A)+B.
constexpr Precedence kPrecedences[kLastOperator + 1] = {
    {0, 0}, {8, 2}, {5, 2}, {5, 2}, {0, 0}, {1, 2}, {8, 2}, {6, 2}, {6, 2}, {0, 0}, {0, 0},
    {0, 0}, {0, 0}, {3, 2}, {2, 2}, {4, 1}, {9, 2}, {5, 2}, {5, 2}, {5, 2}, {5, 2}};
constexpr int kSignPrecedence = 7;
constexpr int kMaxStacked = 199;  // parentheses and marks of levels included

class Reader {
 public:
  Reader(int unit, ExpressionMode mode, Lexeme& lexeme, OperandResolver& resolver, ItemList& items)
      : unit_(unit), mode_(mode), lexeme_(lexeme), resolver_(resolver), items_(items) {
    items_.count = 0;
    levels_[0] = {0, 0};
  }

  ExpressionEnd read() {
    LexStatus status = LexStatus::kLexeme;
    for (;;) {
      if (status == LexStatus::kError) {
        report_lexical_error(lexeme_);
        return ExpressionEnd::kFailed;
      }
      if (status == LexStatus::kEnd) return finish(ExpressionEnd::kTextEnded);
      if (is_keyword(lexeme_.code)) return finish(ExpressionEnd::kKeyword);
      if (lexeme_.is(kSemicolon)) return finish(ExpressionEnd::kSemicolon);
      if (!take_lexeme()) return abandon();
      if (ended_by_comma_) return finish(ExpressionEnd::kComma);
      if (mode_ == ExpressionMode::kTarget && is_complete()) return finish_target();
      status = advance();
    }
  }

 private:
  // The arguments of one function or the subscripts of one variable; level 0 is outside all of
  // them.
  struct Level {
    int open;       // open parentheses
    int arguments;  // commas met
  };
  enum class Stacked { kOperator, kOpener, kParenthesis, kLevelMark };
  struct Entry {
    Stacked what;
    Item item;  // of an operator or an opener
    int precedence;
  };

  // Moves to the next lexeme, which the look at what follows a name may already have read.
  LexStatus advance() {
    if (!has_ahead_) return next_lexeme(unit_, lexeme_);
    has_ahead_ = false;
    lexeme_ = ahead_;
    return ahead_status_;
  }

  bool fail(std::string_view text) {
    count_error_at(lexeme_.column, text);
    return false;
  }

  // What was read ahead belongs to the recovery, or to the next statement.
  ExpressionEnd abandon() {
    if (has_ahead_ && ahead_status_ != LexStatus::kEnd) give_back(ahead_);
    return ExpressionEnd::kFailed;
  }

  // Only what follows a name tells whether it has subscripts, so it is read ahead.
  // The next line may be read, and listed, for it: an error is then shown under that line.
  bool opens_subscripts() {
    ahead_status_ = next_lexeme(unit_, ahead_);
    has_ahead_ = true;
    return ahead_status_ == LexStatus::kLexeme && ahead_.is(kOpen);
  }

  Category category() {
    const int code = lexeme_.code;
    if (is_function(code)) return kOpener;
    if (code == kName) return opens_subscripts() ? kOpener : kOperand;
    if (code >= kIntegerConstant) return kOperand;
    switch (code) {
      case kComma:
        return kCommaSign;
      case kOpen:
        return kOpenSign;
      case kClose:
        return kCloseSign;
      case kPlus:
      case kMinus:
        return kSign;
      case kColon:
        return kColonSign;
      default:
        return kBinary;
    }
  }

  bool take_lexeme() {
    if (lexeme_.is(kAssign)) return fail("%err- Statement \"=\" is invalid inside expression");
    const Category current = category();
    if (!kMayFollow[current][previous_]) return fail("%err- Invalid syntax of expression");
    const bool good = take(current);
    previous_ = current;
    return good;
  }

  bool take(Category current) {
    switch (current) {
      case kOperand:
        return take_operand();
      case kOpener:
        return take_opener();
      case kOpenSign:
        return take_open();
      case kCloseSign:
        return take_close();
      case kCommaSign:
        return take_comma();
      default:
        return take_operator(current);
    }
  }

  bool is_target_name() const { return mode_ == ExpressionMode::kTarget && previous_ == kStart; }

  bool take_operand() {
    Item item;
    const bool good = lexeme_.is(kName) ? resolver_.variable(lexeme_, is_target_name(), item)
                                        : resolver_.constant(lexeme_, item);
    return good && put_out(item);
  }

  bool take_opener() {
    Item item;
    if (is_function(lexeme_.code)) {
      item = make_function(lexeme_.code - kFirstFunction + 1, 0);
    } else if (!resolver_.variable(lexeme_, is_target_name(), item)) {
      return false;
    }
    return stack({Stacked::kOpener, item, 0});
  }

  // A level's mark keeps its operators apart from those before the opener.
  bool take_open() {
    if (previous_ == kOpener) levels_[++level_] = {0, 0};
    ++levels_[level_].open;
    if (!stack({Stacked::kParenthesis, {}, 0})) return false;
    return previous_ != kOpener || stack({Stacked::kLevelMark, {}, 0});
  }

  // On the stack an opener lies below its parenthesis, and that below the mark.
  bool take_close() {
    if (--levels_[level_].open < 0) return fail("%err- Extra \")\" encountered");
    if (!unstack_operators(0)) return false;
    if (level_ == 0 || levels_[level_].open > 0) {
      --stacked_;  // the parenthesis
      return true;
    }
    stacked_ -= 2;  // the level's mark and its parenthesis
    const Item opener = stack_[--stacked_].item;
    const int arguments = levels_[level_--].arguments + 1;
    return put_out(opener.item_class() == ItemClass::kFunction
                       ? make_function(opener.first, arguments)
                       : with_subscripts(opener, arguments));
  }

  // More than two subscripts are judged by the caller; nine are as good as any larger number.
  static Item with_subscripts(Item variable, int subscripts) {
    return subscripted(variable, subscripts > 9 ? 9 : subscripts);
  }

  // Outside all parentheses a comma ends the expression: the next one of a list follows.
  bool take_comma() {
    const int open = levels_[level_].open;
    if (level_ == 0 && open == 0) {
      ended_by_comma_ = true;
      return true;
    }
    if (level_ == 0 || open > 1) return fail("%err- Unbalanced ()");
    ++levels_[level_].arguments;
    return unstack_operators(0);
  }

  bool take_operator(Category current) {
    const bool is_sign = current == kSign && (previous_ == kStart || previous_ == kOpenSign ||
                                              previous_ == kCommaSign || previous_ == kColonSign);
    const Precedence row = is_sign ? Precedence{kSignPrecedence, 1} : kPrecedences[lexeme_.code];
    return unstack_operators(row.precedence) &&
           stack({Stacked::kOperator, make_operator(lexeme_.code, row.operands), row.precedence});
  }

  // Moves out the stacked operators of at least that precedence, down to a parenthesis or a mark.
  bool unstack_operators(int precedence) {
    while (stacked_ > 0 && stack_[stacked_ - 1].what == Stacked::kOperator &&
           stack_[stacked_ - 1].precedence >= precedence) {
      if (!put_out(stack_[--stacked_].item)) return false;
    }
    return true;
  }

  bool put_out(Item item) {
    if (items_.count == kMaxItems) return fail("%err- Expression is too long");
    items_.item[items_.count++] = item;
    return true;
  }

  bool stack(Entry entry) {
    if (stacked_ == kMaxStacked) return fail("%err- Expression is too long");
    stack_[stacked_++] = entry;
    return true;
  }

  // A target ends with its name or with the ")" of its subscripts, whatever follows.
  bool is_complete() const {
    return level_ == 0 && (previous_ == kOperand || previous_ == kCloseSign);
  }

  // The first thing that is wrong is told, so the order of these questions is that of the messages.
  bool check_end() {
    if (previous_ == kStart) return fail("%err- Expression is absent");
    if (previous_ != kCloseSign && previous_ != kOperand && !ended_by_comma_) {
      return fail("%err- Invalid end of expression");
    }
    if (level_ > 0) return fail("%err- Premature end of expression");
    if (levels_[0].open > 0) return fail("%err- End of expression. Unbalanced ()");
    return unstack_operators(0);
  }

  ExpressionEnd finish(ExpressionEnd end) { return check_end() ? end : ExpressionEnd::kFailed; }

  ExpressionEnd finish_target() {
    if (has_ahead_ && ahead_status_ != LexStatus::kEnd) give_back(ahead_);
    return ExpressionEnd::kTarget;
  }

  int unit_;
  ExpressionMode mode_;
  Lexeme& lexeme_;
  OperandResolver& resolver_;
  ItemList& items_;

  Lexeme ahead_;
  LexStatus ahead_status_ = LexStatus::kLexeme;
  bool has_ahead_ = false;
  bool ended_by_comma_ = false;
  Category previous_ = kStart;
  Level levels_[kMaxStacked + 1];  // each takes three places of the stack, which fills first
  int level_ = 0;
  Entry stack_[kMaxStacked];
  int stacked_ = 0;
};

}  // namespace

ExpressionEnd read_expression(int unit, ExpressionMode mode, Lexeme& lexeme,
                              OperandResolver& resolver, ItemList& items) {
  const ExpressionEnd end = Reader(unit, mode, lexeme, resolver, items).read();
  if (end == ExpressionEnd::kKeyword) give_back(lexeme);
  return end;
}

bool may_begin_expression(const Lexeme& lexeme) {
  return !is_operator(lexeme.code) || lexeme.is(kPlus) || lexeme.is(kMinus) || lexeme.is(kOpen) ||
         lexeme.is(kNot);
}

}  // namespace zorvik
