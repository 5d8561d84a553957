#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "displaylist/platform/stream.h"

/// A stream in memory: written at the end, read from the start. Reading ends
/// where the words do.
class MemoryStream final : public ZtFsStream {
 public:
  MemoryStream() = default;
  explicit MemoryStream(const std::vector<std::uint32_t>& words)
      : m_bytes(words.size() * sizeof(std::uint32_t)) {
    if (!words.empty()) std::memcpy(m_bytes.data(), words.data(), m_bytes.size());
  }

  void write(const void* buffer, std::int32_t size) override {
    const auto* bytes = static_cast<const std::byte*>(buffer);
    m_bytes.insert(m_bytes.end(), bytes, bytes + size);
    ++m_writes;
  }
  void read(void* buffer, std::int32_t* size) override {
    const std::size_t left = m_bytes.size() - m_position;
    const std::size_t taken = std::min(left, static_cast<std::size_t>(*size));
    if (taken != 0) std::memcpy(buffer, m_bytes.data() + m_position, taken);
    m_position += taken;
    *size = static_cast<std::int32_t>(taken);
  }

  /// Everything written, as words.
  [[nodiscard]] std::vector<std::uint32_t> words() const {
    std::vector<std::uint32_t> words(m_bytes.size() / sizeof(std::uint32_t));
    if (words.empty()) return words;
    std::memcpy(words.data(), m_bytes.data(), words.size() * sizeof(std::uint32_t));
    return words;
  }
  /// How many calls of write there were.
  [[nodiscard]] std::size_t writes() const { return m_writes; }
  /// Drops all bytes from `size` on.
  void truncate(std::size_t size) { m_bytes.resize(std::min(size, m_bytes.size())); }
  [[nodiscard]] std::size_t size() const { return m_bytes.size(); }
  /// How many bytes were read.
  [[nodiscard]] std::size_t position() const { return m_position; }
  [[nodiscard]] bool at_end() const { return m_position == m_bytes.size(); }

 private:
  std::vector<std::byte> m_bytes;
  std::size_t m_position = 0;
  std::size_t m_writes = 0;
};
