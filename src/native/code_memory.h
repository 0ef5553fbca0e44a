// Memory for machine code: it can be written or run, never both at once.
#ifndef ZORVIK_NATIVE_CODE_MEMORY_H_
#define ZORVIK_NATIVE_CODE_MEMORY_H_

#include <cstddef>

#include "native/x86_64_assembler.h"

namespace zorvik::native {

class CodeMemory {
 public:
  // Reserves so many bytes, to be written; false when the system refuses. What is not touched takes
  // no memory.
  bool reserve(std::size_t bytes);

  // False when the system refuses: then the memory is gone, and with it all code.
  bool let_write();
  bool let_run();

  Byte* begin() const { return begin_; }
  Byte* end() const { return begin_ + size_; }

 private:
  bool protect(int protection);

  Byte* begin_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace zorvik::native

#endif  // ZORVIK_NATIVE_CODE_MEMORY_H_
