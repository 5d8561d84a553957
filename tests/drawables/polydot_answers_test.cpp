#include <gtest/gtest.h>

#include <memory>

#include "displaylist/drawables/polydot.h"
#include "lumen/packed_heap.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/palette.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

// Polydots without their drawing: buffers, copies, searches, vectors, records.

namespace {

using answers::Words;
using DL::DLPolydot;
using Vector = DL::VectorTemplate<long>;

constexpr LogicalPoint kPoints[] = {{1, 2}, {3, 4}, {5, -6}, {7, 8}, {9, 10}};
constexpr std::uint32_t kTag = 0x80000100;
constexpr std::uint32_t kIndex = 0x20000001;
constexpr std::uint32_t kColor = 0x20000002;
constexpr std::uint32_t kEnd = 0x10000002;

struct PolydotBesidesDrawing : testing::Test {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  DLPolydot dots{{0x00FF0010}, 5, kPoints};
};

/// How often the default heap is asked for memory.
template <class Work>
int default_heap_requests(const Work& work) {
  constexpr int plenty = 1000;
  const FailingDefaultHeap counting(plenty);
  work();
  int left = 0;
  while (!FailingDefaultHeap::refuses()) ++left;
  return plenty - left;
}

std::vector<LogicalPoint> row_of_points(int count) {
  std::vector<LogicalPoint> points;
  for (int i = 0; i < count; ++i) points.push_back({i, 2 * i});
  return points;
}

TEST_F(PolydotBesidesDrawing, AsksTheDefaultHeapForABufferFromPoint257On) {
  const struct { int count, requests; } cases[] = {{1, 0}, {255, 0}, {256, 0}, {257, 1}, {5000, 1}};
  for (const auto& [count, requests] : cases) {
    const std::vector<LogicalPoint> points = row_of_points(count);
    DLPolydot many({0x10}, count, points.data());
    const std::size_t in_use = lumen::PackedHeap::process_heap().bytes_in_use();
    EXPECT_EQ(default_heap_requests([&] { many.draw_unclipped(list); }), requests) << count;
    EXPECT_EQ(default_heap_requests([&] { many.draw_clipped(list); }), requests) << count;
    EXPECT_EQ(lumen::PackedHeap::process_heap().bytes_in_use(), in_use);
  }
}

TEST_F(PolydotBesidesDrawing, DrawsEveryPointFromEitherBuffer) {
  for (const int count : {256, 257, 1000}) {
    const std::vector<LogicalPoint> points = row_of_points(count);
    DLPolydot many({0x10}, count, points.data());
    many.draw_clipped(list);
    const auto& calls = recorded.recorder->calls();
    ASSERT_EQ(calls.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      const LogicalPoint p = points[points.size() - 1 - i];
      ASSERT_EQ(calls[i].points, (std::vector<LM_DCI_Point>{{p.x, p.y, 0}}));
    }
    recorded.recorder->clear();
  }
}

TEST_F(PolydotBesidesDrawing, WithoutMemoryForItsBufferDrawsNothing) {
  const std::vector<LogicalPoint> points = row_of_points(257);
  DLPolydot many({0x10}, 257, points.data());
  {
    const FailingDefaultHeap no_memory;
    EXPECT_TRUE(answers::all_ways(recorded, many).empty());
  }
  EXPECT_EQ(answers::clipped(recorded, many).size(), 257U);
}

TEST_F(PolydotBesidesDrawing, MatchesEverySearch) {
  DL::Search nothing;
  EXPECT_TRUE(dots.remove(nothing));
  DL::DLDot dot({}, {100, 100});
  EXPECT_TRUE(answers::finds(dot, dots));
  DLPolydot other({1}, 2, kPoints);
  EXPECT_TRUE(answers::finds(other, dots));
  LM_Rendition rendition;
  DL::PalettizedDrawable<DLPolydot> palettized(&rendition, 5, kPoints);
  EXPECT_TRUE(answers::finds(dot, palettized));
  DLPolydot none({}, 0, nullptr);
  EXPECT_TRUE(answers::finds(dot, none));
}

TEST_F(PolydotBesidesDrawing, HasADegenerateVectorAtEachPoint) {
  ASSERT_EQ(dots.get_vector_count(), 5);
  EXPECT_TRUE(dots.supports_fast_vector_iterator());
  for (int i = 0; i < 5; ++i) {
    Vector vector{};
    EXPECT_TRUE(dots.get_vector(i, vector));
    EXPECT_EQ(vector, (Vector{kPoints[i], kPoints[i]}));
  }
}

TEST_F(PolydotBesidesDrawing, IsSteppedThroughLikeAPolyline) {
  for (const bool flag : {false, true}) {
    const std::unique_ptr<DL::DrawableVectorIterator> iterator(dots.create_vector_iterator(flag));
    EXPECT_EQ(iterator->m_vector, (Vector{kPoints[0], kPoints[1]}));
    for (int i = 1; i < 4; ++i) {
      ASSERT_NE(iterator->next(), nullptr);
      EXPECT_EQ(iterator->m_vector, (Vector{kPoints[i], kPoints[i + 1]}));
    }
    EXPECT_EQ(iterator->next(), nullptr);
  }
}

TEST_F(PolydotBesidesDrawing, OfOnePointIsOneVector) {
  DLPolydot one({}, 1, kPoints);
  EXPECT_EQ(one.get_vector_count(), 1);
  Vector vector{};
  EXPECT_TRUE(one.get_vector(0, vector));
  EXPECT_EQ(vector, (Vector{kPoints[0], kPoints[0]}));
}

TEST_F(PolydotBesidesDrawing, OfOnePointHasNoStep) {
  DLPolydot one({}, 1, kPoints);
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(one.create_vector_iterator(false));
  ASSERT_NE(iterator, nullptr);
  EXPECT_EQ(iterator->m_vector, (DL::VectorTemplate<long>{kPoints[0], kPoints[0]}));
  EXPECT_EQ(iterator->next(), nullptr);
  EXPECT_EQ(iterator->prev(), nullptr);
}

TEST_F(PolydotBesidesDrawing, WidensBoundsToItsPoints) {
  EXPECT_EQ(bounds_of(dots), LogicalBounds(1, -6, 9, 10));
}

TEST_F(PolydotBesidesDrawing, CloneHasPointsOfItsOwn) {
  dots.m_pNext = &dots;
  dots.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&recorded));
  const std::unique_ptr<DL::Drawable> copy(dots.clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->type(), DLPolydot::my_type());
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_EQ(copy->m_colorData.m_color.word, 0x00FF0010U);
  const auto* polydot = static_cast<DLPolydot*>(copy.get());
  ASSERT_EQ(polydot->count, 5);
  EXPECT_NE(polydot->points, dots.points);
  EXPECT_TRUE(std::equal(kPoints, kPoints + 5, polydot->points));
}

