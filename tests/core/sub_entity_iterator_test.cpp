#include <gtest/gtest.h>

#include "displaylist/core/iterators.h"
#include "tests/support/grove.h"
#include "tests/support/iterator_walk.h"

namespace {

using DL::Drawable;
using DL::Group;
using DL::SubEntityIterator;
using Ids = std::vector<int>;

struct SubEntity : testing::Test {
  SubEntity() : all(drawables_of(grove.list)) {}
  Drawable* probe(int id) { return all[static_cast<std::size_t>(id - 1)]; }
  Ids walk(int from, int last, Group* start) {
    return ids_walked(SubEntityIterator(probe(from), probe(last), start));
  }

  Grove grove;
  std::vector<Drawable*> all;
};

TEST_F(SubEntity, FromADrawableToItselfYieldsThatDrawable) {
  for (int id = 1; id <= 4; ++id) {
    SubEntityIterator at(probe(id), probe(id), &grove.root());
    EXPECT_EQ(at.m_pCurrent, probe(id));
    EXPECT_EQ(at.m_pLast, probe(id));
    EXPECT_EQ(at.next(), nullptr);
    EXPECT_EQ(at.m_pCurrent, nullptr);
    EXPECT_EQ(at.m_pGroup, nullptr);
    EXPECT_EQ(at.next(), nullptr);
  }
}

TEST_F(SubEntity, YieldsBothEndsAndWhatLiesBetweenThem) {
  EXPECT_EQ(walk(1, 4, &grove.root()), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(walk(2, 3, &grove.root()), (Ids{2, 3}));
  EXPECT_EQ(walk(2, 4, &grove.root()), (Ids{2, 3, 4}));
}

TEST_F(SubEntity, StopsInTheMiddleOfAChain) {
  ProbeScene scene;
  for (int i = 0; i < 5; ++i) scene.add({i, 0, i, 0});
  const auto chain = drawables_of(scene.list);
  EXPECT_EQ(ids_walked(SubEntityIterator(chain[1], chain[3], &scene.root())), (Ids{2, 3, 4}));
}

TEST_F(SubEntity, StartsAtAnyGroupBefore) {
  for (Group* start :
       {&grove.root(), grove.right, grove.inner, grove.shallow, grove.deeper, grove.deep}) {
    SubEntityIterator at(probe(3), probe(4), start);
    EXPECT_EQ(at.m_pGroup, grove.deep);
    EXPECT_EQ(ids_walked(at), (Ids{3, 4}));
  }
}

TEST_F(SubEntity, FromADrawableBeforeTheStartIsEmpty) {
  SubEntityIterator at(probe(2), probe(4), grove.deeper);
  EXPECT_EQ(at.m_pGroup, nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST_F(SubEntity, OfNothingIsEmpty) {
  SubEntityIterator at;
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.next(), nullptr);
  EXPECT_EQ(at.init(probe(1), probe(4), nullptr), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.next(), nullptr);
  EXPECT_EQ(at.init(nullptr, probe(4), &grove.root()), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST_F(SubEntity, IsEmptyAgainAfterAWalkOfSomething) {
  SubEntityIterator at(probe(1), probe(4), &grove.root());
  EXPECT_EQ(at.init(probe(1), probe(4), nullptr), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.m_pGroup, nullptr);
  EXPECT_EQ(at.init(probe(2), probe(3), &grove.root()), grove.shallow);
  EXPECT_EQ(ids_walked(at), (Ids{2, 3}));
}

TEST_F(SubEntity, ToADrawableThatDoesNotFollowGoesToTheEnd) {
  EXPECT_EQ(walk(3, 1, &grove.root()), (Ids{3, 4}));
  EXPECT_EQ(ids_walked(SubEntityIterator(probe(2), nullptr, &grove.root())), (Ids{2, 3, 4}));
}

TEST_F(SubEntity, PassesOverEmptyGroups) {
  grove.right->remove_all();
  grove.shallow->remove_all();
  EXPECT_EQ(walk(3, 4, &grove.root()), (Ids{3, 4}));
  EXPECT_EQ(walk(3, 4, grove.right), (Ids{3, 4}));
}

TEST_F(SubEntity, NextUntilIsNotHeldByTheEnd) {
  SubEntityIterator at(probe(1), probe(2), &grove.root());
  EXPECT_EQ(at.next_until(probe(2)), probe(2));
  EXPECT_EQ(at.next(), nullptr);
  at.init(probe(1), probe(2), &grove.root());
  EXPECT_EQ(at.next_until(probe(3)), probe(3));
  EXPECT_EQ(at.next(), probe(4));
  EXPECT_EQ(at.next_until(probe(1)), nullptr);
}

TEST_F(SubEntity, NextGroupIsTheNextInDrawingOrder) {
  SubEntityIterator at(probe(2), probe(3), &grove.root());
  EXPECT_EQ(at.next_group(), grove.deep);
  EXPECT_EQ(at.prev(), nullptr);
  EXPECT_EQ(at.reserved_step(), nullptr);
}

}  // namespace
