#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "files/drawing_file.h"
#include "tests/files/file_checks.h"
#include "tests/support/sample_drawables.h"
#include "tests/support/temporary_locale.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// The drawable of the list at a place, as what it is.
template <class T>
T& nth(DL::DisplayList& list, std::size_t n) {
  return static_cast<T&>(*drawables_of(list).at(n));
}

TEST(Contents, PropertiesComeBack) {
  const files::Properties properties{
      2.5, -1e9, 1e-9, {"Wände", "", "0"}, {{"title", "A house"}, {"", ""}}};
  DL::DisplayList list;
  EXPECT_EQ(file_checks::read_back(file_checks::written(list, properties)).properties, properties);
}

TEST(Contents, AnEmptyListAndOneWithoutRootComeBack) {
  DL::DisplayList list;
  files::Contents contents = file_checks::read_back(file_checks::written(list));
  EXPECT_EQ(file_checks::describe(*contents.list), file_checks::describe(list));
  DL::DisplayList rootless;
  delete std::exchange(rootless.m_pRootGroup, nullptr);
  contents = file_checks::read_back(file_checks::written(rootless));
  EXPECT_EQ(contents.list->m_pRootGroup, nullptr);
  EXPECT_NE(contents.list->add(new DL::DLDot({}, {1, 2})), nullptr);
}

TEST(Contents, SettingsComeBack) {
  DL::DisplayList list;
  list.m_logicalBounds = {-5, -6, 700, 800};
  list.m_yAspect = 1.25;
  list.m_bCheckOverflow = list.m_bWideDots = list.m_bGrayscale = list.m_bAlternateScale = true;
  list.m_cMaxOpenDrawables = 17;
  list.m_cMaxLevel = 9;
  list.m_rendition.set_line_weight(4);
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  const DL::DisplayList& read = *contents.list;
  EXPECT_EQ(read.m_logicalBounds, list.m_logicalBounds);
  EXPECT_EQ(read.m_yAspect, 1.25);
  EXPECT_TRUE(read.m_bCheckOverflow && read.m_bWideDots && read.m_bGrayscale);
  EXPECT_TRUE(read.m_bAlternateScale);
  EXPECT_EQ(read.m_cMaxOpenDrawables, 17);
  EXPECT_EQ(read.m_cMaxLevel, 9);
  EXPECT_EQ(read.m_rendition.line_style().weight, 4);
  EXPECT_EQ(read.m_heap, contents.heap.get());
  EXPECT_EQ(read.m_pfnIndexToRendition, nullptr);
  EXPECT_EQ(read.m_pfnCreateDrawable, nullptr);
  EXPECT_EQ(read.m_pfnPostRead, nullptr);
}

TEST(Contents, SettingsOfAnyValueComeBack) {
  for (const std::int32_t value : {INT32_MIN, -1, 0, 32, INT32_MAX}) {
    DL::DisplayList list;
    for (std::int32_t i = 0; i < 10; ++i) list.add(new DL::DLDot({}, {i * 1000, i}));
    list.m_cMaxOpenDrawables = value;
    list.m_cMaxLevel = value;
    list.m_openLevel = value;
    const files::Contents contents = file_checks::read_back(file_checks::written(list));
    ASSERT_NE(contents.list, nullptr);
    DL::DisplayList& read = *contents.list;
    EXPECT_EQ(read.m_cMaxOpenDrawables, value);
    EXPECT_EQ(read.m_cMaxLevel, value);
    EXPECT_EQ(read.m_openLevel, value);
    for (std::int32_t i = 0; i < 300; ++i) {
      EXPECT_NE(read.add(new DL::DLDot({}, {i * 7919 % 1000 * 1000, i})), nullptr);
    }
    EXPECT_EQ(drawables_of(read).size(), 310U);
  }
}

TEST(Contents, AListThatWasReadFromAStreamGoesOnTheSame) {
  // Its open group counts as level 0, however deep it lies, and as empty.
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 3;
  for (std::int32_t i = 0; i < 20; ++i) list.add(new DL::DLDot({}, {i * 7919 % 1000 * 1000, i}));
  ASSERT_GT(list.m_openLevel, 0);
  list.m_openLevel = 0;
  list.m_openBounds = {};
  files::Contents contents = file_checks::read_back(file_checks::written(list));
  EXPECT_EQ(contents.list->m_openLevel, 0);
  for (DL::DisplayList* to : {&list, contents.list.get()}) {
    for (std::int32_t i = 0; i < 50; ++i) to->add(new DL::DLDot({}, {i * 104729 % 1000 * 1000, i}));
  }
  EXPECT_EQ(file_checks::describe(*contents.list), file_checks::describe(list));
}

