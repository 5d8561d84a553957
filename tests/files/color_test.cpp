// Colours of plain drawables, which streams hand to readers as palette indices.

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdint>

#include "files/drawing_file.h"
#include "tests/files/file_checks.h"
#include "tests/files/kept_mark.h"

namespace {

/// A dot of every colour from 0 on.
void add_dots(DL::DisplayList& list, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto place = static_cast<std::int32_t>(i);
    list.add(new DL::DLDot(LM_RGB32{i}, {place % 1000 * 1000, place / 1000 * 1000}));
  }
}

TEST(Colors, ComeBackHoweverManyThereAre) {
  DL::DisplayList list;
  add_dots(list, 10000);
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  std::uint32_t color = 0;
  for (const DL::Drawable* dot : drawables_of(*contents.list)) {
    EXPECT_FALSE(dot->is_palettized());
    const DL::DLDot expected(LM_RGB32{color++}, {0, 0});
    EXPECT_EQ(dot->m_colorData, expected.m_colorData);
  }
  EXPECT_EQ(color, 10000U);
  EXPECT_TRUE(contents.renditions.empty());
}

TEST(Colors, OfClassesWithoutPalettizedVariantComeBack) {
  DL::DisplayList list;
  for (std::uint32_t i = 0; i < 100; ++i) {
    list.add(new DL::DLColorizedDot(LM_RGB32{i}, {1, 2}, LM_RGB32{i + 1}));
  }
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  std::uint32_t color = 0;
  for (const DL::Drawable* dot : drawables_of(*contents.list)) {
    EXPECT_EQ(dot->m_colorData.m_color, LM_RGB32{color++});
  }
}

/// What is in use of the heap; 0 where a checker has another one.
std::size_t memory_in_use() {
  const struct mallinfo2 now = mallinfo2();
  return now.uordblks + now.hblkhd;
}

/// A client's factory that notes the memory in use when it is asked for one.
DL::Drawable* note_memory(void* memory, int) {
  *static_cast<std::size_t*>(memory) = memory_in_use();
  return nullptr;
}

TEST(Colors, CostLittleWhileTheyAreRead) {
  constexpr std::size_t count = 100000;
  DL::DisplayList list;
  add_dots(list, count);
  list.add(new KeptMark, {0, 0, 1, 1}, 0);
  const file_checks::Bytes bytes = file_checks::written(list);
  std::size_t at_the_end = 0;
  files::Contents contents;
  const std::size_t before = memory_in_use();
  EXPECT_NE(files::read_bytes(bytes, {&note_memory, &at_the_end}, contents), "");
  EXPECT_LT(at_the_end, before + count * 150);
}

}  // namespace
