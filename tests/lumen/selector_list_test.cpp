#include <gtest/gtest.h>

#include "displaylist/displaylist.h"
#include "lumen/selector_device.h"

namespace {

using Bounds = DL::BoundsTemplate<long>;
using Point = DL::PointTemplate<long>;
using Hits = std::vector<lumen::SelectorDevice::Hit>;

/// A list at a scale of 10 pixels a unit, drawn through a selector.
struct SelectorOfAList : testing::Test {
  SelectorOfAList() {
    list.m_pRenderer = device;
    list.m_rendition.set_clip_rectangle({0, 999, 0, 999});
    list.m_rendition.set_selector_data(LM_Create<LM_Selector_Data>());
    list.m_logicalBounds = {0, 0, 100, 100};
    list.set_screen_bounds({0, 0, 1000, 1000});
  }
  DL::Drawable* add_square(int x, int y, int size) {
    const Point corners[] = {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
    auto* square = new DL::DLPolygon({0x00FF0000}, 4, corners);
    list.add(square);
    return square;
  }
  /// What is drawn within a pixel of the device point.
  const Hits& hits_at(std::int32_t x, std::int32_t y) {
    device->set_pick_box({x - 1, x + 1, y - 1, y + 1});
    const Bounds region{x / 10 - 1, y / 10 - 1, x / 10 + 1, y / 10 + 1};
    list.m_pRootGroup->draw_bounded_selection(list, region, region);
    return device->hits();
  }

  LM_Handle<lumen::SelectorDevice> device = LM_Create<lumen::SelectorDevice>();
  DL::DisplayList list;
};

TEST_F(SelectorOfAList, LastHitIsTheTopmostDrawable) {
  const DL::Drawable* lower = add_square(10, 10, 30);
  const DL::Drawable* upper = add_square(20, 20, 30);
  EXPECT_EQ(hits_at(150, 150), (Hits{{lower, 0}}));
  EXPECT_EQ(hits_at(300, 300), (Hits{{lower, 0}, {upper, 0}}));
  EXPECT_EQ(hits_at(450, 450), (Hits{{upper, 0}}));
  EXPECT_EQ(hits_at(600, 600), Hits());
}

TEST_F(SelectorOfAList, HiddenDrawablesAreNotHit) {
  DL::Drawable* square = add_square(10, 10, 30);
  square->hide();
  EXPECT_EQ(hits_at(200, 200), Hits());
  square->unhide();
  EXPECT_EQ(hits_at(200, 200), (Hits{{square, 0}}));
}

TEST_F(SelectorOfAList, DrawableOfSeveralActionsIsOneHit) {
  const Point ends[] = {{10, 10}, {30, 10}, {20, 5}, {20, 30}, {15, 8}, {25, 12}};
  auto* cross = new DL::DLPolysegment({0x00FF0000}, 6, ends);
  list.add(cross);
  EXPECT_EQ(hits_at(200, 100), (Hits{{cross, 0}}));
}

TEST_F(SelectorOfAList, PalettizedDrawableNeedsTheSelectorDataInItsRendition) {
  LM_Rendition own;
  own.set_clip_rectangle({0, 999, 0, 999});
  const Point ends[] = {{10, 10}, {30, 10}};
  auto* line = new DL::PalettizedDrawable<DL::DLPolyline>(&own, 2, ends);
  list.add(line);
  EXPECT_EQ(hits_at(200, 100), (Hits{{nullptr, 0}}));
  own.set_selector_data(list.m_rendition.selector_data());
  EXPECT_EQ(hits_at(200, 100), (Hits{{line, 0}}));
}

TEST_F(SelectorOfAList, FindsTheSameAmongManyAsABruteSearch) {
  std::vector<const DL::Drawable*> squares;
  for (int i = 0; i < 400; ++i) squares.push_back(add_square(i * 37 % 90, i * 53 % 91, 1 + i % 7));
  for (std::int32_t y = 5; y < 1000; y += 90) {
    for (std::int32_t x = 5; x < 1000; x += 45) {
      Hits expected;
      for (int i = 0; i < 400; ++i) {
        const int left = i * 37 % 90 * 10;
        const int top = i * 53 % 91 * 10;
        const int size = (1 + i % 7) * 10;
        if (left <= x + 1 && x - 1 < left + size && top <= y + 1 && y - 1 < top + size) {
          expected.push_back({squares[static_cast<std::size_t>(i)], 0});
        }
      }
      ASSERT_EQ(hits_at(x, y), expected) << x << "," << y;
    }
  }
}

}  // namespace