TEST(Contents, RenditionsComeBackWhole) {
  LM_Rendition rendition;
  rendition.set_color(LM_RGB32{0x80010203}, true);
  rendition.set_line_weight(7);
  rendition.set_line_pattern(LM_PATTERN_DASH_DOT);
  rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  rendition.set_marker({LM_MARKER_STAR, 11});
  rendition.set_text_size(12.5F);
  rendition.set_text_rotation(1.5F);
  rendition.set_text_width_scale(0.5F);
  rendition.set_shared_font(LM_Font(LM_Font_Description{.name = L"Serif", .given = 1}));
  rendition.set_clip_rectangle({1, 2, 3, 4});
  DL::DisplayList list;
  list.add(new DL::PalettizedDrawable<DL::DLDot>(&rendition, LogicalPoint{1, 2}));
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  const LM_Rendition& read = *contents.renditions.at(0);
  EXPECT_EQ(read.color(), rendition.color());
  EXPECT_EQ(read.line_style().weight, 7);
  EXPECT_EQ(read.line_style().pattern, LM_PATTERN_DASH_DOT);
  EXPECT_EQ(read.line_style().start_style, LM_END_ROUND);
  EXPECT_EQ(read.line_style().end_style, LM_END_SQUARE);
  EXPECT_EQ(read.edge_mode(), LM_EDGE_MODE_OUTLINE);
  EXPECT_EQ(read.marker(), rendition.marker());
  EXPECT_EQ(read.text_attributes().size, 12.5F);
  EXPECT_EQ(read.text_attributes().rotation, 1.5F);
  EXPECT_EQ(read.text_attributes().width_scale, 0.5F);
  EXPECT_EQ(read.text_attributes().font.description(),
            rendition.text_attributes().font.description());
  EXPECT_EQ(read.clip_rectangle(), LM_Clip_Rectangle{}) << "the clip is the view's";
}

TEST(Contents, ColorsThatLookLikeIndicesStayColors) {
  std::vector<LM_Rendition> renditions(4);
  DL::DisplayList list;
  for (std::uint32_t i = 0; i < 4; ++i) {
    const auto x = static_cast<std::int32_t>(i);
    renditions[i].set_line_weight(x + 10);
    list.add(new DL::DLDot(LM_RGB32{2 * i}, {x, 0}));
    list.add(new DL::PalettizedDrawable<DL::DLDot>(&renditions[i], LogicalPoint{x, 1}));
    list.add(new DL::PalettizedDrawable<DL::DLDot>(&renditions[0], LogicalPoint{x, 2}));
    list.add(new DL::DLPolygon(LM_RGB32{i}, samples::kPointCount, samples::kPoints));
  }
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  ASSERT_EQ(contents.renditions.size(), 4U);
  const auto read = drawables_of(*contents.list);
  for (std::uint32_t i = 0; i < 4; ++i) {
    const std::size_t at = std::size_t{4} * i;
    EXPECT_FALSE(read[at]->is_palettized());
    EXPECT_EQ(read[at]->m_colorData.m_color, LM_RGB32{2 * i});
    EXPECT_EQ(read[at + 1]->m_colorData.m_pRendition->line_style().weight,
              10 + static_cast<int>(i));
    EXPECT_EQ(read[at + 2]->m_colorData.m_pRendition, read[1]->m_colorData.m_pRendition);
    EXPECT_EQ(read[at + 3]->m_colorData.m_color, LM_RGB32{i});
  }
}

TEST(Contents, SharedImagesAndPagesAreSharedAgain) {
  lumen::Picture picture(3, 2, LM_RGB32{0x00112233});
  picture.row(1)[2] = 0x80FFFFFF;
  const LM_Handle<LM_Image> image = LM_Create<lumen::PictureImage>(picture);
  const LM_Handle<LM_Image> other = LM_Create<lumen::PictureImage>(picture);
  LM_Rendition rendition;
  rendition.set_texture_pages(
      LM_Create<const LM_Texture_Pages>(std::vector<LM_Handle<const LM_Image>>{nullptr, image}));
  DL::DisplayList list;
  list.add(new DL::DLImage({}, {1, 2, 3, 4}, image));
  list.add(new DL::DLImage({}, {5, 6, 7, 8}, image));
  list.add(new DL::DLImage({}, {5, 6, 7, 8}, other));
  list.add(new DL::DLImage({}, {5, 6, 7, 8}, nullptr));
  list.add(new DL::PalettizedDrawable<DL::DLDot>(&rendition, LogicalPoint{1, 2}));
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  DL::DisplayList& read = *contents.list;
  LM_Image* shared = nth<DL::DLImage>(read, 0).image();
  ASSERT_NE(shared, nullptr);
  EXPECT_EQ(shared->width(), 3);
  EXPECT_EQ(shared->height(), 2);
  for (std::int32_t y = 0; y < 2; ++y) {
    for (std::int32_t x = 0; x < 3; ++x) EXPECT_EQ(shared->row(y)[x], picture.row(y)[x]);
  }
  EXPECT_EQ(nth<DL::DLImage>(read, 1).image(), shared);
  EXPECT_NE(nth<DL::DLImage>(read, 2).image(), shared);
  EXPECT_EQ(nth<DL::DLImage>(read, 3).image(), nullptr);
  const LM_Texture_Pages* pages = contents.renditions.at(0)->texture_pages();
  ASSERT_NE(pages, nullptr);
  EXPECT_EQ(pages->page(0), nullptr);
  EXPECT_EQ(pages->page(1), shared);
}

