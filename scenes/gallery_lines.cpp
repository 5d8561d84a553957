// The specimens of dots, lines, markers and images.

#include <cmath>
#include <numbers>

#include "scenes/gallery_p.h"

namespace scenes {

namespace {

/// The points of a sunflower's head around the centre.
std::vector<Gallery::Point> sunflower(const Gallery::Point& center, std::int32_t count,
                                      double pitch) {
  const double golden_angle = std::numbers::pi * (3.0 - std::sqrt(5.0));
  std::vector<Gallery::Point> points;
  for (std::int32_t i = 0; i < count; ++i) {
    const double radius = pitch * std::sqrt(i + 0.5);
    points.push_back(around(center, radius, radius, golden_angle * i));
  }
  return points;
}

/// A spiral from the centre outwards.
std::vector<Gallery::Point> spiral(const Gallery::Point& center) {
  std::vector<Gallery::Point> points;
  for (std::int32_t i = 0; i <= 96; ++i) {
    const double radius = 38.0 * i / 96.0;
    points.push_back(around(center, 1.3 * radius, radius, i * std::numbers::pi / 16.0));
  }
  return points;
}

}  // namespace

void Gallery::add_dots(const Cell& cell) {
  for (const Point& point : sunflower(cell.center(), 160, 3.1)) add<DL::DLDot>(cell, point);
}

void Gallery::add_colorized_dots(const Cell& cell) {
  const std::vector<Point> points = sunflower(cell.center(), 420, 1.95);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(points.size());
    add<DL::DLColorizedDot>(cell, points[i], mixed(kHot, kCool, part));
  }
}

void Gallery::add_polydot(const Cell& cell) {
  const std::vector<Point> points = sunflower(cell.center(), 130, 3.5);
  add<DL::DLPolydot>(cell, static_cast<std::int32_t>(points.size()), points.data());
}

void Gallery::add_rows_of_dots(const Cell& cell) {
  const Point center = cell.center();
  for (std::int32_t row = -6; row <= 6; ++row) {
    const Point first{center.x - 48, center.y + row * 6};
    add<DL::DLRowOfDots>(cell, first, Point{3 + (row + 6) % 4, 0}, 16);
  }
}

void Gallery::add_polyline(const Cell& cell) {
  const std::vector<Point> points = spiral(cell.center());
  add<DL::DLPolyline>(cell, static_cast<std::int32_t>(points.size()), points.data());
}

void Gallery::add_gouraud_polyline(const Cell& cell) {
  const std::vector<Point> points = spiral(cell.center());
  std::vector<LM_RGB32> colors;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(points.size() - 1);
    colors.push_back(part < 0.5 ? mixed(kHot, kWarm, 2 * part) : mixed(kWarm, kCool, 2 * part - 1));
  }
  add<DL::DLGouraudPolyline>(cell, static_cast<std::int32_t>(points.size()), points.data(),
                             colors.data());
}

void Gallery::add_polysegment(const Cell& cell) {
  const Point center = cell.center();
  std::vector<Point> points;
  for (std::int32_t i = 0; i < 24; ++i) {
    const double angle = i * std::numbers::pi / 12.0;
    for (const double radius : {16.0, 40.0}) {
      points.push_back(around(center, 1.2 * radius, radius, angle));
    }
  }
  add<DL::DLPolysegment>(cell, static_cast<std::int32_t>(points.size()), points.data());
}

/// A column for each shape.
void Gallery::add_polymarker(const Cell& cell) {
  const Point center = cell.center();
  for (std::int32_t shape = 0; shape < kMarkerShapes; ++shape) {
    const std::int32_t x = center.x - 45 + 30 * (shape % 4);
    const std::int32_t y = center.y + (shape < 4 ? 24 : -24);
    const Point points[] = {{x, y - 12}, {x, y + 12}};
    add_to<DL::DLPolymarker>(*m_markers.at(static_cast<std::size_t>(shape)), cell, std::int32_t{2},
                             &points[0]);
  }
}

void Gallery::add_image(const Cell& cell) {
  if (!m_image) return;
  const Point center = cell.center();
  const Point corner{center.x - m_image->width() / 2, center.y - m_image->height() / 2};
  const DL::BoundsTemplate<long> rectangle{corner.x, corner.y, corner.x + m_image->width(),
                                           corner.y + m_image->height()};
  add<DL::DLImage>(cell, rectangle, m_image);
}

}  // namespace scenes
