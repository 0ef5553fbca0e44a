// A code decides a file's name and how it is opened, by a row of kFileCodes; what is no code is the
// file of an OUTPUT. The console is adopted when it is first asked for.
//   "RES" -> vnxres, for what the caller asks    "OUT" of the OUTPUT TABLE -> a new file "table"
#include "driver/units.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/text.h"

namespace zorvik {
namespace {

// kWhole: the file has its name when it is closed. kScratch lies on the disk, kSmallScratch in
// memory.
enum class Opening { kRead, kNew, kWhole, kAsAsked, kScratch, kSmallScratch };

struct FileCode {
  std::string_view code;
  std::string_view name;  // empty: the caller's name
  Opening opening;
};

constexpr FileCode kFileCodes[] = {
    {"DAT", "zrvdat", Opening::kRead},    {"LIS", "zrvlis", Opening::kNew},
    {"SC1", "", Opening::kSmallScratch},  {"SC2", "", Opening::kScratch},
    {"RES", "vnxres", Opening::kAsAsked}, {"REC", "", Opening::kAsAsked},
    {"REN", "vnxres", Opening::kWhole},   {"REW", "", Opening::kWhole},
    {"SAV", "vnxsav", Opening::kAsAsked}, {"SAN", "vnxsav", Opening::kWhole},
    {"TXS", "savtxt", Opening::kAsAsked}, {"TXR", "restxt", Opening::kAsAsked},
};

std::array<File, kUnitCount> files;
std::array<std::string, kUnitCount> write_error_subjects;

// A file that is to be created has its name when it is complete.
int open_for(File& file, const std::string& name, Use use) {
  switch (use) {
    case Use::kRead:
      return file.open_to_read(name);
    case Use::kRewrite:
      return file.open_to_rewrite(name);
    case Use::kCreate:
      return file.open_unnamed(name);
  }
  std::abort();
}

int open_as(File& file, const std::string& name, Opening opening, Use use) {
  switch (opening) {
    case Opening::kRead:
      return open_for(file, name, Use::kRead);
    case Opening::kNew:
      return file.open_new(name);
    case Opening::kWhole:
      return open_for(file, name, Use::kCreate);
    case Opening::kScratch:
      return file.open_scratch_beside(name);
    case Opening::kSmallScratch:
      return file.open_small_scratch();
    case Opening::kAsAsked:
      return open_for(file, name, use);
  }
  std::abort();
}

}  // namespace

// /dev/null fills the lowest free descriptors, until one above the three standard ones is given.
void occupy_standard_descriptors() {
  int descriptor;
  do {
    descriptor = ::open("/dev/null", O_RDONLY);
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor >= 0) ::close(descriptor);
}

File& file_on(int unit) {
  File& file = files[static_cast<std::size_t>(unit)];
  if (unit == kConsole && !file.is_open()) {
    file.adopt_descriptor(STDOUT_FILENO, ::isatty(STDOUT_FILENO) != 0);
  }
  return file;
}

void open_file(int unit, std::string_view code, std::string_view name, Use use) {
  std::string file_name(name);
  Opening opening = Opening::kNew;
  bool known = false;
  for (const FileCode& row : kFileCodes) {
    if (row.code != code) continue;
    known = true;
    opening = row.opening;
    if (!row.name.empty()) file_name = row.name;
  }
  // An OUTPUT's name is a name of the program, which is upper case; files are named in lower case.
  if (!known) to_lower_case(file_name.data(), file_name.size());
  const bool scratch = opening == Opening::kScratch || opening == Opening::kSmallScratch;
  if (scratch) unit = kScratchUnit;

  File& file = file_on(unit);
  if (const int status = open_as(file, file_name, opening, use); status != 0) {
    note(Hazard::kUnopenedFile,
         [&] { return open_error_in_words(scratch ? "the scratch file" : file_name, status); });
    stop_on_console(scratch ? std::string("%fat- Open error. Scratch file")
                            : message("%fat- Open error. File ", file_name),
                    status);
  }
  write_error_subjects[static_cast<std::size_t>(unit)] =
      scratch ? std::string("Scratch file") : message("File <", file_name, ">");
  if (code == "LIS") set_listing_unit(unit);
}

Inquiry inquire_file(const std::string& name) {
  struct stat info;
  if (::stat(name.c_str(), &info) != 0) {
    // That there is no such file is an answer and no failure.
    const bool absent = errno == ENOENT || errno == ENOTDIR;
    return {absent ? 0 : errno, false, false};
  }
  // Compared by what is open, not by name: two names may be links to one file. Not the console.
  const bool opened = std::any_of(files.begin() + 1, files.end(),
                                  [&](const File& file) { return file.is_same_file(name); });
  return {0, true, opened};
}

void set_write_error_subject(int unit, std::string subject) {
  write_error_subjects[static_cast<std::size_t>(unit)] = std::move(subject);
}

const std::string& write_error_subject(int unit) {
  return write_error_subjects[static_cast<std::size_t>(unit)];
}

}  // namespace zorvik
