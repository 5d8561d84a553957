#pragma once

#include <bit>
#include <cstdint>

#include "displaylist/platform/points.h"

class LM_Image;
class LM_Rendition;

/// Where a vertex of a textured strip lies on a texture: u, v and the page.
/// u and v are the bits of floats, 0 at the left and upper edge of the page, 1
/// at the right and lower one; the page is a number of the rendition's
/// LM_Texture_Pages.
struct LM_Vertex_Triple {
  std::uint32_t values[3];

  static LM_Vertex_Triple at(float u, float v, std::uint32_t page) {
    return {{std::bit_cast<std::uint32_t>(u), std::bit_cast<std::uint32_t>(v), page}};
  }
  [[nodiscard]] float u() const { return std::bit_cast<float>(values[0]); }
  [[nodiscard]] float v() const { return std::bit_cast<float>(values[1]); }
  [[nodiscard]] std::uint32_t page() const { return values[2]; }
};

/// What lies beyond the edges of a texture page.
enum LM_Texture_Wrap : std::int32_t {
  LM_TEXTURE_CLAMP = 0,   ///< the texels of the edge
  LM_TEXTURE_REPEAT = 1,  ///< the page again
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

/// One device pixel; in a colour of its own, or in the rendition's where null.
using LM_Dot_Action = LM_Device_Action<const LM_DCI_Point*, const LM_RGB32*>;
/// Polylines are stroked in the rendition's line style. Strips fill the
/// triangles (p0, p1, p2), (p1, p2, p3), ... Markers stand at each point, as the
/// rendition has them.
using LM_Points_Action = LM_Device_Action<std::int32_t, const LM_DCI_Point*>;
/// A polygon filled by the even-odd rule, the last point joined to the first;
/// the number after the points is 0.
using LM_Polygon_Action = LM_Device_Action<std::int32_t, const LM_DCI_Point*, std::int32_t>;
/// The same as LM_Points_Action with a colour for each vertex, which is
/// interpolated between the vertices; the rendition's colour is not used.
using LM_Colored_Points_Action =
    LM_Device_Action<std::int32_t, const LM_DCI_Point*, const LM_RGB32*>;
/// A strip covered with textures. For each vertex: a ground colour; the place
/// on a texture page; a modulation, or null; the place on a second page, or
/// null. The number is an LM_Texture_Wrap.
///
/// All of them are interpolated over each triangle, but the pages, which are
/// those of its first vertex. A pixel gets the ground colour, over it the
/// first texel, over that the second, each as transparent as it is. The
/// modulation is an LM_RGB32 word: red, green, blue and opacity of the first
/// texel are multiplied by its red, green, blue and opacity, of 255. A page
/// that is missing covers nothing, nor do null colours or null first places; a
/// number that is no LM_Texture_Wrap clamps. Where triangles of one strip
/// overlap, the later one is seen alone.
using LM_Textured_Strip_Action =
    LM_Device_Action<std::int32_t, const LM_DCI_Point*, const LM_RGB32*, const LM_Vertex_Triple*,
                     std::int32_t, const std::uint32_t*, const LM_Vertex_Triple*>;
/// An image at its own size, a device pixel for each of its own: the device
/// point is that of its left upper pixel. The cell holds the shared image and
/// may hold null.
using LM_Image_Action = LM_Device_Action<const LM_DCI_Point*, LM_Image* const*>;
/// Part of an ellipse: centre; radii (x the first, y the second); start, end
/// and rotation in radians; a fill colour or null. The point at angle t is
///
///     x = center.x + radii.x cos t cos rotation - radii.y sin t sin rotation
///     y = center.y + radii.x cos t sin rotation + radii.y sin t cos rotation
///
/// and t runs from start up to end, through 2 pi where end is below start; from
/// a difference of 2 pi - 0.01 on it is the whole ellipse. Radii of 0 flatten
/// it to a line or a dot. Negative radii and angles that are not finite draw
/// nothing.
///
/// elliptical_arc strokes the arc in the rendition's line style and colour; a
/// fill colour first fills the area between the arc and its chord.
/// elliptical_arc_colored fills, without a stroke, the area between the arc and
/// the centre in the fill colour, or where null in the rendition's.
using LM_Arc_Action = LM_Device_Action<const LM_DCI_Point*, const LM_DCI_Point*, float, float,
                                       float, const LM_RGB32*>;
/// The area of elliptical_arc_colored, angles in double precision.
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
/// once, each for another group of drawables, and several of them may be given
/// one rendition: a renderer for worker threads reads it only.
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
