// The constants of all procedures: numbers and texts in two pools, and one directory over both.
//
// Constants are numbered 1, 3, 5, ... in the order in which pass 2 meets them; equal constants are
// not shared. Filled once during pass 2, read-only while the program runs.
#ifndef ZORVIK_LANG_CODE_CONSTANT_POOL_H_
#define ZORVIK_LANG_CODE_CONSTANT_POOL_H_

#include <string_view>

namespace zorvik {

constexpr int kMaxNumbers = 4000;
constexpr int kTextConstantCapacity = 20000;  // characters in all

struct ConstantEntry {
  int position;  // in the pool of numbers or of texts, from 1
  int length;    // of a text
};

struct ConstantPool {
  double number[kMaxNumbers + 1];
  char text[kTextConstantCapacity + 1];
  ConstantEntry entry[kMaxNumbers + kTextConstantCapacity + 1];  // from 1; constant 2k - 1
  int numbers, characters, entries;
};
extern ConstantPool constant_pool;

void reset_constants();

// Each returns the new constant's number, or 0 when its pool is full.
int add_number_constant(double value);
int add_text_constant(std::string_view text);

// By the number of a constant that was added; a number's value, or a text without an end mark.
inline const ConstantEntry& constant_entry(int number) {
  return constant_pool.entry[(number + 1) / 2];
}
inline const double& number_constant(int number) {
  return constant_pool.number[constant_entry(number).position];
}
std::string_view text_constant(int number);

}  // namespace zorvik

#endif  // ZORVIK_LANG_CODE_CONSTANT_POOL_H_
