// Worker threads draw leaves of nothing but short polylines with the bands of the
// device: the picture is that of a single thread all the same.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "displaylist/displaylist.h"
#include "lumen/raster_device.h"
#include "tests/support/contours.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/probe_info.h"

namespace {

using DL::DisplayListMultithread;
using Logical = DL::PointTemplate<long>;
using Palettized = DL::PalettizedDrawable<DL::DLPolyline>;

constexpr LM_RGB32 kPaper{0x00FFFFFF};
/// More leaves than the calling thread draws by itself.
constexpr int kManyLeaves = 110;

/// A picture of some size and what is drawn on it: leaves of polylines, most of them
/// small, whose points are told in pixels of it.
class Sheet {
 public:
  Sheet(std::int32_t width, std::int32_t height, unsigned seed)
      : picture(width, height, kPaper), m_random(seed) {
    list.m_pRenderer = device;
    list.m_rendition.set_clip_rectangle({0, width - 1, 0, height - 1});
    hand_made::plant(list, hand_made::inner(0, DL::BoundsTemplate<long>(), 0, {}));
    wide.set_line_weight(5);
    wide.set_color({0x40AA3300}, true);
  }
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  void add_leaf(std::initializer_list<DL::Drawable*> drawables, std::uint32_t flags = 0) {
    DL::BoundsTemplate<long> bounds;
    for (const DL::Drawable* each : drawables) each->add_bounds(bounds);
    DL::Group* leaf = hand_made::leaf(1, bounds, flags, drawables);
    list.m_pRootGroup->append_child(leaf);
    leaf->m_pParent = list.m_pRootGroup;
    list.m_pRootGroup->add_bounds(list.m_pRootGroup->m_bounds);
  }
  void add_leaves(int count) {
    for (int i = 0; i < count; ++i) add_any_leaf();
  }

  lumen::Picture drawn(int workers) {
    picture.clear(kPaper);
    DisplayListMultithread threads(workers);
    threads.m_pDisplayList = &list;
    list.m_pMultithread = &threads;
    list.m_pRootGroup->draw_unclipped(list);
    if (is_drawn_twice) {
      const DL::BoundsTemplate<long> inner{to_logical(0, 0), to_logical(9, 9)};
      list.m_pRootGroup->draw_bounded(list, inner, list.m_pRootGroup->m_bounds);
    }
    threads.WaitForAllThreads();
    list.m_pMultithread = nullptr;
    return picture;
  }

  std::int32_t any(std::int32_t low, std::int32_t high) {
    return std::uniform_int_distribution<std::int32_t>(low, high)(m_random);
  }
  bool one_in(std::int32_t many) { return any(1, many) == 1; }

  /// A point that is shown near the pixel, as far as logical points go.
  [[nodiscard]] Logical to_logical(double x, double y) const {
    return {nearest((x - list.m_offset.x) / list.m_scale.x),
            nearest((y - list.m_offset.y) / list.m_scale.y)};
  }
  /// Of so many points, most within `reach` pixels of a place on or near the sheet.
  DL::DLPolyline* any_polyline(std::int32_t x, std::int32_t y, std::int32_t reach, int count) {
    const std::vector<Logical> points = any_points(x, y, reach, count);
    return new DL::DLPolyline(any_color(), count, points.data());
  }

  lumen::Picture picture;
  LM_Handle<lumen::RasterDevice> device = LM_Create<lumen::RasterDevice>(picture);
  DL::DisplayList list;
  LM_Rendition wide;  ///< of palettized polylines
  bool may_be_far = false;
  bool is_drawn_twice = true;  ///< clipped at last

