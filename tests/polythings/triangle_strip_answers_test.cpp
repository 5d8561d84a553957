#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

#include "lumen/packed_heap.h"
#include "tests/polythings/strips.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/point_printing.h"

// What triangle strips of all classes have in common beside their drawing:
// outlines as vectors, searches, copies, hiding.

namespace {

using Vector = DL::VectorTemplate<long>;

template <class T>
struct TriangleStripsBesidesDrawing : testing::Test {};

using Classes = testing::Types<DL::DLPolytriangleWithNoBorder, DL::DLPolytriangle,
                               DL::DLGouraudPolytriangle, DL::DLTexturedPolytriangle>;
TYPED_TEST_SUITE(TriangleStripsBesidesDrawing, Classes);

TYPED_TEST(TriangleStripsBesidesDrawing, OutlineIsOneClosedLoopAlongTheBoundary) {
  for (int count = 3; count <= 40; ++count) {
    const auto strip = strips::make<TypeParam>(strips::numbered_points(count));
    ASSERT_EQ(strip->get_vector_count(), count);
    EXPECT_TRUE(strip->supports_fast_vector_iterator());
    std::vector<std::int32_t> walk = {0};
    for (int i = 0; i < count; ++i) {
      Vector vector{};
      EXPECT_TRUE(strip->get_vector(i, vector));
      EXPECT_EQ(vector.from.x, walk.back());
      EXPECT_EQ(vector.from.y, vector.from.x % 2);
      walk.push_back(vector.to.x);
    }
    EXPECT_TRUE(strips::is_outline_of_strip(walk, count)) << count;
  }
}

TYPED_TEST(TriangleStripsBesidesDrawing, OutlineGoesForwardOverEvenPointsAndBackOverOddOnes) {
  const auto walk_of = [](int count) {
    const auto strip = strips::make<TypeParam>(strips::numbered_points(count));
    std::vector<std::int32_t> walk;
    for (int i = 0; i < count; ++i) {
      Vector vector{};
      strip->get_vector(i, vector);
      walk.push_back(vector.from.x);
      if (i == count - 1) walk.push_back(vector.to.x);
    }
    return walk;
  };
  EXPECT_EQ(walk_of(5), (std::vector<std::int32_t>{0, 2, 4, 3, 1, 0}));
  EXPECT_EQ(walk_of(6), (std::vector<std::int32_t>{0, 2, 4, 5, 3, 1, 0}));
  EXPECT_EQ(walk_of(2), (std::vector<std::int32_t>{0, 1, 0}));
  EXPECT_EQ(walk_of(1), (std::vector<std::int32_t>{0, 0}));
}

TYPED_TEST(TriangleStripsBesidesDrawing, AreSteppedAroundByThePlainIterator) {
  const auto strip = strips::make<TypeParam>(strips::numbered_points(5));
  for (const bool flag : {false, true}) {
    const std::unique_ptr<DL::DrawableVectorIterator> iterator(strip->create_vector_iterator(flag));
    const DL::DrawableVectorIterator& indexed = *iterator;
    EXPECT_EQ(typeid(indexed), typeid(DL::DrawableVectorIterator));
    for (int i = 0; i < 5; ++i) {
      Vector vector{};
      strip->get_vector(i, vector);
      EXPECT_EQ(iterator->m_vector, vector);
      EXPECT_EQ(iterator->next() != nullptr, i < 4);
    }
    ASSERT_NE(iterator->prev(), nullptr);
    EXPECT_EQ(iterator->m_vector.to.x, 0);
  }
}

TYPED_TEST(TriangleStripsBesidesDrawing,
           AreFoundByASearchForTheirPointsWhateverTheColorAndTheVertices) {
  const auto wanted = strips::make<TypeParam>(4, strips::kPoints, {1});
  EXPECT_TRUE(answers::finds(*wanted, *strips::make<TypeParam>(4, strips::kPoints, {2})));
  const auto is_found = [&](const std::vector<LogicalPoint>& points) {
    return answers::finds(*wanted, *strips::make<TypeParam>(points));
  };
  EXPECT_TRUE(is_found({{1, 2}, {3, 4}, {5, 6}, {7, 8}}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {5, 6}}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {5, 6}, {7, 8}, {7, 8}}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {5, 6}, {7, 9}}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {5, 6}, {8, 8}}));
  EXPECT_FALSE(is_found({{3, 4}, {1, 2}, {5, 6}, {7, 8}}));
}

