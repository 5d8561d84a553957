#include "files/drawing_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

#include "files/input_file_p.h"
#include "files/payload_p.h"
#include "lumen/new_file.h"

namespace files {
namespace {

constexpr const char* kNoMemory = "there is not enough memory for it";

std::string cannot(const char* verb, const std::string& path, const std::string& reason) {
  return std::string("cannot ") + verb + " '" + path + "': " + reason;
}

/// Empty on success, else the reason.
std::string save(const std::string& path, const std::vector<std::byte>& bytes) {
  lumen::NewFile file(path);
  if (file.stream() == nullptr) return std::strerror(errno);
  const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), file.stream());
  if (written != bytes.size() || !file.put_in_place()) return std::strerror(errno);
  return {};
}

}  // namespace

Contents& Contents::operator=(Contents&& other) noexcept {
  if (this == &other) return *this;
  list = std::move(other.list);  // before what the old one uses
  renditions = std::move(other.renditions);
  heap = std::move(other.heap);
  properties = std::move(other.properties);
  return *this;
}

std::string write_bytes(std::vector<std::byte>& bytes, DL::DisplayList& list,
                        const Properties& properties, const WriteOptions& options) {
  try {
    PayloadWriter writer(options.compression);
    std::string obstacle = write_payload(writer, list, properties);
    if (obstacle.empty()) bytes = writer.finish();
    return obstacle;
  } catch (const std::bad_alloc&) {
    return kNoMemory;
  }
}

std::string read_bytes(std::span<const std::byte> bytes, const ReadOptions& options,
                       Contents& contents) {
  try {
    Contents read;
    PayloadReader reader(bytes);
    read_payload(reader, options, read);
    if (!reader.has_failed()) contents = std::move(read);
    return reader.failure();
  } catch (const std::bad_alloc&) {
    return kNoMemory;
  }
}

std::string write_file(const std::string& path, DL::DisplayList& list, const Properties& properties,
                       const WriteOptions& options) {
  std::vector<std::byte> bytes;
  std::string reason = write_bytes(bytes, list, properties, options);
  if (reason.empty()) reason = save(path, bytes);
  return reason.empty() ? reason : cannot("write", path, reason);
}

std::string read_file(const std::string& path, const ReadOptions& options, Contents& contents) {
  std::string reason;
  try {
    std::vector<std::byte> bytes;
    reason = load(path, bytes);
    if (reason.empty()) reason = read_bytes(bytes, options, contents);
  } catch (const std::bad_alloc&) {
    reason = kNoMemory;
  }
  return reason.empty() ? reason : cannot("read", path, reason);
}

}  // namespace files
