// Measuring texts as the renderer lays them out.

#include <algorithm>
#include <cmath>

#include "displaylist/core/display_list.h"
#include "displaylist/platform/matrix.h"
#include "displaylist/platform/utf16.h"
#include "displaylist/text/encoded_text.h"
#include "displaylist/text/text.h"
#include "displaylist/text/text_device_p.h"

namespace DL {

namespace {

using Point = PointTemplate<double>;

Point operator+(const Point& a, const Point& b) {
  return {a.x + b.x, a.y + b.y};
}
Point operator-(const Point& a, const Point& b) {
  return {a.x - b.x, a.y - b.y};
}
Point operator*(const Point& p, double factor) {
  return {p.x * factor, p.y * factor};
}

void measure(LM_Renderer& renderer, LM_Rendition& rendition, const LM_DCI_Point& start,
             const EncodedText& text, LM_Point corners[4], float* widths) {
  LM_Text_Extent extent;
  extent.widths = widths;
  const bool with_widths = widths != nullptr;
  if (text.isUnicode()) {
    renderer.text_extent(&rendition, start, text.unicodeString(), text.length(), corners,
                         with_widths, extent);
  } else {
    renderer.text_extent(&rendition, start, text.multiByteString(), text.length(), corners,
                         with_widths, extent);
  }
}

/// The character that starts at an index; 0 for the second half of a pair.
std::uint32_t character_at(const EncodedText& text, std::int32_t index) {
  using LM_Utf16::is_high_surrogate;
  using LM_Utf16::is_low_surrogate;
  using LM_Utf16::value_of;
  if (!text.isUnicode()) return value_of(text.multiByteCharacter(index));
  const auto unit = [&text](std::int32_t i) {
    return i >= 0 && i < text.length() ? value_of(text.unicodeCharacter(i)) : 0;
  };
  const std::uint32_t value = unit(index);
  if (is_high_surrogate(value) && is_low_surrogate(unit(index + 1))) {
    return LM_Utf16::joined(value, unit(index + 1));
  }
  return is_low_surrogate(value) && is_high_surrogate(unit(index - 1)) ? 0 : value;
}

/// Sets the rotation of a rendition to 0 for its own lifetime.
class UprightText {
 public:
  explicit UprightText(LM_Rendition& rendition)
      : m_rendition(rendition), m_rotation(rendition.text_attributes().rotation) {
    if (m_rotation != 0.0F) m_rendition.set_shared_text_rotation(0.0F);
  }
  UprightText(const UprightText&) = delete;
  UprightText& operator=(const UprightText&) = delete;
  ~UprightText() {
    if (m_rendition.text_attributes().rotation == m_rotation) return;
    m_rendition.set_shared_text_rotation(m_rotation);
  }

