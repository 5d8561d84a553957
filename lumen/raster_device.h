#pragma once

#include "displaylist/platform/export.h"
#include "displaylist/platform/renderer.h"
#include "displaylist/platform/rendition.h"
#include "lumen/picture.h"

namespace lumen {

/// The renderer that draws pixels. It draws these actions, each clipped and
/// unclipped: dot, polyline, polygon. The others do nothing.
///
/// A device point (x, y) is the centre of pixel (x, y). Everything is limited
/// to the picture, to the rendition's clip rectangle and to its complex clip,
/// whatever the coordinates and whichever of the two forms is called. Colours
/// are 0xTTRRGGBB; transparent ones are blended.
///
/// - A dot is one pixel, in its own colour if it has one.
/// - A polyline of weight 1 without antialiasing covers a pixel per step along
///   the longer axis of each segment, its end included. Any other polyline is
///   the area of its stroke, with round joints; each end, and each end of a
///   dash, has its style. A flat end reaches half a pixel past the end point,
///   so that both end pixels are covered: from pixel x to pixel x + n, along a
///   row, n + 1 pixels. Round and square ends reach half a weight past it, flat
///   ends of dashes within the line end where they are. The stroke of an even
///   weight lies half a pixel further left and up, which fills whole pixels. A
///   line pattern starts anew with each polyline. A polyline without length is
///   a dot as large as the weight.
///   An opaque solid line of weight 1 is drawn smooth as a line, not as an
///   area: from the pixel of its start up to that of its end.
/// - A polygon is filled by the even-odd rule. Without antialiasing a pixel is
///   inside when its centre is; centres on a right or lower edge are not.
///
/// The same geometry covers the same pixels through any clip rectangle, but
/// for the last bits of antialiased covers.
///
/// Several threads may draw at once, each with another rendition: into
/// disjoint clip rectangles, since a pixel must have one writer at a time.
///
/// Each thread that has drawn keeps until it ends what its next action may
/// need: the room that its largest shape took, and the two complex clips it
/// drew with last, alive, each with a mask of a byte per pixel of the picture.
/// The masks take 64 MB at most, or a single one what it needs.
class LUMEN_API RasterDevice final : public LM_Renderer {
 public:
  /// Draws into the picture, which outlives the device.
  explicit RasterDevice(Picture& picture);

  /// Whether lines and areas have smooth edges; at first they have not. Not
  /// to be changed while something is drawn.
  void set_antialiased(bool antialiased) { m_antialiased = antialiased; }
  [[nodiscard]] bool is_antialiased() const { return m_antialiased; }

  // The actions, called through the table.
  void draw_dot(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color);
  void draw_polyline(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void draw_polygon(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                    std::int32_t reserved);

 private:
  const std::uint8_t* clip_mask(LM_Rendition& rendition) const;

  Picture& m_picture;
  bool m_antialiased = false;
};

}  // namespace lumen
