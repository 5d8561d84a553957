#include "files/payload_reader_p.h"

#include <xxhash.h>
#include <zstd_errors.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "files/layout_p.h"

namespace files {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16U;

constexpr const char* kForeign = "it is no display list file";
constexpr const char* kNewer =
    "it was written by a newer version of this program; update to read it";
constexpr const char* kCutOff = "it is cut off; copy it again from where it is whole";
constexpr const char* kDamaged = "it is damaged; copy it again from where it is whole";

template <class T>
T value_at(std::span<const std::byte> bytes, std::size_t offset) {
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

/// Whether the compressed frames of a damaged file go on where it ends.
bool is_cut_off(std::span<const std::byte> file) {
  std::size_t at = layout::kHeaderSize;
  if (at + layout::kFooterSize == file.size()) return true;  // no payload is empty
  while (at + layout::kFooterSize < file.size()) {
    const std::size_t size = ZSTD_findFrameCompressedSize(file.data() + at, file.size() - at);
    if (ZSTD_isError(size) != 0) {
      return ZSTD_getErrorCode(size) == ZSTD_error_srcSize_wrong;
    }
    at += size;
  }
  return at + layout::kFooterSize > file.size();
}

/// What is wrong with the frame around the payload; null when nothing is.
const char* wrong_with(std::span<const std::byte> file) {
  if (!layout::starts_a_file(file)) return kForeign;
  if (file.size() < layout::kHeaderSize + layout::kFooterSize) return kCutOff;
  // First, so that a damaged version is not taken for a newer one.
  const std::size_t hashed = file.size() - sizeof(std::uint64_t);
  if (XXH3_64bits(file.data(), hashed) != value_at<std::uint64_t>(file, hashed)) {
    return is_cut_off(file) ? kCutOff : kDamaged;
  }
  const auto version = value_at<std::uint32_t>(file, sizeof layout::kMagic);
  const auto flags = value_at<std::uint32_t>(file, sizeof layout::kMagic + sizeof version);
  if (version != layout::kVersion || flags != layout::kFlags) return kNewer;
  const auto size = value_at<std::uint64_t>(file, file.size() - layout::kFooterSize);
  const bool too_large =
      size > layout::kFreePayload && (size - layout::kFreePayload) / layout::kGrowth > file.size();
  return too_large ? kDamaged : nullptr;
}

}  // namespace

PayloadReader::PayloadReader(std::span<const std::byte> file)
    : m_context(nullptr, &ZSTD_freeDCtx), m_file(file) {
  const char* reason = wrong_with(file);
  if (reason != nullptr) {
    fail(reason);
    return;
  }
  m_context.reset(ZSTD_createDCtx());
  if (m_context == nullptr) throw std::bad_alloc();
  ZSTD_DCtx_setParameter(m_context.get(), ZSTD_d_windowLogMax, layout::kLargestWindow);
  const std::size_t end = file.size() - layout::kFooterSize;
  m_in = {file.data() + layout::kHeaderSize, end - layout::kHeaderSize, 0};
  m_left = value_at<std::uint64_t>(file, end);
  m_buffer.resize(kChunk);
}

void PayloadReader::fail(const char* reason) noexcept {
  if (m_has_failed) return;
  m_has_failed = true;
  lend_ready({});
  m_left = 0;
  try {
    m_failure = reason;
  } catch (const std::bad_alloc&) {
    m_failure = "no memory";  // short enough to need none
  }
}

void PayloadReader::fail_of_damage() noexcept {
  fail(kDamaged);
}

void PayloadReader::fail_of_memory() noexcept {
  fail("there is not enough memory for it");
}

void PayloadReader::decompress_more() {
  ZSTD_outBuffer out{m_buffer.data(), m_buffer.size(), 0};
  while (out.pos == 0) {
    const std::size_t before = m_in.pos;
    const std::size_t result = ZSTD_decompressStream(m_context.get(), &out, &m_in);
    if (ZSTD_isError(result) != 0) {
      return ZSTD_getErrorCode(result) == ZSTD_error_memory_allocation ? fail_of_memory()
                                                                       : fail_of_damage();
    }
    m_at_frame_end = result == 0;
    if (out.pos == 0 && m_in.pos == before) return fail_of_damage();
    if (out.pos == 0 && m_in.pos == m_in.size && m_at_frame_end) return fail_of_damage();
  }
  if (out.pos > m_left) return fail_of_damage();
  m_left -= out.pos;
  lend_ready({m_buffer.data(), out.pos});
}

bool PayloadReader::get_bytes(void* buffer, std::size_t size) {
  auto* to = static_cast<std::byte*>(buffer);
  while (size > 0) {
    if (ready().empty()) {
      if (m_left == 0) fail_of_damage();
      if (!m_has_failed) decompress_more();
      if (m_has_failed) return false;
    }
    const std::size_t taken = std::min(size, ready().size());
    static_cast<void>(take(to, taken));
    to += taken;
    size -= taken;
  }
  return true;
}

void PayloadReader::write(const void*, std::int32_t) {}

void PayloadReader::read(void* buffer, std::int32_t* size) {
  if (*size < 0 || !get_bytes(buffer, static_cast<std::size_t>(*size))) *size = 0;
}

bool PayloadReader::get_count(std::uint64_t& count, std::uint64_t least_size) {
  count = 0;
  return get_bytes(&count, sizeof count) && expect_room_for(count, least_size);
}

bool PayloadReader::expect_room_for(std::uint64_t count, std::uint64_t bytes_each) {
  const std::uint64_t rest = m_left + ready().size();
  if (count <= rest / bytes_each) return true;
  fail_of_damage();
  return false;
}

bool PayloadReader::get_text(std::string& text) {
  std::uint64_t size = 0;
  text.clear();
  if (!get_count(size, 1)) return false;
  while (text.size() < size) {
    const std::size_t start = text.size();
    const auto more = static_cast<std::size_t>(std::min<std::uint64_t>(size - start, kChunk));
    text.resize(start + more);
    if (!get_bytes(text.data() + start, more)) return false;
  }
  return true;
}

bool PayloadReader::expect_end() {
  // Frames without content may follow: they pad the file.
  while (!m_has_failed && m_left == 0 && ready().empty() && m_in.pos < m_in.size) {
    ZSTD_outBuffer out{m_buffer.data(), m_buffer.size(), 0};
    const std::size_t before = m_in.pos;
    const std::size_t result = ZSTD_decompressStream(m_context.get(), &out, &m_in);
    if (ZSTD_isError(result) != 0 || out.pos != 0 || m_in.pos == before) fail_of_damage();
    m_at_frame_end = result == 0;
  }
  if (m_left != 0 || !ready().empty() || !m_at_frame_end) fail_of_damage();
  return !m_has_failed;
}

}  // namespace files
