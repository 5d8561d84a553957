#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>

#include "files/drawing_file.h"
#include "files/stretched_text.h"
#include "tests/files/file_checks.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/sample_drawables.h"

namespace {

using file_checks::class_of;

/// How a drawable of some class is made, plain or with the rendition.
struct Sample {
  std::string name;
  std::function<DL::Drawable*(LM_Rendition*)> make;

  friend std::ostream& operator<<(std::ostream& os, const Sample& sample) {
    return os << sample.name;
  }
};

template <class T>
void add_plain(std::vector<Sample>& all, const std::string& name) {
  all.push_back({name, [](LM_Rendition* rendition) -> DL::Drawable* {
                   DL::Drawable* drawable = samples::make_plain<T>().release();
                   if constexpr (std::is_same_v<T, DL::DrawableDisplayList>) {
                     drawable->m_colorData.m_pRendition = rendition;
                   }
                   return drawable;
                 }});
}

std::vector<Sample> all_samples() {
  std::vector<Sample> all;
#define ADD(Class) add_plain<DL::Class>(all, #Class);
  DL_PALETTIZED_CLASSES(ADD)
  DL_PLAIN_ONLY_CLASSES(ADD)
#undef ADD
#define ADD(Class)                                                                   \
  all.push_back({"Palettized" #Class, [](LM_Rendition* rendition) -> DL::Drawable* { \
                   return samples::make_palettized<DL::Class>(rendition).release();  \
                 }});
  DL_PALETTIZED_CLASSES(ADD)
#undef ADD
  all.push_back({"StretchedText", [](LM_Rendition* rendition) -> DL::Drawable* {
                   const LM_Font font(LM_Font_Description{.name = L"Serif", .given = 1});
                   return new files::StretchedText(rendition, 0.75, font, {3, 4}, L"wide", 9.0, 0.5,
                                                   {1, 2, 30, 40}, nullptr);
                 }});
  return all;
}

class EveryClass : public testing::TestWithParam<Sample> {
 protected:
  EveryClass() {
    rendition.set_color(LM_RGB32{0x00A0B0C0}, true);
    rendition.set_line_weight(5);
  }

  /// A drawable of the class between two dots.
  void fill(DL::DisplayList& list, bool hidden) {
    list.add(new DL::DLDot(LM_RGB32{1}, {1, 2}));
    DL::Drawable* drawable = GetParam().make(&rendition);
    if (hidden) drawable->hide();
    list.add(drawable);
    list.add(new DL::DLDot(LM_RGB32{2}, {3, 4}));
  }

  LM_Rendition rendition;
};

void expect_same_color(const DL::Drawable& read, const DL::Drawable& original,
                       const files::Contents& contents) {
  const bool has_rendition =
      original.is_palettized() || original.type() == DL::DrawableDisplayList::my_type();
  if (!has_rendition) {
    EXPECT_EQ(read.m_colorData.m_color, original.m_colorData.m_color);
    EXPECT_TRUE(contents.renditions.empty());
    return;
  }
  ASSERT_EQ(contents.renditions.size(), 1U);
  EXPECT_EQ(read.m_colorData.m_pRendition, contents.renditions[0].get());
  EXPECT_EQ(contents.renditions[0]->color(), LM_RGB32{0x00A0B0C0});
  EXPECT_EQ(contents.renditions[0]->line_style().weight, 5);
}

TEST_P(EveryClass, ComesBackAsItWas) {
  for (const bool hidden : {false, true}) {
    SCOPED_TRACE(hidden ? "hidden" : "visible");
    DL::DisplayList list;
    fill(list, hidden);
    const file_checks::Bytes bytes = file_checks::written(list);
    files::Contents contents = file_checks::read_back(bytes);
    ASSERT_NE(contents.list, nullptr);
    const auto originals = drawables_of(list);
    const auto read = drawables_of(*contents.list);
    ASSERT_EQ(read.size(), originals.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
      EXPECT_EQ(class_of(*read[i]), class_of(*originals[i])) << i;
    }
    EXPECT_TRUE(file_checks::written(*contents.list) == bytes) << "the second generation";
    expect_same_color(*read[1], *originals[1], contents);
    EXPECT_EQ(file_checks::describe(*contents.list), file_checks::describe(list));
    EXPECT_EQ(file_checks::drawn(*contents.list), file_checks::drawn(list));
  }
}

TEST_P(EveryClass, IsWhatItWasAfterWriting) {
  for (const bool hidden : {false, true}) {
    DL::DisplayList list;
    fill(list, hidden);
    std::vector<const void*> classes;
    for (const DL::Drawable* d : drawables_of(list)) classes.push_back(class_of(*d));
    const file_checks::Lines before = file_checks::drawn(list);
    static_cast<void>(file_checks::written(list));
    std::vector<const void*> classes_after;
    for (const DL::Drawable* d : drawables_of(list)) classes_after.push_back(class_of(*d));
    EXPECT_EQ(classes_after, classes);
    EXPECT_EQ(file_checks::drawn(list), before);
    EXPECT_EQ(list.m_pfnRenditionToIndex, nullptr);
    EXPECT_EQ(list.m_pRenditionToIndexContext, nullptr);
  }
}

TEST_P(EveryClass, IsFoundForRemovalByWhatWasRead) {
  DL::DisplayList list;
  fill(list, false);
  files::Contents contents = file_checks::read_back(file_checks::written(list));
  DL::Drawable& original = *drawables_of(list)[1];
  DL::Drawable& read = *drawables_of(*contents.list)[1];
  const std::unique_ptr<DL::Drawable> copy(original.clone());
  EXPECT_EQ(
      answers::finds(read, original),
      answers::finds(*copy, original) && original.type() != DL::DrawableDisplayList::my_type());
  EXPECT_TRUE(answers::finds(read, read));
}

INSTANTIATE_TEST_SUITE_P(Files, EveryClass, testing::ValuesIn(all_samples()),
                         [](const auto& each) { return each.param.name; });

/// A list with every class in it, plain and palettized with two renditions, some
/// hidden.
void add_everything(DL::DisplayList& list, std::vector<LM_Rendition>& renditions) {
  std::size_t i = 0;
  for (const Sample& sample : all_samples()) {
    DL::Drawable* drawable = sample.make(&renditions[i % renditions.size()]);
    if (i % 3 == 0) drawable->hide();
    list.add(drawable);
    ++i;
  }
}

TEST(EveryClassTogether, ComesBackInOrder) {
  std::vector<LM_Rendition> renditions(2);
  renditions[1].set_line_weight(3);
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 4;
  for (int i = 0; i < 3; ++i) add_everything(list, renditions);
  const file_checks::Bytes bytes = file_checks::written(list);
  files::Contents contents = file_checks::read_back(bytes);
  EXPECT_TRUE(file_checks::written(*contents.list) == bytes);
  EXPECT_EQ(contents.renditions.size(), 2U);
  EXPECT_EQ(file_checks::describe(*contents.list), file_checks::describe(list));
  EXPECT_EQ(file_checks::drawn(*contents.list), file_checks::drawn(list));
  EXPECT_EQ(broken_invariants(*contents.list), broken_invariants(list));
}

}  // namespace
