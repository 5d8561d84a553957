#include <gtest/gtest.h>

#include "tests/support/client_drawables.h"
#include "tests/support/sample_drawables.h"

namespace {

TEST(TypeTokens, AreTheAddressesOfTheParentTokens) {
#define DL_EXPECT_TOKEN(Class) \
  EXPECT_EQ(DL::Class::my_type(), static_cast<void*>(&DL::Class::_parent_type)) << #Class;
  DL_PALETTIZED_CLASSES(DL_EXPECT_TOKEN)
  DL_PLAIN_ONLY_CLASSES(DL_EXPECT_TOKEN)
#undef DL_EXPECT_TOKEN
  EXPECT_EQ(DL::Polything::my_type(), static_cast<void*>(&DL::Polything::_parent_type));
}

TEST(TypeTokens, NameTheParentClass) {
  EXPECT_EQ(DL::DLDot::_parent_type, nullptr);
  EXPECT_EQ(DL::Polything::_parent_type, nullptr);
  EXPECT_EQ(DL::DLColorizedDot::_parent_type, DL::DLDot::my_type());
  EXPECT_EQ(DL::DLPolyline::_parent_type, DL::Polything::my_type());
  EXPECT_EQ(DL::DLPolygon::_parent_type, DL::Polything::my_type());
  EXPECT_EQ(DL::DLGouraudPolyline::_parent_type, DL::DLPolyline::my_type());
}

TEST(TypeTokens, OfTheBaseIsNull) {
  EXPECT_EQ(DL::Drawable::my_type(), nullptr);
}

TEST(IsKindOf, IsTrueForTheClassAndItsAncestors) {
  const auto gouraud = samples::make_plain<DL::DLGouraudPolyline>();
  EXPECT_TRUE(gouraud->isKindOf(DL::DLGouraudPolyline::my_type()));
  EXPECT_TRUE(gouraud->isKindOf(DL::DLPolyline::my_type()));
  EXPECT_TRUE(gouraud->isKindOf(DL::Polything::my_type()));
  const auto colorized = samples::make_plain<DL::DLColorizedDot>();
  EXPECT_TRUE(colorized->isKindOf(DL::DLDot::my_type()));
}

TEST(IsKindOf, IsFalseForSiblingsAndDescendants) {
  const auto polygon = samples::make_plain<DL::DLPolygon>();
  EXPECT_FALSE(polygon->isKindOf(DL::DLPolyline::my_type()));
  const auto polyline = samples::make_plain<DL::DLPolyline>();
  EXPECT_FALSE(polyline->isKindOf(DL::DLGouraudPolyline::my_type()));
  EXPECT_FALSE(polyline->isKindOf(DL::DLDot::my_type()));
  const auto dot = samples::make_plain<DL::DLDot>();
  EXPECT_FALSE(dot->isKindOf(DL::DLColorizedDot::my_type()));
  EXPECT_FALSE(dot->isKindOf(DL::Polything::my_type()));
}

TEST(IsKindOf, IsFalseForTheBaseOfEveryClass) {
#define DL_EXPECT_NOT_BASE(Class) \
  EXPECT_FALSE(samples::make_plain<DL::Class>()->isKindOf(DL::Drawable::my_type())) << #Class;
  DL_PALETTIZED_CLASSES(DL_EXPECT_NOT_BASE)
  DL_PLAIN_ONLY_CLASSES(DL_EXPECT_NOT_BASE)
#undef DL_EXPECT_NOT_BASE
}

/// A dot of a client, with a token of its own.
class SpecialDot final : public DL::DLDot {
 public:
  SpecialDot() : DLDot({}, {1, 2}) {}
  void* type() const override { return &_parent_type; }
  static inline void* _parent_type = &DL::DLDot::_parent_type;
};

TEST(IsKindOf, KnowsClassesOfClients) {
  const SpecialDot special;
  EXPECT_TRUE(special.isKindOf(special.type()));
  EXPECT_TRUE(special.isKindOf(DL::DLDot::my_type()));
  EXPECT_FALSE(special.isKindOf(DL::DLColorizedDot::my_type()));
  EXPECT_FALSE(client::Mark().isKindOf(DL::DLDot::my_type()));
}

}  // namespace
