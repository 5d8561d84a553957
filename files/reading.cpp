#include "files/reading_p.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <utility>

#include "displaylist/catalogue.h"
#include "files/layout_p.h"
#include "files/registry_p.h"

namespace files {

void* WatchedHeap::allocate(std::size_t size) noexcept {
  void* memory = LD_AllocateMemory(size, &m_heap);
  if (memory == nullptr) m_reader.fail_of_memory();
  return memory;
}

// --- Renditions ---------------------------------------------------------------

bool Reading::add_rendition(std::int32_t index, std::unique_ptr<LM_Rendition> rendition) {
  m_palette.insert(rendition.get());
  const bool is_new = m_by_index.emplace(index, rendition.get()).second;
  m_renditions.push_back(std::move(rendition));
  return is_new;
}

LM_Rendition* Reading::make_for_word(std::uint32_t word) {
  if (!m_has_client_classes) return m_word_renditions.add(LM_RGB32{word});
  // A client's drawable may keep drawables of its own, which no walk finds.
  auto made = std::make_unique<LM_Rendition>();
  made->set_color(LM_RGB32{word}, true);
  m_lasting.insert(made.get());
  m_renditions.push_back(std::move(made));
  return m_renditions.back().get();
}

LM_Rendition* Reading::rendition_at(std::int32_t index) {
  LM_Rendition*& rendition = m_by_index[index];
  if (rendition == nullptr) rendition = make_for_word(static_cast<std::uint32_t>(index));
  return rendition;
}

LM_Rendition* Reading::index_to_rendition(void* self, int index) {
  auto* reading = static_cast<Reading*>(self);
  try {
    return reading->rendition_at(index);
  } catch (const std::bad_alloc&) {
    reading->reader.fail_of_memory();
    return &reading->m_stand_in;
  }
}

void Reading::post_read(DL::Drawable* drawable) {
  // A nested list has a rendition although its class is no palettized one.
  if (drawable->type() == DL::DrawableDisplayList::my_type()) return;
  const LM_RGB32 color = WordRenditions::color_of(*drawable->m_colorData.m_pRendition);
  DL::standard_post_read(drawable);
  drawable->m_colorData.m_color = color;
}

void Reading::expect_client_classes() {
  if (m_has_client_classes) return;
  m_has_client_classes = true;
  std::erase_if(m_by_index, [this](const auto& at) { return is_made_for_word(at.second); });
}

// --- Drawables ----------------------------------------------------------------

DL::Drawable* Reading::create_drawable(void* self, int tag) {
  auto* reading = static_cast<Reading*>(self);
  return reading->reader.has_failed() ? nullptr : reading->create(static_cast<std::uint32_t>(tag));
}

DL::Drawable* Reading::create(std::uint32_t tag) {
  if (const Maker make = maker_of(tag)) return make(&heap);
  DL::Drawable* drawable = nullptr;
  if (options.create_drawable != nullptr) {
    expect_client_classes();
    drawable = options.create_drawable(options.context, static_cast<std::int32_t>(tag));
  }
  if (drawable == nullptr) fail_of_class(tag);
  return drawable;
}

void Reading::fail_of_class(std::uint32_t tag) {
  std::array<char, 128> sentence{};
  static_cast<void>(std::snprintf(sentence.data(), sentence.size(),
                                  "it holds a drawable of a class that is not known here, 0x%08X; "
                                  "read it with the program that wrote it",
                                  tag));
  reader.fail(sentence.data());
}

// --- Nested lists -------------------------------------------------------------

void Reading::add_child(std::unique_ptr<DL::DisplayList> list) {
  const DL::BoundsTemplate<long> unused;
  std::unique_ptr<DL::DrawableDisplayList> holder(
      new DL::DrawableDisplayList(nullptr, nullptr, &unused));
  if (holder == nullptr) throw std::bad_alloc();
  m_children.push_back({std::move(holder), std::exchange(m_depth, 1)});
  m_children.back().holder->set_display_list(list.release(), &unused);
}

void Reading::nest(DL::DrawableDisplayList& drawable, std::uint32_t number,
                   const DL::BoundsTemplate<long>& bounds) {
  if (number == layout::kNone) return drawable.set_display_list(nullptr, &bounds);
  if (number >= m_children.size() || m_children[number].depth >= layout::kDeepestNesting) {
    return reader.fail_of_damage();
  }
  m_depth = std::max(m_depth, m_children[number].depth + 1);
  drawable.set_display_list(m_children[number].holder->display_list(), &bounds);
}

}  // namespace files