 private:
  static std::int32_t nearest(double value) {
    return static_cast<std::int32_t>(std::clamp(std::round(value), -2147483648.0, 2147483647.0));
  }
  LM_RGB32 any_color() {
    const auto color = static_cast<std::uint32_t>(m_random()) & 0x00FFFFFF;
    return {one_in(4) ? color | static_cast<std::uint32_t>(any(0, 255)) << 24 : color};
  }
  std::vector<Logical> any_points(std::int32_t x, std::int32_t y, std::int32_t reach, int count) {
    std::vector<Logical> points;
    for (int i = 0; i < count; ++i) {
      const double part = any(0, 3) / 4.0;
      points.push_back(to_logical(x + any(-reach, reach) + part, y + any(-reach, reach) + part));
    }
    if (!may_be_far || count == 0) return points;
    if (one_in(8)) points[0].x = any(INT32_MIN, INT32_MAX);
    if (one_in(16)) points[0].y = one_in(2) ? INT32_MIN : INT32_MAX;
    return points;
  }
  void add_any_leaf() {
    const std::int32_t x = any(-10, picture.width() + 10);
    const std::int32_t y = any(-10, picture.height() + 10);
    const std::int32_t reach = one_in(6) ? any(20, 150) : any(0, 7);
    const auto one = [&] { return any_polyline(x, y, reach, any(1, 6)); };
    const auto flags = one_in(12) ? static_cast<std::uint32_t>(any(0, 3)) : 0;
    if (!one_in(5)) return add_leaf({one(), one(), one()}, flags);
    DL::Drawable* const hidden = one();
    hidden->hide();
    const std::vector<Logical> points = any_points(x, y, reach, 4);
    switch (any(0, 4)) {
      case 0:
        return add_leaf({one(), hidden, one()}, flags);
      case 1:
        delete hidden;
        return add_leaf({one(), new Palettized(&wide, 4, points.data()), one()}, flags);
      case 2:
        return add_leaf({new DL::DLPolygon(any_color(), 4, points.data()), hidden, one()}, flags);
      case 3:
        return add_leaf({hidden, one()}, flags);
      default:
        delete hidden;
        constexpr int counts[] = {0, 1, 255, 256, 257, 1000};
        return add_leaf({one(), any_polyline(x, y, reach, counts[any(0, 5)]), one()}, flags);
    }
  }

