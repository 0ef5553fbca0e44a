// The directory has one entry a constant and constants have odd numbers: constant n is entry
// (n + 1) / 2. A text goes behind the one before it, without an end mark; its length is in its
// entry.
//   2.5, 'AB', 2.5 -> numbers 1, 3, 5: number 1 of the pool, characters 1 and 2, number 2 of the
//   pool
#include "lang/code/constant_pool.h"

#include <algorithm>

namespace zorvik {

ConstantPool constant_pool;

namespace {

int add_entry(ConstantEntry entry) {
  constant_pool.entry[++constant_pool.entries] = entry;
  return 2 * constant_pool.entries - 1;
}

}  // namespace

void reset_constants() {
  constant_pool.numbers = constant_pool.characters = constant_pool.entries = 0;
}

int add_number_constant(double value) {
  if (constant_pool.numbers == kMaxNumbers) return 0;
  constant_pool.number[++constant_pool.numbers] = value;
  return add_entry({constant_pool.numbers, 0});
}

int add_text_constant(std::string_view text) {
  const auto length = static_cast<int>(text.size());
  if (length > kTextConstantCapacity - constant_pool.characters) return 0;
  const int position = constant_pool.characters + 1;
  std::copy_n(text.data(), length, constant_pool.text + position);
  constant_pool.characters += length;
  return add_entry({position, length});
}

std::string_view text_constant(int number) {
  const ConstantEntry& entry = constant_entry(number);
  return {constant_pool.text + entry.position, static_cast<std::size_t>(entry.length)};
}

}  // namespace zorvik
