#pragma once

#include <zstd.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "displaylist/platform/stream.h"

namespace files {

/// The bytes of a file as the payload in them, decompressed while it is read
/// into a buffer that is lent.
/// Once something is wrong nothing more can be read.
class PayloadReader final : public ZtFsStream {
 public:
  /// Checks the frame around the payload: see failure(). May throw
  /// std::bad_alloc. The bytes outlive the reader.
  explicit PayloadReader(std::span<const std::byte> file);
  PayloadReader(const PayloadReader&) = delete;
  PayloadReader& operator=(const PayloadReader&) = delete;
  ~PayloadReader() = default;

  /// There is nothing to be written.
  void write(const void* buffer, std::int32_t size) override;
  void read(void* buffer, std::int32_t* size) override;

  /// Fills the buffer, or fails.
  [[nodiscard]] bool get_bytes(void* buffer, std::size_t size);
  /// A string, which grows as it arrives.
  [[nodiscard]] bool get_text(std::string& text);
  /// A count of things, each of which takes `least_size` bytes or more; fails
  /// where the rest of the payload cannot hold them.
  [[nodiscard]] bool get_count(std::uint64_t& count, std::uint64_t least_size);
  /// Whether the rest of the payload can hold so many bytes; fails if not.
  [[nodiscard]] bool expect_room_for(std::uint64_t count, std::uint64_t bytes_each);
  /// Whether the payload ends here, as its file says; fails if not.
  [[nodiscard]] bool expect_end();

  /// What is wrong with the file, as a sentence; empty while nothing is.
  [[nodiscard]] const std::string& failure() const { return m_failure; }
  [[nodiscard]] bool has_failed() const { return m_has_failed; }
  /// The first thing that is wrong is what is told.
  void fail(const char* reason) noexcept;
  void fail_of_damage() noexcept;
  void fail_of_memory() noexcept;

 private:
  void decompress_more();

  std::unique_ptr<ZSTD_DCtx, decltype(&ZSTD_freeDCtx)> m_context;
  std::span<const std::byte> m_file;
  ZSTD_inBuffer m_in{};
  std::vector<std::byte> m_buffer;  ///< of the payload; what is lent of it is to be read
  std::uint64_t m_left = 0;         ///< of the payload, after what is in the buffer
  bool m_at_frame_end = true;
  bool m_has_failed = false;
  std::string m_failure;
};

}  // namespace files
