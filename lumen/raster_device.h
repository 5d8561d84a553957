#pragma once

#include <cstdint>
#include <memory>

#include "displaylist/platform/export.h"
#include "displaylist/platform/rendition.h"
#include "lumen/picture.h"
#include "lumen/text_renderer.h"

namespace lumen {

class BandDrawing;
class BandLog;
class EllipticalArc;
class SpanPen;
enum class ArcArea : std::uint8_t;
struct PixelRectangle;
struct RowRange;

/// The renderer that draws pixels. It draws every device action, and text.
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
/// - A triangle strip covers a pixel once, however many triangles lie there, and
///   with antialiasing leaves no seams between them. Without it a pixel is
///   inside as in a polygon.
/// - A marker lies evenly around its point's pixel, as far to all sides as half
///   its size, rounded down: size 7 and the even size 6 take 7 by 7 pixels. Its
///   strokes have flat ends. A disc is as wide as its pixels, whatever the
///   weight. A dot, which is a marker of size 1 and less, is as large as the
///   weight, that of a disc a pixel. Sizes above 2^18 draw as that.
/// - An image takes a pixel for each of its own, as transparent as that is. The
///   rendition's colour has no part in it.
/// - An elliptical arc of weight 1 without antialiasing covers a pixel per step
///   along the axis that it runs along faster: whole circles look the same from
///   eight sides. Any other is the area of its stroke, as with polylines; a
///   whole ellipse has no ends. A pattern starts at the start of the arc. No
///   pixel is covered twice.
/// - The area of an ellipse holds, without antialiasing, the pixels whose
///   centres are inside or on its edge (up to 1/32 of a pixel outside); straight
///   edges are those of polygons, so that pies that meet there share no pixel.
///   An ellipse with a radius of 0 is a line of weight 1 instead.
/// - A gouraud polyline covers the pixels of a polyline, in colours that change
///   along each segment and are the same across its width: a pixel has the
///   colour of the nearest place on the polyline. The four bytes of the colours
///   are mixed, transparency too. A polyline on a single pixel has its last
///   colour; without antialiasing at weight 1, a closed one has its first
///   colour where it meets itself.
/// - A gouraud triangle strip covers a pixel once, however many triangles lie
///   there; the last of them gives the colour, mixed from its corners as they
///   are near to the centre of the pixel. Without antialiasing a pixel is inside
///   as in a polygon; with it the whole strip has smooth edges and no seams.
///   Triangles without an area draw nothing.
/// - A textured triangle strip covers the same pixels. Without antialiasing a
///   pixel has the texel that its centre lies on, with it a mixture of the four
///   nearest ones. Another wrap than LM_Texture_Wrap knows is a clamp. Where a
///   vertex of a triangle has a u or v that is not finite, that page is missing
///   on the triangle. Ground colours or places that are null cover nothing.
/// - Text is drawn as the outlines of its letters, always with smooth edges;
///   letters that overlap cover a pixel once. Its size, angle and place are
///   exact: letters are not fitted to pixels. Text of a size below 5 is a bar in
///   its place, as high as its small letters, in the colour at 40 % of its
///   opacity.
///
/// The same geometry covers the same pixels through any clip rectangle, but
/// for the last bits of antialiased covers and for pixels whose centre lies
/// within 1/256 pixel of the edge of a wide stroke.
///
/// Several threads may draw at once, anywhere on the picture, each with another
/// rendition or with one that nobody changes meanwhile. Where what they draw
/// overlaps, a pixel has the colours of some of it, laid on each other in some
/// order: opaque ones leave one of their colours, never a mixture of the bits of
/// two. What covers no part of a pixel leaves it alone. Drawing orders nothing
/// else: whoever looks at the picture waits for the threads first.
///
/// Worker threads of a list draw in order instead, through ordered_drawing():
/// the picture is that of one thread, bit for bit. One list at a time draws so.
/// What was collected for a picture that has another size when its bands are
/// drawn is lost. Collectors keep their room, a few MB each, with the device.
///
/// Each thread that has drawn keeps until it ends what its next action may
/// need: the room that its largest shape took, colours of pixels in 6 MB at
/// most, and the two complex clips it drew with last, alive, each with a mask of
/// a byte per pixel of the picture.
/// The masks take 64 MB at most, or a single one what it needs.
class LUMEN_API RasterDevice final : public TextRenderer {
 public:
  /// Draws into the picture, which outlives the device.
  explicit RasterDevice(Picture& picture);
  RasterDevice(const RasterDevice&) = delete;
  RasterDevice& operator=(const RasterDevice&) = delete;
  ~RasterDevice() override;

