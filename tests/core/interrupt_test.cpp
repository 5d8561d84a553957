#include <gtest/gtest.h>

#include "tests/support/draw_forms.h"
#include "tests/support/interrupt_counter.h"
#include "tests/support/probe_info.h"
#include "tests/support/probe_scene.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kPlane = Bounds::plane();
constexpr Bounds kPoint{5, 5, 5, 5};

/// Probes in one point, one to a leaf: Group n holds the leaf of probe n and
/// Group n + 1; the last one holds the last two leaves.
struct NestedGroups : ProbeScene {
  explicit NestedGroups(int probes) : ProbeScene(1, 31) {
    for (int i = 0; i < probes; ++i) add(kPoint);
  }
};

/// A leaf with the probes 1 to 3, closed or open.
struct Leaf : ProbeScene {
  explicit Leaf(bool open) {
    for (int i = 0; i < 3; ++i) add(kPoint);
    if (!open) root().close();
  }
};

std::vector<int> ids_of(const ProbeCalls& calls) {
  std::vector<int> ids;
  for (const ProbeCall& call : calls) ids.push_back(call.id);
  return ids;
}

std::vector<int> one_to(int last) {
  std::vector<int> ids;
  for (int id = 1; id <= last; ++id) ids.push_back(id);
  return ids;
}

struct InterruptForms : testing::TestWithParam<DrawForm> {
  static int polls_of(const InterruptCounter& counter) {
    return GetParam().selection ? counter.selection_polls : counter.polls;
  }
  static int other_polls_of(const InterruptCounter& counter) {
    return GetParam().selection ? counter.polls : counter.selection_polls;
  }
};

TEST_P(InterruptForms, TheTwentiethGroupPollsAndFalseStopsEverything) {
  NestedGroups scene(30);
  InterruptCounter interrupt(scene.list);
  interrupt.stop_at = 1;
  EXPECT_FALSE(GetParam().draw(scene.root(), scene.list, kPlane, kPlane));
  EXPECT_EQ(polls_of(interrupt), 1);
  EXPECT_EQ(other_polls_of(interrupt), 0);
  EXPECT_FALSE(interrupt.foreign_list);
  EXPECT_EQ(ids_of(scene.log.take()), one_to(19));
}

TEST_P(InterruptForms, TheyGoOnWhenToldSo) {
  NestedGroups scene(30);
  InterruptCounter interrupt(scene.list);
  EXPECT_TRUE(GetParam().draw(scene.root(), scene.list, kPlane, kPlane));
  EXPECT_EQ(polls_of(interrupt), 1);
  EXPECT_EQ(ids_of(scene.log.take()), one_to(30));
}

TEST_P(InterruptForms, CountersPersistBetweenDraws) {
  NestedGroups scene(6);  // five Groups
  InterruptCounter interrupt(scene.list);
  for (int draw = 1; draw <= 8; ++draw) {
    GetParam().draw(scene.root(), scene.list, kPlane, kPlane);
    EXPECT_EQ(polls_of(interrupt), draw / 4);
    const std::int32_t counter =
        GetParam().selection ? scene.list.m_cSelInterruptCounter : scene.list.m_cInterruptCounter;
    EXPECT_EQ(counter, draw % 4 * 5);
  }
  EXPECT_EQ(other_polls_of(interrupt), 0);
}

TEST_P(InterruptForms, GranularityIsTheClients) {
  const PollEvery poll_every(1);
  NestedGroups scene(6);
  InterruptCounter interrupt(scene.list);
  interrupt.stop_at = 4;
  EXPECT_FALSE(GetParam().draw(scene.root(), scene.list, kPlane, kPlane));
  EXPECT_EQ(polls_of(interrupt), 4);
  EXPECT_EQ(ids_of(scene.log.take()), one_to(3));
}

TEST_P(InterruptForms, WithoutATestTheyNeverStop) {
  const PollEvery poll_every(1);
  NestedGroups scene(6);
  EXPECT_TRUE(GetParam().draw(scene.root(), scene.list, kPlane, kPlane));
  EXPECT_EQ(ids_of(scene.log.take()), one_to(6));
}

/// How often a form polls when it is called for a leaf of three that meets the
/// region, polling at every visit.
int polls_of_leaf(const DrawForm& form) {
  if (!form.bounded || form.clip != DrawForm::Clip::none) return 0;
  return form.selection ? 1 : 3;
}

TEST_P(InterruptForms, LeafPollsAsItsFormSays) {
  const PollEvery poll_every(1);
  for (const bool open : {false, true}) {
    for (const Bounds& inner : {kPlane, Bounds()}) {
      Leaf scene(open);
      InterruptCounter interrupt(scene.list);
      EXPECT_TRUE(GetParam().draw(scene.root(), scene.list, inner, kPlane));
      EXPECT_EQ(polls_of(interrupt), polls_of_leaf(GetParam()));
      EXPECT_EQ(other_polls_of(interrupt), 0);
      EXPECT_EQ(ids_of(scene.log.take()), one_to(3));
    }
  }
}

