#pragma once

#include <string>
#include <vector>

#include "importers/dxf/model.h"

/// Dimensions and leaders drawn simply, where a file does not draw them.
namespace importers::dxf {

/// What its text says and where, and how large text and arrows are.
struct DimensionStyle {
  std::wstring text;  ///< "<>" stands for what is measured; empty: that alone
  Vertex middle;      ///< of the text
  double text_size;
  double arrow_size;
  double factor;  ///< of what is measured
};

/// A filled triangle whose tip points in the direction.
[[nodiscard]] Hatch arrow(const Vertex& tip, const Vertex& direction, double size);

/// The distance of two points in the direction of an angle, on a line through
/// `place`.
[[nodiscard]] std::vector<Geometry> linear_dimension(const Vertex& first, const Vertex& second,
                                                     const Vertex& place, double angle,
                                                     const DimensionStyle& style);
/// A radius from the centre, or a diameter, to a point of the circle.
[[nodiscard]] std::vector<Geometry> round_dimension(const Vertex& from, const Vertex& to,
                                                    bool is_diameter, const DimensionStyle& style);
/// The angle between two points seen from the centre, on an arc through `place`.
[[nodiscard]] std::vector<Geometry> angular_dimension(const Vertex& center, const Vertex& first,
                                                      const Vertex& second, const Vertex& place,
                                                      const DimensionStyle& style);
/// A coordinate of a feature at the end of a line from it.
[[nodiscard]] std::vector<Geometry> ordinate_dimension(const Vertex& feature, const Vertex& end,
                                                       double value, const DimensionStyle& style);

}  // namespace importers::dxf
