// What a raster device promises those who have it draw in order.

#include <gtest/gtest.h>

#include <thread>

#include "displaylist/platform/ordered_drawing.h"
#include "lumen/raster_device.h"
#include "tests/lumen/text_art.h"

namespace {

constexpr std::int32_t kWidth = 60;
constexpr std::int32_t kHeight = 400;
constexpr LM_RGB32 kPaper{0x00FFFFFF};
constexpr std::uint64_t kNoLimit = UINT64_MAX;

/// A device that is drawn on in order.
struct Ordered {
  lumen::Picture picture{kWidth, kHeight, kPaper};
  LM_Handle<lumen::RasterDevice> device = LM_Create<lumen::RasterDevice>(picture);
  LM_Ordered_Drawing& drawing = *device->ordered_drawing();
  LM_Rendition rendition;

  /// A stripe over the whole height, in a group of the thread.
  void draw_stripe(std::int32_t thread, std::uint64_t number, LM_RGB32 color) {
    drawing.begin_group(thread, number);
    draw_stripe(*drawing.collector(thread), color);
  }
  void draw_stripe(LM_Renderer& renderer, LM_RGB32 color) {
    rendition.set_color(color, true);
    rendition.set_line_weight(20);
    const LM_DCI_Point points[] = {{30, -50, 0}, {35, kHeight + 50, 0}};
    renderer.actions.polyline_clipped(&rendition, 2, points);
  }
  void draw_bands(std::uint64_t limit) {
    drawing.start_bands(limit);
    drawing.draw_bands(0);
    drawing.finish_bands();
  }
  [[nodiscard]] LM_RGB32 middle() const { return picture.pixel(32, kHeight / 2); }
};

TEST(OrderedDrawing, ShowsNothingBeforeBandsAreDrawn) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  ordered.draw_stripe(0, 3, {0x00112233});
  EXPECT_EQ(ordered.middle(), kPaper);
  ordered.draw_bands(kNoLimit);
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00112233});
  ordered.drawing.end();
}

TEST(OrderedDrawing, GoesByNumbersWhoeverDrew) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(2, {}));
  ordered.draw_stripe(1, 7, {0x00000007});
  ordered.draw_stripe(0, 5, {0x00000005});
  ordered.draw_stripe(0, 8, {0x00000008});
  ordered.draw_stripe(2, 9, {0x00000009});
  ordered.draw_bands(kNoLimit);
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00000009});
  ordered.drawing.end();
}

TEST(OrderedDrawing, KeepsGroupsFromTheLimitOnForLater) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  ordered.draw_stripe(0, 1, {0x00000001});
  ordered.draw_stripe(1, 2, {0x00000002});
  ordered.draw_stripe(0, 4, {0x00000004});
  ordered.draw_bands(2);
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00000001});
  ordered.draw_stripe(1, 3, {0x00000003});
  ordered.draw_bands(4);
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00000003});
  ordered.draw_bands(kNoLimit);
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00000004});
  ordered.drawing.end();
}

TEST(OrderedDrawing, ForgetsAtTheEndWhatWasNotDrawn) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  ordered.draw_stripe(0, 1, {0x00000001});
  ordered.drawing.end();
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  ordered.draw_bands(kNoLimit);
  ordered.drawing.end();
  EXPECT_EQ(ordered.middle(), kPaper);
}

TEST(OrderedDrawing, IsForOneAtATime) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  EXPECT_FALSE(ordered.drawing.begin(1, {}));
  ordered.drawing.end();
  EXPECT_TRUE(ordered.drawing.begin(4, {}));
  ordered.drawing.end();
}

TEST(OrderedDrawing, LetsTheDeviceItselfDrawAtOnce) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  ordered.draw_stripe(0, 1, {0x00000001});
  ordered.draw_stripe(*ordered.device, {0x00000002});
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00000002});
  ordered.draw_bands(kNoLimit);
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00000001});
  ordered.drawing.end();
}