  /// Whether lines and areas have smooth edges; at first they have not. Not
  /// to be changed while something is drawn.
  void set_antialiased(bool antialiased) { m_antialiased = antialiased; }
  [[nodiscard]] bool is_antialiased() const { return m_antialiased; }

  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                 std::int32_t count) override;
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                 const unsigned char* characters, std::int32_t count) override;

  /// Null once an action of the table is replaced by another.
  [[nodiscard]] LM_Ordered_Drawing* ordered_drawing() override;

  // The actions, called through the table.
  void draw_dot(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color);
  void draw_polyline(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void draw_polygon(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                    std::int32_t reserved);
  void draw_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void draw_markers(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void draw_image(LM_Rendition* rendition, const LM_DCI_Point* corner, LM_Image* const* cell);
  void draw_arc(LM_Rendition* rendition, const LM_DCI_Point* center, const LM_DCI_Point* radii,
                float start, float end, float rotation, const LM_RGB32* fill);
  void draw_arc_colored(LM_Rendition* rendition, const LM_DCI_Point* center,
                        const LM_DCI_Point* radii, float start, float end, float rotation,
                        const LM_RGB32* fill);
  void draw_area(LM_Rendition* rendition, const LM_DCI_Point* center, const LM_DCI_Point* radii,
                 double start, double end, double rotation, const LM_RGB32* fill);
  void draw_gouraud_polyline(LM_Rendition* rendition, std::int32_t count,
                             const LM_DCI_Point* points, const LM_RGB32* colors);
  void draw_gouraud_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                          const LM_RGB32* colors);
  void draw_textured_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                           const LM_RGB32* colors, const LM_Vertex_Triple* first, std::int32_t wrap,
                           const std::uint32_t* modulation, const LM_Vertex_Triple* second);

 private:
  friend class BandCollector;
  friend class BandDrawing;

  /// Notes areas and strokes in the log. The other actions must not be called.
  RasterDevice(Picture& picture, BandLog& log);
  /// Draws dots and thin polylines, and those in the rows alone.
  RasterDevice(Picture& picture, const RowRange& rows);
  void draw_rows(const RowRange& rows);
  void bind_actions();
  /// The pixels that may be drawn.
  [[nodiscard]] PixelRectangle drawn_pixels(const LM_Rendition& rendition) const;
  const std::uint8_t* clip_mask(const LM_Rendition& rendition) const;
  SpanPen span_pen(const LM_Rendition& rendition, LM_RGB32 ink) const;
  // What is not opaque, thin and free of complex clips.
  void blend_dot(const LM_Rendition& rendition, const LM_DCI_Point& point, LM_RGB32 ink);
  void stroke_polyline(const LM_Rendition& rendition, std::int32_t count,
                       const LM_DCI_Point* points);
  /// Fills what `collect(shape)` adds in the rendition's colour.
  template <class Collect>
  void fill_shape(const LM_Rendition& rendition, LM_Fill_Rule rule, const Collect& collect);
  void fill_area(const LM_Rendition& rendition, const EllipticalArc& arc, ArcArea area,
                 LM_RGB32 ink, const PixelRectangle& inside);
  void stroke_arc(const LM_Rendition& rendition, const EllipticalArc& arc,
                  const PixelRectangle& inside);
  template <class Character>
  void fill_text(const LM_Rendition& rendition, const LM_DCI_Point& start,
                 const Character* characters, std::int32_t count);

  Picture& m_picture;
  bool m_antialiased = false;
  BandLog* m_log = nullptr;
  // The rows that dots and thin lines are drawn in.
  std::int32_t m_first_row = INT32_MIN;
  std::int32_t m_last_row = INT32_MAX;
  LM_Device_Actions m_own_actions;
  std::unique_ptr<BandDrawing> m_bands;  ///< null when drawing for bands
};

}  // namespace lumen
