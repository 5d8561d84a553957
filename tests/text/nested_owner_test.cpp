#include <gtest/gtest.h>

#include <typeinfo>

#include "tests/support/failing_default_heap.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_info.h"
#include "tests/text/nested_lists.h"

// Who owns the child; copies of a nested list, and hidden ones.

namespace {

using namespace nested;

// --- The child and its owners -------------------------------------------------

TEST(NestedOwner, DestroysItsChild) {
  ProbeChild child;
  child.add(1, {0, 0, 1, 1});
  auto nested = nest(child.list);
  EXPECT_EQ(child.log.alive, 1);
  nested.reset();
  EXPECT_EQ(child.log.alive, 0);
}

TEST(NestedOwner, DestroysItsChildThroughTheVirtualDestructor) {
  struct ClientList : DL::DisplayList {
    explicit ClientList(int& destroyed) : m_destroyed(destroyed) {}
    ~ClientList() override { ++m_destroyed; }
    int& m_destroyed;
  };
  int destroyed = 0;
  nest(new ClientList(destroyed)).reset();
  EXPECT_EQ(destroyed, 1);
}

TEST(NestedOwner, ReplacedChildIsTheCallers) {
  ProbeChild first;
  first.add(1, {0, 0, 1, 1});
  ProbeChild second;
  second.add(2, {5, 6, 7, 8});
  auto nested = nest(first.list, {2, 1}, {0, 0});
  nested->set_display_list(second.list, nullptr);
  EXPECT_EQ(nested->display_list(), second.list);
  EXPECT_EQ(nested->bounds(), (LogicalBounds{5, 6, 7, 8}));
  EXPECT_EQ(placed(*nested), (LogicalBounds{10, 6, 14, 8}));
  EXPECT_EQ(first.log.alive, 1);
  delete first.list;
  const LogicalBounds box{0, 0, 1, 1};
  nested->set_display_list(second.list, &box);
  EXPECT_EQ(nested->bounds(), box);
  nested.reset();
  EXPECT_EQ(second.log.alive, 0);
}

TEST(NestedOwner, ChildTakenAwayIsNotDestroyed) {
  ProbeChild child;
  child.add(1, {0, 0, 1, 1});
  auto nested = nest(child.list);
  nested->set_display_list(nullptr, nullptr);
  EXPECT_EQ(nested->bounds(), LogicalBounds());
  nested.reset();
  EXPECT_EQ(child.log.alive, 1);
  delete child.list;
}

TEST(NestedOwner, LastOfTheClonesDestroysTheChild) {
  for (const bool original_first : {true, false}) {
    ProbeChild child;
    child.add(1, {0, 0, 1, 1});
    std::unique_ptr<DL::Drawable> first = nest(child.list);
    std::unique_ptr<DL::Drawable> second(first->clone());
    std::unique_ptr<DL::Drawable> third(second->clone());
    (original_first ? first : third).reset();
    second.reset();
    EXPECT_EQ(child.log.alive, 1);
    (original_first ? third : first).reset();
    EXPECT_EQ(child.log.alive, 0);
  }
}

TEST(NestedOwner, ChildReplacedInOneIsStillThatOfItsClones) {
  ProbeChild child;
  child.add(1, {0, 0, 1, 1});
  auto nested = nest(child.list);
  std::unique_ptr<Nested> copy(static_cast<Nested*>(nested->clone()));
  nested->set_display_list(nullptr, nullptr);
  nested.reset();
  EXPECT_EQ(copy->display_list(), child.list);
  copy.reset();
  EXPECT_EQ(child.log.alive, 0);
}

TEST(NestedOwner, ParentDestroysWhatIsNestedInIt) {
  ProbeChild child;
  child.add(1, {0, 0, 1, 1});
  {
    DL::DisplayList outer;
    auto* middle = new DL::DisplayList;
    middle->add(nest(child.list).release());
    outer.add(nest(middle).release());
    EXPECT_EQ(child.log.alive, 1);
  }
  EXPECT_EQ(child.log.alive, 0);
}

// --- Copies and variants ------------------------------------------------------

TEST(NestedOwner, CloneHasTheSameFields) {
  LM_Rendition rendition;
  const LogicalBounds box{1, 2, 3, 4};
  const std::unique_ptr<Nested> nested(new Nested(&rendition, child_with_a_dot({9, 9}), &box));
  nested->set_scale({2, -3});
  nested->set_offset({0.5, 7});
  DL::DLDot neighbour({}, {0, 0});
  ProbeInfo info(true);
  nested->m_pNext = &neighbour;
  nested->set_drawable_info(&info);
  const std::unique_ptr<Nested> copy(static_cast<Nested*>(nested->clone()));
  EXPECT_EQ(copy->m_colorData.m_pRendition, &rendition);
  EXPECT_EQ(copy->display_list(), nested->display_list());
  EXPECT_EQ(copy->bounds(), box);
  EXPECT_EQ(placed(*copy), placed(*nested));
  EXPECT_EQ(copy->scale(), (Factors{2, -3}));
  EXPECT_EQ(copy->offset(), (Factors{0.5, 7}));
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
}

TEST(NestedOwner, CloneKeepsPlacedBoundsThatAreOfNoBounds) {
  const auto nested = nest(nullptr, {2, 2}, {0, 0}, LogicalBounds{1, 2, 3, 4});
  nested->set_bounds(nullptr);
  const std::unique_ptr<DL::Drawable> copy(nested->clone());
  EXPECT_EQ(placed(*copy), (LogicalBounds{2, 4, 6, 8}));
}

TEST(NestedOwner, CopyGivesUpItsOwnChild) {
  struct Client : Nested {
    using Nested::copy;
    using Nested::Nested;
  };
  ProbeChild shared;
  shared.add(1, {0, 0, 1, 1});
  ProbeChild given_up;
  given_up.add(2, {0, 0, 1, 1});
  auto source = nest(shared.list);
  std::unique_ptr<Client> target(new Client(nullptr, given_up.list, nullptr));
  std::unique_ptr<DL::Drawable> other_owner(target->clone());
  target->copy(*source);
  source.reset();
  EXPECT_EQ(target->display_list(), shared.list);
  target.reset();
  EXPECT_EQ(shared.log.alive, 0);
  EXPECT_EQ(given_up.log.alive, 1);
  other_owner.reset();
  EXPECT_EQ(given_up.log.alive, 0);
}

TEST(NestedOwner, CloneIsNullWithoutMemoryAndOwnsNothing) {
  ProbeChild child;
  child.add(1, {0, 0, 1, 1});
  auto nested = nest(child.list);
  for (const bool hidden : {false, true}) {
    if (hidden) nested->hide();
    const FailingDefaultHeap failing;
    DL::Drawable* const drawable = nested.get();
    EXPECT_EQ(drawable->clone(), nullptr);
  }
  nested.reset();
  EXPECT_EQ(child.log.alive, 0);
}

TEST(NestedOwner, MadeWithoutMemoryIsNullAndTheChildStaysTheCallers) {
  ProbeChild child;
  child.add(1, {0, 0, 1, 1});
  {
    const FailingDefaultHeap failing;
    EXPECT_EQ(new Nested(nullptr, child.list, nullptr), nullptr);
  }
  EXPECT_EQ(child.log.alive, 1);
  delete child.list;
}

TEST(NestedOwner, HiddenDrawsNothingAndKeepsEverythingElse) {
  Parent parent;
  DL::Drawable* nested = parent.add(nest(child_with_a_dot({5, 6}), {2, 2}));
  nested->hide();
  EXPECT_TRUE(nested->is_hidden());
  nested->draw_unclipped(parent.list);
  nested->draw_clipped(parent.list);
  nested->draw_unclipped_selection(parent.list);
  nested->draw_clipped_selection(parent.list);
  EXPECT_TRUE(parent.take_lines().empty());
  EXPECT_EQ(placed(*nested), (LogicalBounds{10, 12, 10, 12}));
  EXPECT_EQ(nested->type(), Nested::my_type());
  nested->unhide();
  EXPECT_FALSE(nested->is_hidden());
  nested->draw_unclipped(parent.list);
  EXPECT_EQ(parent.take_lines().size(), 1U);
}

TEST(NestedOwner, CloneOfAHiddenOneIsHiddenAndSharesTheChild) {
  Parent parent;
  auto nested = nest(child_with_a_dot({5, 6}));
  DL::Drawable* const drawable = nested.get();
  drawable->hide();
  const std::unique_ptr<DL::Drawable> copy(drawable->clone());
  const DL::Drawable& hidden_copy = *copy;
  EXPECT_EQ(typeid(hidden_copy), typeid(DL::HiddenDrawable<Nested>));
  nested.reset();
  copy->draw_unclipped(parent.list);
  EXPECT_TRUE(parent.take_lines().empty());
  copy->unhide();
  copy->draw_unclipped(parent.list);
  EXPECT_EQ(parent.take_lines().size(), 1U);
}

}  // namespace