TEST(OrderedDrawing, IsFullBeforeMuchMemoryIsTakenAndNotOnceItIsDrawn) {
  Ordered ordered;
  ordered.device->set_antialiased(true);
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  std::uint64_t groups = 0;
  while (!ordered.drawing.is_full(0)) {
    ordered.draw_stripe(0, ++groups, {0x00000001});
    ASSERT_LT(groups, 100'000U);
  }
  EXPECT_GT(groups, 50U);
  EXPECT_FALSE(ordered.drawing.is_full(1));
  ordered.draw_bands(groups);
  EXPECT_TRUE(ordered.drawing.is_full(0));  // the last one is still to be drawn
  ordered.draw_bands(groups + 1);
  EXPECT_FALSE(ordered.drawing.is_full(0));
  ordered.drawing.end();
}

TEST(OrderedDrawing, CollectorsAreTheDeviceButForOneThread) {
  Ordered ordered;
  ordered.device->option_table.set(LM_String("Colour of ink"), {7});
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  LM_Renderer& collector = *ordered.drawing.collector(0);
  EXPECT_TRUE(collector.options.supports_complex_clip);
  EXPECT_TRUE(collector.options.is_for_one_thread);
  EXPECT_EQ(*collector.option_table.find(LM_String("Colour of ink")), LM_Option_Table::Value{7});
  EXPECT_EQ(collector.ordered_drawing(), nullptr);
  EXPECT_EQ(collector.measuring_text_size(), ordered.device->measuring_text_size());
  ordered.drawing.end();
}

/// An image that tells whether it is alive.
class Guest final : public LM_Image {
 public:
  explicit Guest(bool& is_alive) : LM_Image(2, 2), m_is_alive(is_alive) { m_is_alive = true; }
  Guest(const Guest&) = delete;
  Guest& operator=(const Guest&) = delete;
  ~Guest() override { m_is_alive = false; }
  [[nodiscard]] const std::uint32_t* row(std::int32_t) const override { return m_row; }

 private:
  bool& m_is_alive;
  std::uint32_t m_row[2] = {0x00ABCDEF, 0x00ABCDEF};
};

TEST(OrderedDrawing, HoldsWhatIsDrawnUntilItIs) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(1, {}));
  bool is_alive = false;
  {
    const LM_Handle<LM_Image> image = LM_Create<Guest>(is_alive);
    LM_Image* cell = image.get();
    const LM_DCI_Point corner{31, kHeight / 2, 0};
    ordered.drawing.begin_group(0, 1);
    ordered.drawing.collector(0)->actions.image_clipped(&ordered.rendition, &corner, &cell);
    cell = nullptr;
  }
  EXPECT_TRUE(is_alive);
  ordered.draw_bands(kNoLimit);
  EXPECT_EQ(ordered.middle(), LM_RGB32{0x00ABCDEF});
  EXPECT_FALSE(is_alive);
  ordered.drawing.end();
}

TEST(OrderedDrawing, OfManyThreadsDrawsEachBandOnce) {
  Ordered ordered;
  ASSERT_TRUE(ordered.drawing.begin(4, {}));
  for (std::int32_t i = 0; i < 5; ++i) {
    ordered.draw_stripe(i, static_cast<std::uint64_t>(i), {0x80000000});
  }
  ordered.drawing.start_bands(kNoLimit);
  std::vector<std::thread> threads;
  for (std::int32_t i = 0; i < 4; ++i) {
    threads.emplace_back([&ordered, i] { ordered.drawing.draw_bands(i); });
  }
  for (std::thread& thread : threads) thread.join();
  ordered.drawing.finish_bands();
  ordered.drawing.end();

  Ordered alone;
  for (int i = 0; i < 5; ++i) alone.draw_stripe(*alone.device, {0x80000000});
  EXPECT_TRUE(ordered.picture == alone.picture);
}

TEST(OrderedDrawing, IsNotOfferedOnceAnActionIsReplaced) {
  Ordered ordered;
  ordered.device->actions.image_clipped = {};
  EXPECT_EQ(ordered.device->ordered_drawing(), nullptr);
  EXPECT_EQ(LM_Renderer().ordered_drawing(), nullptr);
}

}  // namespace
