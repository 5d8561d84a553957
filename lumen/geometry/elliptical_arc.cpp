#include "lumen/geometry/elliptical_arc_p.h"

namespace lumen {
namespace {

/// Arcs that lack less than this of a turn are whole.
constexpr double missing_of_whole = 0.01;

/// Furthest from the arc that the middle of a step may be.
constexpr double deviation = 1.0 / 64;

/// How far the arc runs, given finite angles.
double sweep_of(double start, double end) {
  constexpr double turn = EllipticalArc::turn;
  const double difference = end - start;
  const double sweep = difference < 0 ? turn - std::fmod(-difference, turn) : difference;
  // The difference of the largest numbers is infinite, its remainder none.
  return sweep < turn - missing_of_whole ? sweep : turn;
}

}  // namespace

EllipticalArc::EllipticalArc(const LM_DCI_Point& center, const LM_DCI_Point& radii, double start,
                             double end, double rotation)
    : m_center{static_cast<double>(center.x), static_cast<double>(center.y)} {
  m_is_drawable = radii.x >= 0 && radii.y >= 0 && std::isfinite(start) && std::isfinite(end) &&
                  std::isfinite(rotation);
  if (!m_is_drawable) return;
  m_start = std::fmod(start, turn);
  m_sweep = sweep_of(start, end);
  m_cos_rotation = std::cos(rotation);
  m_sin_rotation = std::sin(rotation);
  set_radii(radii.x, radii.y);
}

EllipticalArc::EllipticalArc(const LM_DCI_Point& center, double radius)
    : m_center{static_cast<double>(center.x), static_cast<double>(center.y)} {
  set_radii(radius, radius);
}

void EllipticalArc::set_radii(double x, double y) {
  m_radius_x = x;
  m_radius_y = y;
  m_cos_x = x * m_cos_rotation;
  m_sin_x = -y * m_sin_rotation;
  m_cos_y = x * m_sin_rotation;
  m_sin_y = y * m_cos_rotation;
}

EllipticalArc EllipticalArc::grown(double by) const {
  EllipticalArc result = *this;
  result.set_radii(m_radius_x + by, m_radius_y + by);
  return result;
}

std::array<Place, 2> EllipticalArc::ends_of_flat(bool with_center) const {
  // The line is furthest out where the angle of its one radius turns back.
  const double turning = m_radius_y == 0 ? 0 : std::numbers::pi / 2;
  const auto position = [&](double angle) { return std::cos(angle - turning); };
  double low = std::min(position(m_start), position(m_start + m_sweep));
  double high = std::max(position(m_start), position(m_start + m_sweep));
  for (double angle = turning - 2 * turn; angle <= m_start + m_sweep; angle += turn / 2) {
    if (angle < m_start) continue;
    low = std::min(low, position(angle));
    high = std::max(high, position(angle));
  }
  if (with_center) {
    low = std::min(low, 0.0);
    high = std::max(high, 0.0);
  }
  const double x = m_cos_x + m_sin_x;
  const double y = m_cos_y + m_sin_y;
  return {Place{m_center.x + x * low, m_center.y + y * low},
          Place{m_center.x + x * high, m_center.y + y * high}};
}

ArcSteps::ArcSteps(const EllipticalArc& arc, double reach, std::int32_t most_steps) : m_arc(arc) {
  // A step of an angle lies r (1 - cos(angle / 2)), about r angle^2 / 8, off.
  const double radius = arc.largest_radius() + reach;
  const double step = std::min(std::sqrt(8 * deviation / std::max(radius, 1.0)), 0.25);
  const double steps = std::min(std::ceil(arc.sweep() / step), double{1} * most_steps);
  // Multiples of eight make whole circles look the same from eight sides.
  m_count = std::max((static_cast<std::int32_t>(steps) + 7) / 8 * 8, 8);
}

PlaceBox ArcSteps::bounds(std::int32_t first, std::int32_t last) const {
  const double angle = m_arc.sweep() * (last - first) / m_count;
  if (angle >= std::numbers::pi) return m_arc.bounds();
  // From its chord the arc is at most as far as that of the largest circle.
  const double bulge = m_arc.largest_radius() * (1 - std::cos(angle / 2));
  const Place from = point(first);
  const Place to = point(last);
  return {std::min(from.x, to.x) - bulge, std::min(from.y, to.y) - bulge,
          std::max(from.x, to.x) + bulge, std::max(from.y, to.y) + bulge};
}

}  // namespace lumen
