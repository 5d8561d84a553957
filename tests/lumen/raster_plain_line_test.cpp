// One-pixel lines against their definition, pixel by pixel: whatever way the
// device takes for a line, it must not be seen.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/lumen/text_art.h"

using text_art::Canvas;
using text_art::Points;

namespace {

constexpr std::int32_t width = 44;
constexpr std::int32_t height = 31;

__extension__ using Wide = __int128;

Wide floor_quotient(Wide numerator, Wide denominator) {
  const Wide quotient = numerator / denominator;
  return numerator % denominator < 0 ? quotient - 1 : quotient;
}

void put_dot(Canvas& canvas, Wide x, Wide y) {
  if (x < 0 || x >= width || y < 0 || y >= height) return;
  const LM_DCI_Point point{static_cast<std::int32_t>(x), static_cast<std::int32_t>(y), 0};
  canvas.device.actions.dot_clipped(&canvas.rendition, &point, nullptr);
}

/// A dot for each pixel of the line but the last: at every whole step of the
/// longer axis the nearest pixel of the other one, ties to the larger coordinate.
void put_line(Canvas& canvas, const LM_DCI_Point& from, const LM_DCI_Point& to) {
  const Wide dx = Wide{to.x} - from.x;
  const Wide dy = Wide{to.y} - from.y;
  const bool x_is_major = (dx < 0 ? -dx : dx) >= (dy < 0 ? -dy : dy);
  const Wide minor = x_is_major ? dy : dx;
  const Wide start = x_is_major ? from.x : from.y;
  const Wide across = x_is_major ? from.y : from.x;
  const Wide sign = (x_is_major ? dx : dy) < 0 ? -1 : 1;
  const Wide length = (x_is_major ? dx : dy) * sign;
  const Wide side = x_is_major ? width : height;
  // Only steps within the picture: there may be billions.
  const Wide first = std::max<Wide>(0, sign > 0 ? -start : start - (side - 1));
  const Wide last = std::min<Wide>(length - 1, sign > 0 ? side - 1 - start : start);
  for (Wide step = first; step <= last; ++step) {
    const Wide along = start + sign * step;
    const Wide other = across + floor_quotient(2 * step * minor + length, 2 * length);
    put_dot(canvas, x_is_major ? along : other, x_is_major ? other : along);
  }
}

bool is_closed(const Points& path) {
  return path.size() > 2 && path.front() == path.back() && path[1] != path[0];
}

/// The polyline by its definition. Transparent pixels are blended in this order.
void put_polyline(Canvas& canvas, const Points& path) {
  for (std::size_t i = 1; i < path.size(); ++i) put_line(canvas, path[i - 1], path[i]);
  if (!is_closed(path)) put_dot(canvas, path.back().x, path.back().y);
}

LM_Contour_Set diamond() {
  auto set = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{20, -4, 0}, {48, 14, 0}, {20, 36, 0}, {-3, 14, 0}};
  set->add_contour(corners, 4);
  return set;
}

class RandomLines {
 public:
  std::int32_t between(std::int64_t low, std::int64_t high) {
    return static_cast<std::int32_t>(
        std::uniform_int_distribution<std::int64_t>(low, high)(m_random));
  }

  /// 1 to 6 points, in one of several neighbourhoods of the picture.
  Points path() {
    const std::int32_t kind = between(0, 5);
    Points path{any_point(kind)};
    for (std::int32_t i = between(0, 5); i > 0; --i) {
      path.push_back(kind == 0 ? near(path.back()) : any_point(kind));
    }
    if (between(0, 7) == 0) path.push_back(path.front());
    return path;
  }

  LM_RGB32 color() {
    const std::uint32_t transparencies[] = {0, 0, 0, 0, 0, 0x01, 0x80, 0xFE, 0xFF};
    const auto bits = static_cast<std::uint32_t>(between(0, 0x00FFFFFF));
    return {transparencies[between(0, 8)] << 24 | bits};
  }

  LM_Clip_Rectangle clip() {
    switch (between(0, 4)) {
      case 0:
        return {between(-5, width), between(-5, width + 5), between(-5, height),
                between(-5, height + 5)};
      case 1:
        return {0, width - 1, 0, height - 1};
      case 2:
        return {between(0, 10), between(30, INT32_MAX), between(INT32_MIN, 10), between(20, 40)};
      default:
        return {};
    }
  }

 private:
  LM_DCI_Point any_point(std::int32_t kind) {
    const std::int32_t extremes[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 30, INT32_MAX - 1, INT32_MAX};
    switch (kind) {
      case 0:
      case 1:
        return {between(0, width - 1), between(0, height - 1), 0};
      case 2:
        return {between(-4, width + 3), between(-4, height + 3), 0};
      case 3: {
        // Rows and columns, many of them along the edges.
        const std::int32_t columns[] = {-1, 0, 13, width - 1, width};
        const std::int32_t rows[] = {-1, 0, 17, height - 1, height};
        return {columns[between(0, 4)], rows[between(0, 4)], 0};
      }
      case 4: {
        const std::int64_t far = std::int64_t{1} << between(6, 31);
        return {between(-far, far - 1), between(-far, far - 1), 0};
      }
      default:
        return {extremes[between(0, 6)], extremes[between(0, 6)], 0};
    }
  }

