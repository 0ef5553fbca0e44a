// How a file is opened, gets its name and is closed.
//
// A new file that is to be whole or absent has no name at first: the link that the system keeps of
// every open file, /proc/self/fd/N, becomes its name when it is closed. A file that takes the place
// of another gets a name beside it that way and is renamed over it.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "driver/file.h"

namespace zorvik {
namespace {

constexpr uid_t kSameOwner = static_cast<uid_t>(-1);

std::string link_to(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

std::string real_path(const std::string& path) {
  char* const found = ::realpath(path.c_str(), nullptr);
  std::string real = found == nullptr ? path : found;
  std::free(found);
  return real;
}

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// Gives the open file a name of its own beside `path`; 0 with the name, or errno.
int link_beside(int descriptor, const std::string& path, std::string& name) {
  const std::string here = link_to(descriptor);
  // Names that are taken are remains of runs that were killed, or others' files: they are left
  // alone.
  for (int k = 1; k < 1000; ++k) {
    name = path + ".new" + (k == 1 ? "" : std::to_string(k));
    if (::linkat(AT_FDCWD, here.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) return 0;
    if (errno != EEXIST) return errno;
  }
  return EEXIST;
}

// What the file's list of access rights grants beyond its mode, which then is no more than a mask;
// false when it cannot be given to the new file.
bool copy_access_list(const std::string& path, int descriptor) {
  constexpr char kName[] = "system.posix_acl_access";
  char list[4096];
  const ssize_t bytes = ::getxattr(path.c_str(), kName, list, sizeof list);
  if (bytes < 0) return errno == ENODATA || errno == ENOTSUP;
  return ::fsetxattr(descriptor, kName, list, static_cast<std::size_t>(bytes), 0) == 0;
}

// Failures of a replacement after which the file may still be rewritten in place.
bool forbids_replacing(int status) {
  return status == EPERM || status == EACCES || status == EBUSY || status == EXDEV;
}

}  // namespace

// A file system that cannot do it says EINVAL: then there is nothing to wait for.
int sync_folder(const std::string& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return errno;
  const int status = ::fsync(descriptor) == 0 || errno == EINVAL ? 0 : errno;
  ::close(descriptor);
  return status;
}

File::~File() { close(); }

// A File may be opened again after it was closed: nothing of the file before may stay.
int File::attach(int descriptor) {
  descriptor_ = descriptor;
  io_status_ = 0;
  seekable_ = true;
  line_buffered_ = false;
  writing_ = false;
  write_failure_ = 0;
  name_.clear();
  unnamed_ = false;
  can_take_place_ = false;
  write_refusal_ = 0;
  kept_on_failure_ = kAll;
  position_ = 0;
  next_ = end_ = 0;
  ahead_ = kBufferBytes;
  known_end_ = 0;
  if (!buffer_) buffer_ = std::make_unique_for_overwrite<char[]>(kBufferBytes);
  return 0;
}

// Not to wait is asked for at the opening, where a FIFO would wait, and taken back for the reading.
int File::open_regular(const std::string& path, int access) {
  const int descriptor = ::open(path.c_str(), access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) return fail(errno);
  struct stat info;
  int status = 0;
  if (::fstat(descriptor, &info) != 0 || ::fcntl(descriptor, F_SETFL, 0) != 0) {
    status = errno;
  } else if (!S_ISREG(info.st_mode)) {
    status = S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
  }
  if (status == 0) return attach(descriptor);
  ::close(descriptor);
  return fail(status);
}

int File::open_to_read(const std::string& path) { return open_regular(path, O_RDONLY); }

// The refusal is kept: a command that only looks needs no right to write, one that writes tells it.
int File::open_to_rewrite(const std::string& path) {
  const int refusal = open_regular(path, O_RDWR);
  if (refusal != EACCES && refusal != EROFS && refusal != EPERM) return refusal;
  const int status = open_to_read(path);
  write_refusal_ = refusal;
  return status;
}

int File::open_new(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) return fail(errno);
  attach(descriptor);
  name_ = path;
  return 0;
}

// Without a folder of processes the file could not get its name at the end.
int File::open_unnamed(const std::string& path) {
  struct stat info;
  if (::lstat(path.c_str(), &info) == 0) return fail(EEXIST);
  const bool here = path.find('/') == std::string::npos;
  const int descriptor = here ? ::open(".", O_TMPFILE | O_RDWR | O_CLOEXEC, 0666) : -1;
  if (descriptor < 0) return open_new(path);
  if (::access(link_to(descriptor).c_str(), F_OK) != 0) {
    ::close(descriptor);
    return open_new(path);
  }
  attach(descriptor);
  name_ = path;
  unnamed_ = true;
  return 0;
}

int File::open_scratch() {
  int descriptor = ::open(".", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor < 0) {  // a file system without nameless files
    char name[] = "zrvscrXXXXXX";
    descriptor = ::mkstemp(name);
    if (descriptor < 0) return fail(errno);
    ::unlink(name);
  }
  return attach(descriptor);
}

int File::open_small_scratch() {
  const int descriptor = ::memfd_create("zrvscr", MFD_CLOEXEC);
  return descriptor < 0 ? open_scratch() : attach(descriptor);
}

int File::open_scratch_beside(const std::string& path) {
  const std::string folder = folder_of(real_path(path));
  const int descriptor = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor < 0) return open_scratch();
  attach(descriptor);
  can_take_place_ = ::access(link_to(descriptor).c_str(), F_OK) == 0;
  return 0;
}

void File::adopt_descriptor(int descriptor, bool line_buffered) {
  attach(descriptor);
  seekable_ = false;  // several processes may write there: always at the end
  line_buffered_ = line_buffered;
}

int File::give_name() {
  unnamed_ = false;
  const std::string here = link_to(descriptor_);
  return ::linkat(AT_FDCWD, here.c_str(), AT_FDCWD, name_.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0
                                                                                           : errno;
}

int File::close() {
  if (descriptor_ < 0) return 0;
  int status = write_failure_ != 0 ? 0 : flush();
  if (unnamed_) {
    // The name comes last, when every byte is in the file; another file may have taken it
    // meanwhile.
    const int failure = give_name();
    if (status == 0) status = failure;
  }
  if (::close(descriptor_) != 0 && status == 0) status = errno;
  descriptor_ = -1;
  return status == 0 ? 0 : fail(status);
}

// Owner, mode and rights are copied to the new file while it still has no name, and the disk has
// all of it before the name changes hands: whenever the machine stops, the name shows one of the
// two files whole. Of a file with several hard links the others would keep the old content.
int File::take_place_of(const std::string& path) {
  const std::string real = real_path(path);
  struct stat old;
  if (::stat(real.c_str(), &old) != 0) return fail(errno);
  if (!can_take_place_ || old.st_nlink > 1) return fail(ENOTSUP);
  if (const int status = flush(); status != 0) return status;
  // Only root may give a file away: another who may write it becomes its owner.
  if (::fchown(descriptor_, old.st_uid, old.st_gid) != 0 &&
      ::fchown(descriptor_, kSameOwner, old.st_gid) != 0 && errno != EPERM) {
    return fail(errno);
  }
  // Behind the change of owner, which may take set-user and set-group bits away.
  if (::fchmod(descriptor_, old.st_mode & 07777) != 0) return fail(errno);
  if (!copy_access_list(real, descriptor_)) return fail(ENOTSUP);
  if (const int status = sync(); status != 0) return status;
  std::string fresh;
  int status = link_beside(descriptor_, real, fresh);
  if (status == 0 && ::rename(fresh.c_str(), real.c_str()) != 0) {
    status = errno;
    ::unlink(fresh.c_str());
  }
  if (status != 0) return fail(forbids_replacing(status) ? ENOTSUP : status);
  status = sync_folder(folder_of(real));
  return status == 0 ? 0 : fail(status);
}

int File::abandon() {
  if (descriptor_ < 0 || kept_on_failure_ == kAll) return close();
  if (kept_on_failure_ == kNoFile) return discard();
  const int cut = cut_back_to(kept_on_failure_);
  const int status = close();
  return cut != 0 ? fail(cut) : status;
}

// Ends the file at `end` when it is longer, also after a failed write, which is forgotten with all
// that could not be written.
int File::cut_back_to(std::int64_t end) {
  flush();
  writing_ = false;
  write_failure_ = 0;
  next_ = end_ = 0;
  position_ = std::min(end, size());
  return truncate_here();
}

// The name is taken away only when it still is this file's: it may have been renamed or replaced.
int File::discard() {
  int status = 0;
  if (!unnamed_ && is_same_file(name_) && ::unlink(name_.c_str()) != 0) status = errno;
  ::close(descriptor_);
  descriptor_ = -1;
  return status == 0 ? 0 : fail(status);
}

bool File::is_same_file(const std::string& path) const {
  struct stat here, there;
  return is_open() && ::fstat(descriptor_, &here) == 0 && ::stat(path.c_str(), &there) == 0 &&
         here.st_dev == there.st_dev && here.st_ino == there.st_ino;
}

}  // namespace zorvik
