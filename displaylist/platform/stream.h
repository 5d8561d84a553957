#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "displaylist/platform/export.h"

/// The stream that drawables are written to and read from: the client's own
/// class over a file, memory or a socket. Each call takes or gives one value
/// of 1, 2, 4 or 8 bytes, in the machine's little-endian order.
///
/// A call for each value is slow. A stream that keeps its bytes in memory, all
/// of them or a buffer, can lend that memory: values are then copied to and from
/// it directly, and the two operations are called where it does not suffice. The
/// bytes and where the stream stands are the same either way, and nothing is read
/// ahead that the stream would not know of. One that lends nothing is called for
/// each value. ZtFsMemoryStream lends; so can a file's stream with a buffer.
///
/// One thread at a time uses a stream.
class DISPLAYLIST_API ZtFsStream {
 public:
  /// Takes `size` bytes.
  virtual void write(const void* buffer, std::int32_t size) = 0;
  /// Fills `buffer` with up to `*size` bytes and sets `*size` to how many
  /// there were; fewer than asked for is the end of the stream.
  virtual void read(void* buffer, std::int32_t* size) = 0;

  /// Copies bytes to the lent room. False, with nothing copied, where it is
  /// smaller.
  [[nodiscard]] bool put(const void* bytes, std::size_t size) {
    if (size == 0) return true;
    if (size > room().size()) return false;
    std::memcpy(m_lent->room_begin, bytes, size);
    m_lent->room_begin += size;
    return true;
  }
  /// Copies the next of the lent bytes. False, with nothing copied, where there
  /// are fewer.
  [[nodiscard]] bool take(void* bytes, std::size_t size) {
    if (size == 0) return true;
    if (size > ready().size()) return false;
    std::memcpy(bytes, m_lent->ready_begin, size);
    m_lent->ready_begin += size;
    return true;
  }

  /// write() of the stream at the end of those that only pass calls on.
  void write_through(const void* buffer, std::int32_t size) {
    ++m_lent->passed;
    m_lent->owner->write(buffer, size);
  }

 protected:
  ZtFsStream() = default;
  /// A copy lends nothing until it says so.
  ZtFsStream(const ZtFsStream&) {}
  ZtFsStream& operator=(const ZtFsStream&) {
    m_own = {this};
    m_lent = &m_own;
    return *this;
  }
  ~ZtFsStream() = default;

  /// Lends memory for what is written next, in place of what was lent before.
  /// room() is what is left of it: the stream finds there how much was written.
  void lend_room(std::span<std::byte> room) {
    m_lent->room_begin = room.data();
    m_lent->room_end = room.data() + room.size();
  }
  [[nodiscard]] std::span<std::byte> room() const { return {m_lent->room_begin, m_lent->room_end}; }
  /// Lends bytes that are to be read next. ready() is what is left of them.
  void lend_ready(std::span<const std::byte> bytes) {
    m_lent->ready_begin = bytes.data();
    m_lent->ready_end = bytes.data() + bytes.size();
  }
  [[nodiscard]] std::span<const std::byte> ready() const {
    return {m_lent->ready_begin, m_lent->ready_end};
  }
  /// Lends from now on what `other`, which outlives this stream, lends: for one
  /// that passes every call on to it.
  void pass_on_to(const ZtFsStream& other) { m_lent = other.m_lent; }
  /// Changes with every call that was passed by.
  [[nodiscard]] std::uint64_t calls_passed() const { return m_lent->passed; }

 private:
  struct Lent {
    ZtFsStream* owner;
    std::uint64_t passed = 0;
    std::byte* room_begin = nullptr;
    std::byte* room_end = nullptr;
    const std::byte* ready_begin = nullptr;
    const std::byte* ready_end = nullptr;
  };

  Lent m_own{this};
  Lent* m_lent = &m_own;
};
