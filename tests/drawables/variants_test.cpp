#include "displaylist/drawables/variants.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "tests/support/memory_stream.h"
#include "tests/support/palette.h"
#include "tests/support/point_printing.h"
#include "tests/support/sample_drawables.h"

// What hiding and palettizing do to every class of the library.

namespace {

std::string dump_of(const DL::Drawable& drawable) {
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  drawable.dump(os, 1, statistics);
  os << statistics.m_cDrawableBytes << ' ' << statistics.m_cEntryBytes;
  return os.str();
}

std::vector<std::string> draw_all_ways(DL::Drawable& drawable, RecordedList& recorded) {
  drawable.draw_unclipped(recorded.list);
  drawable.draw_clipped(recorded.list);
  drawable.draw_unclipped_selection(recorded.list);
  drawable.draw_clipped_selection(recorded.list);
  return recorded.take_lines();
}

/// The names of the actions since the last call.
std::vector<std::string> actions_of(RecordedList& recorded) {
  std::vector<std::string> names;
  for (const auto& call : recorded.recorder->calls()) names.push_back(call.action);
  recorded.recorder->clear();
  return names;
}

std::vector<std::uint32_t> record_of(DL::Drawable& drawable, RecordedList& recorded) {
  MemoryStream stream;
  drawable.serialize_out(&stream, recorded.list);
  return stream.words();
}

bool matches(DL::Drawable& drawable, DL::Drawable& prototype) {
  DL::Search search;
  search.prototype = &prototype;
  search.type = prototype.type();
  search.m_bounds = bounds_of(prototype);
  return drawable.remove(search);
}

/// Texts draw their bounds in a selection pass, hidden or not, and are found by
/// themselves alone.
bool is_text(const DL::Drawable& drawable) {
  return drawable.type() == DL::DLText::my_type();
}

/// What the drawable draws while it is hidden.
std::vector<std::string> expected_when_hidden(const DL::Drawable& drawable,
                                              const std::vector<std::string>& drawn) {
  if (!is_text(drawable)) return {};
  return {drawn.end() - 2, drawn.end()};
}

/// Runs what both the plain and the palettized visible class must show.
void expect_hiding_keeps_everything_but_drawing(DL::Drawable& drawable) {
  RecordedList recorded;
  Palette palette(recorded.list);
  if (drawable.is_palettized()) drawable.set_color_data(palette.at(77));
  const bool was_palettized = drawable.is_palettized();
  const LogicalBounds bounds = bounds_of(drawable);
  const std::string dumped = dump_of(drawable);
  const auto record = record_of(drawable, recorded);
  void* type = drawable.type();
  const auto drawn = draw_all_ways(drawable, recorded);
  ASSERT_FALSE(drawn.empty());

  for (int times = 0; times < 2; ++times) {  // hiding twice is hiding once
    drawable.hide();
    EXPECT_TRUE(drawable.is_hidden());
    EXPECT_EQ(drawable.is_palettized(), was_palettized);
    EXPECT_EQ(bounds_of(drawable), bounds);
    EXPECT_EQ(dump_of(drawable), dumped);
    EXPECT_EQ(record_of(drawable, recorded), record);
    EXPECT_EQ(drawable.type(), type);
    EXPECT_EQ(draw_all_ways(drawable, recorded), expected_when_hidden(drawable, drawn));
    EXPECT_TRUE(matches(drawable, drawable));
  }
  for (int times = 0; times < 2; ++times) {
    drawable.unhide();
    EXPECT_FALSE(drawable.is_hidden());
    EXPECT_EQ(drawable.is_palettized(), was_palettized);
    EXPECT_EQ(draw_all_ways(drawable, recorded), drawn);
  }
}

void expect_clone_is_equal(DL::Drawable& drawable) {
  RecordedList recorded;
  Palette palette(recorded.list);
  if (drawable.is_palettized()) drawable.set_color_data(palette.at(5));
  DL::Drawable* neighbour = &drawable;
  drawable.m_pNext = neighbour;
  drawable.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&recorded));
  const std::unique_ptr<DL::Drawable> copy(drawable.clone());
  drawable.m_pNext = nullptr;
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_EQ(copy->is_hidden(), drawable.is_hidden());
  EXPECT_EQ(copy->is_palettized(), drawable.is_palettized());
  EXPECT_TRUE(copy->m_colorData == drawable.m_colorData);
  EXPECT_EQ(matches(*copy, drawable), !is_text(drawable));
  drawable.unhide();
  copy->unhide();
  EXPECT_EQ(draw_all_ways(*copy, recorded), draw_all_ways(drawable, recorded));
}

template <class T>
class EveryClass : public testing::Test {};
template <class T>
class EveryPalettizedClass : public testing::Test {};

#define DL_LISTED(Class) , DL::Class
template <class First, class... Rest>
struct WithoutFirst {
  using Types = testing::Types<Rest...>;
};
using PalettizedClasses = WithoutFirst<void DL_PALETTIZED_CLASSES(DL_LISTED)>::Types;
using AllClasses =
    WithoutFirst<void DL_PALETTIZED_CLASSES(DL_LISTED) DL_PLAIN_ONLY_CLASSES(DL_LISTED)>::Types;
#undef DL_LISTED
TYPED_TEST_SUITE(EveryClass, AllClasses);
TYPED_TEST_SUITE(EveryPalettizedClass, PalettizedClasses);

TYPED_TEST(EveryClass, IsVisibleAndPlainWhenConstructed) {
  const auto drawable = samples::make_plain<TypeParam>();
  EXPECT_FALSE(drawable->is_hidden());
  EXPECT_FALSE(drawable->is_palettized());
  EXPECT_EQ(drawable->type(), TypeParam::my_type());
}

