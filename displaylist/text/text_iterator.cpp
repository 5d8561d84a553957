#include "displaylist/text/text_iterator.h"

#include <cstdlib>

#include "displaylist/core/array_p.h"
#include "displaylist/core/wrapping_p.h"
#include "displaylist/text/encoded_text.h"
#include "displaylist/text/text.h"
#include "displaylist/text/text_device_p.h"

namespace DL {

namespace {

PointTemplate<long> rounded(const PointTemplate<double>& point) {
  return {rounding::nearest_saturated(point.x), rounding::nearest_saturated(point.y)};
}

/// Half of the sum, which wraps at 32 bits, toward zero.
std::int32_t middle(std::int32_t a, std::int32_t b) {
  return wrapping_add(a, b) / 2;
}

}  // namespace

DrawableVectorIteratorText::DrawableVectorIteratorText(DLText& text, bool box, Start start)
    : m_text(text) {
  m_pDrawable = &text;
  begin(box ? Part::bounds : prepare(start));
  m_bDone = !step();
}

DrawableVectorIteratorText::~DrawableVectorIteratorText() {
  LD_ReleaseMemory(m_pWidths);
}

DrawableVectorIteratorText::Part DrawableVectorIteratorText::prepare(Start start) {
  if (!m_text.can_be_measured()) return Part::none;
  DisplayList& list = *m_text.m_pDisplayList;
  if (!m_text.set_text_attributes(list)) return Part::none;
  list.m_pRenderer->resolve_font(*m_text.m_pFont);
  // A view that turns the picture upside down has negative heights.
  const std::int32_t height = m_text.height(list);
  const std::int32_t size = height == INT32_MIN ? INT32_MAX : std::abs(height);
  m_bGreeked = m_text.is_text_greeked(size, list.m_bAlternateScale);
  m_pWidths = allocate_array<float>(m_text.m_pText->length(), nullptr);
  if (m_pWidths == nullptr) return Part::none;
  m_text.accumulated_normalized_widths(m_pWidths);
  m_text.get_text_bbox(m_corners);
  if (start == Start::character_boxes) return Part::character_boxes;
  return m_bGreeked || start == Start::text_box ? Part::text_box : Part::outlines;
}

void DrawableVectorIteratorText::begin(Part part) {
  m_part = part;
  m_character = 0;
  m_pen = m_text.m_position;
  if (part == Part::outlines) load_outline();
  m_step = -1;
}

DrawableVectorIteratorText::Part DrawableVectorIteratorText::following() const {
  if (m_bGreeked) return Part::none;
  if (m_part == Part::text_box) return Part::character_boxes;
  return m_part == Part::character_boxes ? Part::outlines : Part::none;
}

bool DrawableVectorIteratorText::step() {
  while (m_part != Part::none) {
    ++m_step;
    const bool found = m_part == Part::bounds            ? step_bounds()
                       : m_part == Part::text_box        ? step_text_box()
                       : m_part == Part::character_boxes ? step_character_boxes()
                                                         : step_outlines();
    if (found) return true;
    begin(following());
  }
  return false;
}

VectorTemplate<long>* DrawableVectorIteratorText::next() {
  m_bDone = !step();
  return m_bDone ? nullptr : &m_vector;
}

bool DrawableVectorIteratorText::step_bounds() {
  constexpr std::int32_t count = 8;
  if (m_step >= count) return false;
  const auto [low, high] = m_text.bounds();
  const std::int32_t x = middle(low.x, high.x);
  const std::int32_t y = middle(low.y, high.y);
  const VectorTemplate<long> segments[count] = {
      {low, {high.x, low.y}},
      {{high.x, low.y}, high},
      {high, {low.x, high.y}},
      {{low.x, high.y}, low},
      {{x, low.y}, {x, high.y}},
      {{low.x, y}, {high.x, y}},
      {low, high},
      {{low.x, high.y}, {high.x, low.y}},
  };
  m_vector = segments[m_step];
  return true;
}

void DrawableVectorIteratorText::load_side(const PointTemplate<double>* corners) {
  m_vector = {rounded(corners[m_step]), rounded(corners[(m_step + 1) % 4])};
}

bool DrawableVectorIteratorText::step_text_box() {
  if (m_step >= 4) return false;
  load_side(m_corners);
  return true;
}

bool DrawableVectorIteratorText::step_character_boxes() {
  if (m_step == 4) {
    ++m_character;
    m_step = 0;
  }
  if (m_character >= m_text.m_pText->length()) return false;
  if (m_step == 0) {
    const PointTemplate<double> origin = m_pen;
    m_text.get_character_bbox(m_character, m_pWidths, origin, m_corners, m_characterCorners, m_pen);
  }
  load_side(m_characterCorners);
  return true;
}

void DrawableVectorIteratorText::load_outline() {
  const PointTemplate<double> origin = m_pen;
  m_outline =
      m_text.get_character_contour(m_character, m_pWidths, origin, m_corners, m_pen, m_matrix);
  m_contour = 0;
  m_step = 0;
}

PointTemplate<long> DrawableVectorIteratorText::vertex(const LM_Contour& contour,
                                                       std::int32_t index) const {
  LM_Point point = contour.points[index < contour.count ? index : 0];
  m_matrix.transform(&point, 1);
  const text_device::Mapping mapping = text_device::mapping_in_force(*m_text.m_pDisplayList);
  return rounded(mapping.to_logical({point.x, point.y}));
}

bool DrawableVectorIteratorText::step_outlines() {
  while (m_character < m_text.m_pText->length()) {
    while (m_outline && m_contour < m_outline->contour_count()) {
      const LM_Contour contour = m_outline->contour(m_contour);
      if (contour.points != nullptr && m_step < contour.count) {
        m_vector = {vertex(contour, m_step), vertex(contour, m_step + 1)};
        return true;
      }
      ++m_contour;
      m_step = 0;
    }
    ++m_character;
    if (m_character < m_text.m_pText->length()) load_outline();
  }
  return false;
}

}  // namespace DL
