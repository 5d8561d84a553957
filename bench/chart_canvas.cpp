#include "bench/chart_canvas.h"

#include <cmath>
#include <numbers>

#include "lumen/fonts.h"
#include "lumen/vector_device.h"

namespace bench {

namespace {

constexpr double kUnits = 64.0;  ///< logical units of a pixel
constexpr LM_RGB32 kPaper{0x00FBFAF6};

std::int32_t units(double pixels) {
  return static_cast<std::int32_t>(std::lround(pixels * kUnits));
}

}  // namespace

Canvas::Canvas(std::int32_t width, std::int32_t height) : m_width(width), m_height(height) {
  m_list.m_logicalBounds = {0, 0, units(width - 1), units(height - 1)};
  m_list.set_screen_bounds({0, height - 1, width - 1, 0});
  m_list.m_rendition.set_clip_rectangle({0, width - 1, 0, height - 1});
  area({-1.0, -1.0}, {width + 1.0, height + 1.0}, kPaper);
}

/// Logical y runs up.
DL::PointTemplate<long> Canvas::logical(Place place) const {
  return {units(place.x), units(m_height - 1 - place.y)};
}

void Canvas::area(Place corner, Place opposite, LM_RGB32 color) {
  const DL::PointTemplate<long> corners[] = {logical(corner), logical({opposite.x, corner.y}),
                                             logical(opposite), logical({corner.x, opposite.y})};
  m_list.add(new DL::DLPolygon(color, 4, corners));
}

void Canvas::line(Place from, Place to, LM_RGB32 color) {
  const DL::PointTemplate<long> ends[] = {logical(from), logical(to)};
  m_list.add(new DL::DLPolyline(color, 2, ends));
}

void Canvas::disc(Place center, double radius, LM_RGB32 color) {
  constexpr auto whole = static_cast<float>(2.0 * std::numbers::pi);
  m_list.add(new DL::DLColorizedEllipse(color, logical(center), units(radius), units(radius), 0.0F,
                                        0.0F, whole, color, false, &m_list));
}

void Canvas::text(Place at, std::string_view text, const Lettering& lettering) {
  const std::wstring letters(text.begin(), text.end());
  const auto count = static_cast<std::int32_t>(letters.size());
  LM_Font_Description description{.name = L"DejaVu Sans", .given = LM_Font_Description::NAME};
  if (lettering.is_bold) {
    description.bold = 1;
    description.given |= LM_Font_Description::BOLD;
  }
  const LM_Font font(description);
  const lumen::TextMeasure measure = lumen::measure_text(font, letters.data(), count);
  const double width = measure.advance * lettering.size;
  if (lettering.anchor == Anchor::middle) at.x -= width / 2.0;
  if (lettering.anchor == Anchor::end) at.x -= width;
  at.y += 0.36 * lettering.size;
  const DL::PointTemplate<long> start = logical(at);
  const DL::PointTemplate<long> below = logical({at.x, at.y + lettering.size});
  const DL::PointTemplate<long> above = logical({at.x + width, at.y - lettering.size});
  m_list.add(new DL::DLText(lettering.color, font, {1.0 * start.x, 1.0 * start.y}, letters.data(),
                            count, lettering.size * kUnits, 0.0,
                            {below.x, below.y, above.x, above.y}, &m_list, true));
}

std::string Canvas::write(const std::string& path) {
  const auto device =
      LM_Create<lumen::VectorDevice>(lumen::VectorFormat::svg, m_width, m_height, path);
  m_list.m_pRenderer = device;
  m_list.m_pRootGroup->draw_unclipped(m_list);
  return device->finish();
}

}  // namespace bench