TEST_P(InterruptForms, LeafThatPollsStopsWhenToldSo) {
  const PollEvery poll_every(1);
  for (int stop = 1; stop <= polls_of_leaf(GetParam()); ++stop) {
    for (const bool open : {false, true}) {
      Leaf scene(open);
      InterruptCounter interrupt(scene.list);
      interrupt.stop_at = stop;
      EXPECT_FALSE(GetParam().draw(scene.root(), scene.list, Bounds(), kPlane));
      EXPECT_EQ(ids_of(scene.log.take()), one_to(stop - 1));
    }
  }
}

bool is_interruptible(const DrawForm& form) {
  return form.interrupt;
}

std::vector<DrawForm> forms_that(bool (*wanted)(const DrawForm&)) {
  std::vector<DrawForm> forms;
  for (const DrawForm& form : kDrawForms) {
    if (wanted(form)) forms.push_back(form);
  }
  return forms;
}

INSTANTIATE_TEST_SUITE_P(All, InterruptForms, testing::ValuesIn(forms_that(&is_interruptible)),
                         [](const auto& form) { return std::string(form.param.name); });

struct PlainForms : testing::TestWithParam<DrawForm> {};

TEST_P(PlainForms, NeverPollAndNeverCount) {
  const PollEvery poll_every(1);
  NestedGroups scene(6);
  InterruptCounter interrupt(scene.list);
  interrupt.stop_at = 1;
  for (const Bounds& inner : {kPlane, Bounds()}) {
    GetParam().draw(scene.root(), scene.list, inner, kPlane);
    EXPECT_EQ(ids_of(scene.log.take()), one_to(6));
  }
  EXPECT_EQ(interrupt.polls + interrupt.selection_polls, 0);
  EXPECT_EQ(scene.list.m_cInterruptCounter, 0);
  EXPECT_EQ(scene.list.m_cSelInterruptCounter, 0);
}

INSTANTIATE_TEST_SUITE_P(All, PlainForms, testing::ValuesIn(forms_that([](const DrawForm& form) {
                           return !is_interruptible(form);
                         })),
                         [](const auto& form) { return std::string(form.param.name); });

TEST(BoundedInterruptForms, CountAGroupApartFromTheRegionAllTheSame) {
  const PollEvery poll_every(1);
  for (const DrawForm& form : kDrawForms) {
    if (!form.interrupt || !form.bounded) continue;
    NestedGroups scene(6);
    InterruptCounter interrupt(scene.list);
    const Bounds apart{100, 100, 200, 200};
    scene.root().m_bounds = kPoint;
    EXPECT_TRUE(form.draw(scene.root(), scene.list, apart, apart)) << form;
    EXPECT_EQ(interrupt.polls + interrupt.selection_polls, 1) << form;
    EXPECT_TRUE(scene.log.take().empty()) << form;
  }
}

TEST(DrawBoundedInterrupt, AskedBeforeTheInfoSoThatEveryDrawableCounts) {
  const PollEvery poll_every(1);
  Leaf scene(false);
  ProbeInfo hidden(false);
  scene.root().m_pFirst.drawable->set_drawable_info(&hidden);
  InterruptCounter interrupt(scene.list);
  interrupt.stop_at = 3;
  EXPECT_FALSE(scene.root().draw_bounded_interrupt(scene.list, Bounds(), kPlane));
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::clipped, {2}));
}

TEST(DrawBoundedInterrupt, BelowInnerLeavesDoNotPoll) {
  const PollEvery poll_every(1);
  ProbeScene scene(4, 1);
  for (int i = 0; i < 8; ++i) scene.add(kPoint);
  InterruptCounter interrupt(scene.list);
  EXPECT_TRUE(scene.root().draw_bounded_interrupt(scene.list, kPlane, kPlane));
  EXPECT_EQ(interrupt.polls, 1);
  EXPECT_TRUE(scene.root().draw_bounded_interrupt(scene.list, Bounds(), kPlane));
  EXPECT_EQ(interrupt.polls, 1 + 1 + 8);
}

TEST(DrawBoundedInterrupt, LeafApartFromTheRegionPollsOnlyForSelection) {
  const PollEvery poll_every(1);
  const Bounds apart{100, 100, 200, 200};
  Leaf scene(false);
  InterruptCounter interrupt(scene.list);
  EXPECT_TRUE(scene.root().draw_bounded_interrupt(scene.list, apart, apart));
  EXPECT_TRUE(scene.root().draw_bounded_selection_interrupt(scene.list, apart, apart));
  EXPECT_EQ(interrupt.polls, 0);
  EXPECT_EQ(interrupt.selection_polls, 1);
  EXPECT_TRUE(scene.log.take().empty());
}

}  // namespace
