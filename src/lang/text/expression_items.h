// A compiled expression: items in postfix order, each of three words.
//
// clang-format off
//   item                  first word       second word                     kind word
//   constant              constant number  300                             200 + base type
//   variable              variable link    100 * store + rank              1000 * t + 100 + base type
//   operator              operator code    operands, 1 or 2                307
//   function call         function number  arguments                       407
//   subscripted variable  variable link    100 * store + 10 * subs + rank  1000 * t + 500 + base type
// clang-format on
// t is 1 for the target of an assignment or a DO. A link is the number of a descriptor of the
// results store, -1000 * the notkey's number, or, until all procedures are compiled,
// -(9800000 + 1000 * key + OUTPUT) for a key of a named OUTPUT. A notkey's rank is 9 until the
// variable exists. The sign operators keep the codes of "+" and "-" with one operand.
// In the code store an expression is its item count and its three lists: 3n + 1 words.
#ifndef ZORVIK_LANG_TEXT_EXPRESSION_ITEMS_H_
#define ZORVIK_LANG_TEXT_EXPRESSION_ITEMS_H_

#include <cstdint>

#include "stores/value_types.h"

namespace zorvik {

constexpr int kMaxItems = 199;
constexpr int kUnknownRank = 9;
constexpr int kUnknownBase = 7;

enum class ItemClass : int {
  kVariable = 1,
  kConstant = 2,
  kOperator = 3,
  kFunction = 4,
  kSubscripted = 5,
};

struct Item {
  std::int32_t first, second, kind;

  ItemClass item_class() const { return static_cast<ItemClass>(kind / 100 % 10); }
  BaseType base_type() const { return static_cast<BaseType>(kind % 100 % 10); }
  int store() const { return second / 100; }
  int subscripts() const { return second / 10 % 10; }
  int rank() const { return second % 10; }
  int operands() const { return second; }  // of an operator or a function
};

constexpr std::int32_t make_kind(ItemClass item_class, int base, bool target = false) {
  return (target ? 1000 : 0) + 100 * static_cast<int>(item_class) + base;
}
constexpr Item make_constant(int number, BaseType type) {
  return {number, 100 * kConstantStore, make_kind(ItemClass::kConstant, type)};
}
constexpr Item make_operator(int code, int operands) {
  return {code, operands, make_kind(ItemClass::kOperator, kUnknownBase)};
}
constexpr Item make_function(int number, int arguments) {
  return {number, arguments, make_kind(ItemClass::kFunction, kUnknownBase)};
}
constexpr Item make_variable(std::int32_t link, int store, int rank, BaseType base, bool target) {
  return {link, 100 * store + rank, make_kind(ItemClass::kVariable, base, target)};
}
// Turns a variable's item into that of the variable with so many subscripts.
constexpr Item subscripted(Item variable, int subscripts) {
  return {variable.first, variable.second + 10 * subscripts, variable.kind + 400};
}
static_assert(subscripted(make_variable(7, kResultsStore, 2, kReal, false), 2).kind == 501);

// Links.
constexpr std::int32_t kNotkeyLink = -1000;        // times the notkey's number
constexpr std::int32_t kOutputKeyLink = -9800000;  // - 1000 * key - OUTPUT
constexpr std::int32_t make_output_key_link(int key, int output) {
  return kOutputKeyLink - 1000 * key - output;
}
constexpr bool is_output_key_link(std::int32_t word) { return word / 100000 < -97; }
constexpr int key_of_link(std::int32_t link) { return (kOutputKeyLink - link) / 1000; }
constexpr int output_of_link(std::int32_t link) { return (kOutputKeyLink - link) % 1000; }

struct ItemList {
  Item item[kMaxItems];
  int count;
};

}  // namespace zorvik

#endif  // ZORVIK_LANG_TEXT_EXPRESSION_ITEMS_H_
