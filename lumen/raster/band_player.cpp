#include "lumen/raster/band_player_p.h"

#include "lumen/geometry/coverage_p.h"
#include "lumen/raster/image_blit_p.h"
#include "lumen/raster/pixel_access_p.h"
#include "lumen/raster/plain_line_p.h"
#include "lumen/raster/polyline_p.h"
#include "lumen/raster/raster_scratch_p.h"
#include "lumen/raster/span_pen_p.h"
#include "lumen/raster/thin_line_p.h"

namespace lumen {

void BandPlayer::play(const BandLog& log, std::span<const std::uint32_t> steps) {
  m_log = &log;
  m_next = steps.data();
  const std::uint32_t* const end = m_next + steps.size();
  while (m_next != end) {
    if (BandLog::step_of(*m_next) == BandStep::pixel && replaces_pixels()) {
      put_pixels(end);
    } else {
      play_step(*m_next++);
    }
  }
}

void BandPlayer::put_pixels(const std::uint32_t* end) {
  // Most steps by far, in drawings whose details are too small to be seen.
  std::uint32_t* const pixels = m_picture.row(m_rows.first);
  const std::ptrdiff_t width = m_picture.width();
  const std::uint32_t color = m_ink.word;
  const std::uint32_t* next = m_next;
  do {
    const std::uint32_t word = *next++;
    write_pixel(pixels[BandLog::row_of(word) * width + BandLog::column_of(word)], color);
  } while (next != end && BandLog::step_of(*next) == BandStep::pixel);
  m_next = next;
}

void BandPlayer::play_step(std::uint32_t word) {
  switch (BandLog::step_of(word)) {
    case BandStep::pixel:
      return draw_pixel(word);
    case BandStep::solid:
      return draw_solid(word);
    case BandStep::varied:
      return draw_varied(word);
    case BandStep::state:
      return set_state(BandLog::value_of(word));
    case BandStep::ink:
      m_ink = {*m_next++};
      return;
    case BandStep::polyline:
      return draw_polyline();
    case BandStep::inside_polyline:
      return draw_inside_polyline();
    case BandStep::smooth_polyline:
      return draw_smooth_polyline();
    case BandStep::shaded_polyline:
      return draw_shaded_polyline();
    case BandStep::shaded_strip:
      return draw_shaded_strip();
    case BandStep::textured_strip:
      return draw_textured_strip();
    case BandStep::image:
      return draw_image();
    case BandStep::piece:
      return draw_piece();
  }
}

void BandPlayer::set_state(std::uint32_t number) {
  const BandLog::State& state = m_log->state(number);
  m_inside = state.inside;
  m_mask = state.clip ? scratch().masks.mask(*state.clip, m_picture, m_antialiased) : nullptr;
}

void BandPlayer::draw_pixel(std::uint32_t word) {
  SpanPen(m_picture, m_ink, m_mask).solid(BandLog::column_of(word), row_of(word), 1, 255);
}

void BandPlayer::draw_solid(std::uint32_t word) {
  const std::uint32_t run = *m_next++;
  SpanPen(m_picture, m_ink, m_mask)
      .solid(BandLog::column_of(word), row_of(word), static_cast<std::int32_t>(run & 0xFFFF),
             run >> 16);
}

void BandPlayer::draw_varied(std::uint32_t word) {
  const auto length = static_cast<std::int32_t>(*m_next++);
  const auto* const covers = reinterpret_cast<const std::uint8_t*>(m_next);
  m_next += (length + 3) / 4;
  SpanPen(m_picture, m_ink, m_mask).varied(BandLog::column_of(word), row_of(word), length, covers);
}

void BandPlayer::draw_polyline() {
  const auto [count, pattern] = *take<BandPolyline>();
  const auto* const points = take<LM_DCI_Point>(count);
  // These pixels are the same in whatever rectangle they are looked for.
  const PixelRectangle inside = m_rows.part_of(m_inside);
  if (replaces_pixels() && pattern_lengths(pattern).empty()) {
    draw_plain_polyline(m_picture, inside, m_ink.word, count, points);
  } else {
    draw_thin_polyline({m_picture, inside, m_ink, m_mask, pattern}, count, points);
  }
}

void BandPlayer::draw_inside_polyline() {
  const std::int32_t count = take<BandPoints>()->count;
  draw_plain_inside(m_picture, m_ink.word, count, take<LM_DCI_Point>(count));
}

void BandPlayer::draw_smooth_polyline() {
  const auto [count, margin] = *take<BandSmoothPolyline>();
  SpanPen pen(m_picture, m_ink, m_mask);
  RowPen rows(pen, m_rows);
  const bool is_whole = margin == SmoothLine::whole_margin;
  const PixelRectangle inside = is_whole ? m_inside : m_rows.part_of(m_inside);
  scratch().smooth_line.draw(count, take<LM_DCI_Point>(count), inside, rows, margin);
}

void BandPlayer::draw_shaded_polyline() {
  const auto& line = *take<BandShadedPolyline>();
  const LM_Line_Style style{line.weight, line.pattern, line.start_style, line.end_style, 0};
  const auto* const points = take<LM_DCI_Point>(line.count);
  const auto* const colors = take<LM_RGB32>(line.count);
  lumen::draw_shaded_polyline(target(), style, line.count, points, colors);
}

void BandPlayer::draw_shaded_strip() {
  const std::int32_t count = take<BandStrip>()->count;
  const auto* const points = take<LM_DCI_Point>(count);
  const auto* const colors = take<LM_RGB32>(count);
  scratch().shaded_strip.draw(target(), count, points, colors);
}

void BandPlayer::draw_textured_strip() {
  const auto& strip = *take<BandTexturedStrip>();
  const auto* const points = take<LM_DCI_Point>(strip.count);
  const auto* const colors = take_if<LM_RGB32>(strip.has_colors, strip.count);
  const auto* const first = take_if<LM_Vertex_Triple>(strip.has_first, strip.count);
  const auto* const modulation = take_if<std::uint32_t>(strip.has_modulation, strip.count);
  const auto* const second = take_if<LM_Vertex_Triple>(strip.has_second, strip.count);
  scratch().shaded_strip.draw(
      target(), strip.count, points,
      {colors, first, modulation, second, m_log->pages(strip.pages), strip.wrap});
}

void BandPlayer::draw_piece() {
  const auto& [low, high] = *take<BandPiece>();
  m_pieces.draw(std::uint64_t{high} << 32U | low);
}

void BandPlayer::draw_image() {
  const auto& [corner, place] = *take<BandImage>();
  const LM_Image& image = m_log->image(place);
  const PixelRectangle part = m_rows.part_of(image_pixels(image, corner, m_inside));
  blit_image(image, corner, part, m_mask, m_picture);
}

}  // namespace lumen
