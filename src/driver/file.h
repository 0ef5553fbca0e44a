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

class File {
 public:
  File() = default;
  ~File();
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  // Each gives 0 or the errno value of the failure. What is no regular file is never waited for: a
  // folder gives EISDIR, anything else EINVAL. `open_to_rewrite` falls back to reading only when
  // the file may not be written. The scratch file has no name and vanishes when it is closed.
  int open_to_read(const std::string& path);
  int open_to_rewrite(const std::string& path);
  int open_new(const std::string& path);
  int open_scratch();
  void adopt_descriptor(int descriptor, bool line_buffered);  // the console
  // 0 also when the file is not open, and for a failed write that was already given to a caller.
  int close();

  bool is_terminal() const { return line_buffered_; }
  bool is_open() const { return descriptor_ >= 0; }
  int io_status() const { return io_status_; }  // of the last failed operation
  std::int64_t position() const { return position_; }
  std::int64_t size();  // in bytes, what is still buffered included; -1 on failure

  ReadStatus read(void* to, std::size_t bytes);

  // Passes over bytes without reading them; the file's size tells whether they are there. At kCut
  // the position is the file's end.
  ReadStatus skip(std::int64_t bytes);

  // Reads past the buffer at any place; the current position stays. Binary files that are not
  // written only.
  ReadStatus read_at(std::int64_t position, void* to, std::size_t bytes);

  // Reads a line and stores its first `capacity` characters (without the line end) and their count.
  // kOk or kEnd or kError; a last line without a line end counts as a line.
  ReadStatus read_line(char* to, int capacity, int& length);

  // Buffered; 0 or the errno value of a failed flush, now or earlier.
  int write(const void* from, std::size_t bytes);
  int write_line(std::string_view prefix, std::string_view text);

  int rewind() { return seek(0); }
  int seek(std::int64_t position);
  int flush();
  int truncate_here();  // ends the file at the current position

  // Ends the file at `end` when it is longer, also after a failed write, which is forgotten with
  // all that could not be written.
  int cut_back_to(std::int64_t end);

  // True when `path` names the file that is open here.
  bool is_same_file(const std::string& path) const;

 private:
  int open_regular(const std::string& path, int access);
  int attach(int descriptor);
  int fail(int status);
  bool fill();  // reads on at position_ into the empty buffer; false at the end or on failure

  int descriptor_ = -1;
  bool seekable_ = true;
  bool line_buffered_ = false;
  bool writing_ = false;  // the buffer holds bytes to be written
  int io_status_ = 0;
  int write_failure_ = 0;      // the first failed write; what follows is dropped
  std::int64_t position_ = 0;  // of the next byte to be read or written
  std::size_t next_ = 0,
              end_ = 0;  // unread bytes of the buffer; when writing, [0, end_) is pending
  std::unique_ptr<char[]> buffer_;
};

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_FILE_H_
