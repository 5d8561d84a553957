#pragma once

#include <rapidcheck.h>

#include <vector>

#include "displaylist/displaylist.h"
#include "tests/support/recorded_list.h"
#include "tests/support/stream_client.h"

/// Random drawables of all classes that streams hold, and some that they do not.
namespace random_drawables {

inline std::vector<LogicalPoint> any_points(std::int32_t spread) {
  const auto coordinate = rc::gen::inRange<std::int32_t>(-spread, spread + 1);
  std::vector<LogicalPoint> points;
  const int count = *rc::gen::inRange(0, 6);
  for (int i = 0; i < count; ++i) points.push_back({*coordinate, *coordinate});
  return points;
}

/// The class `Base` of points, plain or with a rendition.
template <class Base>
DL::Drawable* make_of_points(LM_Rendition* rendition, LM_RGB32 color, std::int32_t spread) {
  const std::vector<LogicalPoint> points = any_points(spread);
  const auto count = static_cast<std::int32_t>(points.size());
  if (rendition == nullptr) return new Base(color, count, points.data());
  return new DL::PalettizedDrawable<Base>(rendition, count, points.data());
}

template <class Base, class... Angles>
DL::Drawable* make_ellipse(LM_Rendition* rendition, LM_RGB32 color, std::int32_t spread,
                           Angles... angles) {
  const auto coordinate = rc::gen::inRange<std::int32_t>(-spread, spread + 1);
  const auto radius = rc::gen::inRange<std::int32_t>(0, 40);
  const LogicalPoint center{*coordinate, *coordinate};
  const std::int32_t major = *radius;
  const std::int32_t minor = *radius;
  DL::DisplayList* const no_list = nullptr;
  if (rendition == nullptr) {
    return new Base(color, center, major, minor, 0.25F, angles..., no_list);
  }
  return new DL::PalettizedDrawable<Base>(rendition, center, major, minor, 0.25F, angles...,
                                          no_list);
}

/// A drawable within about `spread` units, in a colour or with a rendition of
/// the client's, hidden or visible. One of ten is not stored.
inline DL::Drawable* any(StreamClient& client, std::int32_t spread) {
  const auto coordinate = rc::gen::inRange<std::int32_t>(-spread, spread + 1);
  const int index = *rc::gen::inRange(0, 1000);
  LM_Rendition* rendition = *rc::gen::arbitrary<bool>() ? client.at(index) : nullptr;
  const LM_RGB32 color{static_cast<std::uint32_t>(index)};
  const LogicalPoint point{*coordinate, *coordinate};
  DL::Drawable* drawable = nullptr;
  switch (*rc::gen::inRange(0, 10)) {
    case 0:
      drawable = make_of_points<DL::DLPolydot>(rendition, color, spread);
      break;
    case 1:
      drawable = make_of_points<DL::DLPolyline>(rendition, color, spread);
      break;
    case 2:
      drawable = make_of_points<DL::DLPolysegment>(rendition, color, spread);
      break;
    case 3:
      drawable = make_of_points<DL::DLPolytriangle>(rendition, color, spread);
      break;
    case 4:
      drawable = make_ellipse<DL::DLEllipse>(rendition, color, spread);
      break;
    case 5:
      drawable = make_ellipse<DL::DLEllipticalArc>(rendition, color, spread, 0.5F, 2.0F);
      break;
    case 6:
      drawable = make_ellipse<DL::DLEllipticalPie>(rendition, color, spread, 0.5F, 2.0F);
      break;
    case 7:
      drawable = new client::StoredMark(color.word);
      break;
    case 8:
      drawable = new DL::DLColorizedDot(color, point, color);
      break;
    default:
      if (rendition == nullptr) {
        drawable = new DL::DLDot(color, point);
      } else {
        drawable = new DL::PalettizedDrawable<DL::DLDot>(rendition, point);
      }
  }
  if (*rc::gen::inRange(0, 8) == 0) drawable->hide();
  return drawable;
}

}  // namespace random_drawables