TEST_F(PolydotBesidesDrawing, PartialCloneIsTheRunOfPoints) {
  dots.m_pNext = &dots;
  dots.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&recorded));
  for (int first = 0; first < 5; ++first) {
    for (int n = 0; first + n <= 5; ++n) {
      const std::unique_ptr<DL::Drawable> part(dots.partial_clone(first, n));
      ASSERT_NE(part, nullptr);
      EXPECT_EQ(part->type(), DLPolydot::my_type());
      EXPECT_EQ(part->m_pNext, nullptr);
      EXPECT_EQ(part->drawable_info(), nullptr);
      EXPECT_EQ(part->m_colorData.m_color.word, 0x00FF0010U);
      const auto* run = static_cast<DLPolydot*>(part.get());
      ASSERT_EQ(run->count, n);
      EXPECT_TRUE(std::equal(run->points, run->points + n, kPoints + first));
    }
  }
}

TEST_F(PolydotBesidesDrawing, CopiesAreNullAndLeaveNothingWhereverMemoryRunsOut) {
  LM_Rendition rendition;
  const std::unique_ptr<DL::Drawable> originals[] = {
      std::make_unique<DLPolydot>(LM_RGB32{1}, 5, kPoints),
      std::make_unique<DL::PalettizedDrawable<DLPolydot>>(&rendition, 5, kPoints),
      std::make_unique<DLPolydot>(LM_RGB32{1}, 5, kPoints)};
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
    const FailingDefaultHeap failing(2);
    const std::unique_ptr<DL::Drawable> copy(original->clone());
    EXPECT_NE(copy, nullptr);
  }
}

