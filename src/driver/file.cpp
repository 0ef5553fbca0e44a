// One buffer serves reading and writing: [next_, end_) are bytes read ahead, or [0, end_) bytes not
// yet handed to the system, and position_ is where the caller stands. What is larger than the
// buffer passes it by.
//   after a read of 10 bytes of a large file: next_ 10, end_ 65536, position_ 10
//   after a write of 10 bytes to a new one:   writing_, end_ 10, position_ 10
#include "driver/file.h"

#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

#include "driver/interruption.h"

namespace zorvik {
namespace {

constexpr std::size_t kBytesAfterJump = 4096;  // read first; each further read takes twice as many

// How much of `bytes` may be written to a stream at once. A console that nobody reads must not keep
// an interrupted run from its end: then as much as surely fits, 0 when there is no room.
std::size_t writable(int descriptor, std::size_t bytes) {
  constexpr int kPatience = 1000;  // milliseconds
  if (!is_interrupted()) return bytes;
  pollfd stream{descriptor, POLLOUT, 0};
  return ::poll(&stream, 1, kPatience) > 0 ? std::min<std::size_t>(bytes, PIPE_BUF) : 0;
}

// Writes all bytes at `offset` (at the stream's end when offset is negative); 0 or errno.
int write_all(int descriptor, const char* from, std::size_t bytes, std::int64_t offset) {
  while (bytes > 0) {
    const std::size_t part = offset < 0 ? writable(descriptor, bytes) : bytes;
    if (part == 0) return EINTR;
    const ssize_t written =
        offset < 0 ? ::write(descriptor, from, part) : ::pwrite(descriptor, from, part, offset);
    if (written < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    from += written;
    bytes -= static_cast<std::size_t>(written);
    if (offset >= 0) offset += written;
  }
  return 0;
}

}  // namespace

int File::fail(int status) { return io_status_ = status; }

std::int64_t File::size() {
  struct stat info;
  if (::fstat(descriptor_, &info) != 0) {
    fail(errno);
    return -1;
  }
  // Bytes still in the buffer may reach behind the end that the system knows.
  const auto pending_end = writing_ ? position_ : 0;
  return std::max<std::int64_t>(info.st_size, pending_end);
}

// Reads more from one time to the next, up to the whole buffer: after a jump little may be wanted.
bool File::fill() {
  next_ = end_ = 0;
  ssize_t got;
  do {
    got = seekable_ ? ::pread(descriptor_, buffer_.get(), ahead_, position_)
                    : ::read(descriptor_, buffer_.get(), kBufferBytes);
  } while (got < 0 && errno == EINTR);
  ahead_ = std::min(2 * ahead_, kBufferBytes);
  io_status_ = got < 0 ? errno : 0;
  if (got <= 0) return false;
  end_ = static_cast<std::size_t>(got);
  return true;
}

// kEnd and kCut differ only in whether anything was read: a clean end is no damage.
ReadStatus File::read(void* to, std::size_t bytes) {
  if (writing_ && flush() != 0) return ReadStatus::kError;
  char* target = static_cast<char*>(to);
  std::size_t missing = bytes;
  while (missing > 0) {
    if (next_ == end_ && missing >= kBufferBytes && seekable_) {  // straight to where it is wanted
      next_ = end_ = 0;
      const ssize_t got = ::pread(descriptor_, target, missing, position_);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) {
        fail(errno);
        return ReadStatus::kError;
      }
      if (got == 0) break;
      target += got;
      missing -= static_cast<std::size_t>(got);
      position_ += got;
      continue;
    }
    if (next_ == end_ && !fill()) {
      if (io_status_ != 0) return ReadStatus::kError;
      break;
    }
    const std::size_t taken = std::min(missing, end_ - next_);
    std::memcpy(target, buffer_.get() + next_, taken);
    target += taken;
    next_ += taken;
    missing -= taken;
    position_ += static_cast<std::int64_t>(taken);
  }
  if (missing == 0) return ReadStatus::kOk;
  return missing == bytes ? ReadStatus::kEnd : ReadStatus::kCut;
}

ReadStatus File::read_at(std::int64_t position, void* to, std::size_t bytes) {
  char* target = static_cast<char*>(to);
  std::size_t done = 0;
  while (done < bytes) {
    const ssize_t got = ::pread(descriptor_, target + done, bytes - done,
                                position + static_cast<std::int64_t>(done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      fail(errno);
      return ReadStatus::kError;
    }
    if (got == 0) return done == 0 ? ReadStatus::kEnd : ReadStatus::kCut;
    done += static_cast<std::size_t>(got);
  }
  return ReadStatus::kOk;
}

bool File::read_cached_at(std::int64_t position, void* to, std::size_t bytes) {
  if (!tells_cached_) return read_at(position, to, bytes) == ReadStatus::kOk;
  const iovec target{to, bytes};
  // Bytes that would have to be fetched from the disk, or lie behind the end, make it come back
  // short.
  const ssize_t got = ::preadv2(descriptor_, &target, 1, position, RWF_NOWAIT);
  if (got < 0 && (errno == EOPNOTSUPP || errno == ENOSYS)) {
    tells_cached_ = false;
    return read_cached_at(position, to, bytes);
  }
  return got == static_cast<ssize_t>(bytes);
}

// The file's size is asked for only when what is to be passed over goes beyond the end last known.
ReadStatus File::skip(std::int64_t bytes) {
  if (!writing_ && bytes <= static_cast<std::int64_t>(end_ - next_)) {
    next_ += static_cast<std::size_t>(bytes);
    position_ += bytes;
    return ReadStatus::kOk;
  }
  if (writing_ || position_ + bytes > known_end_) {
    known_end_ = size();
    if (known_end_ < 0) return ReadStatus::kError;
  }
  // What is left may be negative: somebody else may have cut the file shorter than its position.
  const std::int64_t left = std::max<std::int64_t>(known_end_ - position_, 0);
  if (seek(position_ + std::min(left, bytes)) != 0) return ReadStatus::kError;
  if (left >= bytes) return ReadStatus::kOk;
  return left == 0 ? ReadStatus::kEnd : ReadStatus::kCut;
}

// What a line has beyond `capacity` is passed over, not kept for the next call.
ReadStatus File::read_line(char* to, int capacity, int& length) {
  length = 0;
  if (writing_ && flush() != 0) return ReadStatus::kError;
  bool any = false;
  for (;;) {
    if (next_ == end_ && !fill()) {
      if (io_status_ != 0) return ReadStatus::kError;
      return any ? ReadStatus::kOk : ReadStatus::kEnd;
    }
    any = true;
    const char* const from = buffer_.get() + next_;
    const auto* const stop = static_cast<const char*>(std::memchr(from, '\n', end_ - next_));
    const std::size_t part = stop ? static_cast<std::size_t>(stop - from) : end_ - next_;
    const std::size_t kept = std::min(part, static_cast<std::size_t>(capacity - length));
    std::memcpy(to + length, from, kept);
    length += static_cast<int>(kept);
    const std::size_t taken = part + (stop ? 1 : 0);
    next_ += taken;
    position_ += static_cast<std::int64_t>(taken);
    if (stop) return ReadStatus::kOk;
  }
}

// What could not be written is dropped; the first failure stays and is given to every later caller.
void File::make_room() {
  flush();
  next_ = end_ = 0;
  writing_ = true;
}

// When the buffer held bytes read ahead they are dropped; position_, where the caller stands, and
// not where the reading stopped, is where the bytes go.
int File::write(const void* from, std::size_t bytes) {
  if (write_failure_ != 0) return write_failure_;
  if (!writing_) {
    writing_ = true;
    next_ = end_ = 0;
  }
  const char* source = static_cast<const char*>(from);
  if (bytes >= kBufferBytes && seekable_) {  // straight to the system
    if (flush() != 0) return write_failure_;
    write_failure_ = write_all(descriptor_, source, bytes, position_);
    if (write_failure_ != 0) return fail(write_failure_);
    position_ += static_cast<std::int64_t>(bytes);
    return 0;
  }
  while (bytes > 0) {
    if (end_ == kBufferBytes && flush() != 0) return write_failure_;  // it ends writing_, too
    writing_ = true;
    const std::size_t taken = std::min(bytes, kBufferBytes - end_);
    std::memcpy(buffer_.get() + end_, source, taken);
    end_ += taken;
    source += taken;
    bytes -= taken;
    position_ += static_cast<std::int64_t>(taken);
  }
  return 0;
}

// A line that would not fit into the buffer goes the way of other bytes. A terminal gets each at
// once.
int File::write_line(std::string_view prefix, std::string_view text) {
  const std::size_t bytes = prefix.size() + text.size() + 1;
  if (write_failure_ == 0 && bytes <= kBufferBytes) {
    char* const to = room(bytes);
    if (write_failure_ == 0) {
      *std::copy(text.begin(), text.end(), std::copy(prefix.begin(), prefix.end(), to)) = '\n';
      wrote(bytes);
    }
  } else {
    write(prefix.data(), prefix.size());
    write(text.data(), text.size());
    write("\n", 1);
  }
  return write_failure_ == 0 && line_buffered_ ? flush() : write_failure_;
}

// What waited is dropped whether it could be written or not: nothing is written twice.
int File::flush() {
  if (!writing_) return write_failure_;
  writing_ = false;
  const std::size_t pending = end_;
  next_ = end_ = 0;
  if (write_failure_ != 0) return fail(write_failure_);
  // position_ stands behind what waits.
  const auto start = position_ - static_cast<std::int64_t>(pending);
  write_failure_ = write_all(descriptor_, buffer_.get(), pending, seekable_ ? start : -1);
  return write_failure_ == 0 ? 0 : fail(write_failure_);
}

int File::sync() {
  if (const int status = flush(); status != 0) return status;
  return ::fsync(descriptor_) == 0 ? 0 : fail(errno);
}

int File::seek(std::int64_t position) {
  if (const int status = flush(); status != 0) return status;
  if (!seekable_) return fail(ESPIPE);
  // Stay inside the bytes already read when possible.
  const std::int64_t buffer_start = position_ - static_cast<std::int64_t>(next_);
  if (position >= buffer_start && position <= buffer_start + static_cast<std::int64_t>(end_)) {
    next_ = static_cast<std::size_t>(position - buffer_start);
  } else {
    next_ = end_ = 0;
    ahead_ = kBytesAfterJump;
  }
  position_ = position;
  return 0;
}

int File::truncate_here() {
  if (const int status = flush(); status != 0) return status;
  if (write_refusal_ != 0) return fail(write_refusal_);
  next_ = end_ = 0;
  // No longer known: the next skip asks again.
  known_end_ = 0;
  return ::ftruncate(descriptor_, position_) == 0 ? 0 : fail(errno);
}

}  // namespace zorvik
