#include "files/payload_writer_p.h"

#include <xxhash.h>

#include <algorithm>
#include <new>

#include "files/layout_p.h"

namespace files {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16U;

template <class T>
void append_value(std::vector<std::byte>& bytes, T value) {
  const auto* first = reinterpret_cast<const std::byte*>(&value);
  bytes.insert(bytes.end(), first, first + sizeof value);
}

}  // namespace

PayloadWriter::PayloadWriter(int compression) : m_context(ZSTD_createCCtx(), &ZSTD_freeCCtx) {
  if (m_context == nullptr) throw std::bad_alloc();
  ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_compressionLevel, std::clamp(compression, 1, 19));
  m_buffer.resize(kChunk);
  lend_room(m_buffer);
  for (const unsigned char byte : layout::kMagic) m_file.push_back(std::byte{byte});
  append_value(m_file, layout::kVersion);
  append_value(m_file, layout::kFlags);
}

void PayloadWriter::read(void*, std::int32_t* size) {
  *size = 0;
}

void PayloadWriter::append(const void* buffer, std::size_t size) {
  const auto* bytes = static_cast<const std::byte*>(buffer);
  while (size > 0) {
    if (room().empty()) compress(ZSTD_e_continue);
    const std::size_t taken = std::min(size, room().size());
    static_cast<void>(put(bytes, taken));
    bytes += taken;
    size -= taken;
  }
}

void PayloadWriter::append(const std::string& text) {
  const std::uint64_t size = text.size();
  append(&size, sizeof size);
  append(text.data(), text.size());
}

void PayloadWriter::compress(ZSTD_EndDirective directive) {
  ZSTD_inBuffer in{m_buffer.data(), m_buffer.size() - room().size(), 0};
  m_size += in.size;
  std::size_t left = 0;
  do {
    const std::size_t start = m_file.size();
    m_file.resize(start + ZSTD_CStreamOutSize());
    ZSTD_outBuffer out{m_file.data() + start, m_file.size() - start, 0};
    left = ZSTD_compressStream2(m_context.get(), &out, &in, directive);
    if (ZSTD_isError(left) != 0) throw std::bad_alloc();  // nothing else can fail here
    m_file.resize(start + out.pos);
  } while (in.pos < in.size || (directive == ZSTD_e_end && left != 0));
  lend_room(m_buffer);
}

void PayloadWriter::pad() {
  constexpr std::uint32_t skippable = ZSTD_MAGIC_SKIPPABLE_START;
  constexpr std::uint64_t frame_head = 8;
  constexpr std::uint64_t largest_frame = std::uint64_t{1} << 30U;
  if (m_size <= layout::kFreePayload) return;
  const std::uint64_t wanted =
      (m_size - layout::kFreePayload + layout::kGrowth - 1) / layout::kGrowth;
  while (m_file.size() + layout::kFooterSize < wanted) {
    const std::uint64_t missing = wanted - m_file.size() - layout::kFooterSize;
    const std::uint64_t zeros =
        std::min(missing > frame_head ? missing - frame_head : 0, largest_frame);
    append_value(m_file, skippable);
    append_value(m_file, static_cast<std::uint32_t>(zeros));
    m_file.resize(m_file.size() + static_cast<std::size_t>(zeros));
  }
}

std::vector<std::byte> PayloadWriter::finish() {
  compress(ZSTD_e_end);
  pad();
  append_value(m_file, m_size);
  append_value<std::uint64_t>(m_file, XXH3_64bits(m_file.data(), m_file.size()));
  return std::move(m_file);
}

}  // namespace files