TEST_F(PolydotBesidesDrawing, HiddenDrawsNothingAndClonesHiddenWhileItsPartsAreVisible) {
  const std::unique_ptr<DL::Drawable> hidden(dots.clone());
  hidden->hide();
  EXPECT_TRUE(answers::all_ways(recorded, *hidden).empty());
  const std::unique_ptr<DL::Drawable> copy(hidden->clone());
  EXPECT_TRUE(copy->is_hidden());
  EXPECT_EQ(copy->type(), DLPolydot::my_type());
  const std::unique_ptr<DL::Drawable> part(hidden->partial_clone(0, 2));
  EXPECT_FALSE(part->is_hidden());
}

TEST_F(PolydotBesidesDrawing, RecordIsItsTagItsCountAndItsPoints) {
  Palette palette(list);
  EXPECT_EQ(answers::record_of(dots, list),
            (Words{kTag, 5, 1, 2, 3, 4, 5, 0xFFFFFFFA, 7, 8, 9, 10, kColor, 0x00FF0010, kEnd}));
  DLPolydot none({3}, 0, kPoints);
  EXPECT_EQ(answers::record_of(none, list), (Words{kTag, 0, kColor, 3, kEnd}));
}

TEST_F(PolydotBesidesDrawing, RecordOfAPalettizedOneHoldsTheIndexAndIsReadBack) {
  Palette palette(list);
  DL::PalettizedDrawable<DLPolydot> palettized(palette.at(12), 2, kPoints);
  const Words words = {kTag, 2, 1, 2, 3, 4, kIndex, 12, kEnd};
  EXPECT_EQ(answers::record_of(palettized, list), words);
  MemoryStream stream(words);
  const DrawableChain chain(read_drawables(stream, list));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_TRUE(stream.at_end());
  EXPECT_EQ(chain.first()->type(), DLPolydot::my_type());
  EXPECT_TRUE(chain.first()->is_palettized());
  EXPECT_EQ(chain.first()->m_colorData.m_pRendition, palette.at(12));
  EXPECT_EQ(answers::record_of(*chain.first(), list), words);
  EXPECT_TRUE(Palette::unsupported.empty());
}

TEST_F(PolydotBesidesDrawing, RecordOfAPlainOneIsReadPalettizedWithItsColorAsTheIndex) {
  Palette palette(list);
  MemoryStream stream(Words{kTag, 1, 1, 2, kColor, 0x10, kEnd});
  const DrawableChain chain(read_drawables(stream, list));
  EXPECT_EQ(palette.asked_indices, std::vector<int>{0x10});
  EXPECT_TRUE(chain.first()->is_palettized());
}

TEST_F(PolydotBesidesDrawing, RecordOfNoPointsIsReadWithoutAnArray) {
  Palette palette(list);
  for (const std::uint32_t count : {0U, 0xFFFFFFFFU, 0x80000000U}) {
    MemoryStream stream(Words{kTag, count, kIndex, 1, kEnd});
    const DrawableChain chain(read_drawables(stream, list));
    ASSERT_NE(chain.first(), nullptr);
    EXPECT_TRUE(stream.at_end());
    EXPECT_EQ(static_cast<DLPolydot*>(chain.first())->points, nullptr);
    EXPECT_TRUE(answers::all_ways(recorded, *chain.first()).empty());
    EXPECT_TRUE(bounds_of(*chain.first()).is_empty());
  }
}

TEST_F(PolydotBesidesDrawing, DumpLineTellsLevelCountAndColor) {
  answers::expect_dump(dots, 3, "            DLPolydot: level  3, points = 5, color = 16711696",
                       5 * 8 + 48);
  DLPolydot none({0xFFFFFFFF}, 0, kPoints);
  answers::expect_dump(none, 0, "DLPolydot: level  0, points = 0, color = -1", 48);
  LM_Rendition rendition;
  const DL::PalettizedDrawable<DLPolydot> palettized(&rendition, 2, kPoints);
  answers::expect_dump(
      palettized, 1,
      "    Palettized DLPolydot: level  1, points = 2, rendition = " + answers::text(&rendition),
      2 * 8 + 48);
}

}  // namespace
