#pragma once

#include <xxhash.h>
#include <zstd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "fuzz/require.h"

/// The container around the payload of a file, taken off and made anew by hand.
namespace packing {

using Bytes = std::vector<std::byte>;

inline constexpr std::size_t kHeader = 16;
inline constexpr std::size_t kFooter = 16;

template <class T>
void append(Bytes& bytes, T value) {
  const auto* first = reinterpret_cast<const std::byte*>(&value);
  bytes.insert(bytes.end(), first, first + sizeof value);
}

inline std::uint64_t payload_size(const Bytes& file) {
  std::uint64_t size = 0;
  std::memcpy(&size, file.data() + file.size() - kFooter, sizeof size);
  return size;
}

/// The payload of a file without padding.
inline Bytes payload_of(const Bytes& file) {
  Bytes payload(payload_size(file));
  const std::size_t size = ZSTD_decompress(payload.data(), payload.size(), file.data() + kHeader,
                                           file.size() - kHeader - kFooter);
  require(size == payload.size());
  return payload;
}

/// Gives the file the checksum that it should have.
inline void seal(Bytes& file) {
  const std::uint64_t hash = XXH3_64bits(file.data(), file.size() - sizeof hash);
  std::memcpy(file.data() + file.size() - sizeof hash, &hash, sizeof hash);
}

/// A file with the header of `model` around the payload.
inline Bytes packed(const Bytes& payload, const Bytes& model) {
  Bytes file(model.begin(), model.begin() + kHeader);
  file.resize(kHeader + ZSTD_compressBound(payload.size()));
  static ZSTD_CCtx* const context = ZSTD_createCCtx();
  const std::size_t size = ZSTD_compressCCtx(context, file.data() + kHeader, file.size() - kHeader,
                                             payload.data(), payload.size(), 1);
  require(ZSTD_isError(size) == 0);
  file.resize(kHeader + size);
  append<std::uint64_t>(file, payload.size());
  append<std::uint64_t>(file, 0);
  seal(file);
  return file;
}

}  // namespace packing
