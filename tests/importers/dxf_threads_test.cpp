// What of a DXF file worker threads may draw.

#include <gtest/gtest.h>

#include "tests/importers/dxf_drawing.h"
#include "tests/support/tree_walk.h"

namespace {

using dxf_text::block;
using dxf_text::groups;
using dxf_text::insert;
using dxf_text::line;

const std::string frame = line(-100, -100, 100, 100);

std::string text() {
  return groups({{0, "TEXT"}, {8, "0"}, {10, 10}, {20, 20}, {40, 5}, {1, "Words"}});
}

bool holds(const DL::Group& leaf, const DL::Drawable* drawable) {
  for (const DL::Drawable* d = leaf.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
    if (d == drawable) return true;
  }
  return false;
}

/// Whether the group that holds the drawable stays on the calling thread.
bool stays(DL::DisplayList& list, const DL::Drawable* drawable) {
  for (const DL::Group* leaf : leaves_of(list)) {
    if (holds(*leaf, drawable)) return (leaf->m_flags & 1) != 0;
  }
  ADD_FAILURE() << "not in the list";
  return false;
}

TEST(DxfThreads, LinesMayBeDrawnAnywhere) {
  const DxfDrawing read({frame + line(0, 0, 5, 5)});
  DL::DisplayList& list = *read.drawing.list;
  ASSERT_EQ(drawables_of(list).size(), 2U);
  for (const DL::Drawable* drawable : drawables_of(list)) EXPECT_FALSE(stays(list, drawable));
}

TEST(DxfThreads, TextsAndBlocksStayOnTheCallingThread) {
  const DxfDrawing read({text() + insert("B", 10, 20), block("B", text())});
  DL::DisplayList& list = *read.drawing.list;
  std::size_t count = 0;
  for (DL::Drawable* drawable : drawables_of(list)) {
    EXPECT_TRUE(stays(list, drawable));
    ++count;
    auto* nested = dynamic_cast<DL::DrawableDisplayList*>(drawable);
    if (nested == nullptr) continue;
    for (const DL::Drawable* inner : drawables_of(*nested->display_list())) {
      EXPECT_TRUE(stays(*nested->display_list(), inner));
      ++count;
    }
  }
  EXPECT_EQ(count, 3U);
}

}  // namespace
