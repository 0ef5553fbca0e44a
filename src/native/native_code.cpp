// Decoded execution says which statements it reaches often. They are translated together with those
// that they lead to; memory is asked for when the first one is. Where code leaves, its statement is
// run decoded, which says what the general way has to do.
#include "native/native_code.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

#include "native/code_memory.h"
#include "native/translator.h"

namespace zorvik {
namespace {

using native::native_code;

enum class State { kNotAsked, kReady, kRefused };
State state = State::kNotAsked;
native::CodeMemory memory;
std::uint8_t entered[kCodeCapacity + 1];  // how often, by code position, since the last time

// What ZORVIK_NATIVE says; what is no number there says nothing.
std::size_t wanted_bytes() {
  std::size_t kilobytes = 8192;
  if (const char* const text = std::getenv("ZORVIK_NATIVE"); text != nullptr) {
    const std::string_view digits = text;
    std::from_chars(digits.data(), digits.data() + digits.size(), kilobytes);
  }
  constexpr std::size_t kMostKilobytes = 1 << 20;  // distances of jumps have 32 bits
  return std::min(kilobytes, kMostKilobytes) * 1024;
}

bool reserve() {
  const std::size_t bytes = wanted_bytes();
  if (bytes == 0 || !memory.reserve(bytes)) return false;
  native::begin_native_code(memory.begin(), memory.end());
  return true;
}

// Code that may not be run, since the system forbids it, is forgotten, and none is made any more.
void translate(int position) {
  if (state == State::kNotAsked) state = reserve() ? State::kReady : State::kRefused;
  if (state == State::kRefused || !native::is_translatable(position)) return;
  if (memory.let_write()) {
    native::translate(position);
    if (memory.let_run()) return;
  }
  state = State::kRefused;
  std::fill(std::begin(native_code.code), std::end(native_code.code), nullptr);
}

// The code of a statement that is reached often; null when it has none and gets none.
const native::Byte* code_at(int position) {
  if (native_code.code[position] == nullptr) translate(position);
  return native_code.code[position];
}

}  // namespace

int run_plain(int position) {
  const native::Byte* code = native_code.code[position];
  if (code == nullptr && state != State::kRefused && is_often(entered[position])) {
    code = code_at(position);
  }
  for (;;) {
    if (code != nullptr) position = native_code.enter(code);
    const Reached reached = run_decoded(position);
    if (!reached.often) return reached.position;
    position = reached.position;
    code = code_at(position);
  }
}

}  // namespace zorvik
