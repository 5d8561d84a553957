#include "lumen/raster/plain_line_p.h"

#include <algorithm>
#include <cstddef>

#include "lumen/geometry/line_run_p.h"
#include "lumen/raster/line_walk_p.h"
#include "lumen/raster/pixel_access_p.h"

namespace lumen {
namespace {

// Most lines are a few pixels long and run in all directions. What a line is
// like is therefore arithmetic here wherever it can be: nobody could predict
// the branches, and one mistaken for another costs as much as the whole line.

/// From here on a horizontal line is faster as a run of pixels.
constexpr std::ptrdiff_t shortest_row = 4;

/// -1 for what is below 0, else 0.
std::ptrdiff_t sign_mask(std::ptrdiff_t value) {
  return value >> (8 * sizeof(value) - 1);
}

/// The value, or with a mask of -1 what it is with the other sign.
std::ptrdiff_t turned(std::ptrdiff_t value, std::ptrdiff_t mask) {
  return (value ^ mask) - mask;
}

void swap_where(std::ptrdiff_t mask, std::ptrdiff_t& a, std::ptrdiff_t& b) {
  const std::ptrdiff_t difference = (a ^ b) & mask;
  a ^= difference;
  b ^= difference;
}

/// The steps of a line from one of its ends to the other.
struct Steps {
  std::ptrdiff_t length;  ///< along the major axis, in pixels
  std::ptrdiff_t minor_length;
  std::ptrdiff_t along;   ///< words from a pixel to the next on the major axis
  std::ptrdiff_t across;  ///< the same on the minor one
  std::ptrdiff_t falls;   ///< 1 where the minor coordinate becomes less
};

/// Those of a line inside a picture of the width.
Steps steps_of(std::ptrdiff_t delta_x, std::ptrdiff_t delta_y, std::ptrdiff_t width) {
  std::ptrdiff_t sign_x = sign_mask(delta_x);
  std::ptrdiff_t sign_y = sign_mask(delta_y);
  Steps steps{turned(delta_x, sign_x), turned(delta_y, sign_y), sign_x | 1, turned(width, sign_y),
              0};
  const std::ptrdiff_t is_steep = sign_mask(steps.length - steps.minor_length);
  swap_where(is_steep, steps.length, steps.minor_length);
  swap_where(is_steep, steps.along, steps.across);
  swap_where(is_steep, sign_x, sign_y);
  steps.falls = -sign_y;
  return steps;
}

/// A walk along a line, away from one of its ends.
struct Walk {
  std::uint32_t* pixel;
  std::ptrdiff_t rest;  ///< from 0 on; below it the minor axis is stepped

  void step(std::ptrdiff_t along, std::ptrdiff_t across, const Steps& steps) {
    rest -= 2 * steps.minor_length;
    const std::ptrdiff_t turns = sign_mask(rest);
    pixel += along + (across & turns);
    rest += (2 * steps.length) & turns;
  }
};

/// The pixels between two ends. A line covers the same pixels both ways, so
/// that it is drawn from both ends at once: neither walk waits for the other.
/// They meet in the middle, where both may colour the same pixel.
void draw_between(std::uint32_t* from, std::uint32_t* to, const Steps& steps, std::uint32_t word) {
  if (steps.minor_length == 0 && steps.length >= shortest_row && steps.along * steps.along == 1) {
    return fill_pixels(std::min(from, to), steps.length, word);
  }
  // Ties go to the larger coordinate.
  Walk there{from, steps.length - 1 + steps.falls};
  Walk back{to, steps.length - steps.falls};
  for (std::ptrdiff_t i = steps.length / 2; i > 0; --i) {
    there.step(steps.along, steps.across, steps);
    write_pixel(*there.pixel, word);
    back.step(-steps.along, -steps.across, steps);
    write_pixel(*back.pixel, word);
  }
}

/// A bit for each side of the rectangle that the point lies beyond.
unsigned sides_beyond(const PixelRectangle& inside, const LM_DCI_Point& point) {
  return static_cast<unsigned>(point.x < inside.min_x) |
         static_cast<unsigned>(point.x > inside.max_x) << 1U |
         static_cast<unsigned>(point.y < inside.min_y) << 2U |
         static_cast<unsigned>(point.y > inside.max_y) << 3U;
}

/// A line that is not wholly inside, without its last pixel.
void draw_part(Picture& picture, const PixelRectangle& inside, std::uint32_t word,
               const LM_DCI_Point& from, const LM_DCI_Point& to) {
  const LineRun run = line_run(from, to, inside);
  std::uint32_t* const pixels = picture.row(0);
  if (run.count > 0 && run.x_is_major && run.error_step == 0) {
    const std::int64_t left = run.step_x > 0 ? run.x : run.x - run.count + 1;
    return fill_pixels(picture.row(run.y) + left, run.count, word);
  }
  walk(run, picture, [&](std::ptrdiff_t index) { write_pixel(pixels[index], word); });
}

/// Whether a line has no pixels between its ends.
bool is_short(std::ptrdiff_t delta_x, std::ptrdiff_t delta_y) {
  return static_cast<std::size_t>(delta_x + 1) < 3 && static_cast<std::size_t>(delta_y + 1) < 3;
}

}  // namespace

void draw_plain_inside(Picture& picture, std::uint32_t word, std::int32_t count,
                       const LM_DCI_Point* points) {
  std::uint32_t* const pixels = picture.row(0);
  const std::ptrdiff_t width = picture.width();
  std::ptrdiff_t from_x = points->x;
  std::ptrdiff_t from_y = points->y;
  std::uint32_t* from = pixels + (from_y * width + from_x);
  write_pixel(*from, word);
  const LM_DCI_Point* const end = points + count;
  while (++points != end) {
    const std::ptrdiff_t x = points->x;
    const std::ptrdiff_t y = points->y;
    const std::ptrdiff_t delta_x = x - from_x;
    const std::ptrdiff_t delta_y = y - from_y;
    std::uint32_t* const to = pixels + (y * width + x);
    write_pixel(*to, word);
    if (!is_short(delta_x, delta_y)) {
      draw_between(from, to, steps_of(delta_x, delta_y, width), word);
    }
    from_x = x;
    from_y = y;
    from = to;
  }
}

void draw_plain_clipped(Picture& picture, const PixelRectangle& inside, std::uint32_t word,
                        std::int32_t count, const LM_DCI_Point* points) {
  if (inside.is_empty()) return;
  const LM_DCI_Point* const last = points + (count - 1);
  unsigned from = sides_beyond(inside, *points);
  for (; points != last; ++points) {
    const unsigned to = sides_beyond(inside, points[1]);
    if ((from | to) == 0) {
      draw_plain_inside(picture, word, 2, points);
    } else if ((from & to) == 0) {
      draw_part(picture, inside, word, points[0], points[1]);
    }
    from = to;
  }
  if (from == 0) draw_plain_inside(picture, word, 1, last);
}

}  // namespace lumen
