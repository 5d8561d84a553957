#include "displaylist/drawables/drawable.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <sstream>

#include "tests/support/client_drawables.h"
#include "tests/support/memory_stream.h"
#include "tests/support/palette.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"
#include "tests/support/test_heap.h"

namespace {

using client::Mark;
using Words = std::vector<std::uint32_t>;

class Info final : public DL::Extra_Drawable_Info {
 public:
  bool is_drawn() override { return true; }
};

TEST(DrawableBase, StartsUnlinkedWithoutInfoAndWithItsColor) {
  const Mark mark(0xFF00AA11);
  EXPECT_EQ(mark.m_pNext, nullptr);
  EXPECT_EQ(mark.m_pDrawableInfo, nullptr);
  EXPECT_EQ(mark.m_colorData.m_color.word, 0xFF00AA11U);
}

TEST(DrawableBase, KeepsTheInfoItIsGiven) {
  Mark mark;
  EXPECT_EQ(mark.drawable_info(), nullptr);
  Info info;
  mark.set_drawable_info(&info);
  EXPECT_EQ(mark.drawable_info(), &info);
  EXPECT_EQ(mark.m_pDrawableInfo, &info);
  mark.set_drawable_info(nullptr);
  EXPECT_EQ(mark.drawable_info(), nullptr);
}

TEST(DrawableBase, SelectionDrawsAsUsual) {
  RecordedList recorded;
  Mark mark;
  mark.draw_unclipped_selection(recorded.list);
  EXPECT_EQ(mark.unclipped_draws, 1);
  EXPECT_EQ(mark.clipped_draws, 0);
  EXPECT_EQ(mark.drawn_in, &recorded.list);
  mark.draw_clipped_selection(recorded.list);
  EXPECT_EQ(mark.unclipped_draws, 1);
  EXPECT_EQ(mark.clipped_draws, 1);
}

TEST(DrawableBase, MarginHidingAndUnhidingDoNothing) {
  Mark mark(5);
  mark.set_margin(1000);
  mark.hide();
  EXPECT_FALSE(mark.is_hidden());
  mark.unhide();
  EXPECT_FALSE(mark.is_hidden());
  RecordedList recorded;
  mark.draw_clipped(recorded.list);
  EXPECT_EQ(mark.clipped_draws, 1);
}

TEST(DrawableBase, PredicatesHaveTheirPlainAnswers) {
  Mark mark;
  EXPECT_FALSE(mark.is_hidden());
  EXPECT_FALSE(mark.is_palettized());
  EXPECT_TRUE(mark.has_fixed_representation());
  EXPECT_FALSE(mark.reserved_predicate());
  EXPECT_EQ(mark.partial_clone(0, 1), nullptr);
}

TEST(DrawableBase, HasNoVectors) {
  Mark mark;
  EXPECT_EQ(mark.get_vector_count(), 0);
  EXPECT_FALSE(mark.supports_fast_vector_iterator());
  DL::VectorTemplate<long> vector{{1, 2}, {3, 4}};
  EXPECT_FALSE(mark.get_vector(0, vector));
  EXPECT_EQ(vector, (DL::VectorTemplate<long>{{1, 2}, {3, 4}}));
  for (const bool flag : {false, true}) {
    const std::unique_ptr<DL::DrawableVectorIterator> iterator(mark.create_vector_iterator(flag));
    ASSERT_NE(iterator, nullptr);
    EXPECT_TRUE(iterator->m_bDone);
  }
}

TEST(DrawableBase, FastVectorIterationFollowsTheVectorCount) {
  class OneVector final : public Mark {
   public:
    int get_vector_count() const override { return 1; }
  };
  EXPECT_TRUE(OneVector().supports_fast_vector_iterator());
}

TEST(DrawableBase, RenditionIsTheWorkingOneInTheColorOfTheDrawable) {
  RecordedList recorded;
  Mark mark(0x00AABBCC);
  EXPECT_EQ(mark.rendition(recorded.list), &recorded.list.m_rendition);
  EXPECT_EQ(recorded.list.m_rendition.color().word, 0x00AABBCCU);
}

TEST(DrawableBase, RenditionOfAnEqualColorStaysUnchanged) {
  RecordedList recorded;
  Mark mark(0x00AABBCC);
  mark.rendition(recorded.list);
  const std::uint64_t serial = recorded.list.m_rendition.change_serial();
  mark.rendition(recorded.list);
  EXPECT_EQ(recorded.list.m_rendition.change_serial(), serial);
}

TEST(DrawableBase, BothColorDataOperationsStoreTheRendition) {
  Mark mark(7);
  LM_Rendition first;
  LM_Rendition second;
  mark.set_color_data(&first);
  EXPECT_EQ(mark.m_colorData.m_pRendition, &first);
  mark.restore_color_data(&second);
  EXPECT_EQ(mark.m_colorData.m_pRendition, &second);
}

TEST(DrawableBase, RecordIsColorAndEnd) {
  RecordedList recorded;
  Mark mark(0x00FF0000);
  MemoryStream stream;
  mark.serialize_out(&stream, recorded.list);
  EXPECT_EQ(stream.words(), (Words{0x20000002, 0x00FF0000, 0x10000002}));
}

TEST(DrawableBase, RecordIsReadBackWithThePalette) {
  RecordedList recorded;
  Palette palette(recorded.list);
  Mark mark;
  MemoryStream stream(Words{0x20000002, 0x00FF0000, 0x10000002});
  mark.serialize_in(&stream, recorded.list);
  EXPECT_EQ(palette.asked_indices, std::vector<int>{0x00FF0000});
  EXPECT_EQ(mark.m_colorData.m_pRendition, palette.at(0x00FF0000));
  EXPECT_EQ(mark.m_pNext, nullptr);
  EXPECT_TRUE(stream.at_end());
}

TEST(DrawableBase, DeletingThroughTheBaseRunsTheOutermostDestructorAndLeavesTheInfo) {
  class Watched final : public Mark {
   public:
    explicit Watched(bool& destroyed) : m_destroyed(destroyed) {}
    ~Watched() override { m_destroyed = true; }

   private:
    bool& m_destroyed;
  };
  bool destroyed = false;
  Info info;
  DL::Drawable* drawable = new Watched(destroyed);
  drawable->set_drawable_info(&info);
  delete drawable;
  EXPECT_TRUE(destroyed);
  EXPECT_TRUE(info.is_drawn());
}

TEST(DrawableMemory, ComesFromTheHeapThatIsNamed) {
  TestHeap heap;
  const std::unique_ptr<DL::Drawable> drawable(new (&heap) DL::DLDot(LM_RGB32{1}, {2, 3}));
  ASSERT_NE(drawable, nullptr);
  EXPECT_EQ(heap.requests(), 1);
  EXPECT_EQ(heap.bytes(), sizeof(DL::DLDot));
}

TEST(DrawableMemory, ComesFromTheDefaultHeapForANullHeap) {
  LumenHeap* heap = nullptr;
  const std::unique_ptr<DL::Drawable> drawable(new (heap) DL::DLDot(LM_RGB32{1}, {2, 3}));
  ASSERT_NE(drawable, nullptr);
  EXPECT_EQ(bounds_of(*drawable), LogicalBounds(2, 3, 2, 3));
}

TEST(DrawableMemory, ExhaustedGivesNullInsteadOfAnObject) {
  TestHeap heap(0);
  const DL::Drawable* drawable = new (&heap) DL::DLDot(LM_RGB32{1}, {2, 3});
  EXPECT_EQ(drawable, nullptr);
}

TEST(ColorData, IsEqualByAll64Bits) {
  DL::Drawable::ColorData a;
  DL::Drawable::ColorData b;
  EXPECT_TRUE(a == b);
  b.m_color.word = 1;
  EXPECT_FALSE(a == b);
  a.m_color.word = 1;
  EXPECT_TRUE(a == b);
  a.m_pRendition = reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x100000001});
  EXPECT_EQ(a.m_color.word, b.m_color.word);
  EXPECT_FALSE(a == b);
}

}  // namespace