  std::mt19937 m_random;
};

void expect_one_picture(Sheet& sheet, std::initializer_list<int> all_workers = {1, 2, 3, 4}) {
  const lumen::Picture expected = sheet.drawn(-1);
  for (const int workers : all_workers) {
    ASSERT_TRUE(sheet.drawn(workers) == expected) << workers << " workers";
  }
}
void expect_one_picture_with_ink(Sheet& sheet) {
  EXPECT_FALSE(sheet.drawn(-1) ==
               lumen::Picture(sheet.picture.width(), sheet.picture.height(), kPaper));
  expect_one_picture(sheet);
}

TEST(LightLeaves, AreShownAsByASingleThreadOnPicturesOfAnySize) {
  constexpr std::int32_t sizes[][2] = {{1, 1},    {90, 1},   {1, 90},  {40, 8},   {40, 9},
                                       {60, 160}, {60, 161}, {200, 7}, {16, 900}, {33, 95}};
  unsigned seed = 100;
  for (const auto& [width, height] : sizes) {
    for (int repeat = 0; repeat < 2; ++repeat) {
      SCOPED_TRACE(testing::Message() << width << " x " << height << ", seed " << ++seed);
      Sheet sheet(width, height, seed);
      sheet.add_leaves(kManyLeaves);
      expect_one_picture_with_ink(sheet);
    }
  }
}

TEST(LightLeaves, AreShownAsByASingleThreadWithAnyLineStyle) {
  for (const std::int32_t weight : {0, 1, 2, 7}) {
    for (const std::int32_t pattern : {+LM_PATTERN_SOLID, 1, 3}) {
      for (const bool antialiased : {false, true}) {
        SCOPED_TRACE(testing::Message()
                     << weight << " wide, pattern " << pattern << (antialiased ? ", smooth" : ""));
        Sheet sheet(70, 120, static_cast<unsigned>(weight * 10 + pattern));
        sheet.device->set_antialiased(antialiased);
        sheet.list.m_rendition.set_line_weight(weight);
        sheet.list.m_rendition.set_line_pattern(pattern);
        sheet.list.m_bWideDots = pattern == 1;
        sheet.add_leaves(80);
        expect_one_picture_with_ink(sheet);
      }
    }
  }
}

TEST(LightLeaves, AreShownAsByASingleThreadAtAnyScale) {
  constexpr double scales[] = {1.0 / 3, -0.25, 0.013, -1.75, 40.0};
  unsigned seed = 300;
  for (const double x : {0.5, -0.01}) {
    for (const double y : scales) {
      SCOPED_TRACE(testing::Message() << "scale " << x << ", " << y << ", seed " << ++seed);
      Sheet sheet(50, 170, seed);
      sheet.list.m_scale = {x, y};
      sheet.list.m_offset = {12.5, y * 77.25};
      sheet.may_be_far = true;
      sheet.add_leaves(kManyLeaves);
      expect_one_picture_with_ink(sheet);
    }
  }
}

TEST(LightLeaves, AreShownAsByASingleThreadWhereCoordinatesLeave32Bits) {
  unsigned seed = 400;
  for (const double scale : {1e3, -1e9, 1e300}) {
    for (const double offset : {0.0, 30.5, -2147483648.0, 1e12}) {
      SCOPED_TRACE(testing::Message() << "scale " << scale << ", offset " << offset);
      Sheet sheet(30, 60, ++seed);
      sheet.add_leaves(80);  // at pixels, before the scale is what it is
      sheet.list.m_scale = {seed % 2 == 0 ? scale : 1.0, scale};
      sheet.list.m_offset = {0.0, offset};
      expect_one_picture(sheet);
    }
  }
}

TEST(LightLeaves, AreShownAsByASingleThreadWithinAnyClip) {
  constexpr LM_Clip_Rectangle clips[] = {
      {5, 40, 15, 16}, {0, 0, 0, 119}, {-50, 500, -50, 500}, {10, 5, 0, 100}, {20, 21, 31, 32}};
  unsigned seed = 500;
  for (const LM_Clip_Rectangle& clip : clips) {
    for (const bool is_complex : {false, true}) {
      SCOPED_TRACE(testing::Message() << "seed " << ++seed << ", rows from " << clip.min_y
                                      << (is_complex ? ", complex" : ""));
      Sheet sheet(60, 120, seed);
      sheet.list.m_rendition.set_clip_rectangle(clip);
      const LM_Contour_Set star = contour_set({regular_polygon(7, 50, 12, 30, 60)});
      if (is_complex) sheet.list.m_rendition.set_complex_clip(star, true);
      sheet.device->set_antialiased(seed % 3 == 0);
      sheet.add_leaves(kManyLeaves);
      expect_one_picture(sheet);
    }
  }
}

TEST(LightLeaves, AreShownAsByASingleThreadInATurnedView) {
  for (const bool secondary : {false, true}) {
    Sheet sheet(80, 100, 601);
    constexpr double turn[] = {0.6, -0.6, 50.0, 0.0, 0.8, 0.8};
    std::copy(std::begin(turn), std::end(turn), sheet.list.m_rotation);
    sheet.list.m_bRotated = true;
    sheet.list.m_bRotationSecondary = secondary;
    sheet.add_leaves(kManyLeaves);
    expect_one_picture_with_ink(sheet);
  }
}

TEST(LightLeaves, AreShownOnPicturesAsTallAsTheyCanBe) {
  for (const bool antialiased : {false, true}) {
    Sheet sheet(3, lumen::Picture::max_side, 701);
    sheet.device->set_antialiased(antialiased);
    sheet.add_leaves(kManyLeaves);
    expect_one_picture(sheet, {1, 2, 3, 4});
  }
}

TEST(LightLeaves, AskInfoOncePerRedraw) {
  for (const int leaves : {20, kManyLeaves}) {
    for (const int workers : {1, 2, 4}) {
      Sheet sheet(40, 160, 801);
      sheet.is_drawn_twice = false;  // no two threads may ask at a time
      std::vector<ProbeInfo> info(static_cast<std::size_t>(leaves), ProbeInfo(true));
      for (int i = 0; i < leaves; ++i) {
        // At the edges of bands and beyond the picture, too.
        DL::DLPolyline* const first = sheet.any_polyline(20, i * 2 - 10, 2, 4);
        DL::DLPolyline* const polyline = sheet.any_polyline(20, i * 2 - 10, 4, 4);
        info[static_cast<std::size_t>(i)].drawn = i % 3 != 0;
        polyline->m_pDrawableInfo = &info[static_cast<std::size_t>(i)];
        sheet.add_leaf({first, polyline});
      }
      const lumen::Picture expected = sheet.drawn(-1);
      EXPECT_TRUE(sheet.drawn(workers) == expected);
      for (const ProbeInfo& each : info) ASSERT_EQ(each.asked, 2) << workers << " workers";
    }
  }
}

}  // namespace
