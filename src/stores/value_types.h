// Types and shapes of values while a program runs.
//
// Every number, integer or real, is a double; integer-ness is carried by the value's base type. The
// type code of a value is shape * 10 + base type.
#ifndef ZORVIK_STORES_VALUE_TYPES_H_
#define ZORVIK_STORES_VALUE_TYPES_H_

namespace zorvik {

enum BaseType : int {
  kInteger = 0,
  kReal = 1,
  kCharacter = 2,
  kPointerValue = 3,     // an element or section taken from a pointer variable
  kPointerVariable = 4,  // reading it yields the positions of its elements in the results store
};

enum Shape : int {
  kScalar = 0,
  kRange = 1,  // a:b with 0 < a < b; stands for the integers a, a+1, ..., b
  kArray = 2,  // a list of values, column by column when taken from two dimensions
};

constexpr bool is_numeric(BaseType type) { return type == kInteger || type == kReal; }

// Marks a value that is not defined, in the results store and in the files.
constexpr double kUndefined = 8.9e307;

// Where a variable's elements stand: d1 * d2 consecutive positions of its store from `start` (from
// 1), first subscript fastest. A character variable: first character in the text pool and length as
// d1.
struct Descriptor {
  int start;
  int d1, d2;
};

// The stores that a variable may live in; compiled code holds these numbers.
enum StoreNumber : int { kResultsStore = 1, kNotkeyStore = 2, kConstantStore = 3 };

}  // namespace zorvik

#endif  // ZORVIK_STORES_VALUE_TYPES_H_
