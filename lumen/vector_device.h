#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "displaylist/platform/export.h"
#include "lumen/text_renderer.h"

namespace lumen {

class VectorPainter;

enum class VectorFormat : std::uint8_t { pdf, svg };

/// The renderer that writes a PDF or SVG file of one page. It draws every
/// action, and text, clipped and unclipped, within the page, the rendition's clip
/// rectangle and its complex clip, whatever the coordinates.
///
/// The device point (x, y) is the middle of the unit square from (x, y) to
/// (x + 1, y + 1), which RasterDevice has as a pixel: the two show the same
/// drawing at the same place. A unit is 1/96 inch: 1 px of an SVG, 0.75 pt of a
/// PDF. Colours are 0xTTRRGGBB. The page is transparent where nothing is drawn.
///
/// - Dots are unit squares; polygons, strips, markers and ellipses are shapes,
///   the edges of ellipses true curves.
/// - Polylines are stroked paths with round joints, in the middle of which the
///   points lie; patterns start anew with each. The flat end of a solid line
///   reaches half a unit past its point, as a dot does. Two different end
///   styles hold for the whole line; its dashes then have flat ends. A polyline
///   without length is a square, or a disc if it starts round, of its weight.
/// - Each segment of a Gouraud polyline has a gradient of its own. Transparent
///   ones have no joints and no round ends where the transparency varies.
/// - Gouraud strips are meshes in PDF. SVG has none: there each triangle is cut
///   into as many bands as its colours need to come out within two of 255 steps,
///   each with a gradient along it; most need one.
/// - Textured strips are drawn by a RasterDevice, smooth and a pixel per unit,
///   and embedded as images.
/// - Text stays text, which can be searched and copied, however small. Its faces
///   are embedded, with the glyphs that it needs. (Letters larger than 8192 units
///   are filled shapes.) In SVG, each piece of it that runs in one direction in
///   one face is a text element; programs that do not know embedded faces show
///   it in an installed one of the same name.
/// - Images are embedded, each once however often it is drawn; they are held
///   until the device is gone. Their pixels stay square when magnified.
///
/// The device is used by one thread at a time. It keeps the whole drawing in
/// memory until finish().
class LUMEN_API VectorDevice final : public TextRenderer {
 public:
  /// The longest side of a page. (Some PDF viewers show no more than 19200.)
  static constexpr std::int32_t max_side = 65535;

  /// A page of this size, in device units, that is to become the file. What is
  /// wrong with the size or the path is told by finish().
  VectorDevice(VectorFormat format, std::int32_t width, std::int32_t height,
               const std::string& path);
  VectorDevice(const VectorDevice&) = delete;
  VectorDevice& operator=(const VectorDevice&) = delete;
  /// Without finish() there is no file.
  ~VectorDevice() override;

  /// Writes the file, which appears whole or not at all; one that was there is
  /// replaced. Empty on success, else one sentence that names the file and the
  /// reason. What is drawn later is lost; asked again, it tells the same.
  [[nodiscard]] std::string finish();

  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                 std::int32_t count) override;
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                 const unsigned char* characters, std::int32_t count) override;

 private:
  std::unique_ptr<VectorPainter> m_painter;
};

}  // namespace lumen
