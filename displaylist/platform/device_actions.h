#pragma once

#include <cstdint>

#include "displaylist/platform/points.h"

class LM_Image;
class LM_Rendition;

/// Three 32-bit values of a vertex of a textured strip.
struct LM_Vertex_Triple {
  std::uint32_t values[3];
};

/// One entry of a renderer's action table: a function and the context word
/// that it gets as its first argument. An entry left alone does nothing, so
/// that an empty table is always callable.
template <class... Arguments>
struct LM_Device_Action {
  using Function = void (*)(void* context, LM_Rendition* rendition, Arguments... arguments);

  static void do_nothing(void*, LM_Rendition*, Arguments...) {}

  void* context = nullptr;
  Function function = &do_nothing;

  void operator()(LM_Rendition* rendition, Arguments... arguments) const {
    function(context, rendition, arguments...);
  }
};

using LM_Dot_Action = LM_Device_Action<const LM_DCI_Point*, const LM_RGB32*>;
using LM_Points_Action = LM_Device_Action<std::int32_t, const LM_DCI_Point*>;
using LM_Polygon_Action = LM_Device_Action<std::int32_t, const LM_DCI_Point*, std::int32_t>;
using LM_Colored_Points_Action =
    LM_Device_Action<std::int32_t, const LM_DCI_Point*, const LM_RGB32*>;
/// Per vertex: colour, triple, value (or null), second triple (or null); the
/// number between them is 1.
using LM_Textured_Strip_Action =
    LM_Device_Action<std::int32_t, const LM_DCI_Point*, const LM_RGB32*, const LM_Vertex_Triple*,
                     std::int32_t, const std::uint32_t*, const LM_Vertex_Triple*>;
/// The device corner of the image and the cell that holds the shared image.
using LM_Image_Action = LM_Device_Action<const LM_DCI_Point*, LM_Image* const*>;
/// Centre; radii (x the first, y the second); start, end and rotation in
/// radians; fill colour or null.
using LM_Arc_Action = LM_Device_Action<const LM_DCI_Point*, const LM_DCI_Point*, float, float,
                                       float, const LM_RGB32*>;
/// The same arguments, angles in double precision.
using LM_Area_Action = LM_Device_Action<const LM_DCI_Point*, const LM_DCI_Point*, double, double,
                                        double, const LM_RGB32*>;

/// Every device action, by name and shape: `X(name, action type)`.
#define LM_DEVICE_ACTIONS(X)                                     \
  X(dot_clipped, LM_Dot_Action)                                  \
  X(dot_unclipped, LM_Dot_Action)                                \
  X(polyline_clipped, LM_Points_Action)                          \
  X(polyline_unclipped, LM_Points_Action)                        \
  X(gouraud_polyline_clipped, LM_Colored_Points_Action)          \
  X(gouraud_polyline_unclipped, LM_Colored_Points_Action)        \
  X(polygon_clipped, LM_Polygon_Action)                          \
  X(polygon_unclipped, LM_Polygon_Action)                        \
  X(triangle_strip_clipped, LM_Points_Action)                    \
  X(triangle_strip_unclipped, LM_Points_Action)                  \
  X(gouraud_triangle_strip_clipped, LM_Colored_Points_Action)    \
  X(textured_triangle_strip_clipped, LM_Textured_Strip_Action)   \
  X(textured_triangle_strip_unclipped, LM_Textured_Strip_Action) \
  X(marker_clipped, LM_Points_Action)                            \
  X(marker_unclipped, LM_Points_Action)                          \
  X(image_clipped, LM_Image_Action)                              \
  X(image_unclipped, LM_Image_Action)                            \
  X(elliptical_arc, LM_Arc_Action)                               \
  X(elliptical_arc_colored, LM_Arc_Action)                       \
  X(elliptical_area, LM_Area_Action)

/// What a renderer does with device geometry. Points are read only during the
/// call. The unclipped actions are given points inside the rendition's clip
/// rectangle; the clipped ones any. With worker threads several actions run at
/// once, each for another group of drawables and with another rendition.
struct LM_Device_Actions {
#define LM_DECLARE_ACTION(name, type) type name;
  LM_DEVICE_ACTIONS(LM_DECLARE_ACTION)
#undef LM_DECLARE_ACTION
};

/// The action that calls `(device.*Member)(rendition, arguments...)`.
template <auto Member>
struct LM_Bound_Action;

template <class Device, class... Arguments, void (Device::*Member)(LM_Rendition*, Arguments...)>
struct LM_Bound_Action<Member> {
  static void call(void* device, LM_Rendition* rendition, Arguments... arguments) {
    (static_cast<Device*>(device)->*Member)(rendition, arguments...);
  }
};

/// The full table of a device that has a member function for every action; a
/// missing one does not compile.
template <class Device>
LM_Device_Actions LM_Actions_Of(Device* device) {
  LM_Device_Actions actions;
#define LM_BIND_ACTION(name, type) actions.name = {device, &LM_Bound_Action<&Device::name>::call};
  LM_DEVICE_ACTIONS(LM_BIND_ACTION)
#undef LM_BIND_ACTION
  return actions;
}
