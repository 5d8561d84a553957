#include "displaylist/core/display_list.h"

#include "displaylist/core/group.h"
#include "displaylist/core/tags.h"
#include "displaylist/drawables/class_table_p.h"

namespace DL {

std::int32_t DisplayList::m_cInterruptCount = 20;
std::int32_t DisplayList::m_cSelInterruptCount = 20;

DisplayList::DisplayList(LumenHeap* heap) : m_pRenderer(LM_Create<LM_Renderer>()), m_heap(heap) {
  ensure_open_group();
}

DisplayList::~DisplayList() {
  delete m_pRootGroup;
}

void DisplayList::set_grayscale(bool on) {
  m_bGrayscale = on;
}

bool DisplayList::is_grayscale() {
  return m_bGrayscale;
}

Drawable* DisplayList::create_drawable(std::uint32_t class_tag) {
  if (is_built_in(class_tag)) return construct_built_in(class_tag, m_heap);
  if ((class_tag & tag::kClassBits) == 0 || m_pfnCreateDrawable == nullptr) return nullptr;
  return m_pfnCreateDrawable(m_pCreateDrawableContext, static_cast<std::int32_t>(class_tag));
}

}  // namespace DL