DL::DLText* new_text(const LM_Font& font, const wchar_t* characters, bool unicode) {
  return new DL::DLText(LM_RGB32{5}, font, {1, 2}, characters,
                        static_cast<std::int32_t>(std::wcslen(characters)), 10, 0.5, {1, 2, 3, 4},
                        nullptr, unicode);
}

TEST(Contents, FontsComeBackExactly) {
  const LM_Font greek(LM_Font_Description{
      .name = L"\x0393\x03BB\x03CE", .bold = 1, .weight = 650, .given = LM_Font_Description::NAME});
  const LM_Font twin(greek.description());
  DL::DisplayList list;
  list.add(new_text(greek, L"a", true));
  list.add(new_text(greek, L"b", true));
  list.add(new_text(twin, L"c", true));
  list.add(new_text(LM_Font(), L"d", true));
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  DL::DisplayList& read = *contents.list;
  const LM_Font& font = *nth<DL::DLText>(read, 0).get_font();
  EXPECT_EQ(font.description(), greek.description());
  EXPECT_EQ(*nth<DL::DLText>(read, 1).get_font(), font);
  EXPECT_NE(*nth<DL::DLText>(read, 2).get_font(), font) << "another handle, as it was";
  EXPECT_EQ(nth<DL::DLText>(read, 3).get_font()->data(), nullptr) << "the usual font";
}

TEST(Contents, AddingGoesOnWhereItWas) {
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 3;
  const auto add_dots = [](DL::DisplayList& to, std::int32_t from, std::int32_t last) {
    for (std::int32_t i = from; i < last; ++i) {
      const LogicalPoint point{i * 7919 % 100 * 1000, i * 104729 % 100 * 1000};
      to.add(new DL::DLDot({}, point), {point.x, point.y, point.x + 5, point.y}, 0);
    }
  };
  for (const std::int32_t count : {1, 2, 3, 4, 10, 50}) {
    add_dots(list, 0, count);
    files::Contents contents = file_checks::read_back(file_checks::written(list));
    EXPECT_EQ(contents.list->m_openLevel, list.m_openLevel);
    EXPECT_EQ(contents.list->m_openBounds, list.m_openBounds);
    EXPECT_EQ(contents.list->m_cOpenDrawables, list.m_cOpenDrawables);
    add_dots(*contents.list, count, count + 30);
    add_dots(list, count, count + 30);
    EXPECT_EQ(file_checks::describe(*contents.list), file_checks::describe(list));
  }
}

TEST(Contents, AddingGoesOnTheSameWithBoundsOtherThanTheDrawablesOwn) {
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 3;
  const auto add_lines = [](DL::DisplayList& to, std::int32_t from, std::int32_t last) {
    for (std::int32_t i = from; i < last; ++i) {
      const LogicalPoint point{i * 7919 % 100 * 1000, i * 104729 % 100 * 1000};
      const LogicalPoint line[] = {point, {point.x + 5000, point.y + 5000}};
      to.add(new DL::DLPolyline({}, 2, line), {point.x, point.y, point.x, point.y}, 0);
    }
  };
  for (const std::int32_t count : {1, 2, 3, 4, 10, 50}) {
    add_lines(list, 0, count);
    files::Contents contents = file_checks::read_back(file_checks::written(list));
    add_lines(*contents.list, count, count + 30);
    add_lines(list, count, count + 30);
    EXPECT_EQ(file_checks::describe(*contents.list), file_checks::describe(list));
  }
}

TEST(Contents, GroupFlagsAndHiddenGroupsComeBack) {
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 2;
  for (std::int32_t i = 0; i < 40; ++i) {
    list.add(new DL::DLDot({}, {i * 7919 % 1000, i * 104729 % 1000}), 1UL << (i % 5));
  }
  const auto leaves = leaves_of(list);
  ASSERT_GT(leaves.size(), 5U);
  for (std::size_t i = 0; i < leaves.size(); i += 3) leaves[i]->make_hidden();
  leaves.back()->make_hidden();
  leaves.front()->m_pParent->make_hidden();
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  EXPECT_EQ(file_checks::describe(*contents.list), file_checks::describe(list));
}

