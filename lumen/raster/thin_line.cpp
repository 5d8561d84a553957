#include "lumen/raster/thin_line_p.h"

#include "lumen/geometry/line_pattern_p.h"
#include "lumen/geometry/line_run_p.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/color_mix_p.h"
#include "lumen/raster/pixel_access_p.h"

namespace lumen {
namespace {

std::ptrdiff_t index_of(const Picture& picture, std::int32_t x, std::int32_t y) {
  return static_cast<std::ptrdiff_t>(y) * picture.width() + x;
}

/// Calls `put(index)` for every pixel of the run; indices count pixels of the
/// whole picture. The steps are arithmetic instead of a branch that nobody can
/// predict.
template <class Put>
void walk(const LineRun& run, const Picture& picture, const Put& put) {
  const std::ptrdiff_t along_y = run.step_y * static_cast<std::ptrdiff_t>(picture.width());
  const std::ptrdiff_t major = run.x_is_major ? run.step_x : along_y;
  const std::ptrdiff_t minor = run.x_is_major ? along_y : run.step_x;
  std::ptrdiff_t index = index_of(picture, run.x, run.y);
  std::int64_t error = run.error - run.error_limit;
  const std::int64_t wrap = run.error_step - run.error_limit;
  const std::ptrdiff_t diagonal = major + minor;
  for (std::int64_t i = run.count; i > 0; --i) {
    put(index);
    const std::int64_t straight = error + run.error_step;
    const std::int64_t wrapped = error + wrap;
    index += straight < 0 ? major : diagonal;
    error = straight < 0 ? straight : wrapped;
  }
}

/// Replaces pixels: the common case, opaque and unmasked.
class Painter {
 public:
  explicit Painter(const ThinLinePen& pen)
      : m_picture(pen.picture), m_pixels(pen.picture.row(0)), m_color(pen.color.word) {}

  void put(std::ptrdiff_t index) const { write_pixel(m_pixels[index], m_color); }

  void draw(const LineRun& run) const {
    if (run.x_is_major && run.error_step == 0) return draw_horizontal(run);
    walk(run, m_picture, [pixels = m_pixels, color = m_color](std::ptrdiff_t index) {
      write_pixel(pixels[index], color);
    });
  }

 private:
  void draw_horizontal(const LineRun& run) const {
    const auto left = run.step_x > 0 ? run.x : static_cast<std::int32_t>(run.x - run.count + 1);
    fill_pixels(m_pixels + index_of(m_picture, left, run.y), run.count, m_color);
  }

  const Picture& m_picture;
  std::uint32_t* m_pixels;
  std::uint32_t m_color;
};

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

void draw_solid(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points) {
  const Painter painter(pen);
  for (std::int32_t i = 1; i < count; ++i) {
    painter.draw(line_run(points[i - 1], points[i], pen.inside));
  }
  const LM_DCI_Point& last = points[count - 1];
  if (pen.inside.contains(last)) painter.put(index_of(pen.picture, last.x, last.y));
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

bool replaces_pixels(const ThinLinePen& pen) {
  return pen.color.word >> 24 == 0 && pen.mask == nullptr;
}

}  // namespace

void draw_thin_polyline(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points) {
  if (replaces_pixels(pen) && pattern_lengths(pen.pattern).empty()) {
    draw_solid(pen, count, points);
  } else {
    draw_blended(pen, count, points, PlainInk());
  }
}

void draw_thin_polyline(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points,
                        const LM_RGB32* colors) {
  draw_blended(pen, count, points, MixedInk(count, colors));
}

void draw_pixel(const ThinLinePen& pen, const LM_DCI_Point& point) {
  if (!pen.inside.contains(point)) return;
  const std::ptrdiff_t index = index_of(pen.picture, point.x, point.y);
  if (replaces_pixels(pen)) {
    Painter(pen).put(index);
  } else {
    Blender(pen).put(index);
  }
}

}  // namespace lumen
