// Where the last whole group ends is known after each flush; whatever stops the conversion first
// cuts the file back to there.
#include "service/group_writer.h"

#include "driver/source_line.h"
#include "driver/text.h"
#include "service/stop_command.h"

namespace zorvik {

GroupWriter::GroupWriter(File& file, const TextForm& form)
    : file_(file), form_(form), whole_until_(file.position()) {}

void GroupWriter::stop(std::string_view text, int io_status) {
  file_.cut_back_to(whole_until_);
  file_.close();
  stop_command(text, form_.consequence, io_status, source_line.number);
}

void GroupWriter::stop_on_failure(int status) {
  if (status != 0) stop(message("%fat- Write error. File ", form_.binary_name, '.'), status);
}

void GroupWriter::write(const void* from, std::size_t bytes) {
  stop_on_failure(file_.write(from, bytes));
}

void GroupWriter::end_group() {
  stop_on_failure(file_.flush());
  whole_until_ = file_.position();
}

}  // namespace zorvik
