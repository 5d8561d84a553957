#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "displaylist/platform/stream.h"

using Bytes = std::vector<std::uint8_t>;

/// A stream in memory that keeps every call's bytes apart.
class PieceStream final : public ZtFsStream {
 public:
  PieceStream() = default;
  explicit PieceStream(Bytes bytes) : m_bytes(std::move(bytes)) {}

  void write(const void* buffer, std::int32_t size) override {
    const auto* bytes = static_cast<const std::uint8_t*>(buffer);
    pieces.emplace_back(bytes, bytes + size);
    m_bytes.insert(m_bytes.end(), bytes, bytes + size);
  }
  void read(void* buffer, std::int32_t* size) override {
    asked.push_back(*size);
    const std::size_t taken =
        std::min(m_bytes.size() - m_position, static_cast<std::size_t>(*size));
    if (taken != 0) std::memcpy(buffer, m_bytes.data() + m_position, taken);
    m_position += taken;
    *size = static_cast<std::int32_t>(taken);
  }

  /// Everything written, or what there was to read.
  [[nodiscard]] const Bytes& bytes() const { return m_bytes; }
  /// How many bytes were read.
  [[nodiscard]] std::size_t position() const { return m_position; }
  [[nodiscard]] bool at_end() const { return m_position == m_bytes.size(); }

  std::vector<Bytes> pieces;        ///< one for each call of write
  std::vector<std::int32_t> asked;  ///< the size that each call of read asked for

 private:
  Bytes m_bytes;
  std::size_t m_position = 0;
};

/// One after the other.
inline Bytes joined(const std::vector<Bytes>& pieces) {
  Bytes all;
  for (const Bytes& piece : pieces) all.insert(all.end(), piece.begin(), piece.end());
  return all;
}

/// The bytes of a value, the lowest first.
template <class T>
Bytes bytes_of(T value) {
  Bytes bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

inline Bytes first(const Bytes& bytes, std::size_t count) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}
