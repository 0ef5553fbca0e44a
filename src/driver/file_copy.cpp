// Copying from file to file in large blocks: the system copies by itself where it can, and what it
// does not copy goes through a buffer, which also tells whether reading or writing failed.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "driver/file.h"
#include "driver/interruption.h"

namespace zorvik {
namespace {

constexpr std::int64_t kBlockBytes = 4 * 1024 * 1024;  // copied between two looks at the signals
constexpr std::size_t kPieceBytes = 256 * 1024;
constexpr std::int64_t kLeastForSystem = 64 * 1024;

// Lets the system copy up to `bytes` bytes; how many it copied, perhaps none. A failure counts as
// none: the copy through the buffer then meets it again and can tell which side it was.
std::int64_t copy_by_system(int from, std::int64_t first, int to, std::int64_t target,
                            std::int64_t bytes) {
  off_t read_place = first, write_place = target;
  const ssize_t copied =
      ::copy_file_range(from, &read_place, to, &write_place, static_cast<std::size_t>(bytes), 0);
  return std::max<std::int64_t>(copied, 0);
}

}  // namespace

// The size stays: what is reserved behind the end goes with the file, or by a cut.
void File::reserve(std::int64_t bytes) {
  static_cast<void>(::fallocate(descriptor_, FALLOC_FL_KEEP_SIZE, position_, bytes));
}

CopyStatus File::copy_piece(File& source, std::int64_t first, std::size_t bytes) {
  static char piece[kPieceBytes];
  switch (source.read_at(first, piece, bytes)) {
    case ReadStatus::kOk:
      break;
    case ReadStatus::kError:
      return CopyStatus::kReadError;
    default:
      return CopyStatus::kSourceEnds;
  }
  return write(piece, bytes) == 0 ? CopyStatus::kOk : CopyStatus::kWriteError;
}

CopyStatus File::copy_from(File& source, std::int64_t first, std::int64_t bytes) {
  bool system_copies = bytes >= kLeastForSystem;
  for (const std::int64_t end = first + bytes; first < end;) {
    stop_if_interrupted();
    std::int64_t copied = 0;
    if (system_copies) {
      // The system copies behind the buffer's back: what waits in it must be in the file first.
      if (flush() != 0) return CopyStatus::kWriteError;
      copied = copy_by_system(source.descriptor_, first, descriptor_, position_,
                              std::min(end - first, kBlockBytes));
      position_ += copied;
      // Two file systems that can't, or the source's end: asked once, not for every block.
      system_copies = copied > 0;
    }
    if (copied == 0) {
      copied = std::min<std::int64_t>(end - first, kPieceBytes);
      const CopyStatus status = copy_piece(source, first, static_cast<std::size_t>(copied));
      if (status != CopyStatus::kOk) return status;
    }
    first += copied;
  }
  return CopyStatus::kOk;
}

}  // namespace zorvik
