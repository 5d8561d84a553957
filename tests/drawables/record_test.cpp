#include <gtest/gtest.h>

#include <memory>

#include "tests/support/client_drawables.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/memory_stream.h"
#include "tests/support/palette.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"
#include "tests/support/sample_drawables.h"
#include "tests/support/test_heap.h"

// The words of each drawable's record, and what reading makes of them.

namespace {

using DL::DLDot;
using Words = std::vector<std::uint32_t>;

constexpr std::uint32_t kDot = 0x80000010;
constexpr std::uint32_t kPolyline = 0x80000200;
constexpr std::uint32_t kIndex = 0x20000001;
constexpr std::uint32_t kColor = 0x20000002;
constexpr std::uint32_t kEnd = 0x10000002;

class Record : public testing::Test {
 protected:
  Record() { list.m_pfnCreateDrawable = &client::create; }

  Words words_of(DL::Drawable& drawable) {
    MemoryStream stream;
    drawable.serialize_out(&stream, list);
    return stream.words();
  }
  DL::Drawable* read(const Words& words) {
    MemoryStream stream(words);
    DL::Drawable* first = read_drawables(stream, list);
    words_read = stream.position() / sizeof(std::uint32_t);
    return first;
  }

  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  Palette palette{list};
  std::size_t words_read = 0;
};

TEST_F(Record, OfAPlainDotIsSixWordsWrittenOneByOne) {
  DLDot dot({0x00FF0000}, {7, -2});
  MemoryStream stream;
  dot.serialize_out(&stream, list);
  EXPECT_EQ(stream.words(), (Words{kDot, 7, 0xFFFFFFFE, kColor, 0x00FF0000, kEnd}));
  EXPECT_EQ(stream.writes(), 6U);
}

TEST_F(Record, OfAPlainDotIsReadAsAPalettizedOneWithItsColorAsTheIndex) {
  const DrawableChain chain(read({kDot, 7, 0xFFFFFFFE, kColor, 0x00FF0000, kEnd}));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_EQ(words_read, 6U);
  EXPECT_EQ(palette.asked_indices, std::vector<int>{16711680});
  EXPECT_TRUE(chain.first()->is_palettized());
  EXPECT_FALSE(chain.first()->is_hidden());
  EXPECT_EQ(chain.first()->type(), DLDot::my_type());
  EXPECT_EQ(chain.first()->m_colorData.m_pRendition, palette.at(16711680));
  EXPECT_EQ(chain.first()->rendition(list), palette.at(16711680));
  EXPECT_EQ(bounds_of(*chain.first()), LogicalBounds(7, -2, 7, -2));
  EXPECT_EQ(chain.first()->m_pNext, nullptr);
  EXPECT_EQ(chain.first()->drawable_info(), nullptr);
  EXPECT_TRUE(Palette::unsupported.empty());
}

TEST_F(Record, OfAPalettizedDrawableHoldsTheClientsIndex) {
  DL::PalettizedDrawable<DLDot> dot(palette.at(-3), LogicalPoint{1, 2});
  EXPECT_EQ(words_of(dot), (Words{kDot, 1, 2, kIndex, 0xFFFFFFFD, kEnd}));
  EXPECT_EQ(palette.asked_renditions, std::vector<LM_Rendition*>{palette.at(-3)});
}

TEST_F(Record, OfAHiddenDrawableIsThatOfTheVisibleOneAndIsReadVisible) {
  const std::unique_ptr<DL::Drawable> dot(new DLDot({5}, {1, 2}));
  dot->hide();
  EXPECT_EQ(words_of(*dot), (Words{kDot, 1, 2, kColor, 5, kEnd}));
  const DrawableChain chain(read(words_of(*dot)));
  EXPECT_FALSE(chain.first()->is_hidden());
}

TEST_F(Record, OfAPolylineIsItsCountAndItsPoints) {
  const std::unique_ptr<DL::Drawable> polyline(make_polyline({{1, 2}, {3, -4}}, {9}));
  EXPECT_EQ(words_of(*polyline), (Words{kPolyline, 2, 1, 2, 3, 0xFFFFFFFC, kColor, 9, kEnd}));
}

TEST_F(Record, TakesTheColorTagByItsBitsNotByItsValue) {
  for (const std::uint32_t tag :
       {0x20000001U, 0x20000002U, 0x00000001U, 0x20000000U, 0xFFFFFFFFU}) {
    const DrawableChain chain(read({kDot, 1, 2, tag, 4, kEnd}));
    EXPECT_TRUE(chain.first()->is_palettized()) << std::hex << tag;
    EXPECT_EQ(chain.first()->m_colorData.m_pRendition, palette.at(4));
  }
  EXPECT_EQ(palette.asked_indices.size(), 5U);
}

TEST_F(Record, KeepsAColorBehindATagWithoutThoseBits) {
  for (const std::uint32_t tag : {0U, 0x10000002U, 0xDFFFFFFEU}) {
    const DrawableChain chain(read({kDot, 1, 2, tag, 0x445566, kEnd}));
    EXPECT_FALSE(chain.first()->is_palettized()) << std::hex << tag;
    EXPECT_EQ(chain.first()->m_colorData.m_color.word, 0x445566U);
  }
  EXPECT_TRUE(palette.asked_indices.empty());
}

TEST_F(Record, OfAClassWithoutAPalettizedVariantKeepsItsClassAndTellsTheClientOnce) {
  const DrawableChain chain(read({client::StoredMark::kTag, 8, kIndex, 3, kEnd}));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_EQ(Palette::unsupported, std::vector<DL::Drawable*>{chain.first()});
  EXPECT_FALSE(chain.first()->is_palettized());
  EXPECT_EQ(chain.first()->type(), client::Mark::my_type());
  EXPECT_EQ(static_cast<client::StoredMark*>(chain.first())->m_value, 8U);
  EXPECT_EQ(chain.first()->m_colorData.m_pRendition, palette.at(3));
}

TEST_F(Record, IsContinuedByTheRecordsOfTheFollowingDrawables) {
  const DrawableChain chain{new DLDot({1}, {10, 11}), make_polyline({{1, 2}, {3, 4}}, {2}),
                            new client::StoredMark(30), new DLDot({4}, {12, 13})};
  const Words expected = {kDot, 10,     11, kColor, 1,      kPolyline, 2,
                          1,    2,      3,  4,      kColor, 2,         client::StoredMark::kTag,
                          30,   kColor, 30, kDot,   12,     13,        kColor,
                          4,    kEnd};
  EXPECT_EQ(words_of(*chain.first()), expected);

  const DrawableChain read_chain(read(expected));
  EXPECT_EQ(words_read, expected.size());
  const auto drawables = read_chain.drawables();
  ASSERT_EQ(drawables.size(), 4U);
  EXPECT_EQ(drawables[0]->type(), DLDot::my_type());
  EXPECT_EQ(drawables[1]->type(), DL::DLPolyline::my_type());
  EXPECT_EQ(drawables[2]->type(), client::Mark::my_type());
  EXPECT_EQ(bounds_of(*drawables[3]), LogicalBounds(12, 13, 12, 13));
  EXPECT_EQ(palette.asked_indices, (std::vector<int>{1, 2, 30, 4}));
}

TEST_F(Record, OfTheMiddleOfAChainGoesOnToItsEnd) {
  const DrawableChain chain{new DLDot({1}, {1, 1}), new DLDot({2}, {2, 2}), new DLDot({3}, {3, 3})};
  EXPECT_EQ(words_of(*chain.first()->m_pNext),
            (Words{kDot, 2, 2, kColor, 2, kDot, 3, 3, kColor, 3, kEnd}));
}

TEST_F(Record, LeavesOutDrawablesThatAreNotStored) {
  const DrawableChain chain{new DLDot({1}, {1, 1}),
                            new DL::DLColorizedDot({1}, {5, 5}, {6}),
                            make_polygon({{1, 2}, {3, 4}, {5, 6}}),
                            new client::UnstoredMark,
                            new DLDot({2}, {2, 2}),
                            samples::make_plain<DL::DLGouraudPolyline>().release()};
  EXPECT_EQ(words_of(*chain.first()), (Words{kDot, 1, 1, kColor, 1, kDot, 2, 2, kColor, 2, kEnd}));
}

TEST_F(Record, OfADrawableThatIsNotStoredIsEmpty) {
  const DrawableChain chain{new DL::DLColorizedDot({1}, {5, 5}, {6}), new DLDot({2}, {2, 2})};
  EXPECT_TRUE(words_of(*chain.first()).empty());
}

TEST_F(Record, MayHoldAChainOfDrawablesInside) {
  client::Folder* inner = new client::Folder(new DLDot({1}, {1, 1}));
  inner->m_content->m_pNext = new DLDot({2}, {2, 2});
  auto* outer = new client::Folder(inner);
  inner->m_pNext = new DLDot({3}, {3, 3});
  const DrawableChain chain{outer, new DLDot({4}, {4, 4})};
  const Words expected = {client::Folder::kTag,  // outer
                          client::Folder::kTag,  //   inner
                          kDot,
                          1,
                          1,
                          kColor,
                          1,
                          kDot,
                          2,
                          2,
                          kColor,
                          2,
                          kEnd,  //     its dots
                          kColor,
                          0,
                          kDot,
                          3,
                          3,
                          kColor,
                          3,
                          kEnd,  //   a dot after it
                          kColor,
                          0,
                          kDot,
                          4,
                          4,
                          kColor,
                          4,
                          kEnd};
  EXPECT_EQ(words_of(*chain.first()), expected);

  const DrawableChain read_chain(read(expected));
  EXPECT_EQ(words_read, expected.size());
  ASSERT_EQ(read_chain.drawables().size(), 2U);
  auto* outer_read = static_cast<client::Folder*>(read_chain.first());
  ASSERT_NE(outer_read->m_content, nullptr);
  auto* inner_read = static_cast<client::Folder*>(outer_read->m_content);
  EXPECT_EQ(inner_read->m_content->type(), DLDot::my_type());
  ASSERT_NE(inner_read->m_pNext, nullptr);
  EXPECT_EQ(bounds_of(*inner_read->m_pNext), LogicalBounds(3, 3, 3, 3));
}

TEST_F(Record, IsCreatedOnTheHeapOfTheList) {
  TestHeap heap;
  list.m_heap = &heap;
  const DrawableChain chain(read({kDot, 1, 1, kColor, 1, kDot, 2, 2, kColor, 2, kEnd}));
  EXPECT_EQ(heap.requests(), 2);
  EXPECT_EQ(heap.bytes(), 2 * sizeof(DLDot));
}

TEST_F(Record, OfAnUnknownClassIsLeftToTheClient) {
  std::vector<int> asked;
  list.m_pCreateDrawableContext = &asked;
  list.m_pfnCreateDrawable = [](void* context, int tag) -> DL::Drawable* {
    static_cast<std::vector<int>*>(context)->push_back(tag);
    return new DLDot({}, {});
  };
  for (const std::uint32_t tag :
       {0x40000000U, 0x7FFFFFFFU, 0x80000011U, 0xC0000010U, 0x80001000U}) {
    const std::unique_ptr<DL::Drawable> drawable(list.create_drawable(tag));
    EXPECT_NE(drawable, nullptr) << std::hex << tag;
    ASSERT_FALSE(asked.empty());
    EXPECT_EQ(static_cast<std::uint32_t>(asked.back()), tag);
  }
  EXPECT_EQ(asked.size(), 5U);
  for (const std::uint32_t tag : {0x3FFFFFFFU, 0x10000002U, 0x20000001U, 0U}) {
    EXPECT_EQ(list.create_drawable(tag), nullptr) << std::hex << tag;
  }
  EXPECT_EQ(asked.size(), 5U);
}

TEST_F(Record, WithoutAFactoryKnowsTheLibrarysClassesAlone) {
  list.m_pfnCreateDrawable = nullptr;
  EXPECT_EQ(list.create_drawable(client::StoredMark::kTag), nullptr);
  const std::unique_ptr<DL::Drawable> dot(list.create_drawable(kDot));
  ASSERT_NE(dot, nullptr);
  EXPECT_EQ(dot->type(), DLDot::my_type());
}

TEST_F(Record, WithoutCallbacksIsWrittenAndReadAllTheSame) {
  DL::DisplayList bare;
  LM_Rendition rendition;
  DL::PalettizedDrawable<DLDot> dot(&rendition, LogicalPoint{1, 2});
  MemoryStream stream;
  dot.serialize_out(&stream, bare);
  EXPECT_EQ(stream.words(), (Words{kDot, 1, 2, kIndex, 0, kEnd}));
  MemoryStream plain(Words{kDot, 1, 2, kColor, 0x99, kEnd});
  const DrawableChain chain(read_drawables(plain, bare));
  EXPECT_FALSE(chain.first()->is_palettized());
  EXPECT_EQ(chain.first()->m_colorData.m_color.word, 0x99U);
}

TEST_F(Record, WithAPaletteButNoPostReadCallbackIsRead) {
  list.m_pfnPostRead = nullptr;
  const DrawableChain chain(read({client::StoredMark::kTag, 8, kIndex, 3, kEnd}));
  EXPECT_EQ(chain.drawables().size(), 1U);
}

TEST_F(Record, ReadingAndWritingLeaveNothingBehindInTheList) {
  const Words two = {kDot, 1, 1, kIndex, 1, kDot, 2, 2, kIndex, 2, kEnd};
  for (int i = 0; i < 3; ++i) {
    const DrawableChain chain(read(two));
    EXPECT_EQ(words_of(*chain.first()), two);
    EXPECT_EQ(words_of(*chain.first()), two);
  }
}

}  // namespace
