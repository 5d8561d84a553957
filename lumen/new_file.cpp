#include "lumen/new_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace lumen {

namespace fs = std::filesystem;

namespace {

std::string folder_of(const std::string& path) {
  const std::string folder = fs::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

/// A name beside the target that no other writer uses. It is short, since the
/// target's may be as long as names can be.
std::string temporary_name(const std::string& path) {
  static std::atomic<unsigned> counter{0};
  return folder_of(path) + "/." + std::to_string(getpid()) + "-" + std::to_string(counter++) +
         ".part";
}

/// What links lead to, whether it is there or not.
std::string target_of(const std::string& path) {
  constexpr int most_links = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < most_links && fs::is_symlink(target, error); ++i) {
    const fs::path next = fs::read_symlink(target, error);
    if (error) break;
    target = target.parent_path() / next;
  }
  return target.string();
}

/// Makes the names in a folder outlast a power cut, where its file system can do
/// that. The file has its name already: nothing can be undone.
void sync_folder(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  ::close(descriptor);
}

/// Whether the bytes are on the disk, as far as the file system can tell.
bool sync_file(std::FILE* file) {
  return fsync(fileno(file)) == 0 || errno == EINVAL || errno == ENOTSUP;
}

/// The name by which a file without a name can be linked.
std::string handle_name(int descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor);
}

}  // namespace

NewFile::NewFile(const std::string& path) : m_path(path) {
  struct stat old {};
  const bool is_there = stat(path.c_str(), &old) == 0;
  if (!is_there && errno == ELOOP) return;  // a link that leads nowhere
  m_is_special = is_there && !S_ISREG(old.st_mode);
  if (m_is_special) {
    open_special();
    return;
  }
  m_path = target_of(path);
  open_unnamed();
  if (m_stream == nullptr) open_named();
  if (m_stream != nullptr && is_there) take_permissions(old);
}

NewFile::~NewFile() {
  close();
  if (!m_temporary.empty()) unlink(m_temporary.c_str());
}

void NewFile::open_special() {
  const int descriptor = open(m_path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor < 0) return;
  m_stream = fdopen(descriptor, "wb");
  if (m_stream == nullptr) ::close(descriptor);
}

void NewFile::take_permissions(const struct stat& old) {
  constexpr mode_t permissions = 0777;
  const int descriptor = fileno(m_stream);
  // Only the superuser may give a file away; anyone may give it to a group of
  // theirs.
  constexpr uid_t same = static_cast<uid_t>(-1);
  static_cast<void>(fchown(descriptor, old.st_uid, old.st_gid) == 0 ||
                    fchown(descriptor, same, old.st_gid) == 0);
  static_cast<void>(fchmod(descriptor, old.st_mode & permissions));
}

void NewFile::open_unnamed() {
  constexpr mode_t mode = 0666;
  const int descriptor = open(folder_of(m_path).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
  if (descriptor < 0) return;
  if (access(handle_name(descriptor).c_str(), F_OK) == 0) m_stream = fdopen(descriptor, "wb");
  if (m_stream == nullptr) ::close(descriptor);
}

void NewFile::open_named() {
  std::string name;
  do {
    name = temporary_name(m_path);
    m_stream = std::fopen(name.c_str(), "wbxe");
  } while (m_stream == nullptr && errno == EEXIST);
  if (m_stream != nullptr) m_temporary = name;
}

bool NewFile::give_temporary_name() {
  const std::string handle = handle_name(fileno(m_stream));
  std::string name;
  int result = 0;
  do {
    name = temporary_name(m_path);
    result = linkat(AT_FDCWD, handle.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW);
  } while (result != 0 && errno == EEXIST);
  if (result == 0) m_temporary = name;
  return result == 0;
}

bool NewFile::close() {
  if (m_stream == nullptr) return true;
  const bool closed = std::fclose(m_stream) == 0;
  m_stream = nullptr;
  return closed;
}

bool NewFile::put_in_place() {
  // All bytes are to be there before the file can be seen.
  if (std::fflush(m_stream) != 0 || !sync_file(m_stream)) return false;
  if (m_is_special) return close();
  if (m_temporary.empty() && !give_temporary_name()) return false;
  if (!close() || std::rename(m_temporary.c_str(), m_path.c_str()) != 0) return false;
  m_temporary.clear();
  sync_folder(folder_of(m_path));
  return true;
}

}  // namespace lumen
