// Where the last whole group ends is known after each flush; whatever stops the conversion first
// leaves the file to the run's end, which cuts it back to there.
//   titles and names are written, the third record ends too early -> header and two records stay
#include "service/group_writer.h"

#include "driver/interruption.h"
#include "driver/source_line.h"
#include "driver/text.h"
#include "service/stop_command.h"

namespace zorvik {

GroupWriter::GroupWriter(File& file, const TextForm& form) : file_(file), form_(form) {
  file_.keep_on_failure(file.position());
}

void GroupWriter::stop(std::string_view text, int io_status) {
  stop_command(text, form_.consequence, io_status, source_line.number);
}

void GroupWriter::stop_on_failure(int status) {
  if (status != 0) stop(message("%fat- Write error. File ", form_.binary_name, '.'), status);
}

// The bytes count only when their group ends.
void GroupWriter::write(const void* from, std::size_t bytes) {
  stop_if_interrupted();
  stop_on_failure(file_.write(from, bytes));
}

void GroupWriter::end_group() {
  stop_on_failure(file_.flush());
  file_.keep_on_failure(file_.position());
}

}  // namespace zorvik
