#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "displaylist/drawables/search.h"
#include "tests/support/point_printing.h"
#include "tests/text/nested_lists.h"

// Where a nested list lies, and how it is found.

namespace {

using namespace nested;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// --- Mapping and bounds -------------------------------------------------------

TEST(NestedList, StartsAtTheChildsOwnPlace) {
  const auto nested = nest(nullptr);
  EXPECT_EQ(nested->display_list(), nullptr);
  EXPECT_EQ(nested->bounds(), LogicalBounds());
  EXPECT_EQ(placed(*nested), LogicalBounds());
  EXPECT_EQ(nested->scale(), (Factors{1, 1}));
  EXPECT_EQ(nested->offset(), (Factors{0, 0}));
  EXPECT_EQ(nested->m_colorData.m_pRendition, nullptr);
}

TEST(NestedList, KeepsTheRendition) {
  LM_Rendition rendition;
  const std::unique_ptr<Nested> nested(new Nested(&rendition, nullptr, nullptr));
  EXPECT_EQ(nested->m_colorData.m_pRendition, &rendition);
}

TEST(NestedList, PointsAreMappedThereAndBack) {
  const auto nested = nest(nullptr, {2, 3}, {10, 20});
  EXPECT_EQ(nested->drawable_to_display({1, 1}), (Factors{12, 23}));
  EXPECT_EQ(nested->display_to_drawable({12, 23}), (Factors{1, 1}));
  EXPECT_EQ(nested->display_to_drawable({0, 0}), (Factors{-5, -20.0 / 3}));
}

TEST(NestedList, PointsAreMappedToTheScreenUnroundedAndUnrotated) {
  const auto nested = nest(new DL::DisplayList);
  DL::DisplayList& child = *nested->display_list();
  child.m_scale = {0.5, -4};
  child.m_offset = {7, 9};
  child.m_bRotated = true;
  EXPECT_EQ(nested->drawable_to_screen({1, 2}), (Factors{7.5, 1}));
  EXPECT_EQ(nested->screen_to_drawable({7.5, 1}), (Factors{1, 2}));
}

TEST(NestedList, BoundsAreThoseGiven) {
  const auto nested = nest(child_with_a_dot({500, 500}), {1, 1}, {0, 0}, LogicalBounds{1, 2, 3, 4});
  EXPECT_EQ(nested->bounds(), (LogicalBounds{1, 2, 3, 4}));
  EXPECT_EQ(placed(*nested), (LogicalBounds{1, 2, 3, 4}));
}

TEST(NestedList, BoundsAreTakenFromAllDrawablesOfTheChild) {
  auto* child = new DL::DisplayList;
  child->m_cMaxOpenDrawables = 4;
  for (std::int32_t i = 0; i <= 100; ++i) child->add(new DL::DLDot({}, {i * 7 - 300, 50 - i * i}));
  DL::DLDot* hidden = new DL::DLDot({}, {1000, 60});
  child->add(hidden);
  hidden->hide();
  ASSERT_FALSE(child->m_pRootGroup->contains_drawables());
  EXPECT_EQ(nest(child)->bounds(), (LogicalBounds{-300, -9950, 1000, 60}));
}

TEST(NestedList, BoundsOfAChildOfNoDrawablesOrNoRootAreEmpty) {
  EXPECT_EQ(nest(new DL::DisplayList)->bounds(), LogicalBounds());
  auto* bare = new DL::DisplayList;
  delete std::exchange(bare->m_pRootGroup, nullptr);
  EXPECT_EQ(nest(bare)->bounds(), LogicalBounds());
}

TEST(NestedList, BoundsAreTakenAnewOnlyWhenAsked) {
  const auto nested = nest(child_with_a_dot({1, 2}));
  nested->display_list()->add(new DL::DLDot({}, {30, 40}));
  EXPECT_EQ(nested->bounds(), (LogicalBounds{1, 2, 1, 2}));
  nested->set_scale({1, 1});
  EXPECT_EQ(nested->bounds(), (LogicalBounds{1, 2, 1, 2}));
  nested->set_bounds(nullptr);
  EXPECT_EQ(nested->bounds(), (LogicalBounds{1, 2, 30, 40}));
}

TEST(NestedList, PlacedBoundsAreTruncatedTowardZero) {
  const LogicalBounds box{0, 0, 10, 10};
  EXPECT_EQ(placed(*nest(nullptr, {0.5, 0.5}, {0.25, 0}, box)), (LogicalBounds{0, 0, 5, 5}));
  const LogicalBounds around{-3, -5, 3, 5};
  EXPECT_EQ(placed(*nest(nullptr, {0.5, 0.5}, {0, 0.25}, around)), (LogicalBounds{-1, -2, 1, 2}));
}

TEST(NestedList, ScaleAndOffsetMoveThePlacedBoundsAtOnce) {
  const auto nested = nest(nullptr, {1, 1}, {0, 0}, LogicalBounds{1, 2, 3, 4});
  nested->set_scale({10, 100});
  EXPECT_EQ(placed(*nested), (LogicalBounds{10, 200, 30, 400}));
  nested->set_offset({-5, 7});
  EXPECT_EQ(placed(*nested), (LogicalBounds{5, 207, 25, 407}));
  EXPECT_EQ(nested->bounds(), (LogicalBounds{1, 2, 3, 4}));
}

TEST(NestedList, MirroredBoundsArePlacedInOrder) {
  const LogicalBounds box{1, 2, 3, 4};
  EXPECT_EQ(placed(*nest(nullptr, {-10, 1}, {0, 0}, box)), (LogicalBounds{-30, 2, -10, 4}));
  EXPECT_EQ(placed(*nest(nullptr, {1, -10}, {0, 0}, box)), (LogicalBounds{1, -40, 3, -20}));
}

TEST(NestedList, PlacedBoundsEndAtThe32BitLimits) {
  const LogicalBounds box{-10, -10, 10, 10};
  const LogicalBounds plane = LogicalBounds::plane();
  EXPECT_EQ(placed(*nest(nullptr, {1e9, 1e300}, {0, 0}, box)), plane);
  EXPECT_EQ(placed(*nest(nullptr, {-1e9, -kInfinity}, {0, 0}, box)), plane);
  EXPECT_EQ(placed(*nest(nullptr, {1, 1}, {1e10, -1e10}, box)),
            (LogicalBounds{INT32_MAX, INT32_MIN, INT32_MAX, INT32_MIN}));
  const LogicalBounds lost = placed(*nest(nullptr, {kNan, 1}, {0, kNan}, box));
  EXPECT_EQ(lost, (LogicalBounds{INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN}));
}

TEST(NestedList, PlacedBoundsWidenAndNeverNarrow) {
  const auto nested = nest(nullptr, {2, 2}, {0, 0}, LogicalBounds{1, 2, 3, 4});
  LogicalBounds bounds{0, 5, 1, 6};
  nested->add_bounds(bounds);
  EXPECT_EQ(bounds, (LogicalBounds{0, 4, 6, 8}));
  LogicalBounds outer{-100, -100, 100, 100};
  nested->add_bounds(outer);
  EXPECT_EQ(outer, (LogicalBounds{-100, -100, 100, 100}));
}

TEST(NestedList, EmptyBoundsLeaveThePlacedOnesAsTheyWere) {
  const auto nested = nest(nullptr, {2, 2}, {0, 0}, LogicalBounds{1, 2, 3, 4});
  nested->set_bounds(nullptr);
  EXPECT_EQ(nested->bounds(), LogicalBounds());
  nested->set_scale({5, 5});
  nested->set_offset({5, 5});
  EXPECT_EQ(placed(*nested), (LogicalBounds{2, 4, 6, 8}));
}

// --- Removal ------------------------------------------------------------------

bool removes(DL::Drawable& drawable, DL::Drawable& prototype, void* type = Nested::my_type()) {
  DL::Search search;
  search.prototype = &prototype;
  search.type = type;
  return drawable.remove(search);
}

TEST(NestedList, RemoveMatchesChildScaleAndOffsetWhateverTheBounds) {
  const auto nested = nest(child_with_a_dot({1, 1}), {2, 3}, {4, 5});
  const std::unique_ptr<Nested> wanted(static_cast<Nested*>(nested->clone()));
  const LogicalBounds other{0, 0, 900, 900};
  wanted->set_bounds(&other);
  EXPECT_TRUE(removes(*nested, *wanted));
  EXPECT_TRUE(removes(*nested, *nested));
}

TEST(NestedList, RemoveMatchesNoOtherChildScaleOffsetOrType) {
  const auto nested = nest(child_with_a_dot({1, 1}), {2, 3}, {4, 5});
  const auto twin = [&] { return std::unique_ptr<Nested>(static_cast<Nested*>(nested->clone())); };
  EXPECT_FALSE(removes(*nested, *nest(child_with_a_dot({1, 1}), {2, 3}, {4, 5})));
  for (const Factors& scale : {Factors{2.5, 3}, Factors{2, 3.5}}) {
    const auto other = twin();
    other->set_scale(scale);
    EXPECT_FALSE(removes(*nested, *other));
  }
  for (const Factors& offset : {Factors{4.5, 5}, Factors{4, 5.5}}) {
    const auto other = twin();
    other->set_offset(offset);
    EXPECT_FALSE(removes(*nested, *other));
  }
  EXPECT_FALSE(removes(*nested, *nested, DL::DLDot::my_type()));
  EXPECT_FALSE(removes(*nested, *nested, nullptr));
}

TEST(NestedList, RemoveComparesAsNumbers) {
  const auto nested = nest(nullptr, {2, 3}, {0.0, 0.0});
  const auto negative_zeros = nest(nullptr, {2, 3}, {-0.0, -0.0});
  EXPECT_TRUE(removes(*nested, *negative_zeros));
  for (const Factors& odd : {Factors{kNan, 1}, Factors{1, kNan}}) {
    const auto scaled = nest(nullptr, odd);
    EXPECT_FALSE(removes(*scaled, *scaled));
    const auto moved = nest(nullptr, {1, 1}, odd);
    EXPECT_FALSE(removes(*moved, *moved));
  }
}

}  // namespace
