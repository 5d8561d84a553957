#include "lumen/raster/thin_line_p.h"

#include "lumen/geometry/line_pattern_p.h"
#include "lumen/geometry/line_run_p.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/color_mix_p.h"
#include "lumen/raster/line_walk_p.h"
#include "lumen/raster/pixel_access_p.h"
#include "lumen/raster/plain_line_p.h"

namespace lumen {
namespace {

/// Blends pixels, and lets a mask and a line pattern have their say.
class Blender {
 public:
  explicit Blender(const ThinLinePen& pen)
      : m_picture(pen.picture),
        m_pixels(pen.picture.row(0)),
        m_mask(pen.mask),
        m_pattern(pen.pattern) {
    set_color(pen.color);
  }

  /// What pixels are put in from now on.
  void set_color(LM_RGB32 color) {
    m_color = color.word & 0x00FFFFFF;
    m_opacity = opacity_of(color);
  }

  void put(std::ptrdiff_t index) {
    if (!m_pattern.next_is_drawn()) return;
    const std::uint32_t opacity =
        m_mask == nullptr ? m_opacity : scale_255(m_opacity, m_mask[index]);
    lay_on_pixel(m_pixels[index], m_color, opacity);
  }

  /// `ink` is told of every pixel before it is put.
  template <class Ink>
  void draw(const LineRun& run, Ink& ink) {
    walk(run, m_picture, [this, &ink](std::ptrdiff_t index) {
      ink.next(*this);
      put(index);
    });
  }

  void skip(std::int64_t pixels) { m_pattern.skip(pixels); }

 private:
  const Picture& m_picture;
  std::uint32_t* m_pixels;
  const std::uint8_t* m_mask;
  std::uint32_t m_color = 0;
  std::uint32_t m_opacity = 0;
  PatternPhase m_pattern;
};

/// The pen's own colour all along.
struct PlainInk {
  void start(std::int32_t /*segment*/, std::int64_t /*skipped*/, std::int64_t /*length*/) {}
  void next(Blender& /*blender*/) {}
  void end(Blender& /*blender*/) {}
};

/// A colour at each point, mixed between them.
class MixedInk {
 public:
  MixedInk(std::int32_t count, const LM_RGB32* colors)
      : m_last(colors[count - 1]), m_colors(colors) {}

  /// The segment that ends at the point, from the pixel `skipped` of `length`.
  void start(std::int32_t segment, std::int64_t skipped, std::int64_t length) {
    m_ramp = ColorRamp(m_colors[segment - 1], m_colors[segment]);
    m_pixel = static_cast<double>(skipped);
    m_length = static_cast<double>(length);
  }
  void next(Blender& blender) { blender.set_color({m_ramp.at(m_pixel++ / m_length)}); }
  void end(Blender& blender) { blender.set_color(m_last); }

 private:
  LM_RGB32 m_last;
  const LM_RGB32* m_colors;
  ColorRamp m_ramp{{}, {}};
  double m_pixel = 0;
  double m_length = 0;
};

bool is_closed(std::int32_t count, const LM_DCI_Point* points) {
  return count > 2 && points[0].x == points[count - 1].x && points[0].y == points[count - 1].y &&
         (points[1].x != points[0].x || points[1].y != points[0].y);
}

template <class Ink>
void draw_blended(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points, Ink ink) {
  Blender blender(pen);
  for (std::int32_t i = 1; i < count; ++i) {
    const LineRun run = line_run(points[i - 1], points[i], pen.inside);
    const std::int64_t length = line_length(points[i - 1], points[i]);
    ink.start(i, run.skipped, length);
    blender.skip(run.skipped);
    blender.draw(run, ink);
    blender.skip(length - run.skipped - run.count);
  }
  const LM_DCI_Point& last = points[count - 1];
  if (is_closed(count, points) || !pen.inside.contains(last)) return;
  ink.end(blender);
  blender.put(index_of(pen.picture, last.x, last.y));
}

}  // namespace

void draw_thin_polyline(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points) {
  if (opacity_of(pen.color) == 255 && pen.mask == nullptr && pattern_lengths(pen.pattern).empty()) {
    draw_plain_polyline(pen.picture, pen.inside, pen.color.word, count, points);
  } else {
    draw_blended(pen, count, points, PlainInk());
  }
}

void draw_thin_polyline(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points,
                        const LM_RGB32* colors) {
  draw_blended(pen, count, points, MixedInk(count, colors));
}

void draw_pixel(const ThinLinePen& pen, const LM_DCI_Point& point) {
  if (pen.inside.contains(point)) Blender(pen).put(index_of(pen.picture, point.x, point.y));
}

}  // namespace lumen
