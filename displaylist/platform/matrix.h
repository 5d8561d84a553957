#pragma once

#include <cstdint>

#include "displaylist/platform/export.h"
#include "displaylist/platform/points.h"

/// An affine transform of points in space, in single precision. At first the
/// identity. Every change applies after what the matrix does already.
class LUMEN_API LM_Matrix {
 public:
  LM_Matrix() { set_identity(); }

  void set_identity();
  /// Turns about an axis by an angle in radians: from x toward y about z, from
  /// y toward z about x, from z toward x about y.
  void rotate_x(float angle);
  void rotate_y(float angle);
  void rotate_z(float angle);
  void translate(float x, float y, float z);

  /// Replaces every point by its image.
  void transform(LM_Point* points, std::int32_t count) const;

 private:
  /// Turns the axis `from` toward the axis `to`.
  void rotate(int from, int to, float angle);

  float m_rows[3][4];  ///< image[i] = rows[i] . (x, y, z, 1)
};