TYPED_TEST(TriangleStripsBesidesDrawing, AreFoundByASearchForExactlyTheirClassAlone) {
  const std::unique_ptr<DL::Drawable> others[] = {
      strips::make<DL::DLPolytriangleWithNoBorder>(4, strips::kPoints),
      strips::make<DL::DLPolytriangle>(4, strips::kPoints),
      strips::make<DL::DLGouraudPolytriangle>(4, strips::kPoints),
      strips::make<DL::DLTexturedPolytriangle>(4, strips::kPoints),
      std::make_unique<DL::DLPolygon>(LM_RGB32{0x10}, 4, strips::kPoints)};
  const auto strip = strips::make<TypeParam>(4, strips::kPoints);
  for (const auto& other : others) {
    EXPECT_EQ(answers::finds(*other, *strip), other->type() == TypeParam::my_type());
  }
}

TYPED_TEST(TriangleStripsBesidesDrawing, CloneHasPointsOfItsOwnAndNoNeighbour) {
  const auto strip = strips::make<TypeParam>(4, strips::kPoints, {0x123456});
  strip->m_pNext = strip.get();
  strip->set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(strip.get()));
  const std::unique_ptr<DL::Drawable> copy(strip->clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->type(), TypeParam::my_type());
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_EQ(copy->m_colorData.m_color.word, 0x123456U);
  const auto* polything = static_cast<DL::Polything*>(copy.get());
  EXPECT_NE(polything->points, strip->points);
  EXPECT_TRUE(answers::finds(*strip, *copy));
  RecordedList recorded;
  EXPECT_EQ(answers::all_ways(recorded, *copy), answers::all_ways(recorded, *strip));
  EXPECT_EQ(strip->partial_clone(0, 1), nullptr);
}

TYPED_TEST(TriangleStripsBesidesDrawing, CloneIsNullAndLeavesNothingWhereverMemoryRunsOut) {
  const auto visible = strips::make<TypeParam>(4, strips::kPoints);
  const auto hidden = strips::make<TypeParam>(4, strips::kPoints);
  hidden->hide();
  for (DL::Drawable* original :
       {static_cast<DL::Drawable*>(visible.get()), static_cast<DL::Drawable*>(hidden.get())}) {
    const std::size_t in_use = lumen::PackedHeap::process_heap().bytes_in_use();
    std::int64_t refusals = 0;
    for (; refusals < 10; ++refusals) {
      const FailingDefaultHeap failing(refusals);
      const std::unique_ptr<DL::Drawable> copy(original->clone());
      if (copy != nullptr) break;
      EXPECT_EQ(lumen::PackedHeap::process_heap().bytes_in_use(), in_use);
    }
    EXPECT_GE(refusals, 2);  // the object and its points
    EXPECT_LT(refusals, 10);
    EXPECT_EQ(lumen::PackedHeap::process_heap().bytes_in_use(), in_use);
  }
}

TYPED_TEST(TriangleStripsBesidesDrawing, HiddenDrawNothingWithTheirOutlineEither) {
  RecordedList recorded;
  recorded.list.m_rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  const std::unique_ptr<DL::Drawable> strip = strips::make<TypeParam>(4, strips::kPoints);
  strip->hide();
  EXPECT_TRUE(answers::all_ways(recorded, *strip).empty());
  const std::unique_ptr<DL::Drawable> copy(strip->clone());
  EXPECT_TRUE(copy->is_hidden());
  strip->unhide();
  EXPECT_FALSE(answers::all_ways(recorded, *strip).empty());
}

}  // namespace
