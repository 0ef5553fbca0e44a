// One slot a hazard holds its first text and its count; the end of the run writes the slots in the
// order of the enumeration:
//   zorvik: note: line 7: " +X(3)" stands behind column 80 and is not read (2 times)
#include "driver/notes.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "driver/text.h"

namespace zorvik {
namespace {

struct Slot {
  int count;
  std::string text;
};
std::array<Slot, kHazardCount> slots;

Slot& slot_of(Hazard hazard) { return slots[static_cast<std::size_t>(hazard)]; }

bool find_out_whether_wanted() {
  // Any other value counts as none.
  const char* const asked = std::getenv("ZORVIK_NOTES");
  if (asked != nullptr && std::strcmp(asked, "1") == 0) return true;
  if (asked != nullptr && std::strcmp(asked, "0") == 0) return false;
  return ::isatty(STDERR_FILENO) != 0;
}

// Nothing can be done about a standard error that can't be written.
void write_to_standard_error(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace

bool notes_wanted() {
  static const bool wanted = find_out_whether_wanted();
  return wanted;
}

bool is_first(Hazard hazard) { return ++slot_of(hazard).count == 1; }

void set_note(Hazard hazard, std::string text) { slot_of(hazard).text = std::move(text); }

void write_notes() {
  for (const Slot& slot : slots) {
    if (slot.text.empty()) continue;
    std::string line = message("zorvik: note: ", slot.text);
    if (slot.count > 1) line += message(" (", slot.count, " times)");
    // Names and lines of files stand in notes: they must not move a terminal's cursor.
    for (char& c : line) {
      if (static_cast<unsigned char>(c) < ' ') c = '.';
    }
    write_to_standard_error(message(line, '\n'));
  }
}

std::string open_error_in_words(std::string_view name, int io_status) {
  switch (io_status) {
    case ENOENT:
      return message(name, " is not in this directory");
    case EEXIST:
      return message(name, " exists already: remove it or rename it");
    case EACCES:
    case EPERM:
    case EROFS:
      return message("you may not open ", name, " here: see the permissions of the file and the ",
                     "directory");
    case ENOSPC:
    case EDQUOT:
      return message("no space is left on the disk for ", name);
    case EISDIR:
      return message(name, " is a directory");
    case EINVAL:
      return message(name, " is a pipe, a device or the like, not a file");
    default:
      return message(name, ": ", std::string_view(std::strerror(io_status)));
  }
}

}  // namespace zorvik
