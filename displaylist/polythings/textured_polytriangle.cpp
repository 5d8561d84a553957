#include "displaylist/polythings/textured_polytriangle.h"

#include <algorithm>
#include <new>

#include "displaylist/core/array_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/draw_points_p.h"

namespace DL {

namespace {

/// A copy from the general allocator; null for a null source or without memory.
template <class T>
T* copy_generally(const T* source, std::int32_t count) {
  if (source == nullptr) return nullptr;
  const auto n = static_cast<std::size_t>(std::max(count, 0));
  T* copy = new (std::nothrow) T[n];
  if (copy != nullptr) std::copy_n(source, n, copy);
  return copy;
}

}  // namespace

void* DLTexturedPolytriangle::_parent_type = &DLPolytriangle::_parent_type;

DLTexturedPolytriangle::DLTexturedPolytriangle(LM_RGB32 color, std::int32_t n,
                                               const PointTemplate<long>* source,
                                               const Vertices& vertices, LumenHeap* heap)
    : DLPolytriangle(color, n, source, heap),
      colors(copy_array(vertices.colors, count, heap)),
      vertex_triples(copy_generally(vertices.triples, count)),
      vertex_values(copy_generally(vertices.values, count)),
      vertex_triples_2(copy_generally(vertices.second_triples, count)) {
  const bool complete = colors != nullptr && (vertex_triples != nullptr || count < 1) &&
                        (vertex_values != nullptr || vertices.values == nullptr) &&
                        (vertex_triples_2 != nullptr || vertices.second_triples == nullptr);
  if (!complete) discard_points();
}

DLTexturedPolytriangle::~DLTexturedPolytriangle() {
  LD_ReleaseMemory(colors);
  delete[] vertex_triples;
  delete[] vertex_values;
  delete[] vertex_triples_2;
}

void* DLTexturedPolytriangle::my_type() {
  return &_parent_type;
}

void* DLTexturedPolytriangle::type() const {
  return my_type();
}

void DLTexturedPolytriangle::draw_unclipped(DisplayList& list) {
  draw(list, false);
}

void DLTexturedPolytriangle::draw_clipped(DisplayList& list) {
  draw(list, true);
}

void DLTexturedPolytriangle::draw(DisplayList& list, bool clip) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  draw_points(*this, list, clip, actions.textured_triangle_strip_unclipped,
              actions.textured_triangle_strip_clipped, colors, vertex_triples, LM_TEXTURE_REPEAT,
              vertex_values, vertex_triples_2);
}

bool DLTexturedPolytriangle::remove(Search& search) {
  return search.type == DLTexturedPolytriangle::my_type() &&
         has_same_points(*static_cast<const Polything*>(search.prototype));
}

Drawable* DLTexturedPolytriangle::clone() {
  const Vertices vertices{colors, vertex_triples, vertex_values, vertex_triples_2};
  return with_color_of(*this, complete_or_null(new DLTexturedPolytriangle(
                                  m_colorData.m_color, count, points, vertices)));
}

void DLTexturedPolytriangle::hide() {
  class_change::become<HiddenDrawable<DLTexturedPolytriangle>>(this);
}

void DLTexturedPolytriangle::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 80;
  std::uint32_t vertex_bytes = 24;
  if (vertex_values != nullptr) vertex_bytes += 4;
  if (vertex_triples_2 != nullptr) vertex_bytes += 12;
  dump_line::write_points(os, level, "TexturedPolytriange", count, this);
  dump_line::count(statistics, vertex_bytes * static_cast<std::uint32_t>(count) + object_bytes);
}

void DLTexturedPolytriangle::serialize_out(ZtFsStream*, DisplayList&) {}

void DLTexturedPolytriangle::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
