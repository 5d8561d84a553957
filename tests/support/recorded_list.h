#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "displaylist/displaylist.h"
#include "lumen/recorder.h"

/// A display list that draws into a recorder. Its transform is the identity.
struct RecordedList {
  RecordedList() { list.m_pRenderer = recorder; }

  /// What was drawn since the last call, one line per action.
  std::vector<std::string> take_lines() {
    std::vector<std::string> lines = recorder->lines();
    recorder->clear();
    return lines;
  }

  LM_Handle<lumen::Recorder> recorder = LM_Create<lumen::Recorder>();
  DL::DisplayList list;
};

using LogicalPoint = DL::PointTemplate<long>;
using LogicalBounds = DL::BoundsTemplate<long>;

inline DL::DLPolyline* make_polyline(std::initializer_list<LogicalPoint> points,
                                     LM_RGB32 color = {}) {
  return new DL::DLPolyline(color, static_cast<int>(points.size()), points.begin());
}

inline DL::DLPolygon* make_polygon(std::initializer_list<LogicalPoint> points,
                                   LM_RGB32 color = {}) {
  return new DL::DLPolygon(color, static_cast<int>(points.size()), points.begin());
}

inline LogicalBounds bounds_of(const DL::Drawable& drawable) {
  LogicalBounds bounds;
  drawable.add_bounds(bounds);
  return bounds;
}
