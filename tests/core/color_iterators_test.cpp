#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "displaylist/core/iterators.h"
#include "displaylist/drawables/dot.h"
#include "displaylist/drawables/variants.h"
#include "tests/support/grove.h"
#include "tests/support/iterator_walk.h"

namespace {

using DL::DisplayListBoundedColorIterator;
using DL::DisplayListColorIterator;
using DL::Drawable;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;
using ColorData = Drawable::ColorData;

constexpr Bounds kNowhere{-1000, -1000, -900, -900};

ColorData word(std::uint64_t bits) {
  return std::bit_cast<ColorData>(bits);
}

/// A grove whose probes have the given colour words.
struct ColoredGrove : Grove {
  explicit ColoredGrove(std::initializer_list<std::uint64_t> words) {
    const auto all = drawables_of(list);
    auto at = all.begin();
    for (const std::uint64_t bits : words) (*at++)->m_colorData = word(bits);
  }
};

TEST(ColorIterator, GoesToTheDrawablesOfTheColorInDrawingOrder) {
  ColoredGrove grove{7, 8, 7, 7};
  DisplayListColorIterator at(&grove.list, word(7));
  EXPECT_EQ(at.m_pCurrent, grove.right->m_pFirst.drawable);
  EXPECT_EQ(at.m_pGroup, grove.right);
  EXPECT_EQ(ids_walked(at), (Ids{1, 3, 4}));
  EXPECT_EQ(at.m_pGroup, nullptr);
}

TEST(ColorIterator, StartsAtTheFirstMatch) {
  ColoredGrove grove{7, 7, 8, 7};
  DisplayListColorIterator at(&grove.list, word(8));
  EXPECT_EQ(at.m_pCurrent, grove.deep->m_pFirst.drawable);
  EXPECT_EQ(at.next(), nullptr);
  EXPECT_EQ(at.init(&grove.list, word(7)), grove.right);
  EXPECT_EQ(at.init(&grove.list, word(8)), grove.deep);
  EXPECT_EQ(at.init(&grove.list, word(9)), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(ColorIterator, ComparesTheLowHalfOfTheColorDataOnly) {
  ColoredGrove grove{0x1'00000007, 0x2'00000008, 0xFFFFFFFF'00000007, 0x7'00000000};
  EXPECT_EQ(ids_walked(DisplayListColorIterator(&grove.list, word(7))), (Ids{1, 3}));
  EXPECT_EQ(ids_walked(DisplayListColorIterator(&grove.list, word(0x7'00000008))), Ids{2});
  EXPECT_EQ(ids_walked(DisplayListColorIterator(&grove.list, word(0))), Ids{4});
}

TEST(ColorIterator, ComparesTheWordOfAPalettizedDrawable) {
  LM_Rendition rendition;
  DL::DisplayList list;
  auto* palettized =
      new DL::PalettizedDrawable<DL::DLDot>(&rendition, DL::PointTemplate<long>{1, 1});
  ColorData data;
  data.m_pRendition = &rendition;
  const LM_RGB32 low = data.m_color;
  auto* plain = new DL::DLDot(low, {2, 2});
  list.add(new DL::DLDot(LM_RGB32{~low.word}, {0, 0}));
  list.add(palettized);
  list.add(plain);
  DisplayListColorIterator at(&list, data);
  EXPECT_EQ(walked(at), (std::vector<Drawable*>{palettized, plain}));
}

TEST(ColorIterator, OfBlackOverAnEmptyListIsAtItsEnd) {
  DL::DisplayList list;
  DisplayListColorIterator at(&list, ColorData());
  EXPECT_FALSE(at.is_at_drawable());
  EXPECT_EQ(at.next(), nullptr);
}

TEST(ColorIterator, OfBlackPassesOverEmptyGroups) {
  Grove grove;
  grove.right->remove_all();
  grove.shallow->remove_all();
  DisplayListColorIterator at(&grove.list, ColorData());
  EXPECT_EQ(at.m_pCurrent, grove.deep->m_pFirst.drawable);
  EXPECT_EQ(ids_walked(at), (Ids{3, 4}));
}

TEST(ColorIterator, NextUntilGoesToADrawableOfAnyColor) {
  ColoredGrove grove{7, 8, 7, 7};
  const auto all = drawables_of(grove.list);
  DisplayListColorIterator at(&grove.list, word(7));
  EXPECT_EQ(at.next_until(all[1]), all[1]);
  EXPECT_EQ(at.next(), all[2]);
  EXPECT_EQ(at.next_until(all[0]), nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

// In the groups that meet a rectangle.

struct BoundedColorIterator : testing::Test {
  BoundedColorIterator() : all(drawables_of(grove.list)) {
    const std::uint64_t words[] = {7, 8, 0x5'00000007, 8};
    for (std::size_t i = 0; i < all.size(); ++i) all[i]->m_colorData = word(words[i]);
  }
  Ids walk(const Bounds& bounds, std::uint64_t bits) {
    return ids_walked(DisplayListBoundedColorIterator(&grove.list, bounds, word(bits)));
  }

  Grove grove;
  std::vector<Drawable*> all;
};

TEST_F(BoundedColorIterator, GoesToWhatIsOfTheColorInGroupsThatMeet) {
  EXPECT_EQ(walk(Bounds::plane(), 7), (Ids{1, 3}));
  EXPECT_EQ(walk(Bounds::plane(), 8), (Ids{2, 4}));
  EXPECT_EQ(walk({-20, 10, -10, 10}, 7), Ids{3});
  EXPECT_EQ(walk({-20, 10, -10, 10}, 8), Ids{2});
  EXPECT_EQ(walk(Grove::k3, 8), Ids{});
  EXPECT_EQ(walk(kNowhere, 8), Ids{});
}

TEST_F(BoundedColorIterator, ComparesTheLowHalfOfTheColorDataOnly) {
  EXPECT_EQ(walk(Bounds::plane(), 0x9'00000007), (Ids{1, 3}));
  EXPECT_EQ(walk(Bounds::plane(), 0x7'00000000), Ids{});
}

TEST_F(BoundedColorIterator, StartsAtTheFirstMatch) {
  DisplayListBoundedColorIterator at(&grove.list, Bounds::plane(), word(8));
  EXPECT_EQ(at.m_pGroup, grove.shallow);
  EXPECT_EQ(at.m_pCurrent, all[1]);
  EXPECT_EQ(at.init(&grove.list, Grove::k3, word(7)), grove.deep);
  EXPECT_EQ(at.m_bounds, Grove::k3);
  EXPECT_EQ(at.next(), nullptr);
  EXPECT_EQ(at.init(&grove.list, Grove::k3, word(8)), nullptr);
}

TEST_F(BoundedColorIterator, NextUntilGoesToADrawableOfAnyColorInThoseGroups) {
  DisplayListBoundedColorIterator at(&grove.list, {-20, 10, 10, 10}, word(7));
  EXPECT_EQ(at.next_until(all[1]), all[1]);
  EXPECT_EQ(at.next(), all[2]);
  EXPECT_EQ(at.next(), nullptr);
  at.init(&grove.list, Grove::k3, word(7));
  EXPECT_EQ(at.next_until(all[1]), nullptr);
}

TEST(BoundedColorIteratorOfBlack, NeverYieldsItsSentinel) {
  DL::DisplayList list;
  DisplayListBoundedColorIterator at(&list, Bounds::plane(), ColorData());
  EXPECT_FALSE(at.is_at_drawable());
  EXPECT_EQ(at.next(), nullptr);
  Grove grove;
  grove.right->remove_all();
  at.init(&grove.list, Bounds::plane(), ColorData());
  EXPECT_EQ(ids_walked(at), (Ids{2, 3, 4}));
}

}  // namespace