// --- Nested lists -------------------------------------------------------------

TEST(NestedLists, AreSharedAgainAndPlacedAsTheyWere) {
  LM_Rendition rendition;
  DL::DisplayList list;
  const LogicalBounds bounds{-9, -8, 70, 60};
  auto* nested = new DL::DrawableDisplayList(&rendition, samples::new_child(), &bounds);
  nested->set_scale({2.5, -0.5});
  nested->set_offset({100.25, 7});
  auto* twin = static_cast<DL::DrawableDisplayList*>(nested->clone());
  twin->set_offset({-3, 4});
  for (DL::Drawable* d : {static_cast<DL::Drawable*>(nested), static_cast<DL::Drawable*>(twin)}) {
    list.add(d);
  }
  list.add(new DL::DrawableDisplayList(nullptr, samples::new_child(), nullptr));
  list.add(new DL::DrawableDisplayList(nullptr, nullptr, nullptr));
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  auto& first = nth<DL::DrawableDisplayList>(*contents.list, 0);
  auto& second = nth<DL::DrawableDisplayList>(*contents.list, 1);
  auto& third = nth<DL::DrawableDisplayList>(*contents.list, 2);
  EXPECT_EQ(first.scale(), nested->scale());
  EXPECT_EQ(first.offset(), nested->offset());
  EXPECT_EQ(first.bounds(), bounds);
  EXPECT_EQ(second.display_list(), first.display_list());
  EXPECT_NE(third.display_list(), first.display_list());
  EXPECT_EQ(first.m_colorData.m_pRendition, contents.renditions.at(0).get());
  EXPECT_EQ(third.m_colorData.m_pRendition, nullptr);
  EXPECT_EQ(nth<DL::DrawableDisplayList>(*contents.list, 3).display_list(), nullptr);
  EXPECT_EQ(first.display_list()->m_heap, contents.heap.get());
  EXPECT_EQ(file_checks::drawn(*contents.list), file_checks::drawn(list));
}

/// Lists in each other, so many of them.
std::unique_ptr<DL::DisplayList> nested_lists(int depth) {
  auto list = std::make_unique<DL::DisplayList>();
  list->add(new DL::DLDot({}, {depth, 0}));
  for (; depth > 1; --depth) {
    auto outer = std::make_unique<DL::DisplayList>();
    outer->add(new DL::DrawableDisplayList(nullptr, list.release(), nullptr));
    list = std::move(outer);
  }
  return list;
}

TEST(NestedLists, AreKeptDownToADepth) {
  const auto deepest = nested_lists(64);
  const file_checks::Bytes bytes = file_checks::written(*deepest);
  const files::Contents contents = file_checks::read_back(bytes);
  EXPECT_TRUE(file_checks::written(*contents.list) == bytes);
  EXPECT_EQ(file_checks::drawn(*contents.list), file_checks::drawn(*deepest));
  const auto too_deep = nested_lists(65);
  file_checks::Bytes unused;
  EXPECT_THAT(files::write_bytes(unused, *too_deep), HasSubstr("64"));
  EXPECT_THAT(unused, IsEmpty());
}

TEST(NestedLists, ThatAreSharedCountWhereTheyLieDeepest) {
  // First nested by the drawing itself, then 40 deep in it: 41 + 40 in all.
  std::unique_ptr<DL::DisplayList> shared = nested_lists(40);
  auto* nested = new DL::DrawableDisplayList(nullptr, shared.release(), nullptr);
  auto* twin = static_cast<DL::DrawableDisplayList*>(nested->clone());
  auto inner = std::make_unique<DL::DisplayList>();
  inner->add(twin);
  for (int i = 0; i < 39; ++i) {
    auto outer = std::make_unique<DL::DisplayList>();
    outer->add(new DL::DrawableDisplayList(nullptr, inner.release(), nullptr));
    inner = std::move(outer);
  }
  DL::DisplayList list;
  list.add(nested);
  list.add(new DL::DrawableDisplayList(nullptr, inner.release(), nullptr));
  file_checks::Bytes bytes;
  EXPECT_THAT(files::write_bytes(bytes, list), HasSubstr("nested in each other more than 64"));
  EXPECT_THAT(bytes, IsEmpty());
}

TEST(NestedLists, TextsAndEllipsesReferToTheListTheyAreIn) {
  auto* child = new DL::DisplayList;
  child->add(new DL::DLEllipse({}, {1, 2}, 30, 20, 0, child));
  DL::DisplayList list;
  list.add(new DL::DrawableDisplayList(nullptr, child, nullptr));
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  DL::DisplayList* read = nth<DL::DrawableDisplayList>(*contents.list, 0).display_list();
  EXPECT_EQ(nth<DL::DLEllipse>(*read, 0).display_list, read);
}

}  // namespace
