#pragma once

#include <ostream>

#include "displaylist/core/geometry.h"
#include "displaylist/platform/points.h"

// What GoogleTest prints when values differ.

namespace DL {

template <class T>
std::ostream& operator<<(std::ostream& os, const PointTemplate<T>& p) {
  return os << '(' << p.x << ',' << p.y << ')';
}
template <class T>
std::ostream& operator<<(std::ostream& os, const BoundsTemplate<T>& b) {
  return os << b.min << 'x' << b.max;
}
template <class T>
std::ostream& operator<<(std::ostream& os, const VectorTemplate<T>& v) {
  return os << v.from << "->" << v.to;
}

}  // namespace DL

inline std::ostream& operator<<(std::ostream& os, const LM_DCI_Point& p) {
  return os << '(' << p.x << ',' << p.y << ',' << p.z << ')';
}
inline std::ostream& operator<<(std::ostream& os, const LM_Point& p) {
  return os << '(' << p.x << ',' << p.y << ',' << p.z << ')';
}
