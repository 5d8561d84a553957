// The specimens of areas and ellipses.

#include <cmath>
#include <numbers>

#include "scenes/gallery_p.h"

namespace scenes {

namespace {

constexpr std::int32_t kWavePoints = 14;

/// A wavy strip from left to right.
std::array<Gallery::Point, kWavePoints> wave(const Gallery::Point& center) {
  std::array<Gallery::Point, kWavePoints> points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto column = static_cast<std::int32_t>(i);
    const double rise = 14.0 * std::sin(column * 0.55);
    points.at(i) = {
        center.x - 50 + column * 100 / 13,
        center.y + static_cast<std::int32_t>(std::lround(rise)) + (column % 2 == 0 ? -20 : 20)};
  }
  return points;
}

}  // namespace

void Gallery::add_polygon(const Cell& cell) {
  const Point center = cell.center();
  std::vector<Point> points;
  for (std::int32_t i = 0; i < 7; ++i) {  // every third corner: a star with a hole
    const double angle = i * 3 * 2.0 * std::numbers::pi / 7.0 + std::numbers::pi / 2.0;
    points.push_back(around(center, 46.0, 42.0, angle));
  }
  add<DL::DLPolygon>(cell, static_cast<std::int32_t>(points.size()), points.data());
}

void Gallery::add_strip_without_border(const Cell& cell) {
  const auto points = wave(cell.center());
  add<DL::DLPolytriangleWithNoBorder>(cell, kWavePoints, points.data());
}

void Gallery::add_strip(const Cell& cell) {
  const auto points = wave(cell.center());
  add<DL::DLPolytriangle>(cell, kWavePoints, points.data());
}

void Gallery::add_gouraud_strip(const Cell& cell) {
  const auto points = wave(cell.center());
  std::array<LM_RGB32, kWavePoints> colors;
  for (std::size_t i = 0; i < colors.size(); ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(colors.size() - 1);
    colors.at(i) = i % 2 == 0 ? mixed(kHot, kWarm, part) : mixed(kCool, kHot, part);
  }
  add<DL::DLGouraudPolytriangle>(cell, kWavePoints, points.data(), colors.data());
}

void Gallery::add_textured_strip(const Cell& cell) {
  const auto points = wave(cell.center());
  std::array<LM_RGB32, kWavePoints> colors;
  std::array<LM_Vertex_Triple, kWavePoints> triples;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(points.size() - 1);
    colors.at(i) = mixed(kWarm, kCool, part);
    triples.at(i) =
        LM_Vertex_Triple::at(static_cast<float>(2.0 * part), i % 2 == 0 ? 1.0F : 0.0F, 0);
  }
  const DL::DLTexturedPolytriangle::Vertices vertices{colors.data(), triples.data(), nullptr,
                                                      nullptr};
  add<DL::DLTexturedPolytriangle>(cell, kWavePoints, points.data(), vertices);
}

void Gallery::add_ellipse(const Cell& cell) {
  for (std::int32_t i = 0; i < 3; ++i) {
    const float turned = static_cast<float>(std::numbers::pi) * static_cast<float>(i) / 3.0F;
    add<DL::DLEllipse>(cell, cell.center(), 42, 15, turned, &m_specimens);
  }
}

void Gallery::add_arc(const Cell& cell) {
  for (std::int32_t i = 0; i < 5; ++i) {
    const float start = 0.9F * static_cast<float>(i);
    add<DL::DLEllipticalArc>(cell, cell.center(), 48 - 8 * i, 40 - 7 * i, 0.0F, start, start + 4.2F,
                             &m_specimens);
  }
}

void Gallery::add_pie(const Cell& cell) {
  for (std::int32_t i = 0; i < 3; ++i) {
    const float start = 0.2F + 2.1F * static_cast<float>(i);
    add<DL::DLEllipticalPie>(cell, cell.center(), 46, 38, 0.0F, start, start + 1.7F, &m_specimens);
  }
}

void Gallery::add_colorized_ellipse(const Cell& cell) {
  const Point center = cell.center();
  const Point left{center.x - 26, center.y};
  const Point right{center.x + 26, center.y};
  const float whole = 2.0F * static_cast<float>(std::numbers::pi);
  add<DL::DLColorizedEllipse>(cell, left, 26, 36, 0.0F, 0.6F, 5.0F, kWarm, true, &m_specimens);
  add<DL::DLColorizedEllipse>(cell, right, 26, 36, 0.0F, 0.0F, whole, kCool, false, &m_specimens);
  add<DL::DLColorizedEllipse>(cell, right, 22, 31, 0.0F, 0.6F, 2.5F, kHot, false, &m_specimens);
}

}  // namespace scenes
