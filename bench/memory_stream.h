#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#include "displaylist/displaylist.h"

namespace bench {

/// A stream in memory: written at the end, read from the start.
class MemoryStream final : public ZtFsStream {
 public:
  void write(const void* buffer, std::int32_t size) override {
    const auto* bytes = static_cast<const std::byte*>(buffer);
    m_bytes.insert(m_bytes.end(), bytes, bytes + size);
  }
  void read(void* buffer, std::int32_t* size) override {
    const std::size_t taken =
        std::min(m_bytes.size() - m_position, static_cast<std::size_t>(*size));
    std::memcpy(buffer, m_bytes.data() + m_position, taken);
    m_position += taken;
    *size = static_cast<std::int32_t>(taken);
  }

  void clear() { m_bytes.clear(); }
  void rewind() { m_position = 0; }
  [[nodiscard]] std::size_t size() const { return m_bytes.size(); }

 private:
  std::vector<std::byte> m_bytes;
  std::size_t m_position = 0;
};

inline void write_stream(DL::DisplayList& list, MemoryStream& stream) {
  list.serialize_out(
      &stream, [](void*, LM_Rendition*) { return 0; }, nullptr);
}

/// All colours come back as one rendition, which is the list's own.
inline void read_stream(DL::DisplayList& list, MemoryStream& stream) {
  const auto rendition = [](void* context, int) { return static_cast<LM_Rendition*>(context); };
  list.serialize_in(&stream, rendition, &list.m_rendition, &DL::standard_factory, nullptr,
                    &DL::standard_post_read);
}

}  // namespace bench
