// One sequential file: a plain byte stream with its own buffer. Text files are read and written by
// lines, binary files by bytes, both strictly at the current position. A failed operation gives its
// errno value, which messages show as the I/O status; nothing here writes a message.
#ifndef ZORVIK_DRIVER_FILE_H_
#define ZORVIK_DRIVER_FILE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace zorvik {

enum class ReadStatus {
  kOk,     // all bytes asked for
  kEnd,    // the file ends at the current position: not one byte
  kCut,    // the file ends inside what was asked for
  kError,  // the read failed; io_status() tells why
};

enum class CopyStatus {
  kOk,
  kReadError,   // of the source; its io_status() tells why
  kSourceEnds,  // before all was copied
  kWriteError,  // io_status() of the target tells why
};

class File {
 public:
  File() = default;
  ~File();
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  // Each gives 0 or the errno value of the failure. What is no regular file is never waited for: a
  // folder gives EISDIR, anything else EINVAL. `open_to_rewrite` falls back to reading only when
  // the file may not be written. A scratch file has no name and vanishes when it is closed; a small
  // one lies in memory where the system offers that.
  int open_to_read(const std::string& path);
  int open_to_rewrite(const std::string& path);
  int open_new(const std::string& path);
  int open_scratch();
  int open_small_scratch();

  // A scratch file that can take the place of the file `path` if that file, its folder and the file
  // system allow it.
  int open_scratch_beside(const std::string& path);
  void adopt_descriptor(int descriptor, bool line_buffered);  // the console

  // A new file that has its name when it is closed, so that a run that is killed leaves none; where
  // the file system cannot do that it has its name at once.
  int open_unnamed(const std::string& path);

  // 0 also when the file is not open, and for a failed write that was already given to a caller.
  int close();

  // Closes the file as a failed run leaves it: with its first `bytes` bytes, with all that was
  // written, which is so unless something else was said, or, when it is a new one, not at all.
  static constexpr std::int64_t kAll = -1, kNoFile = -2;
  void keep_on_failure(std::int64_t bytes) { kept_on_failure_ = bytes; }
  int abandon();

  // A complete scratch file opened beside the file `path` takes its place, on the disk and in one
  // step, with its mode and owner; a symbolic link stays one. ENOTSUP when that cannot be, and
  // nothing has changed: the old file has several hard links, or is not to be replaced.
  int take_place_of(const std::string& path);

  // Why the file, opened to be rewritten, is open for reading only; 0 when it is not.
  int write_refusal() const { return write_refusal_; }

  bool is_terminal() const { return line_buffered_; }
  bool is_open() const { return descriptor_ >= 0; }
  int io_status() const { return io_status_; }  // of the last failed operation
  std::int64_t position() const { return position_; }
  const std::int64_t* position_counter() const { return &position_; }  // for who watches it
  std::int64_t size();  // in bytes, what is still buffered included; -1 on failure

  ReadStatus read(void* to, std::size_t bytes);

  // Passes over bytes without reading them; the file's size tells whether they are there. At kCut
  // the position is the file's end.
  ReadStatus skip(std::int64_t bytes);

  // Reads past the buffer at any place; the current position stays. Binary files that are not
  // written only.
  ReadStatus read_at(std::int64_t position, void* to, std::size_t bytes);

  // The same for bytes that the system has in its memory; false, without waiting for the disk, when
  // it has not all of them. Where the system can't tell, it reads in any case.
  bool read_cached_at(std::int64_t position, void* to, std::size_t bytes);

  // Reads a line and stores its first `capacity` characters (without the line end) and their count.
  // kOk or kEnd or kError; a last line without a line end counts as a line.
  ReadStatus read_line(char* to, int capacity, int& length);

  // Writing in place: room in the buffer for `bytes` bytes, at most kBufferBytes, of which
  // wrote(bytes) adds the first to the file. A failed flush shows in write_failure().
  char* room(std::size_t bytes) {
    if (!writing_ || kBufferBytes - end_ < bytes) make_room();
    return buffer_.get() + end_;
  }
  void wrote(std::size_t bytes) {
    end_ += bytes;
    position_ += static_cast<std::int64_t>(bytes);
  }
  int write_failure() const { return write_failure_; }

  // Buffered; 0 or the errno value of a failed flush, now or earlier.
  int write(const void* from, std::size_t bytes);
  int write_line(std::string_view prefix, std::string_view text);

  // Lets the system find the room for `bytes` bytes at the current position at once, which is
  // faster than block by block. Nothing when it can't: the writing then tells why.
  void reserve(std::int64_t bytes);

  // Writes `bytes` bytes of the source, from `first` on, at the current position. The run ends here
  // when it is interrupted.
  CopyStatus copy_from(File& source, std::int64_t first, std::int64_t bytes);

  int rewind() { return seek(0); }
  int seek(std::int64_t position);
  int flush();
  int sync();           // flush, and wait until the disk has it
  int truncate_here();  // ends the file at the current position

  // True when `path` names the file that is open here.
  bool is_same_file(const std::string& path) const;

 private:
  int open_regular(const std::string& path, int access);
  int attach(int descriptor);
  int fail(int status);
  int give_name();
  int cut_back_to(std::int64_t end);
  int discard();
  void make_room();
  CopyStatus copy_piece(File& source, std::int64_t first, std::size_t bytes);
  bool fill();  // reads on at position_ into the empty buffer; false at the end or on failure

  static constexpr std::size_t kBufferBytes = 64 * 1024;

  int descriptor_ = -1;
  std::string name_;  // of a new file
  bool unnamed_ = false;
  bool can_take_place_ = false;
  int write_refusal_ = 0;
  std::int64_t kept_on_failure_ = kAll;
  bool seekable_ = true;
  bool line_buffered_ = false;
  bool tells_cached_ = true;
  bool writing_ = false;  // the buffer holds bytes to be written
  int io_status_ = 0;
  int write_failure_ = 0;      // the first failed write; what follows is dropped
  std::int64_t position_ = 0;  // of the next byte to be read or written
  std::size_t next_ = 0,
              end_ = 0;  // unread bytes of the buffer; when writing, [0, end_) is pending
  std::size_t ahead_ = kBufferBytes;  // to be read at once; less after a jump
  std::int64_t known_end_ = 0;        // the file was at least so long
  std::unique_ptr<char[]> buffer_;
};

// Waits until the disk has the names of a folder; 0 or errno.
int sync_folder(const std::string& folder);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_FILE_H_
