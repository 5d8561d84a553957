#pragma once

#include <cstdint>

#include "lumen/raster/band_log_p.h"
#include "lumen/raster_device.h"

namespace lumen {

/// Notes in a log what a raster device would draw. One thread uses it at a time.
///
/// Areas and strokes are noted as the runs of pixels that they cover, so that
/// their geometry is worked out once however many bands they lie in; lines one
/// pixel wide, images and what has a colour for each pixel as they are given.
class BandCollector final : public TextRenderer {
 public:
  /// For pictures that the device draws on.
  explicit BandCollector(Picture& picture);

  /// Forgets everything and goes on in place of the device, with these bands.
  void start(const RasterDevice& device, const BandGrid& grid);
  [[nodiscard]] BandLog& log() { return m_log; }

  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                 std::int32_t count) override {
    m_shapes.draw_text(rendition, start, characters, count);
  }
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                 const unsigned char* characters, std::int32_t count) override {
    m_shapes.draw_text(rendition, start, characters, count);
  }

 private:
  void bind_actions();
  void note_dot(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color);
  void note_polyline(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void note_thin(const LM_Rendition& rendition, std::int32_t count, const LM_DCI_Point* points);
  void note_pieces(std::int32_t count, const LM_DCI_Point* points);
  void note_piece(const LM_DCI_Point* first, const LM_DCI_Point* last);
  void note_crossing(const LM_DCI_Point& from, const LM_DCI_Point& to);
  /// As points where it lies in few bands; false where it had better be drawn.
  bool note_smooth(const LM_Rendition& rendition, std::int32_t count, const LM_DCI_Point* points);
  void note_image(LM_Rendition* rendition, const LM_DCI_Point* corner, LM_Image* const* cell);
  void note_shaded_polyline(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                            const LM_RGB32* colors);
  void note_shaded_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                         const LM_RGB32* colors);
  void note_textured_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                           const LM_RGB32* colors, const LM_Vertex_Triple* first, std::int32_t wrap,
                           const std::uint32_t* modulation, const LM_Vertex_Triple* second);

  BandLog m_log;
  RasterDevice m_shapes;  ///< draws into the log
};

}  // namespace lumen
