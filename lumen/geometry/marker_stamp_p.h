#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "displaylist/platform/marker.h"
#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"
#include "lumen/geometry/coverage_p.h"
#include "lumen/geometry/marker_geometry_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// What a marker covers, found out once for all points that it stands at and
/// kept for the next ones. Kept per thread.
class MarkerStamp {
 public:
  /// Both outlive the object and are used for other things in between.
  MarkerStamp(Strokes& strokes, Shape& shape) : m_strokes(strokes), m_shape(shape) {}

  /// Colours what the marker covers at each of the points inside the
  /// rectangle, which is not empty. Markers cover each other; none covers a
  /// pixel twice itself. `count` may be any.
  template <class Pen>
  void draw(const LM_Rendition& rendition, bool antialiased, std::int32_t count,
            const LM_DCI_Point* points, const PixelRectangle& inside, Pen& pen) {
    if (!prepare({rendition.marker(), rendition.line_style().weight, antialiased}, count, points,
                 inside)) {
      return;
    }
    for (std::int32_t i = 0; i < count; ++i) {
      if (is_near(points[i], inside)) draw_at(points[i], inside, pen);
    }
  }

  // The stamp is the pen that the marker is drawn with at 0, 0.
  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t cover) {
    m_runs.push_back({x, y, length, static_cast<std::int32_t>(cover), no_covers});
  }
  void varied(std::int32_t x, std::int32_t y, std::int32_t length, const std::uint8_t* covers) {
    m_runs.push_back({x, y, length, 0, m_covers.size()});
    m_covers.insert(m_covers.end(), covers, covers + length);
  }

 private:
  static constexpr std::size_t no_covers = SIZE_MAX;

  struct Key {
    LM_Marker marker;
    std::int32_t weight;
    bool antialiased;

    friend bool operator==(const Key&, const Key&) = default;
  };
  /// Pixels seen from the marker's point, of one cover or each of its own.
  struct Run {
    std::int32_t x;
    std::int32_t y;
    std::int32_t length;
    std::int32_t cover;
    std::size_t covers;
  };

  /// Makes the runs that can be seen at any of the points. False when there are none.
  bool prepare(const Key& key, std::int32_t count, const LM_DCI_Point* points,
               const PixelRectangle& inside);
  /// What of the marker is to be seen at some of the points.
  [[nodiscard]] PixelRectangle window(std::int32_t count, const LM_DCI_Point* points,
                                      const PixelRectangle& inside) const;
  void make(const MarkerGeometry& geometry, std::int32_t weight);
  void make_disc(const MarkerGeometry& geometry);

  [[nodiscard]] bool is_near(const LM_DCI_Point& point, const PixelRectangle& inside) const {
    return point.x >= inside.min_x - m_reach && point.x <= inside.max_x + m_reach &&
           point.y >= inside.min_y - m_reach && point.y <= inside.max_y + m_reach;
  }

  template <class Pen>
  void draw_at(const LM_DCI_Point& point, const PixelRectangle& inside, Pen& pen) const {
    for (const Run& run : m_runs) {
      const std::int32_t y = point.y + run.y;
      if (y < inside.min_y || y > inside.max_y) continue;
      const std::int32_t x = point.x + run.x;
      const std::int32_t from = std::max(x, inside.min_x);
      const std::int32_t length = std::min(x + run.length, inside.max_x + 1) - from;
      if (length <= 0) continue;
      if (run.covers == no_covers) {
        pen.solid(from, y, length, static_cast<std::uint32_t>(run.cover));
      } else {
        pen.varied(from, y, length, m_covers.data() + run.covers + (from - x));
      }
    }
  }

  Key m_key{};
  PixelRectangle m_window{0, 0, -1, -1};  ///< of the runs
  std::int32_t m_reach = 0;               ///< how far they may be from the point
  std::vector<Run> m_runs;
  std::vector<std::uint8_t> m_covers;
  Strokes& m_strokes;
  Shape& m_shape;
};

}  // namespace lumen
