#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumen {

/// The ink of a glyph: closed contours of lines and Bezier curves, filled by
/// the non-zero rule, in ems from the glyph's place: x along the text, y up. The
/// last point of a contour joins the first.
class GlyphOutline {
 public:
  /// Holds every point, those that curves bend to included.
  struct Box {
    float min_x, min_y, max_x, max_y;
  };

  void move_to(float x, float y) { add(Step::move, x, y); }
  void line_to(float x, float y) { add(Step::line, x, y); }
  void quadratic_to(float bend_x, float bend_y, float x, float y) {
    add(Step::quadratic, bend_x, bend_y);
    add_point(x, y);
  }
  void cubic_to(float bend1_x, float bend1_y, float bend2_x, float bend2_y, float x, float y) {
    add(Step::cubic, bend1_x, bend1_y);
    add_point(bend2_x, bend2_y);
    add_point(x, y);
  }

  [[nodiscard]] bool is_empty() const { return m_steps.empty(); }
  /// All 0 for no ink.
  [[nodiscard]] const Box& box() const { return m_box; }

  /// Hands every step to the function of the sink that has its name here.
  template <class Sink>
  void visit(Sink&& sink) const {
    const Point* p = m_points.data();
    for (const Step step : m_steps) {
      switch (step) {
        case Step::move:
          sink.move_to(p[0].x, p[0].y);
          p += 1;
          break;
        case Step::line:
          sink.line_to(p[0].x, p[0].y);
          p += 1;
          break;
        case Step::quadratic:
          sink.quadratic_to(p[0].x, p[0].y, p[1].x, p[1].y);
          p += 2;
          break;
        case Step::cubic:
          sink.cubic_to(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
          p += 3;
          break;
      }
    }
  }

 private:
  enum class Step : std::uint8_t { move, line, quadratic, cubic };
  struct Point {
    float x;
    float y;
  };

  void add(Step step, float x, float y) {
    m_steps.push_back(step);
    add_point(x, y);
  }
  void add_point(float x, float y) {
    if (m_points.empty()) m_box = {x, y, x, y};
    if (x < m_box.min_x) m_box.min_x = x;
    if (y < m_box.min_y) m_box.min_y = y;
    if (x > m_box.max_x) m_box.max_x = x;
    if (y > m_box.max_y) m_box.max_y = y;
    m_points.push_back({x, y});
  }

  std::vector<Step> m_steps;
  std::vector<Point> m_points;
  Box m_box{};
};

}  // namespace lumen
