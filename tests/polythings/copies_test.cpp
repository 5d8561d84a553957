#include <gtest/gtest.h>

#include <memory>

#include "tests/support/failing_default_heap.h"
#include "tests/support/sample_drawables.h"

// What clones of all polythings have in common.

namespace {

template <class T>
class EveryPolything : public testing::Test {};
using Polythings = testing::Types<DL::DLPolyline, DL::DLGouraudPolyline, DL::DLPolygon>;
TYPED_TEST_SUITE(EveryPolything, Polythings);

TYPED_TEST(EveryPolything, CloneHasPointsOfItsOwn) {
  const auto original = samples::make_plain<TypeParam>();
  const std::unique_ptr<DL::Drawable> copy(original->clone());
  const auto* polything = static_cast<DL::Polything*>(copy.get());
  ASSERT_EQ(polything->count, original->count);
  EXPECT_NE(polything->points, original->points);
  for (int i = 0; i < original->count; ++i) EXPECT_EQ(polything->points[i], original->points[i]);
}

TYPED_TEST(EveryPolything, CloneKeepsAll64BitsOfTheColorData) {
  const auto original = samples::make_plain<TypeParam>();
  original->m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  const std::unique_ptr<DL::Drawable> copy(original->clone());
  EXPECT_TRUE(copy->m_colorData == original->m_colorData);
  DL::Search search;
  search.prototype = original.get();
  search.type = original->type();
  EXPECT_TRUE(copy->remove(search));
}

TYPED_TEST(EveryPolything, PartialCloneKeepsAll64BitsOfTheColorData) {
  const auto original = samples::make_plain<TypeParam>();
  original->m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  const std::unique_ptr<DL::Drawable> part(original->partial_clone(0, 1));
  EXPECT_TRUE(part == nullptr || part->m_colorData == original->m_colorData);
}

TYPED_TEST(EveryPolything, OfNoPointsIsClonedWithAnArray) {
  const TypeParam original(DL::class_change::kUnfilled);
  const std::unique_ptr<DL::Drawable> copy(const_cast<TypeParam&>(original).clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(static_cast<DL::Polything*>(copy.get())->count, 0);
  EXPECT_NE(static_cast<DL::Polything*>(copy.get())->points, nullptr);
}

TYPED_TEST(EveryPolything, CloneIsNullWhereverMemoryRunsOut) {
  const std::unique_ptr<DL::Drawable> visible = samples::make_plain<TypeParam>();
  const std::unique_ptr<DL::Drawable> hidden = samples::make_plain<TypeParam>();
  hidden->hide();
  for (DL::Drawable* original : {visible.get(), hidden.get()}) {
    int refusals = 0;
    for (std::int64_t good_requests = 0; good_requests < 10; ++good_requests) {
      const FailingDefaultHeap failing(good_requests);
      const std::unique_ptr<DL::Drawable> copy(original->clone());
      if (copy != nullptr) break;
      ++refusals;
    }
    // The object, the points and, for some, the colours.
    EXPECT_GE(refusals, 2);
    EXPECT_LE(refusals, 3);
  }
}

TEST(Copies, OfAPalettizedPolylineAreNullWhereverMemoryRunsOut) {
  LM_Rendition rendition;
  const std::unique_ptr<DL::Drawable> original =
      samples::make_palettized<DL::DLPolyline>(&rendition);
  for (const std::int64_t good_requests : {0, 1}) {
    {
      const FailingDefaultHeap failing(good_requests);
      EXPECT_EQ(original->clone(), nullptr);
    }
    const FailingDefaultHeap failing(good_requests);
    EXPECT_EQ(original->partial_clone(0, 1), nullptr);
  }
}

}  // namespace
