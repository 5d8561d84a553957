#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/recorded_list.h"

/// Triangle strips of every class to test with, and their outlines by force.
namespace strips {

inline constexpr LogicalPoint kPoints[] = {{1, 2}, {3, 4}, {5, 6}, {7, 8}};
inline constexpr std::int32_t kCount = 4;

/// Vertex data of `count` different values each.
struct Attributes {
  explicit Attributes(std::int32_t count) {
    for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(count < 0 ? 0 : count); ++i) {
      colors.push_back({0xC0 + i});
      triples.push_back({{100 + i, 200 + i, 300 + i}});
      values.push_back(400 + i);
      triples_2.push_back({{500 + i, 600 + i, 700 + i}});
    }
  }

  std::vector<LM_RGB32> colors;
  std::vector<LM_Vertex_Triple> triples;
  std::vector<std::uint32_t> values;
  std::vector<LM_Vertex_Triple> triples_2;
};

/// A strip of class T through `count` points, with every attribute it can have.
template <class T>
std::unique_ptr<T> make(std::int32_t count, const LogicalPoint* points, LM_RGB32 color = {0x10},
                        LumenHeap* heap = nullptr) {
  const Attributes a(count);
  if constexpr (std::is_same_v<T, DL::DLTexturedPolytriangle>) {
    const DL::DLTexturedPolytriangle::Vertices vertices{a.colors.data(), a.triples.data(),
                                                        a.values.data(), a.triples_2.data()};
    return std::unique_ptr<T>(new T(color, count, points, vertices, heap));
  } else if constexpr (std::is_same_v<T, DL::DLGouraudPolytriangle>) {
    return std::unique_ptr<T>(new T(color, count, points, a.colors.data(), heap));
  } else {
    return std::unique_ptr<T>(new T(color, count, points, heap));
  }
}

template <class T>
std::unique_ptr<T> make(const std::vector<LogicalPoint>& points, LM_RGB32 color = {0x10}) {
  return make<T>(static_cast<std::int32_t>(points.size()), points.data(), color);
}

/// The action that fills a strip of class T, without "_clipped".
template <class T>
const char* fill_action() {
  if (std::is_same_v<T, DL::DLTexturedPolytriangle>) return "textured_triangle_strip";
  if (std::is_same_v<T, DL::DLGouraudPolytriangle>) return "gouraud_triangle_strip";
  return "triangle_strip";
}

/// Whether unclipped drawing of class T is unclipped where all lies inside.
template <class T>
inline constexpr bool kTestsItsPoints = std::is_same_v<T, DL::DLTexturedPolytriangle> ||
                                        std::is_same_v<T, DL::DLPolytriangleWithNoBorder>;

/// Points whose x tells which one it is.
inline std::vector<LogicalPoint> numbered_points(std::int32_t count) {
  std::vector<LogicalPoint> points;
  for (std::int32_t i = 0; i < count; ++i) points.push_back({i, i % 2});
  return points;
}

using Edge = std::pair<std::int32_t, std::int32_t>;

inline Edge edge(std::int32_t a, std::int32_t b) {
  return a < b ? Edge(a, b) : Edge(b, a);
}

/// The edges that only one of the strip's triangles has.
inline std::set<Edge> boundary_of_strip(std::int32_t count) {
  std::map<Edge, int> uses;
  for (std::int32_t i = 0; i + 2 < count; ++i) {
    ++uses[edge(i, i + 1)];
    ++uses[edge(i + 1, i + 2)];
    ++uses[edge(i, i + 2)];
  }
  std::set<Edge> boundary;
  for (const auto& [each, times] : uses) {
    if (times == 1) boundary.insert(each);
  }
  return boundary;
}

/// Whether a walk over numbered points is one closed loop, through each point
/// once, along exactly the strip's boundary. The first point is told twice.
inline bool is_outline_of_strip(const std::vector<std::int32_t>& walk, std::int32_t count) {
  if (walk.size() != static_cast<std::size_t>(count) + 1 || walk.front() != walk.back()) {
    return false;
  }
  std::set<Edge> walked;
  for (std::size_t i = 0; i + 1 < walk.size(); ++i) walked.insert(edge(walk[i], walk[i + 1]));
  const std::set<std::int32_t> points(walk.begin(), walk.end());
  return points.size() == static_cast<std::size_t>(count) && walked == boundary_of_strip(count);
}

}  // namespace strips
