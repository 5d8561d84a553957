#include "displaylist/drawables/drawable.h"

#include <bit>

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/vector_iterator.h"

namespace DL {

void* Drawable::_parent_type = nullptr;

Drawable::Drawable(LM_RGB32 color) {
  m_colorData.m_color = color;
}

Drawable::~Drawable() = default;

bool operator==(const Drawable::ColorData& a, const Drawable::ColorData& b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

Extra_Drawable_Info* Drawable::drawable_info() {
  return m_pDrawableInfo;
}

void Drawable::set_drawable_info(Extra_Drawable_Info* info) {
  m_pDrawableInfo = info;
}

void Drawable::draw_unclipped_selection(DisplayList& list) {
  draw_unclipped(list);
}

void Drawable::draw_clipped_selection(DisplayList& list) {
  draw_clipped(list);
}

void Drawable::set_margin(long) {}

Drawable* Drawable::partial_clone(int, int) {
  return nullptr;
}

void Drawable::hide() {}

void Drawable::unhide() {}

bool Drawable::is_hidden() const {
  return false;
}

bool Drawable::is_palettized() const {
  return false;
}

bool Drawable::has_fixed_representation() const {
  return true;
}

bool Drawable::supports_fast_vector_iterator() const {
  return get_vector_count() > 0;
}

int Drawable::get_vector_count() const {
  return 0;
}

bool Drawable::get_vector(int, VectorTemplate<long>&) const {
  return false;
}

bool Drawable::reserved_predicate() const {
  return false;
}

DrawableVectorIterator* Drawable::create_vector_iterator(bool) {
  auto* iterator = new DrawableVectorIterator;
  if (iterator != nullptr) iterator->initialize(this);
  return iterator;
}

LM_Rendition* Drawable::rendition(DisplayList& list) {
  list.m_rendition.set_color(m_colorData.m_color, true);
  return &list.m_rendition;
}

void Drawable::dump(std::ostream& os, int level, DisplayListDebug&) const {
  dump_line::write(os, level, "Drawable", this);
}

void Drawable::set_color_data(LM_Rendition* rendition) {
  m_colorData.m_pRendition = rendition;
}

void Drawable::restore_color_data(LM_Rendition* rendition) {
  m_colorData.m_pRendition = rendition;
}

void* Drawable::my_type() {
  return _parent_type;
}

bool Drawable::isKindOf(void* token) const {
  for (void* type = this->type(); type != nullptr; type = *static_cast<void**>(type)) {
    if (type == token) return true;
  }
  return false;
}

void* Drawable::operator new(std::size_t size) noexcept {
  return LD_AllocateMemory(size, nullptr);
}

void* Drawable::operator new(std::size_t size, LumenHeap* heap) noexcept {
  return LD_AllocateMemory(size, heap);
}

void Drawable::operator delete(void* memory) noexcept {
  LD_ReleaseMemory(memory);
}

void Drawable::operator delete(void* memory, LumenHeap*) noexcept {
  LD_ReleaseMemory(memory);
}

}  // namespace DL
