#pragma once

#include <cstdint>

#include "displaylist/platform/export.h"

/// The stream that drawables are written to and read from: the client's own
/// class over a file, memory or a socket. Each call takes or gives one value
/// of 1, 2, 4 or 8 bytes, in the machine's little-endian order.
class DISPLAYLIST_API ZtFsStream {
 public:
  /// Takes `size` bytes.
  virtual void write(const void* buffer, std::int32_t size) = 0;
  /// Fills `buffer` with up to `*size` bytes and sets `*size` to how many
  /// there were; fewer than asked for is the end of the stream.
  virtual void read(void* buffer, std::int32_t* size) = 0;

 protected:
  ZtFsStream() = default;
  ZtFsStream(const ZtFsStream&) = default;
  ZtFsStream& operator=(const ZtFsStream&) = default;
  ~ZtFsStream() = default;
};
