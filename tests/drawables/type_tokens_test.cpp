#include <gtest/gtest.h>

#include <cstddef>
#include <set>

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

TEST(TypeTokens, OfClassesWithoutAParentAreNull) {
  for (void* parent : {DL::DLDot::_parent_type, DL::Polything::_parent_type,
                       DL::DLImage::_parent_type, DL::DLEllipse::_parent_type}) {
    EXPECT_EQ(parent, nullptr);
  }
}

TEST(TypeTokens, NameTheParentClass) {
  EXPECT_EQ(DL::DLColorizedDot::_parent_type, DL::DLDot::my_type());
  for (void* parent :
       {DL::DLPolydot::_parent_type, DL::DLPolygon::_parent_type, DL::DLPolyline::_parent_type,
        DL::DLPolymarker::_parent_type, DL::DLPolysegment::_parent_type,
        DL::DLPolytriangleWithNoBorder::_parent_type}) {
    EXPECT_EQ(parent, DL::Polything::my_type());
  }
  EXPECT_EQ(DL::DLGouraudPolyline::_parent_type, DL::DLPolyline::my_type());
  EXPECT_EQ(DL::DLPolytriangle::_parent_type, DL::DLPolytriangleWithNoBorder::my_type());
  EXPECT_EQ(DL::DLGouraudPolytriangle::_parent_type, DL::DLPolytriangle::my_type());
  EXPECT_EQ(DL::DLTexturedPolytriangle::_parent_type, DL::DLPolytriangle::my_type());
  EXPECT_EQ(DL::DLEllipticalArc::_parent_type, DL::DLEllipse::my_type());
  EXPECT_EQ(DL::DLEllipticalPie::_parent_type, DL::DLEllipticalArc::my_type());
  EXPECT_EQ(DL::DLColorizedEllipse::_parent_type, DL::DLEllipticalArc::my_type());
}

TEST(TypeTokens, OfARowOfDotsHasNoParent) {
  EXPECT_EQ(DL::DLRowOfDots::_parent_type, nullptr);
  const auto row = samples::make_plain<DL::DLRowOfDots>();
  EXPECT_TRUE(row->isKindOf(DL::DLRowOfDots::my_type()));
  EXPECT_FALSE(row->isKindOf(DL::Polything::my_type()));
}

TEST(TypeTokens, AreAllDifferent) {
  std::set<void*> tokens = {DL::Polything::my_type()};
  std::size_t classes = 1;
#define DL_COUNT_TOKEN(Class)          \
  tokens.insert(DL::Class::my_type()); \
  ++classes;
  DL_PALETTIZED_CLASSES(DL_COUNT_TOKEN)
  DL_PLAIN_ONLY_CLASSES(DL_COUNT_TOKEN)
#undef DL_COUNT_TOKEN
  EXPECT_EQ(tokens.size(), classes);
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
  const auto textured = samples::make_plain<DL::DLTexturedPolytriangle>();
  for (void* ancestor : {DL::DLTexturedPolytriangle::my_type(), DL::DLPolytriangle::my_type(),
                         DL::DLPolytriangleWithNoBorder::my_type(), DL::Polything::my_type()}) {
    EXPECT_TRUE(textured->isKindOf(ancestor));
  }
  const auto pie = samples::make_plain<DL::DLEllipticalPie>();
  EXPECT_TRUE(pie->isKindOf(DL::DLEllipticalArc::my_type()));
  EXPECT_TRUE(pie->isKindOf(DL::DLEllipse::my_type()));
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
  const auto strip = samples::make_plain<DL::DLGouraudPolytriangle>();
  EXPECT_FALSE(strip->isKindOf(DL::DLTexturedPolytriangle::my_type()));
  EXPECT_FALSE(strip->isKindOf(DL::DLPolygon::my_type()));
  const auto image = samples::make_plain<DL::DLImage>();
  EXPECT_FALSE(image->isKindOf(DL::Polything::my_type()));
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
