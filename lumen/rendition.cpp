#include "displaylist/platform/rendition.h"

#include <cmath>
#include <limits>
#include <utility>

namespace {

/// What is behind the handle, cloned if another handle holds it too.
template <class T>
T& unshare(LM_Handle<T>& data) {
  if (data->is_shared()) data = LM_Create<T>(*data);
  return *data;
}

/// The clip as straight edges, which contours consist of: the clip itself.
const LM_Contour_Set& hardened(const LM_Contour_Set& clip) {
  return clip;
}

/// The angle in [0, 2 pi), computed in single precision. One of so many turns
/// that they do not fit 32 bits says nothing about a direction: 0.
float normalized(float angle) {
  constexpr float turn = 6.2831855F;
  const float turns = angle / turn;
  if (!(std::fabs(turns) < 2147483648.0F)) return 0.0F;
  float result = angle - static_cast<float>(static_cast<std::int32_t>(turns)) * turn;
  while (result >= turn) result -= turn;
  while (result < 0.0F) result += turn;
  return std::fabs(result - turn) < std::numeric_limits<float>::epsilon() ? 0.0F : result;
}

}  // namespace

LM_Rendition::LM_Rendition() : m_data(LM_Create<LM_Rendition_Data>()) {
  m_data->text_attributes = LM_Create<LM_Text_Attributes>();
}

LM_Rendition_Data& LM_Rendition::writable() {
  LM_Rendition_Data& data = unshare(m_data);
  data.change_serial = LUMEN.next_change_serial();
  return data;
}

LM_Line_Style& LM_Rendition::writable_line_style() {
  LM_Line_Style& style = writable().line_style;
  style.change_serial = LUMEN.next_change_serial();
  return style;
}

void LM_Rendition::set_clip_rectangle(const LM_Clip_Rectangle& rectangle) {
  if (rectangle == m_data->clip_rectangle) return;
  // The argument may be part of the very data that is about to be released.
  const LM_Clip_Rectangle copy = rectangle;
  writable().clip_rectangle = copy;
}

void LM_Rendition::set_line_weight(std::int32_t weight) {
  if (weight != line_style().weight) writable_line_style().weight = weight;
}

void LM_Rendition::set_line_pattern(std::int32_t pattern) {
  if (pattern != line_style().pattern) writable_line_style().pattern = pattern;
}

void LM_Rendition::set_end_styles(std::int32_t start, std::int32_t end) {
  if (start == line_style().start_style && end == line_style().end_style) return;
  LM_Line_Style& style = writable_line_style();
  style.start_style = start;
  style.end_style = end;
}

void LM_Rendition::set_edge_mode(std::uint32_t mode) {
  if (mode != edge_mode()) writable().edge_mode = mode;
}

void LM_Rendition::set_marker(const LM_Marker& marker) {
  if (marker == m_data->marker) return;
  const LM_Marker copy = marker;  // as with the clip rectangle
  writable().marker = copy;
}

void LM_Rendition::set_texture_pages(LM_Handle<const LM_Texture_Pages> pages) {
  if (pages == m_data->texture_pages) return;
  writable().texture_pages = std::move(pages);
}

void LM_Rendition::set_complex_clip(LM_Contour_Set clip, bool invalidate_hard) {
  const bool invalidates = invalidate_hard && m_data->hard_complex_clip_validated;
  if (clip == m_data->complex_clip && !invalidates) return;
  LM_Rendition_Data& data = writable();
  data.complex_clip = std::move(clip);
  if (invalidates) {
    data.hard_complex_clip = nullptr;
    data.hard_complex_clip_validated = false;
  }
}

void LM_Rendition::validate_hard_complex_clip() {
  if (m_data->hard_complex_clip_validated) return;
  // Derived state: what is drawn does not change, so the serial stays.
  LM_Rendition_Data& data = unshare(m_data);
  data.hard_complex_clip = hardened(data.complex_clip);
  data.hard_complex_clip_validated = true;
}

const LM_Contour_Set_Data* LM_Rendition::device_clip() const {
  if (m_data->hard_complex_clip_validated) return m_data->hard_complex_clip.get();
  return hardened(m_data->complex_clip).get();
}

void LM_Rendition::set_selector_data(LM_Handle<LM_Selector_Data> data) {
  if (data == m_data->selector_data) return;
  writable().selector_data = std::move(data);
}

LM_Text_Attributes& LM_Rendition::writable_text_attributes() {
  LM_Text_Attributes& attributes = unshare(unshare(m_data).text_attributes);
  attributes.change_serial = LUMEN.next_change_serial();
  return attributes;
}

LM_Text_Attributes& LM_Rendition::shared_text_attributes() {
  m_data->change_serial = LUMEN.next_change_serial();
  LM_Text_Attributes& attributes = *m_data->text_attributes;
  attributes.change_serial = LUMEN.next_change_serial();
  return attributes;
}

void LM_Rendition::set_text_size(float size) {
  if (size != text_attributes().size) writable_text_attributes().size = size;
}

void LM_Rendition::set_text_rotation(float rotation) {
  const float angle = normalized(rotation);
  if (angle != text_attributes().rotation) writable_text_attributes().rotation = angle;
}

void LM_Rendition::set_text_width_scale(float scale) {
  if (scale != text_attributes().width_scale) writable_text_attributes().width_scale = scale;
}

void LM_Rendition::set_shared_text_size(float size) {
  shared_text_attributes().size = size;
}

void LM_Rendition::set_shared_text_rotation(float rotation) {
  shared_text_attributes().rotation = normalized(rotation);
}

void LM_Rendition::set_shared_font(const LM_Font& font) {
  shared_text_attributes().font = font;
}

void LM_Rendition::copy_state(const LM_Rendition& other) {
  if (this == &other) return;
  if (m_data->is_shared()) {
    *this = LM_Rendition();
  } else if (m_data->text_attributes->is_shared()) {
    m_data->text_attributes = LM_Create<LM_Text_Attributes>();
  }
  const LM_Handle<LM_Text_Attributes> own = m_data->text_attributes;
  *own = *other.m_data->text_attributes;
  *m_data = *other.m_data;
  m_data->text_attributes = own;
}
