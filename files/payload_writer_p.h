#pragma once

#include <zstd.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "displaylist/platform/stream.h"

namespace files {

/// Takes a payload and makes the bytes of a file of it: lends a buffer, which it
/// compresses when it is full. May throw std::bad_alloc.
class PayloadWriter final : public ZtFsStream {
 public:
  explicit PayloadWriter(int compression);
  PayloadWriter(const PayloadWriter&) = delete;
  PayloadWriter& operator=(const PayloadWriter&) = delete;
  ~PayloadWriter() = default;

  void write(const void* buffer, std::int32_t size) override { append(buffer, size_t_of(size)); }
  /// There is nothing to be read.
  void read(void* buffer, std::int32_t* size) override;

  void append(const void* buffer, std::size_t size);
  void append(const std::string& text);

  /// The whole file. To be called once, at the end.
  [[nodiscard]] std::vector<std::byte> finish();

 private:
  static std::size_t size_t_of(std::int32_t size) { return static_cast<std::size_t>(size); }
  /// Compresses what is in the buffer.
  void compress(ZSTD_EndDirective directive);
  void pad();

  std::unique_ptr<ZSTD_CCtx, decltype(&ZSTD_freeCCtx)> m_context;
  std::vector<std::byte> m_buffer;  ///< up to the room that is lent: not yet compressed
  std::vector<std::byte> m_file;
  std::uint64_t m_size = 0;  ///< of the payload that is compressed
};

}  // namespace files
