// How texts are drawn, selected and found.

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/selection_corners_p.h"
#include "displaylist/text/encoded_text.h"
#include "displaylist/text/text.h"
#include "displaylist/text/text_device_p.h"

namespace DL {

namespace {

/// The position on the device: through the rotation where there is one, else by
/// the primary scale, also in the alternate one, whose ratio then applies.
PointTemplate<double> drawn_position(const DisplayList& list, const PointTemplate<double>& p) {
  PointTemplate<double> device{p.x * list.m_scale.x + list.m_offset.x,
                               p.y * list.m_scale.y + list.m_offset.y};
  if (list.m_bRotated) {
    const double* r = list.m_rotation;
    device = {r[4] * p.x + r[1] * p.y + r[2], r[0] * p.x + r[5] * p.y + r[3]};
  }
  if (!list.m_bAlternateScale) return device;
  return {device.x * list.m_deviceRatio.x, device.y * list.m_deviceRatio.y};
}

}  // namespace

void DLText::give_font(LM_Rendition& rendition) const {
  if (rendition.text_attributes().font != *m_pFont) rendition.set_shared_font(*m_pFont);
}

void DLText::draw_unclipped(DisplayList& list) {
  draw_clipped(list);
}

void DLText::draw_clipped(DisplayList& list) {
  if (m_pFont == nullptr || !has_characters()) return;
  const LM_Handle<LM_Renderer> renderer = list.m_pRenderer;
  LM_Rendition* drawn_with = rendition(list);
  renderer->resolve_font(*m_pFont);
  if (!set_text_attributes(list)) return;
  give_font(*drawn_with);
  const LM_DCI_Point start = text_device::start_point(drawn_position(list, m_position));
  if (m_pText->isUnicode()) {
    renderer->draw_text(drawn_with, start, m_pText->unicodeString(), m_pText->length());
  } else {
    renderer->draw_text(drawn_with, start, m_pText->multiByteString(), m_pText->length());
  }
}

void DLText::draw_unclipped_selection(DisplayList& list) {
  LM_DCI_Point corners[4];
  if (!selection_corners(*this, list, corners)) return;
  const LM_Clip_Rectangle& clip = list.m_rendition.clip_rectangle();
  bool inside = true;
  for (const LM_DCI_Point& corner : corners) inside = inside && clip.contains(corner);
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  (inside ? actions.polygon_unclipped : actions.polygon_clipped)(rendition(list), 4, corners, 0);
}

void DLText::draw_clipped_selection(DisplayList& list) {
  LM_DCI_Point corners[4];
  if (!selection_corners(*this, list, corners)) return;
  list.m_pRenderer->actions.polygon_clipped(rendition(list), 4, corners, 0);
}

void DLText::add_bounds(BoundsTemplate<long>& bounds) const {
  bounds.widen(m_bounds);
}

bool DLText::remove(Search& search) {
  if (search.type != DLText::my_type()) return false;
  const auto* wanted = static_cast<const DLText*>(search.prototype);
  return wanted->m_pText == m_pText && wanted->m_bounds == m_bounds;
}

}  // namespace DL