 private:
  LM_Rendition& m_rendition;
  float m_rotation;
};

}  // namespace

bool DLText::can_be_measured() const {
  return m_pDisplayList != nullptr && m_pDisplayList->m_pRenderer && m_pFont != nullptr &&
         has_characters();
}

void DLText::accumulated_normalized_widths(float* widths) {
  const std::int32_t count = m_pText == nullptr ? 0 : std::max(m_pText->length(), 0);
  // The string may end before its length; what is not there takes no room.
  std::fill_n(widths, count, 0.0F);
  if (!can_be_measured()) return;
  const LM_Handle<LM_Renderer> renderer = m_pDisplayList->m_pRenderer;
  LM_Rendition& drawn_with = *rendition(*m_pDisplayList);
  const float size = drawn_with.text_attributes().size;
  give_font(drawn_with);
  const float measuring_size = renderer->measuring_text_size();
  if (measuring_size != size) drawn_with.set_shared_text_size(measuring_size);
  LM_Point corners[4];
  measure(*renderer, drawn_with, {0, 0, 0}, *m_pText, corners, widths);
  for (std::int32_t i = 1; i < count; ++i) widths[i] += widths[i - 1];
  const float total = widths[count - 1];
  const float factor = total != 0.0F ? 1.0F / total : 1.0F;
  for (std::int32_t i = 0; i < count; ++i) widths[i] *= factor;
  if (measuring_size != size) drawn_with.set_shared_text_size(size);
}

void DLText::get_text_bbox(PointTemplate<double>* corners) {
  std::fill_n(corners, 4, m_position);
  if (!can_be_measured()) return;
  const LM_Handle<LM_Renderer> renderer = m_pDisplayList->m_pRenderer;
  const text_device::Mapping mapping = text_device::mapping_in_force(*m_pDisplayList);
  LM_Rendition& drawn_with = *rendition(*m_pDisplayList);
  give_font(drawn_with);
  LM_Point device[4];
  measure(*renderer, drawn_with, text_device::start_point(mapping.to_device(m_position)), *m_pText,
          device, nullptr);
  for (int i = 0; i < 4; ++i) corners[i] = mapping.to_logical({device[i].x, device[i].y});
}

void DLText::get_character_bbox(std::int32_t index, const float* widths,
                                const PointTemplate<double>& origin,
                                const PointTemplate<double>* text_corners,
                                PointTemplate<double>* corners, PointTemplate<double>& pen) {
  const double from = index != 0 ? widths[index - 1] : 0.0F;
  const double to = widths[index];
  const Point bottom = text_corners[1] - text_corners[0];
  const Point top = text_corners[2] - text_corners[3];
  corners[0] = text_corners[0] + bottom * from;
  corners[1] = text_corners[0] + bottom * to;
  corners[2] = text_corners[3] + top * to;
  corners[3] = text_corners[3] + top * from;
  pen = (corners[1] - corners[0]) + origin;
}

LM_Contour_Set DLText::get_character_contour(std::int32_t index, const float* /*widths*/,
                                             const PointTemplate<double>& origin,
                                             const PointTemplate<double>* text_corners,
                                             PointTemplate<double>& pen, LM_Matrix& matrix) {
  constexpr double farthest = 1e15;
  matrix.set_identity();
  pen = origin;
  if (!can_be_measured()) return nullptr;
  const LM_Handle<LM_Renderer> renderer = m_pDisplayList->m_pRenderer;
  const text_device::Mapping mapping = text_device::mapping_in_force(*m_pDisplayList);
  const Point device = mapping.to_device(origin);
  LM_Contour_Set outline;
  float advance = 0.0F;
  outline_of(*renderer, index, outline, advance);

  // In a view that turns the picture upside down, angles run the other way.
  const auto angle = static_cast<float>(mapping.scale.y < 0 ? -m_rotation : m_rotation);
  if (angle != 0.0F) matrix.rotate_z(angle);
  LM_Point advanced{advance, 0.0F, 0.0F};
  matrix.transform(&advanced, 1);
  const Point step = mapping.to_logical({advanced.x, advanced.y}) - mapping.to_logical({0.0, 0.0});
  const Point edge = text_corners[1] - text_corners[0];
  const double length = std::hypot(edge.x, edge.y);
  if (length != 0.0) pen = origin + edge * (1.0 / length) * std::hypot(step.x, step.y);

  matrix.translate(
      static_cast<float>(text_device::limited(device.x, farthest, -farthest, device.x)),
      static_cast<float>(text_device::limited(device.y, farthest, -farthest, device.x)), 0.0F);
  return outline;
}

void DLText::outline_of(LM_Renderer& renderer, std::int32_t index, LM_Contour_Set& outline,
                        float& advance) {
  LM_Rendition& drawn_with = *rendition(*m_pDisplayList);
  const UprightText upright(drawn_with);
  give_font(drawn_with);
  const std::uint32_t character = character_at(*m_pText, index);
  if (character != 0) renderer.glyph_outline(character, &drawn_with, outline, advance);
}

}  // namespace DL