TYPED_TEST(EveryClass, HiddenKeepsEverythingButDrawing) {
  expect_hiding_keeps_everything_but_drawing(*samples::make_plain<TypeParam>());
}

TYPED_TEST(EveryClass, CloneIsEqualAndUnlinked) {
  expect_clone_is_equal(*samples::make_plain<TypeParam>());
}

TYPED_TEST(EveryClass, CloneOfAHiddenOneIsHidden) {
  const auto drawable = samples::make_plain<TypeParam>();
  drawable->hide();
  expect_clone_is_equal(*drawable);
}

TYPED_TEST(EveryClass, SetsTheColorOfTheWorkingRendition) {
  RecordedList recorded;
  const auto drawable = samples::make_plain<TypeParam>();
  EXPECT_EQ(drawable->rendition(recorded.list), &recorded.list.m_rendition);
  EXPECT_EQ(recorded.list.m_rendition.color(), samples::kColor);
}

TYPED_TEST(EveryClass, DrawsAsUsualInASelectionPass) {
  RecordedList recorded;
  const std::unique_ptr<DL::Drawable> drawable = samples::make_plain<TypeParam>();
  if (is_text(*drawable)) return;  // draws its bounds then; tested with the texts
  drawable->draw_clipped(recorded.list);
  const auto clipped = recorded.take_lines();
  drawable->draw_clipped_selection(recorded.list);
  EXPECT_EQ(recorded.take_lines(), clipped);
  drawable->draw_unclipped(recorded.list);
  const auto unclipped = recorded.take_lines();
  drawable->draw_unclipped_selection(recorded.list);
  EXPECT_EQ(recorded.take_lines(), unclipped);
}

TYPED_TEST(EveryPalettizedClass, HiddenPalettizedKeepsEverythingButDrawing) {
  LM_Rendition rendition;
  expect_hiding_keeps_everything_but_drawing(*samples::make_palettized<TypeParam>(&rendition));
}

TYPED_TEST(EveryPalettizedClass, CloneIsPalettizedWithTheSameRendition) {
  LM_Rendition rendition;
  expect_clone_is_equal(*samples::make_palettized<TypeParam>(&rendition));
}

TYPED_TEST(EveryPalettizedClass, CloneOfAHiddenOneIsHiddenAndPalettized) {
  LM_Rendition rendition;
  const auto drawable = samples::make_palettized<TypeParam>(&rendition);
  drawable->hide();
  expect_clone_is_equal(*drawable);
}

TYPED_TEST(EveryPalettizedClass, DrawsWithItsOwnRenditionAndLeavesTheListsAlone) {
  RecordedList recorded;
  recorded.list.m_rendition.set_color({0xABCDEF}, true);
  LM_Rendition own;
  own.set_color({0x00112233}, true);
  const auto drawable = samples::make_palettized<TypeParam>(&own);
  EXPECT_EQ(drawable->rendition(recorded.list), &own);
  drawable->draw_unclipped(recorded.list);
  drawable->draw_clipped(recorded.list);
  ASSERT_GE(recorded.recorder->calls().size(), 2U);
  for (const auto& call : recorded.recorder->calls()) {
    EXPECT_EQ(call.rendition, &own);
    EXPECT_EQ(call.color.word, 0x00112233U);
  }
  EXPECT_EQ(recorded.list.m_rendition.color().word, 0xABCDEFU);
}

TYPED_TEST(EveryPalettizedClass, TestsAgainstTheClipRectangleOfTheList) {
  LM_Rendition own;
  own.set_clip_rectangle({0, 0, 0, 0});
  const auto palettized = samples::make_palettized<TypeParam>(&own);
  const auto plain = samples::make_plain<TypeParam>();
  for (const std::int32_t size : {1000, 1}) {
    RecordedList recorded;
    recorded.list.m_rendition.set_clip_rectangle({-size, size, -size, size});
    plain->draw_unclipped(recorded.list);
    const auto expected = actions_of(recorded);
    palettized->draw_unclipped(recorded.list);
    EXPECT_EQ(actions_of(recorded), expected) << size;
  }
}

TYPED_TEST(EveryPalettizedClass, AnswersAsItsPlainClass) {
  LM_Rendition rendition;
  const auto palettized = samples::make_palettized<TypeParam>(&rendition);
  const auto plain = samples::make_plain<TypeParam>();
  EXPECT_TRUE(palettized->is_palettized());
  EXPECT_FALSE(palettized->is_hidden());
  EXPECT_EQ(palettized->type(), TypeParam::my_type());
  EXPECT_TRUE(palettized->isKindOf(TypeParam::my_type()));
  EXPECT_EQ(matches(*palettized, *plain), !is_text(*plain));
  EXPECT_EQ(bounds_of(*palettized), bounds_of(*plain));
}

TYPED_TEST(EveryPalettizedClass, PartialCloneIsPalettizedAndVisible) {
  LM_Rendition rendition;
  const auto drawable = samples::make_palettized<TypeParam>(&rendition);
  const std::unique_ptr<DL::Drawable> plain_part(
      samples::make_plain<TypeParam>()->partial_clone(1, 1));
  drawable->hide();
  const std::unique_ptr<DL::Drawable> part(drawable->partial_clone(1, 1));
  ASSERT_EQ(part != nullptr, plain_part != nullptr);
  if (part == nullptr) return;
  EXPECT_TRUE(part->is_palettized());
  EXPECT_FALSE(part->is_hidden());
  EXPECT_EQ(part->m_colorData.m_pRendition, &rendition);
  EXPECT_TRUE(matches(*part, *plain_part));
}

}  // namespace