  LM_DCI_Point near(const LM_DCI_Point& point) {
    return {std::clamp(point.x + between(-3, 3), 0, width - 1),
            std::clamp(point.y + between(-3, 3), 0, height - 1), 0};
  }

  std::mt19937 m_random{7};
};

std::string text_of(const Points& path) {
  std::string text;
  for (const LM_DCI_Point& point : path) {
    text += std::to_string(point.x) + "," + std::to_string(point.y) + " ";
  }
  return text;
}

/// What both forms of the action draw; false when they draw nothing.
bool expect_defined_pixels(const LM_Rendition& rendition, const Points& path) {
  const auto count = static_cast<std::int32_t>(path.size());
  Canvas expected(width, height);
  Canvas clipped(width, height);
  Canvas unclipped(width, height);
  for (Canvas* canvas : {&expected, &clipped, &unclipped}) canvas->rendition = rendition;
  put_polyline(expected, path);
  clipped.device.actions.polyline_clipped(&clipped.rendition, count, path.data());
  unclipped.device.actions.polyline_unclipped(&unclipped.rendition, count, path.data());
  EXPECT_TRUE(clipped.picture == expected.picture) << text_of(path);
  EXPECT_TRUE(unclipped.picture == expected.picture) << text_of(path);
  return !(expected.picture == lumen::Picture(width, height, text_art::white));
}

TEST(PlainLine, HasThePixelsOfItsDefinition) {
  RandomLines random;
  const LM_Contour_Set clip = diamond();
  int seen = 0;
  for (int i = 0; i < 30000 && !HasFailure(); ++i) {
    LM_Rendition rendition;
    rendition.set_color(random.color(), true);
    rendition.set_clip_rectangle(random.clip());
    rendition.set_line_weight(random.between(-1, 1));
    rendition.set_line_pattern(i % 3 == 0 ? 99 : LM_PATTERN_SOLID);
    if (i % 9 == 0) {
      rendition.set_complex_clip(clip, true);
      if (i % 2 == 0) rendition.validate_hard_complex_clip();
    }
    seen += expect_defined_pixels(rendition, random.path()) ? 1 : 0;
  }
  EXPECT_GT(seen, 12000);
}

TEST(PlainLine, BetweenAnyTwoPixelsHasThePixelsOfItsDefinition) {
  LM_Rendition rendition;
  for (std::int32_t x = 0; x < width && !HasFailure(); ++x) {
    for (std::int32_t y = 0; y < height; ++y)
      expect_defined_pixels(rendition, {{19, 12, 0}, {x, y, 0}});
  }
}

TEST(PlainLine, ADotIsOnePixelInsideTheClips) {
  RandomLines random;
  const LM_Contour_Set clip = diamond();
  for (int i = 0; i < 4000; ++i) {
    Canvas canvas(width, height);
    lumen::Picture expected = canvas.picture;
    canvas.rendition.set_clip_rectangle(random.clip());
    const LM_RGB32 color{static_cast<std::uint32_t>(random.between(0, 0x00FFFFFF))};
    canvas.rendition.set_color(color, true);
    // The diamond holds this one wholly, and not that one.
    const bool hidden = i % 8 == 0;
    const LM_DCI_Point point = hidden ? LM_DCI_Point{1, 1, 0} : random.path().front();
    if (hidden) canvas.rendition.set_complex_clip(clip, true);
    const LM_Clip_Rectangle& rectangle = canvas.rendition.clip_rectangle();
    const LM_Clip_Rectangle whole{0, width - 1, 0, height - 1};
    if (!hidden && rectangle.contains(point) && whole.contains(point)) {
      expected.row(point.y)[point.x] = color.word;
    }
    const LM_Dot_Action& action =
        i % 2 == 0 ? canvas.device.actions.dot_clipped : canvas.device.actions.dot_unclipped;
    action(&canvas.rendition, &point, i % 3 == 0 ? &color : nullptr);
    ASSERT_TRUE(canvas.picture == expected) << point.x << "," << point.y;
  }
}

TEST(PlainLine, InAPictureOfOneColumnOrRow) {
  for (const auto& [columns, rows] : {std::pair{1, 40}, std::pair{40, 1}, std::pair{1, 1}}) {
    Canvas canvas(columns, rows);
    canvas.polyline({{0, 0, 0}, {columns - 1, rows - 1, 0}, {0, 0, 0}});
    EXPECT_EQ(canvas.picture, lumen::Picture(columns, rows, text_art::black));
  }
}

}  // namespace
