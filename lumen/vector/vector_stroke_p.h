#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "displaylist/platform/rendition.h"
#include "lumen/geometry/marker_geometry_p.h"
#include "lumen/vector/vector_arc_p.h"
#include "lumen/vector/vector_page_p.h"

namespace lumen {

/// Strokes lines on the page of a vector device. A single point, or several at
/// one place, are a dot. `count` is at least 1.
class VectorStroker {
 public:
  explicit VectorStroker(VectorPage& page) : m_page(page) {}

  void stroke(std::int32_t count, const LM_DCI_Point* points, const LM_Line_Style& style,
              LM_RGB32 color);
  /// With a colour for each point, interpolated between them.
  void stroke(std::int32_t count, const LM_DCI_Point* points, const LM_Line_Style& style,
              const LM_RGB32* colors);
  /// A drawable arc.
  void stroke(const EllipticalArc& arc, const LM_Line_Style& style, LM_RGB32 color);
  /// The line that a flat arc is; `with_center`: from the centre on.
  void stroke_flat(const EllipticalArc& arc, bool with_center, const LM_Line_Style& style,
                   LM_RGB32 color);
  /// The lines of a marker at a near place, as one stroke.
  void stroke(const MarkerGeometry& marker, const PagePoint& place, std::int32_t weight);

 private:
  /// What an end of a line has beyond the cap that Cairo draws.
  struct End {
    double reach = 0;  ///< how far the line is made longer
    bool has_disc = false;
  };

  void set_style(const LM_Line_Style& style);
  void set_dash_offset(double distance);
  [[nodiscard]] double pattern_length() const;
  /// Whether the pattern has a dash so far along the line.
  [[nodiscard]] bool is_drawn_at(double distance) const;
  [[nodiscard]] auto in_box() const {
    return [this](const PagePoint& point) { return m_box.contains(point); };
  }
  [[nodiscard]] bool is_solid() const { return m_dashes.empty(); }
  [[nodiscard]] bool is_closed() const;
  /// `is_capped`: Cairo draws the cap of that style.
  [[nodiscard]] End end_of(std::int32_t end_style, bool is_capped) const;

  void take(std::int32_t count, const LM_DCI_Point* points);
  [[nodiscard]] bool has_length() const;
  void lengthen(double start, double end);
  void draw_arc(const EllipticalArc& arc, const LM_Line_Style& style, LM_RGB32 color);
  void draw_path(const LM_Line_Style& style, LM_RGB32 color);
  void draw_dot(std::int32_t start_style);
  void draw_disc(const PagePoint& center);
  void draw_line(bool closed);
  void add_line(bool closed);
  void draw_cut_line(bool closed);
  /// Where a line has its disc, of which there is one at most; else null.
  static const PagePoint* disc_of(const End& start, const PagePoint& first, const End& end,
                                  const PagePoint& last);
  template <class Draw>
  void draw_with_disc(const PagePoint* center, LM_RGB32 color, Draw draw);
  void draw_segments(const LM_Line_Style& style, const LM_RGB32* colors, bool joined);
  void draw_joints(const LM_RGB32* colors, bool closed);
  void draw_segment(std::size_t index, const LM_RGB32* colors, double distance);

  VectorPage& m_page;
  double m_width = 1;
  PageBox m_box{};  ///< lines of the width are cut to it
  std::array<double, 6> m_lengths{};
  std::span<const double> m_dashes;
  std::vector<PagePoint> m_path;
  std::vector<LM_RGB32> m_opaque;
};

}  // namespace lumen
