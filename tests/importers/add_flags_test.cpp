// Which drawables importers and scenes keep off worker threads.

#include "importers/add_flags.h"

#include <gtest/gtest.h>

#include <memory>

#include "scenes/sheet.h"

namespace {

void expect_flags(DL::Drawable* drawable, unsigned long flags) {
  const std::unique_ptr<DL::Drawable> owner(drawable);
  EXPECT_EQ(importers::add_flags(*drawable), flags);
  EXPECT_EQ(scenes::add_flags(*drawable), flags);
  drawable->hide();
  EXPECT_EQ(importers::add_flags(*drawable), flags) << "hidden";
  EXPECT_EQ(scenes::add_flags(*drawable), flags) << "hidden";
}

template <class Color>
DL::DLText* text(Color color, DL::DisplayList& list) {
  return new DL::DLText(color, LM_Font(), {0, 0}, L"A", 2, 10.0, 0.0, {0, 0, 10, 10}, &list, true);
}

TEST(AddFlags, TextsWithARenditionOfOthersStayOnTheCallingThread) {
  DL::DisplayList list;
  LM_Rendition rendition;
  expect_flags(text(&rendition, list), 1);
  expect_flags(text(LM_RGB32{7}, list), 0);
}

TEST(AddFlags, NestedListsStayOnTheCallingThread) {
  expect_flags(new DL::DrawableDisplayList(nullptr, new DL::DisplayList, nullptr), 1);
}

TEST(AddFlags, OtherDrawablesMayBeDrawnAnywhere) {
  LM_Rendition rendition;
  const DL::PointTemplate<long> point{3, 4};
  expect_flags(new DL::DLDot({7}, point), 0);
  expect_flags(new DL::PalettizedDrawable<DL::DLDot>(&rendition, point), 0);
}

}  // namespace
