#include "files/input_file_p.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "files/drawing_file.h"
#include "files/layout_p.h"

namespace files {
namespace {

using Input = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// What keeps the opened file from being read; empty when nothing does.
std::string obstacle_of(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return "it is a directory; name a file in it";
  if (!S_ISREG(status.st_mode)) return "it is a pipe or a device; name a file";
  return {};
}

/// Null, with the reason, where there is no regular file to be read.
Input open_input(const std::string& path, std::string& reason) {
  Input file(nullptr, &std::fclose);
  // A pipe is opened without waiting for who writes to it.
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  reason = descriptor < 0 ? std::strerror(errno) : obstacle_of(descriptor);
  if (reason.empty()) {
    file.reset(fdopen(descriptor, "rb"));
    if (file == nullptr) reason = std::strerror(errno);
  }
  if (file == nullptr && descriptor >= 0) close(descriptor);
  return file;
}

}  // namespace

std::string load(const std::string& path, std::vector<std::byte>& bytes) {
  constexpr std::size_t chunk = std::size_t{1} << 20U;
  std::string reason;
  const Input file = open_input(path, reason);
  if (file == nullptr) return reason;
  std::size_t size = 0;
  std::size_t got = 0;
  do {
    bytes.resize(size + chunk);
    got = std::fread(bytes.data() + size, 1, chunk, file.get());
    size += got;
  } while (got == chunk && layout::starts_a_file(bytes));
  bytes.resize(size);
  return std::ferror(file.get()) != 0 ? std::strerror(errno) : "";
}

bool is_drawing_file(const std::string& path) {
  std::string reason;
  const Input file = open_input(path, reason);
  std::array<std::byte, sizeof layout::kMagic> start{};
  return file != nullptr && std::fread(start.data(), start.size(), 1, file.get()) == 1 &&
         layout::starts_a_file(start);
}

}  // namespace files
