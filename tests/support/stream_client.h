#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "displaylist/core/display_list.h"
#include "tests/support/client_drawables.h"
#include "tests/support/memory_stream.h"

/// The words of tree streams, as files hold them.
namespace stream_words {

using Words = std::vector<std::uint32_t>;

inline constexpr std::uint32_t kGroup = 0x80000001;
inline constexpr std::uint32_t kBottom = 0x80000002;
inline constexpr std::uint32_t kOpen = 0x80000004;
inline constexpr std::uint32_t kEnd = 0x10000002;
inline constexpr std::uint32_t kDot = 0x80000010;
inline constexpr std::uint32_t kIndex = 0x20000001;
inline constexpr std::uint32_t kColor = 0x20000002;

/// Several runs of words in one.
inline Words joined(std::initializer_list<Words> parts) {
  Words all;
  for (const Words& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

/// A dot's record without what follows it.
inline Words dot_words(std::int32_t x, std::int32_t y, std::uint32_t color) {
  return {kDot, static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), kColor, color};
}

}  // namespace stream_words

/// A client that writes and reads display lists: a rendition for every index,
/// and a note of what it was asked. It outlives the lists that it read; one at
/// a time.
class StreamClient {
 public:
  StreamClient() { told.clear(); }
  StreamClient(const StreamClient&) = delete;
  StreamClient& operator=(const StreamClient&) = delete;

  void write(DL::DisplayList& list, ZtFsStream& stream) {
    list.serialize_out(&stream, &index_of, this);
  }
  stream_words::Words written(DL::DisplayList& list) {
    MemoryStream stream;
    write(list, stream);
    return stream.words();
  }
  void read(DL::DisplayList& list, ZtFsStream& stream) {
    list.serialize_in(&stream, &rendition_at, this, &create, this, &tell);
  }
  /// Returns how many of the words were read.
  std::size_t read(DL::DisplayList& list, const stream_words::Words& words) {
    MemoryStream stream(words);
    read(list, stream);
    return stream.position() / sizeof(std::uint32_t);
  }

  /// The rendition for an index, which is its colour too.
  LM_Rendition* at(int index) {
    LM_Rendition* rendition = &m_renditions[index];
    rendition->set_color({static_cast<std::uint32_t>(index)}, true);
    m_indices[rendition] = index;
    return rendition;
  }
  /// The index of a rendition of this client.
  [[nodiscard]] int index(const LM_Rendition* rendition) const { return m_indices.at(rendition); }

  std::vector<int> asked_indices;
  std::vector<int> asked_tags;
  /// The drawables that the post-read hook was called with.
  static inline std::vector<DL::Drawable*> told;

  static int index_of(void* self, LM_Rendition* rendition) {
    return static_cast<StreamClient*>(self)->index(rendition);
  }
  static LM_Rendition* rendition_at(void* self, int index) {
    static_cast<StreamClient*>(self)->asked_indices.push_back(index);
    return static_cast<StreamClient*>(self)->at(index);
  }
  static DL::Drawable* create(void* self, int tag) {
    static_cast<StreamClient*>(self)->asked_tags.push_back(tag);
    return client::create(nullptr, tag);
  }
  static void tell(DL::Drawable* drawable) { told.push_back(drawable); }

 private:
  std::map<int, LM_Rendition> m_renditions;
  std::map<const LM_Rendition*, int> m_indices;
};
