#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "tests/support/recorded_list.h"

/// Ellipses to test with, and what a device got of them.
namespace ellipses {

inline constexpr float kTurn = 6.2831855F;
inline constexpr float kHalfTurn = kTurn / 2;
inline constexpr float kQuarterTurn = kTurn / 4;
inline constexpr float kInfinity = std::numeric_limits<float>::infinity();
inline constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
inline constexpr std::int32_t kLowest = INT32_MIN;
inline constexpr std::int32_t kHighest = INT32_MAX;
inline constexpr LM_RGB32 kRed{0x00FF0000};
inline constexpr LM_RGB32 kGreen{0x0000FF00};

/// What a constructor of the family takes. The same geometry may be given to
/// every class; those without a part of it do without.
struct Geometry {
  LogicalPoint center{0, 0};
  std::int32_t major = 100;
  std::int32_t minor = 50;
  float rotation = 0.0F;
  float start = 0.0F;
  float end = kTurn;
  LM_RGB32 fill = kGreen;
  bool use_arc = true;
  DL::DisplayList* list = nullptr;
};

inline DL::DLEllipse ellipse(const Geometry& g) {
  return {kRed, g.center, g.major, g.minor, g.rotation, g.list};
}
inline DL::DLEllipticalArc arc(const Geometry& g) {
  return {kRed, g.center, g.major, g.minor, g.rotation, g.start, g.end, g.list};
}
inline DL::DLEllipticalPie pie(const Geometry& g) {
  return {kRed, g.center, g.major, g.minor, g.rotation, g.start, g.end, g.list};
}
inline DL::DLColorizedEllipse colorized(const Geometry& g) {
  return {kRed, g.center, g.major, g.minor, g.rotation, g.start, g.end, g.fill, g.use_arc, g.list};
}

/// The calls of one draw, taken out of the recorder.
inline std::vector<lumen::RecordedCall> drawn(RecordedList& recorded, DL::Drawable& drawable) {
  recorded.recorder->clear();
  drawable.draw_clipped(recorded.list);
  std::vector<lumen::RecordedCall> calls = recorded.recorder->calls();
  recorded.recorder->clear();
  return calls;
}

/// Whether an elliptical action has numbers of which the device draws anything.
inline bool is_drawn_by_device(const lumen::RecordedCall& call) {
  return call.points[1].x >= 0 && call.points[1].y >= 0 &&
         std::all_of(call.angles.begin(), call.angles.end(),
                     [](double angle) { return std::isfinite(angle); });
}

/// Whether a search for `wanted` stops at `drawable`.
inline bool finds(DL::Drawable& wanted, DL::Drawable& drawable) {
  DL::Search search;
  search.prototype = &wanted;
  search.type = wanted.type();
  search.m_bounds = bounds_of(wanted);
  return drawable.remove(search);
}

}  // namespace ellipses
