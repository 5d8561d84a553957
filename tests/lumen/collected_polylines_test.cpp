// Polylines that are noted for bands of a picture are shown as those drawn at once.

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

#include "displaylist/platform/ordered_drawing.h"
#include "lumen/raster_device.h"

namespace {

constexpr LM_RGB32 kPaper{0x00FFFFFF};
constexpr std::uint64_t kNoLimit = UINT64_MAX;
constexpr std::int32_t kWidth = 60;

using Points = std::vector<LM_DCI_Point>;

/// Polylines and the rendition that they are drawn in, drawn at once and collected.
class Sheet {
 public:
  Sheet(std::int32_t height, unsigned seed) : m_direct(kWidth, height, kPaper), m_random(seed) {
    rendition.set_clip_rectangle({0, kWidth - 1, 0, height - 1});
  }

  std::int32_t any(std::int32_t low, std::int32_t high) {
    return std::uniform_int_distribution<std::int32_t>(low, high)(m_random);
  }
  /// Points of which each is within so many pixels of the one before.
  Points any_points(std::int32_t count, std::int32_t step) {
    Points points{{any(-9, kWidth + 9), any(-9, m_direct.height() + 9), 0}};
    while (std::ssize(points) < count) {
      const std::int32_t x = points.back().x + any(-step, step);
      points.push_back({x, points.back().y + any(-step, step), 0});
    }
    return points;
  }
  void add(Points points) {
    m_colors.push_back({static_cast<std::uint32_t>(m_random()) & 0x00FFFFFF});
    m_lines.push_back(std::move(points));
  }

  void expect_one_picture(bool antialiased) {
    const LM_Handle<lumen::RasterDevice> device = LM_Create<lumen::RasterDevice>(m_direct);
    device->set_antialiased(antialiased);
    draw(*device);
    for (const std::int32_t threads : {1, 2, 4}) {
      lumen::Picture collected(kWidth, m_direct.height(), kPaper);
      const auto other = LM_Create<lumen::RasterDevice>(collected);
      other->set_antialiased(antialiased);
      LM_Ordered_Drawing& drawing = *other->ordered_drawing();
      ASSERT_TRUE(drawing.begin(threads, {}));
      drawing.begin_group(0, 1);
      draw(*drawing.collector(0));
      drawing.start_bands(kNoLimit);
      drawing.draw_bands(0);
      drawing.finish_bands();
      drawing.end();
      ASSERT_TRUE(collected == m_direct) << threads << " threads";
    }
  }

  LM_Rendition rendition;

 private:
  void draw(const LM_Renderer& renderer) {
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
      rendition.set_color(m_colors[i], true);
      renderer.actions.polyline_clipped(&rendition, static_cast<std::int32_t>(m_lines[i].size()),
                                        m_lines[i].data());
    }
  }

  lumen::Picture m_direct;
  std::vector<Points> m_lines;
  std::vector<LM_RGB32> m_colors;
  std::mt19937 m_random;
};

TEST(CollectedPolylines, LookAsThoseDrawnAtOnceHoweverLongTheirSegmentsAre) {
  for (const bool antialiased : {false, true}) {
    // Around what is sooner noted as pixels, and what smooth lines may be cut at.
    for (const std::int32_t step : {1, 2, 5, 30, 34, 54, 57, 70, 300, 5000}) {
      SCOPED_TRACE(testing::Message() << "steps of " << step << (antialiased ? ", smooth" : ""));
      Sheet sheet(230, static_cast<unsigned>(step));
      for (int i = 0; i < 60; ++i) sheet.add(sheet.any_points(sheet.any(1, 12), step));
      sheet.expect_one_picture(antialiased);
    }
  }
}

TEST(CollectedPolylines, MayBeClosed) {
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t step : {2, 20, 55, 90}) {
      Sheet sheet(170, static_cast<unsigned>(step));
      for (int i = 0; i < 40; ++i) {
        Points points = sheet.any_points(sheet.any(2, 6), step);
        points.push_back(points.front());
        sheet.add(points);
      }
      sheet.expect_one_picture(antialiased);
    }
  }
}

TEST(CollectedPolylines, AreCutAtTheClipRectangle) {
  constexpr LM_Clip_Rectangle clips[] = {
      {0, kWidth - 1, 31, 32}, {10, 20, 15, 150}, {30, 30, -5, 500}, {9, 3, 0, 160}};
  for (const LM_Clip_Rectangle& clip : clips) {
    for (const bool antialiased : {false, true}) {
      for (const std::int32_t step : {4, 40, 400}) {
        Sheet sheet(160, static_cast<unsigned>(step));
        sheet.rendition.set_clip_rectangle(clip);
        for (int i = 0; i < 60; ++i) sheet.add(sheet.any_points(sheet.any(1, 8), step));
        sheet.expect_one_picture(antialiased);
      }
    }
  }
}

TEST(CollectedPolylines, MayHavePointsAnywhere) {
  for (const bool antialiased : {false, true}) {
    Sheet sheet(100, 1);
    for (int i = 0; i < 60; ++i) {
      Points points = sheet.any_points(4, 30);
      LM_DCI_Point& far = points[static_cast<std::size_t>(sheet.any(0, 3))];
      far.x = i % 3 == 0 ? sheet.any(INT32_MIN, INT32_MAX) : far.x;
      far.y = i % 2 == 0 ? INT32_MIN : INT32_MAX;
      sheet.add(points);
    }
    sheet.expect_one_picture(antialiased);
  }
}

TEST(CollectedPolylines, CrossAnyEdgeOfBandsByAnyNumberOfPixels) {
  for (std::int32_t length = 1; length <= 40; ++length) {
    for (const std::int32_t sign : {-1, 1}) {
      Sheet sheet(64, static_cast<unsigned>(length));
      for (std::int32_t y = 0; y < 64; y += 3) {
        const std::int32_t x = sheet.any(0, kWidth - 1);
        // The last pixel is in a band of its own now and then.
        sheet.add({{x, y, 0}, {x, y + sign * length, 0}, {x + 3, y + sign * length, 0}});
        sheet.add({{x, y, 0}, {x + length, y + sign, 0}});
        sheet.add({{x, y, 0}, {x - sheet.any(0, 3), y - sign * length, 0}});
      }
      sheet.expect_one_picture(false);
    }
  }
}

}  // namespace
