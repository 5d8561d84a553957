#include "lumen/geometry/thin_arc_p.h"

namespace lumen {
namespace {

std::int64_t nearest(double value) {
  return static_cast<std::int64_t>(std::nearbyint(value));
}

}  // namespace

ThinArc::ThinArc(const EllipticalArc& arc)
    : m_arc(arc), m_center_x(nearest(arc.center().x)), m_center_y(nearest(arc.center().y)) {
  constexpr double turn = EllipticalArc::turn;
  const double start = arc.start();
  const double end = start + arc.sweep();
  m_angles[m_angle_count++] = start;
  // x' = y' and x' = -y', each at two angles.
  for (const double sign : {1.0, -1.0}) {
    const double angle =
        std::atan2(arc.sin_x() - sign * arc.sin_y(), arc.cos_x() - sign * arc.cos_y());
    for (double change : {angle, angle + turn / 2}) {
      change += turn * std::ceil((start - change) / turn);
      if (start < change && change < end) m_angles[m_angle_count++] = change;
    }
  }
  std::sort(m_angles.begin(), m_angles.begin() + static_cast<std::ptrdiff_t>(m_angle_count));
  m_angles[m_angle_count++] = end;
}

ThinArc::Piece ThinArc::piece(double from, double to, Last& last) const {
  const Place direction = m_arc.direction_at((from + to) / 2);
  const Place first_place = m_arc.offset_at(from);
  const Place last_place = m_arc.offset_at(to);
  Piece piece{};
  piece.x_is_major = std::abs(direction.x) >= std::abs(direction.y);
  piece.step = (piece.x_is_major ? direction.x : direction.y) < 0 ? -1 : 1;
  set_ellipse(direction, piece);

  std::int64_t end = nearest(piece.x_is_major ? last_place.x : last_place.y);
  piece.from = nearest(piece.x_is_major ? first_place.x : first_place.y);
  if (last.exists) {
    piece.from = continued(piece, last);
  } else if (piece.from != end && piece.jumps(piece.from)) {
    piece.from += piece.step;
  }
  if (piece.from != end && piece.jumps(end - piece.step)) end -= piece.step;
  piece.count = std::max<std::int64_t>((end - piece.from) * piece.step + 1, 0);
  if (piece.count == 0) return piece;
  const std::int64_t minor = piece.minor(end);
  last = {true, piece.x_is_major ? end : minor, piece.x_is_major ? minor : end};
  return piece;
}

std::int64_t ThinArc::continued(const Piece& piece, const Last& last) {
  const std::int64_t major = piece.x_is_major ? last.x : last.y;
  const std::int64_t minor = piece.x_is_major ? last.y : last.x;
  const std::int64_t next = major + piece.step;
  // Where the axis changes, the next step may lead to a pixel too far aside.
  return std::abs(piece.minor(next) - minor) > 1 ? major : next;
}

void ThinArc::set_ellipse(const Place& direction, Piece& piece) const {
  // With x = r cos(t - a) it is r sin(t - a) = -x', which by its sign is the
  // one or the other root of r^2 - x^2; y is a sum of the two. So with y.
  const double products = m_arc.cos_x() * m_arc.cos_y() + m_arc.sin_x() * m_arc.sin_y();
  piece.reach = piece.x_is_major ? std::hypot(m_arc.cos_x(), m_arc.sin_x())
                                 : std::hypot(m_arc.cos_y(), m_arc.sin_y());
  const double square = piece.reach * piece.reach;
  const bool is_positive = piece.x_is_major ? direction.x < 0 : direction.y > 0;
  piece.slope = products / square;
  piece.bend = (is_positive ? 1 : -1) * m_arc.area_of_radii() / square;
}

}  // namespace lumen
