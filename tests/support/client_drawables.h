#pragma once

#include <cstdint>

#include "displaylist/displaylist.h"

/// Drawables as a client of the library writes them.
namespace client {

/// A drawable of nothing, which notes how it was drawn.
class Mark : public DL::Drawable {
 public:
  explicit Mark(std::uint32_t value = 0) : Drawable(LM_RGB32{value}), m_value(value) {}

  void draw_unclipped(DL::DisplayList& list) override { note(unclipped_draws, list); }
  void draw_clipped(DL::DisplayList& list) override { note(clipped_draws, list); }
  void add_bounds(DL::BoundsTemplate<long>&) const override {}
  bool remove(DL::Search&) override { return false; }
  void* type() const override { return my_type(); }
  Drawable* clone() override { return new Mark(m_value); }

  static void* my_type() { return &_parent_type; }
  static inline void* _parent_type = nullptr;

  std::uint32_t m_value;
  int unclipped_draws = 0;
  int clipped_draws = 0;
  DL::DisplayList* drawn_in = nullptr;

 private:
  void note(int& draws, DL::DisplayList& list) {
    ++draws;
    drawn_in = &list;
  }
};

inline void write(ZtFsStream& stream, std::uint32_t word) {
  stream.write(&word, sizeof word);
}

inline std::uint32_t read(ZtFsStream& stream) {
  std::uint32_t word = 0;
  std::int32_t size = sizeof word;
  stream.read(&word, &size);
  return word;
}

/// A mark that is stored: its tag, its value, the base record.
class StoredMark final : public Mark {
 public:
  static constexpr std::uint32_t kTag = 0x40000001;
  using Mark::Mark;

  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    write(*stream, kTag);
    write(*stream, m_value);
    Drawable::serialize_out(stream, list);
  }
  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override {
    m_value = read(*stream);
    Drawable::serialize_in(stream, list);
  }
};

/// A mark that holds a chain of drawables of its own, stored inside its record.
class Folder final : public Mark {
 public:
  static constexpr std::uint32_t kTag = 0x40000002;
  explicit Folder(Drawable* content = nullptr) : m_content(content) {}
  ~Folder() override {
    while (m_content != nullptr) {
      Drawable* first = m_content;
      m_content = first->m_pNext;
      delete first;
    }
  }

  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    write(*stream, kTag);
    if (m_content != nullptr) {
      m_content->serialize_out(stream, list);
    } else {
      write(*stream, 0x10000002);
    }
    Drawable::serialize_out(stream, list);
  }
  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override {
    m_content = list.create_drawable(read(*stream));
    if (m_content != nullptr) m_content->serialize_in(stream, list);
    Drawable::serialize_in(stream, list);
  }

  Drawable* m_content;
};

/// A mark that is not stored: both stream operations do nothing.
class UnstoredMark final : public Mark {
 public:
  static constexpr std::uint32_t kTag = 0x40000004;
  using Mark::Mark;
  void serialize_out(ZtFsStream*, DL::DisplayList&) override {}
  void serialize_in(ZtFsStream*, DL::DisplayList&) override {}
};

/// Makes the drawables above for their tags.
inline DL::Drawable* create(void*, int tag) {
  switch (static_cast<std::uint32_t>(tag)) {
    case StoredMark::kTag:
      return new StoredMark;
    case Folder::kTag:
      return new Folder;
    case UnstoredMark::kTag:
      return new UnstoredMark;
    default:
      return nullptr;
  }
}

}  // namespace client
