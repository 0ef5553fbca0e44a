// Pages are mapped to be written, and their protection is changed as a whole. A system that forbids
// memory that was written to be run refuses the change; the pages are given back then.
#include "native/code_memory.h"

#include <sys/mman.h>

namespace zorvik::native {

bool CodeMemory::reserve(std::size_t bytes) {
  void* const pages =
      ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (pages == MAP_FAILED) return false;
  begin_ = static_cast<Byte*>(pages);
  size_ = bytes;
  return true;
}

bool CodeMemory::let_write() { return protect(PROT_READ | PROT_WRITE); }
bool CodeMemory::let_run() { return protect(PROT_READ | PROT_EXEC); }

bool CodeMemory::protect(int protection) {
  if (::mprotect(begin_, size_, protection) == 0) return true;
  ::munmap(begin_, size_);
  begin_ = nullptr;
  size_ = 0;
  return false;
}

}  // namespace zorvik::native
