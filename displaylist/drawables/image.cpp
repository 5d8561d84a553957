#include "displaylist/drawables/image.h"

#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/core/wrapping_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"

namespace DL {

void* DLImage::_parent_type = nullptr;

DLImage::DLImage(LM_RGB32 color, const BoundsTemplate<long>& rectangle,
                 const LM_Handle<LM_Image>& image)
    : Drawable(color),
      m_rect(rectangle),
      m_pImageRef(static_cast<LM_Image**>(LD_AllocateMemory(sizeof(void*), nullptr))) {
  if (m_pImageRef == nullptr) return;
  *m_pImageRef = image.get();
  if (image) image->add_reference();
}

DLImage::~DLImage() {
  if (m_pImageRef == nullptr) return;
  if (*m_pImageRef != nullptr) (*m_pImageRef)->release_reference();
  *m_pImageRef = nullptr;
  LD_ReleaseMemory(m_pImageRef);
}

void* DLImage::my_type() {
  return &_parent_type;
}

void* DLImage::type() const {
  return my_type();
}

LM_DCI_Point DLImage::device_corner(const DisplayList& list) const {
  return transform::point(list, {m_rect.min.x, m_rect.max.y});
}

bool DLImage::lies_inside(const LM_Clip_Rectangle& clip, const LM_DCI_Point& corner) const {
  const LM_DCI_Point far_corner{wrapping_add(corner.x, image()->width() - 1),
                                wrapping_add(corner.y, image()->height() - 1), 0};
  return clip.contains(corner) && clip.contains(far_corner);
}

void DLImage::draw_unclipped(DisplayList& list) {
  if (image() == nullptr) return;
  const LM_DCI_Point corner = device_corner(list);
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  const bool inside = lies_inside(list.m_rendition.clip_rectangle(), corner);
  (inside ? actions.image_unclipped : actions.image_clipped)(rendition(list), &corner, m_pImageRef);
}

void DLImage::draw_clipped(DisplayList& list) {
  if (image() == nullptr) return;
  const LM_DCI_Point corner = device_corner(list);
  list.m_pRenderer->actions.image_clipped(rendition(list), &corner, m_pImageRef);
}

void DLImage::add_bounds(BoundsTemplate<long>& bounds) const {
  bounds.widen(m_rect);
}

bool DLImage::remove(Search& search) {
  return search.type == DLImage::my_type() &&
         static_cast<const DLImage*>(search.prototype)->m_rect == m_rect;
}

Drawable* DLImage::clone() {
  const LM_Handle<LM_Image> shared(image());
  return new DLImage(m_colorData.m_color, m_rect, shared);
}

void DLImage::hide() {
  class_change::become<HiddenDrawable<DLImage>>(this);
}

int DLImage::get_vector_count() const {
  return 4;
}

bool DLImage::get_vector(int index, VectorTemplate<long>& vector) const {
  if (index < 0 || index > 3) return false;
  const PointTemplate<long> corners[] = {
      m_rect.min, {m_rect.max.x, m_rect.min.y}, m_rect.max, {m_rect.min.x, m_rect.max.y}};
  vector = {corners[index], corners[(index + 1) % 4]};
  return true;
}

void DLImage::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 56;
  dump_line::write(os, level, "DLImage", this);
  dump_line::count(statistics, object_bytes);
}

void DLImage::serialize_out(ZtFsStream*, DisplayList&) {}

void DLImage::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
