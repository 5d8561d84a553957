#include "lumen/geometry/thin_pixels_p.h"

#include "lumen/geometry/line_run_p.h"
#include "lumen/geometry/thin_arc_p.h"

namespace lumen {

void ThinPixels::add_polyline(std::int32_t count, const LM_DCI_Point* points) {
  for (std::int32_t i = 1; i < count; ++i) add_line(points[i - 1], points[i]);
  const LM_DCI_Point& last = points[count - 1];
  if (m_inside.contains(last)) pixel(last.x, last.y);
}

void ThinPixels::add_line(const LM_DCI_Point& from, const LM_DCI_Point& to) {
  const LineRun run = line_run(from, to, m_inside);
  skip(run.skipped);
  std::int32_t x = run.x;
  std::int32_t y = run.y;
  std::int64_t error = run.error;
  for (std::int64_t i = 0; i < run.count; ++i) {
    pixel(x, y);
    error += run.error_step;
    const bool steps_aside = error >= run.error_limit;
    if (steps_aside) error -= run.error_limit;
    if (run.x_is_major || steps_aside) x += run.step_x;
    if (!run.x_is_major || steps_aside) y += run.step_y;
  }
  skip(line_length(from, to) - run.skipped - run.count);
}

void ThinPixels::add_arc(const EllipticalArc& arc) {
  ThinArc(arc).walk(m_inside, *this);
}

void ThinPixels::mirror_right_half() {
  std::erase_if(m_places, [](std::uint64_t place) { return coordinate(place) < 0; });
  const std::size_t count = m_places.size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t x = coordinate(m_places[i]);
    const std::int32_t y = coordinate(m_places[i] >> 32);
    if (x > 0) m_places.push_back(biased(y) << 32 | biased(-x));
  }
}

}  // namespace lumen
