#pragma once

#include <cstdint>

/// Shapes of markers. A value outside the enumeration draws as `point`.
enum LM_Marker_Shape : std::int32_t {
  LM_MARKER_POINT = 0,     ///< a filled disc
  LM_MARKER_PLUS = 1,      ///< two strokes along the axes
  LM_MARKER_CROSS = 2,     ///< two diagonal strokes
  LM_MARKER_STAR = 3,      ///< plus and cross in one
  LM_MARKER_CIRCLE = 4,    ///< this and the next: outlines
  LM_MARKER_SQUARE = 5,    ///< sides along the axes
  LM_MARKER_DIAMOND = 6,   ///< a square on its corner
  LM_MARKER_TRIANGLE = 7,  ///< corner toward smaller y, which is up on a screen
};

/// The marker that stands at each point of the marker actions. Its strokes
/// have the weight of the rendition's line style, solid, and its colour.
struct LM_Marker {
  std::int32_t shape = LM_MARKER_PLUS;  ///< an LM_Marker_Shape
  /// Width and height in device units; an even size takes one more, so that the
  /// marker lies evenly around its point. 1 and less is a dot.
  std::int32_t size = 7;

  friend bool operator==(const LM_Marker&, const LM_Marker&) = default;
};
