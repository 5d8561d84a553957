// What covers an area: solids, faces, hatches.

#include <utility>

#include "importers/dxf/hatch.h"
#include "importers/dxf/receiver.h"

namespace importers::dxf {

void Receiver::add_filled(const DL_TraceData& data) {
  std::vector<Vertex> loop;
  // The last two corners are given crosswise.
  for (const int i : {0, 1, 3, 2}) {
    const Vertex corner{data.x[i], data.y[i]};
    if (loop.empty() || !(corner == loop.back())) loop.push_back(corner);
  }
  if (loop.size() > 1 && loop.front() == loop.back()) loop.pop_back();
  add(Hatch{{loop}, true, {}}, true);
}

void Receiver::addTrace(const DL_TraceData& data) {
  add_filled(data);
}

void Receiver::addSolid(const DL_SolidData& data) {
  add_filled(data);
}

void Receiver::add3dFace(const DL_3dFaceData& data) {
  const int hidden_edges = m_record.integer(70, 0);
  Entity face = entity(Polyline(), false);
  std::vector<Polyline> runs;
  bool goes_on = false;
  bool is_closed = true;
  for (int i = 0; i < 4; ++i) {
    const Vertex from{data.x[i], data.y[i]};
    const Vertex to{data.x[(i + 1) % 4], data.y[(i + 1) % 4]};
    if (from == to) continue;
    if ((hidden_edges >> i & 1) != 0) {
      goes_on = is_closed = false;
      continue;
    }
    if (!goes_on) runs.push_back({{{from}}, false});
    runs.back().corners.push_back({to});
    goes_on = true;
  }
  if (is_closed && !runs.empty()) {
    runs.front().corners.pop_back();
    runs.front().is_closed = true;
  }
  face.is_invisible = face.is_invisible || (runs.empty() && !is_closed);
  if (runs.empty()) runs.emplace_back();
  for (Polyline& run : runs) {
    face.geometry = std::move(run);
    entities().push_back(face);
  }
}

void Receiver::addHatch(const DL_HatchData& /*data*/) {
  add(read_hatch(m_record), true);
}

}  // namespace importers::dxf
