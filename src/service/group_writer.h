// The binary file that a text form becomes. It grows by whole groups of its layout, each of which
// goes to the disk when it is complete, so that a text in error, or a full disk, leaves a file of
// whole groups and nothing else.
#ifndef ZORVIK_SERVICE_GROUP_WRITER_H_
#define ZORVIK_SERVICE_GROUP_WRITER_H_

#include <cstdint>
#include <string_view>

#include "driver/file.h"
#include "driver/messages.h"

namespace zorvik {

// What differs between the two text forms.
struct TextForm {
  std::string_view text_name, binary_name;  // "<restxt>", "<vnxres>"
  std::string_view consequence;             // second line of every refusal
  // A real that can't be converted although it has an exponent: is it 0 without a word?
  bool bad_exponent_is_zero;
};

class GroupWriter {
 public:
  // The file is open and empty, or holds whole groups only.
  GroupWriter(File& file, const TextForm& form);

  // Both end the run when the file can't be written: "%fat- Write error. File <..>." with the I/O
  // status.
  void write(const void* from, std::size_t bytes);
  void end_group();

  // Ends the run, which cuts the file back to its last whole group: the text goes to the listing
  // with the number of the line that is being read, then the command's second line.
  [[noreturn]] void stop(std::string_view text, int io_status = kNoIoStatus);

 private:
  void stop_on_failure(int status);

  File& file_;
  const TextForm& form_;
};

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_GROUP_WRITER_H_
