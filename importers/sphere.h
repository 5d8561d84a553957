#pragma once

#include <span>
#include <vector>

#include "importers/sketch.h"

/// Geometry whose edges take the shortest way around the globe, laid out on a
/// map: what crosses the antimeridian is cut there, what encloses a pole is
/// closed along the map's border. Longitudes and latitudes in degrees, -180 to
/// 180 in and out; what has others comes back as it is.
namespace importers::sphere {

using Vertices = std::vector<Vertex>;

/// The pieces of a line.
std::vector<Vertices> line_on_map(std::span<const Vertex> line);

/// What became of a ring.
struct Rings {
  /// Each without its closing vertex. Together, filled even-odd, they cover
  /// what the ring encloses.
  std::vector<Vertices> pieces;
  bool is_cut;  ///< edges were added along the border of the map
};

Rings ring_on_map(std::span<const Vertex> ring);

/// Whether an edge runs along the antimeridian or lies on a pole: what cuts a
/// ring adds such edges, and they are no border of anything.
bool is_seam(const Vertex& from, const Vertex& to);

}  // namespace importers::sphere
