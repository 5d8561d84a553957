#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "displaylist/platform/stream.h"

/// A stream over bytes: written at the end, read from the start to where the
/// bytes end.
class ByteStream final : public ZtFsStream {
 public:
  ByteStream() = default;
  ByteStream(const std::uint8_t* data, std::size_t size) : m_bytes(data, data + size) {}

  void write(const void* buffer, std::int32_t size) override {
    const auto* bytes = static_cast<const std::uint8_t*>(buffer);
    m_bytes.insert(m_bytes.end(), bytes, bytes + size);
  }
  void read(void* buffer, std::int32_t* size) override {
    const std::size_t taken =
        std::min(m_bytes.size() - m_position, static_cast<std::size_t>(*size));
    if (taken != 0) std::memcpy(buffer, m_bytes.data() + m_position, taken);
    m_position += taken;
    *size = static_cast<std::int32_t>(taken);
  }

  [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return m_bytes; }

 private:
  std::vector<std::uint8_t> m_bytes;
  std::size_t m_position = 0;
};
