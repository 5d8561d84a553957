#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "displaylist/polythings/polysegment.h"
#include "lumen/packed_heap.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/palette.h"
#include "tests/support/recorded_list.h"

// Polysegments without their drawing: copies, records, dump lines.

namespace {

using answers::Words;
using DL::DLPolysegment;

constexpr LogicalPoint kPoints[] = {{0, 1}, {2, 3},   {4, 5},   {6, 7},
                                    {8, 9}, {10, 11}, {12, 13}, {14, -15}};
constexpr std::uint32_t kTag = 0x80000400;
constexpr std::uint32_t kIndex = 0x20000001;
constexpr std::uint32_t kColor = 0x20000002;
constexpr std::uint32_t kEnd = 0x10000002;

struct PolysegmentBesidesDrawing : testing::Test {
  PolysegmentBesidesDrawing() {
    segments.m_pNext = &segments;
    segments.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&recorded));
  }
  /// What any copy has of the segments, but for the points.
  void expect_unlinked_copy(DL::Drawable* copy) const {
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->type(), DLPolysegment::my_type());
    EXPECT_EQ(copy->m_pNext, nullptr);
    EXPECT_EQ(copy->drawable_info(), nullptr);
    EXPECT_TRUE(copy->m_colorData == segments.m_colorData);
  }

  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  DLPolysegment segments{{0x00FF0010}, 8, kPoints};
};

TEST_F(PolysegmentBesidesDrawing, CloneHasPointsOfItsOwn) {
  segments.m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  const std::unique_ptr<DL::Drawable> copy(segments.clone());
  expect_unlinked_copy(copy.get());
  const auto* all = static_cast<DLPolysegment*>(copy.get());
  ASSERT_EQ(all->count, 8);
  EXPECT_NE(all->points, segments.points);
  EXPECT_TRUE(std::equal(kPoints, kPoints + 8, all->points));
}

TEST_F(PolysegmentBesidesDrawing, PartialCloneIsTheRunOfSegments) {
  segments.m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  for (int first = 0; first < 4; ++first) {
    for (int n = 0; first + n <= 4; ++n) {
      const std::unique_ptr<DL::Drawable> part(segments.partial_clone(first, n));
      expect_unlinked_copy(part.get());
      const auto* run = static_cast<DLPolysegment*>(part.get());
      ASSERT_EQ(run->count, 2 * n);
      EXPECT_TRUE(std::equal(run->points, run->points + 2 * n, kPoints + 2 * first));
    }
  }
}

TEST_F(PolysegmentBesidesDrawing, CopiesAreNullAndLeaveNothingWhereverMemoryRunsOut) {
  LM_Rendition rendition;
  const std::unique_ptr<DL::Drawable> originals[] = {
      std::make_unique<DLPolysegment>(LM_RGB32{1}, 8, kPoints),
      std::make_unique<DL::PalettizedDrawable<DLPolysegment>>(&rendition, 8, kPoints),
      std::make_unique<DLPolysegment>(LM_RGB32{1}, 8, kPoints)};
  originals[2]->hide();
  const std::size_t in_use = lumen::PackedHeap::process_heap().bytes_in_use();
  for (const auto& original : originals) {
    for (const std::int64_t good_requests : {0, 1}) {
      {
        const FailingDefaultHeap failing(good_requests);
        EXPECT_EQ(original->clone(), nullptr);
      }
      const FailingDefaultHeap failing(good_requests);
      EXPECT_EQ(original->partial_clone(1, 2), nullptr);
    }
    EXPECT_EQ(lumen::PackedHeap::process_heap().bytes_in_use(), in_use);
  }
}

TEST_F(PolysegmentBesidesDrawing, HiddenDrawsNothingAndClonesHiddenWhileItsPartsAreVisible) {
  const std::unique_ptr<DL::Drawable> hidden(segments.clone());
  hidden->hide();
  EXPECT_TRUE(answers::all_ways(recorded, *hidden).empty());
  EXPECT_TRUE(std::unique_ptr<DL::Drawable>(hidden->clone())->is_hidden());
  EXPECT_FALSE(std::unique_ptr<DL::Drawable>(hidden->partial_clone(0, 2))->is_hidden());
}

TEST_F(PolysegmentBesidesDrawing, PartsOfAPalettizedOneArePalettized) {
  LM_Rendition rendition;
  DL::PalettizedDrawable<DLPolysegment> palettized(&rendition, 8, kPoints);
  const std::unique_ptr<DL::Drawable> part(palettized.partial_clone(1, 2));
  EXPECT_TRUE(part->is_palettized());
  EXPECT_EQ(part->rendition(list), &rendition);
  EXPECT_EQ(bounds_of(*part), LogicalBounds(4, 5, 10, 11));
}

TEST_F(PolysegmentBesidesDrawing, RecordIsItsTagItsCountAndAllItsPoints) {
  Palette palette(list);
  DLPolysegment three({9}, 3, kPoints + 5);
  EXPECT_EQ(answers::record_of(three, list),
            (Words{kTag, 3, 10, 11, 12, 13, 14, 0xFFFFFFF1, kColor, 9, kEnd}));
}

TEST_F(PolysegmentBesidesDrawing, RecordOfAPalettizedOneHoldsTheIndexAndIsReadBack) {
  Palette palette(list);
  DL::PalettizedDrawable<DLPolysegment> two(palette.at(12), 2, kPoints);
  const Words words = {kTag, 2, 0, 1, 2, 3, kIndex, 12, kEnd};
  EXPECT_EQ(answers::record_of(two, list), words);
  MemoryStream stream(words);
  const DrawableChain chain(read_drawables(stream, list));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_TRUE(stream.at_end());
  EXPECT_EQ(chain.first()->type(), DLPolysegment::my_type());
  EXPECT_TRUE(chain.first()->is_palettized());
  EXPECT_EQ(chain.first()->m_colorData.m_pRendition, palette.at(12));
  EXPECT_EQ(answers::record_of(*chain.first(), list), words);
  EXPECT_TRUE(Palette::unsupported.empty());
}

TEST_F(PolysegmentBesidesDrawing, RecordOfNoPointsIsReadWithoutAnArray) {
  Palette palette(list);
  for (const std::uint32_t count : {0U, 0xFFFFFFFFU, 0x80000000U}) {
    MemoryStream stream(Words{kTag, count, kIndex, 1, kEnd});
    const DrawableChain chain(read_drawables(stream, list));
    ASSERT_NE(chain.first(), nullptr);
    EXPECT_TRUE(stream.at_end());
    EXPECT_EQ(static_cast<DLPolysegment*>(chain.first())->points, nullptr);
    EXPECT_TRUE(answers::all_ways(recorded, *chain.first()).empty());
    EXPECT_LE(chain.first()->get_vector_count(), 0);
  }
}

TEST_F(PolysegmentBesidesDrawing, DumpLineTellsLevelCountAndColor) {
  answers::expect_dump(
      segments, 3, "            DLPolysegment: level  3, points = 8, color = 16711696", 8 * 8 + 48);
  const DLPolysegment none({0xFFFFFFFF}, 0, kPoints);
  answers::expect_dump(none, 0, "DLPolysegment: level  0, points = 0, color = -1", 48);
  LM_Rendition rendition;
  const DL::PalettizedDrawable<DLPolysegment> palettized(&rendition, 2, kPoints);
  answers::expect_dump(palettized, 1,
                       "    Palettized DLPolysegment: level  1, points = 2, rendition = " +
                           answers::text(&rendition),
                       2 * 8 + 48);
}

}  // namespace
