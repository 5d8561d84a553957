#include "displaylist/core/display_list.h"

#include <utility>

#include "displaylist/core/group.h"
#include "displaylist/core/tags.h"
#include "displaylist/drawables/class_table_p.h"

namespace DL {

std::int32_t DisplayList::m_cInterruptCount = 20;
std::int32_t DisplayList::m_cSelInterruptCount = 20;

DisplayList::DisplayList(LumenHeap* heap) : m_heap(heap) {
  m_pRenderer = LM_Create<LM_Renderer>();
  ensure_open_group();
}

DisplayList::DisplayList(WithoutTree) {}

DisplayList::~DisplayList() {
  delete m_pRootGroup;
}

void DisplayList::set_grayscale(bool on) {
  m_bGrayscale = on;
}

bool DisplayList::is_grayscale() {
  return m_bGrayscale;
}

void DisplayList::draw_for(const DisplayList& list, LM_Rendition& private_rendition) {
  m_pPrivateRendition = &private_rendition;
  LM_Rendition own = m_rendition;
  static_cast<DrawingContext&>(*this) = list;
  std::swap(own, m_rendition);
  m_rendition.copy_state(list.m_rendition);
}

void DisplayList::rest() {
  if (m_pPrivateRendition == nullptr) return;
  static const LM_Rendition nothing;
  m_pRenderer = nullptr;
  m_rendition.copy_state(nothing);
  m_pPrivateRendition->copy_state(nothing);
}

LM_Rendition& DisplayList::private_copy(const LM_Rendition& rendition) {
  m_pPrivateRendition->copy_state(rendition);
  return *m_pPrivateRendition;
}

Drawable* DisplayList::create_drawable(std::uint32_t class_tag) {
  if (is_built_in(class_tag)) return construct_built_in(class_tag, m_heap);
  if ((class_tag & tag::kClassBits) == 0 || m_pfnCreateDrawable == nullptr) return nullptr;
  return m_pfnCreateDrawable(m_pCreateDrawableContext, static_cast<std::int32_t>(class_tag));
}

}  // namespace DL
