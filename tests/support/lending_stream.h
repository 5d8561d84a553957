#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>
#include <vector>

#include "displaylist/platform/stream.h"

/// A stream in memory that lends pieces of a few bytes, as one with a small
/// buffer does: written at the end, read from the start.
class LendingStream final : public ZtFsStream {
 public:
  using Bytes = std::vector<std::byte>;

  explicit LendingStream(std::size_t piece, Bytes bytes = {})
      : m_room(piece), m_bytes(std::move(bytes)) {
    lend_room(m_room);
  }

  void write(const void* buffer, std::int32_t size) override {
    empty_room();
    const auto* first = static_cast<const std::byte*>(buffer);
    m_bytes.insert(m_bytes.end(), first, first + size);
  }
  void read(void* buffer, std::int32_t* size) override {
    const std::span<const std::byte> left = std::span(m_bytes).subspan(position());
    const std::size_t taken = std::min(left.size(), static_cast<std::size_t>(*size));
    if (taken != 0) std::memcpy(buffer, left.data(), taken);
    *size = static_cast<std::int32_t>(taken);
    const std::size_t lent = std::min(left.size() - taken, m_room.size());
    m_lent_end = position() + taken + lent;
    lend_ready(left.subspan(taken, lent));
  }

  /// Everything written.
  [[nodiscard]] const Bytes& bytes() {
    empty_room();
    return m_bytes;
  }
  /// How many bytes were read.
  [[nodiscard]] std::size_t position() const { return m_lent_end - ready().size(); }

 private:
  void empty_room() {
    const auto used = static_cast<std::ptrdiff_t>(m_room.size() - room().size());
    m_bytes.insert(m_bytes.end(), m_room.begin(), m_room.begin() + used);
    lend_room(m_room);
  }

  Bytes m_room;
  Bytes m_bytes;
  std::size_t m_lent_end = 0;  ///< where the bytes end that were lent
};
