#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "lumen/picture.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/band_log_p.h"
#include "lumen/raster/shading_p.h"

namespace lumen {

/// Draws pieces, which were put off, in the rows of a band.
class BandPieces {
 public:
  virtual void draw(std::uint64_t piece) = 0;

 protected:
  BandPieces() = default;
  BandPieces(const BandPieces&) = default;
  BandPieces& operator=(const BandPieces&) = default;
  ~BandPieces() = default;
};

/// Draws what logs have noted for one band.
class BandPlayer {
 public:
  BandPlayer(Picture& picture, const RowRange& rows, bool antialiased, BandPieces& pieces)
      : m_picture(picture), m_rows(rows), m_antialiased(antialiased), m_pieces(pieces) {}

  /// Draws the steps of a group, which are from the log.
  void play(const BandLog& log, std::span<const std::uint32_t> steps);

 private:
  void play_step(std::uint32_t word);
  void set_state(std::uint32_t number);
  /// Draws this and all pixels that follow each other, which are to be replaced.
  void put_pixels(const std::uint32_t* end);
  void draw_pixel(std::uint32_t word);
  void draw_solid(std::uint32_t word);
  void draw_varied(std::uint32_t word);
  void draw_polyline();
  void draw_inside_polyline();
  void draw_smooth_polyline();
  void draw_shaded_polyline();
  void draw_shaded_strip();
  void draw_textured_strip();
  void draw_image();
  void draw_piece();

  /// The next words as `count` things.
  template <class T>
  const T* take(std::int32_t count = 1) {
    const std::size_t words = static_cast<std::size_t>(count) * (sizeof(T) / sizeof(*m_next));
    const auto* const things = reinterpret_cast<const T*>(m_next);
    m_next += words;
    return things;
  }
  /// The same, but null for an array that was not noted.
  template <class T>
  const T* take_if(std::uint32_t has, std::int32_t count) {
    return has != 0 ? take<T>(count) : nullptr;
  }
  [[nodiscard]] std::int32_t row_of(std::uint32_t word) const {
    return m_rows.first + BandLog::row_of(word);
  }
  [[nodiscard]] bool replaces_pixels() const {
    return m_mask == nullptr && opacity_of(m_ink) == 255;
  }
  [[nodiscard]] ShadingTarget target() const {
    return {m_picture, m_inside, m_mask, m_antialiased, m_rows};
  }

  Picture& m_picture;
  RowRange m_rows;
  bool m_antialiased;
  BandPieces& m_pieces;

  const BandLog* m_log = nullptr;
  const std::uint32_t* m_next = nullptr;
  PixelRectangle m_inside{};
  const std::uint8_t* m_mask = nullptr;
  LM_RGB32 m_ink{};
};

}  // namespace lumen
