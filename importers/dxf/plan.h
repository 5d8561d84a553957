#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "displaylist/platform/font.h"
#include "displaylist/platform/points.h"
#include "importers/dxf/curves.h"
#include "importers/mapping.h"

/// What is to be drawn, in the coordinates of the drawing or of a block: the
/// step between the entities of a file and the drawables of a list.
namespace importers::dxf {

/// What lines are drawn with.
struct Pen {
  LM_RGB32 color{0};
  std::int32_t pattern = 0;  ///< an LM_Line_Pattern

  friend bool operator==(const Pen&, const Pen&) = default;
};

struct Stroke {
  std::vector<Vertex> points;  ///< 2 at least
};

/// Segments of their own, of two points each.
struct Segments {
  std::vector<Vertex> points;
};

struct Dot {
  Vertex at;
};

/// A polygon; its holes are joined to it by bridges.
struct Area {
  std::vector<Vertex> points;  ///< 3 at least
};

/// A run of text that is drawn as a whole.
struct Label {
  Vertex start;         ///< on its baseline
  double em;            ///< the height of the font's em square
  double rotation;      ///< as a list takes it, radians
  double width_factor;  ///< of the letters
  LM_Font font;
  std::wstring text;
};

/// A ray, before it is known where it is cut.
struct Beam {
  Vertex base;
  Vertex direction;
  bool both_ways;
};

struct Plan;

/// Another plan: point * scale + offset.
struct Nest {
  std::shared_ptr<const Plan> plan;
  Vertex scale;
  Vertex offset;
};

struct Shape {
  Pen pen;
  Extent extent;
  std::variant<Stroke, Segments, Arc, Dot, Area, Label, Beam, Nest> what;
};

struct Plan {
  std::vector<Shape> shapes;  ///< in drawing order
  Extent extent;              ///< of them, but for beams
};

/// Makes strokes of the beams, as long as they cross the plan's extent, and
/// leaves out those that miss it.
void cut_beams(Plan& plan);

}  // namespace importers::dxf
