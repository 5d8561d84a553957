#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "displaylist/platform/stream.h"

/// A stream in memory, which grows where it is written and is read from its
/// start. Lends all of its memory.
class ZtFsMemoryStream final : public ZtFsStream {
 public:
  ZtFsMemoryStream() = default;
  /// Starts with a copy of the bytes.
  explicit ZtFsMemoryStream(std::span<const std::byte> bytes) {
    append(bytes.data(), bytes.size());
  }
  ZtFsMemoryStream(const ZtFsMemoryStream&) = delete;
  ZtFsMemoryStream& operator=(const ZtFsMemoryStream&) = delete;
  ~ZtFsMemoryStream() = default;

  void write(const void* buffer, std::int32_t size) override {
    if (size > 0) append(buffer, static_cast<std::size_t>(size));
  }
  void read(void* buffer, std::int32_t* size) override {
    lend_ready(bytes().subspan(position()));
    const std::size_t wanted = *size > 0 ? static_cast<std::size_t>(*size) : 0;
    const std::size_t taken = std::min(wanted, ready().size());
    static_cast<void>(take(buffer, taken));
    *size = static_cast<std::int32_t>(taken);
  }

  /// Everything written, until the next write.
  [[nodiscard]] std::span<const std::byte> bytes() const {
    return {m_memory.get(), m_capacity - room().size()};
  }
  [[nodiscard]] std::size_t size() const { return bytes().size(); }
  /// How many bytes were read.
  [[nodiscard]] std::size_t position() const {
    return ready().data() == nullptr ? 0
                                     : static_cast<std::size_t>(ready().data() - m_memory.get());
  }
  /// Reads from the start again.
  void rewind() { lend_ready({m_memory.get(), std::size_t{0}}); }
  /// Forgets all bytes and keeps the memory.
  void clear() {
    lend_room({m_memory.get(), m_capacity});
    rewind();
    m_is_out_of_memory = false;
  }
  /// Whether bytes were lost because there was no memory for them; what came
  /// before them is there.
  [[nodiscard]] bool is_out_of_memory() const { return m_is_out_of_memory; }

 private:
  static constexpr std::size_t kLeastCapacity = 4096;

  void append(const void* buffer, std::size_t size) {
    std::unique_ptr<std::byte[]> before;  // what is written may lie in it
    if (size > room().size()) before = grow(size);
    if (!put(buffer, size)) end_here();
  }
  /// Makes room for `size` bytes more, where there is memory, and returns the
  /// memory before.
  std::unique_ptr<std::byte[]> grow(std::size_t size) {
    const std::size_t used = bytes().size();
    const std::size_t read = position();
    constexpr std::size_t largest = std::numeric_limits<std::size_t>::max() / 4;
    if (m_is_out_of_memory || used > largest || size > largest) return nullptr;
    const std::size_t capacity = std::max({kLeastCapacity, 2 * m_capacity, used + size});
    std::unique_ptr<std::byte[]> memory(new (std::nothrow) std::byte[capacity]);
    if (memory == nullptr) return nullptr;
    if (used != 0) std::memcpy(memory.get(), m_memory.get(), used);
    std::swap(m_memory, memory);
    m_capacity = capacity;
    lend_room({m_memory.get() + used, capacity - used});
    lend_ready({m_memory.get() + read, used - read});
    return memory;
  }

  /// Without memory for some bytes, none is kept of those that follow.
  void end_here() {
    m_capacity = size();
    lend_room({m_memory.get() + m_capacity, std::size_t{0}});
    m_is_out_of_memory = true;
  }

  std::unique_ptr<std::byte[]> m_memory;
  std::size_t m_capacity = 0;
  bool m_is_out_of_memory = false;
};
