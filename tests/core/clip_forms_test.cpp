// Every draw form of every group class, wherever the group lies to the region
// and to the complex clip.

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "tests/support/contours.h"
#include "tests/support/draw_forms.h"
#include "tests/support/probe_info.h"
#include "tests/support/probe_scene.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

enum class Class { group, bottom, open };
enum class Place { inside, meeting, apart };
enum class Clip { none, around, crossing, elsewhere };

constexpr Class kClasses[] = {Class::group, Class::bottom, Class::open};
constexpr Place kPlaces[] = {Place::inside, Place::meeting, Place::apart};
constexpr Clip kClips[] = {Clip::none, Clip::around, Clip::crossing, Clip::elsewhere};

constexpr Bounds kBounds{10, 10, 20, 20};

/// A root of the class under test with probes 1 and 2, all its groups over
/// kBounds. A Group has a closed leaf with the one and an open with the other.
std::unique_ptr<ProbeScene> scene_of(Class c) {
  auto scene = std::make_unique<ProbeScene>(c == Class::group ? 1 : 8, 5);
  scene->add(kBounds);
  scene->add(kBounds);
  if (c == Class::bottom) scene->root().close();
  scene->root().m_bounds = kBounds;
  if (c == Class::group) {
    for (Group* leaf : {scene->child(scene->root(), 0), scene->child(scene->root(), 1)}) {
      leaf->m_bounds = kBounds;
    }
  }
  return scene;
}

LM_Contour_Set contours_of(Clip clip) {
  switch (clip) {
    case Clip::none:
      return nullptr;
    case Clip::around:
      return contour_set({rectangle(0, 0, 100, 100)});
    case Clip::crossing:
      return contour_set({rectangle(15, 15, 100, 100)});
    case Clip::elsewhere:
      return contour_set({rectangle(50, 50, 100, 100)});
  }
  return nullptr;
}

Bounds inner_of(Place place) {
  return place == Place::inside ? kBounds : Bounds{12, 12, 18, 18};
}
Bounds outer_of(Place place) {
  return place == Place::apart ? Bounds{30, 30, 40, 40} : kBounds;
}

/// The operation that a leaf draws with; none when it draws nothing.
std::optional<DrawSlot> leaf_slot(const DrawForm& form, bool bounded, bool open, Place place,
                                  Clip clip) {
  if (bounded && place == Place::apart) return std::nullopt;
  const bool open_circled = open && bounded && form.clip == DrawForm::Clip::circle;
  const bool tests_complex = form.clip == DrawForm::Clip::complex || open_circled;
  if (tests_complex && clip == Clip::elsewhere) return std::nullopt;
  const bool clipped = bounded && place == Place::meeting;
  if (form.selection) {
    return clipped ? DrawSlot::clipped_selection : DrawSlot::unclipped_selection;
  }
  return clipped ? DrawSlot::clipped : DrawSlot::unclipped;
}

ProbeCalls expected_calls(const DrawForm& form, Class c, Place place, Clip clip) {
  // Below a Group that lies inside the inner rectangle no bounds are tested.
  const bool bounded = form.bounded && !(c == Class::group && place == Place::inside);
  const bool first_open = c == Class::open;
  const bool second_open = c != Class::bottom;
  ProbeCalls calls;
  if (const auto slot = leaf_slot(form, bounded, first_open, place, clip)) {
    calls.push_back({1, *slot});
  }
  if (const auto slot = leaf_slot(form, bounded, second_open, place, clip)) {
    calls.push_back({2, *slot});
  }
  return calls;
}

struct DrawForms : testing::TestWithParam<DrawForm> {
  template <class Check>
  void for_every_case(Check check) {
    for (const Class c : kClasses) {
      for (const Place place : kPlaces) {
        for (const Clip clip : kClips) {
          SCOPED_TRACE(testing::Message()
                       << "class " << static_cast<int>(c) << ", place " << static_cast<int>(place)
                       << ", clip " << static_cast<int>(clip));
          const auto scene = scene_of(c);
          scene->list.m_rendition.set_complex_clip(contours_of(clip), true);
          check(*scene, c, place, clip);
        }
      }
    }
  }
};

TEST_P(DrawForms, CallTheOperationThatTheGroupsPlaceAsksFor) {
  const DrawForm& form = GetParam();
  for_every_case([&](ProbeScene& scene, Class c, Place place, Clip clip) {
    EXPECT_TRUE(form.draw(scene.root(), scene.list, inner_of(place), outer_of(place)));
    EXPECT_EQ(scene.log.take(), expected_calls(form, c, place, clip));
  });
}

TEST_P(DrawForms, NeverLiftTheComplexClip) {
  const DrawForm& form = GetParam();
  for_every_case([&](ProbeScene& scene, Class, Place place, Clip) {
    const LM_Contour_Set clip = scene.list.m_rendition.complex_clip();
    scene.log.on_draw = [&](int, DL::DisplayList& list) {
      EXPECT_EQ(list.m_rendition.complex_clip(), clip);
    };
    form.draw(scene.root(), scene.list, inner_of(place), outer_of(place));
    EXPECT_EQ(scene.list.m_rendition.complex_clip(), clip);
  });
}

TEST_P(DrawForms, LetExceptionsThroughWithTheClipInPlace) {
  const DrawForm& form = GetParam();
  for_every_case([&](ProbeScene& scene, Class c, Place place, Clip clip_place) {
    const LM_Contour_Set clip = scene.list.m_rendition.complex_clip();
    scene.log.on_draw = [](int, DL::DisplayList&) { throw 5; };
    const auto draw = [&] {
      form.draw(scene.root(), scene.list, inner_of(place), outer_of(place));
    };
    if (expected_calls(form, c, place, clip_place).empty()) {
      EXPECT_NO_THROW(draw());
    } else {
      EXPECT_THROW(draw(), int);
    }
    EXPECT_EQ(scene.list.m_rendition.complex_clip(), clip);
    EXPECT_TRUE(scene.log.take().empty());
  });
}

TEST_P(DrawForms, SkipADrawableWhoseInfoSaysSo) {
  const DrawForm& form = GetParam();
  for (const Class c : kClasses) {
    for (const Place place : {Place::inside, Place::meeting}) {
      const auto scene = scene_of(c);
      ProbeInfo skipped(false);
      ProbeInfo drawn(true);
      Group& root = scene->root();
      Group& first = c == Class::group ? *scene->child(root, 0) : root;
      Group& second = c == Class::group ? *scene->child(root, 1) : root;
      first.m_pFirst.drawable->set_drawable_info(&skipped);
      second.m_pLastChild.drawable->set_drawable_info(&drawn);
      form.draw(root, scene->list, inner_of(place), outer_of(place));
      const ProbeCalls calls = scene->log.take();
      ASSERT_EQ(calls.size(), 1U);
      EXPECT_EQ(calls[0].id, 2);
      EXPECT_EQ(skipped.asked, 1);
      EXPECT_EQ(drawn.asked, 1);
    }
  }
}

TEST_P(DrawForms, DrawNothingOfEmptyGroupsAndGoOn) {
  const DrawForm& form = GetParam();
  const Bounds plane = Bounds::plane();
  ProbeScene empty;
  EXPECT_TRUE(form.draw(empty.root(), empty.list, plane, plane));
  empty.root().close();
  EXPECT_TRUE(form.draw(empty.root(), empty.list, plane, plane));
  EXPECT_EQ(empty.list.m_cInterruptCounter, 0);
  EXPECT_EQ(empty.list.m_cSelInterruptCounter, 0);

  // An inner group that lost its only leaf, in front of a leaf that draws.
  ProbeScene scene(1, 5);
  scene.add(kBounds);
  scene.add({-20, 10, -10, 20});
  scene.add({-20, 10, -10, 20});
  scene.add(kBounds);
  Group* emptied = scene.child(scene.root(), 1);
  ASSERT_FALSE(emptied->contains_drawables());
  while (Group* leaf = emptied->m_pFirst.group) {
    emptied->unlink_child(leaf);
    delete leaf;
  }
  EXPECT_TRUE(form.draw(scene.root(), scene.list, plane, plane));
  const ProbeCalls calls = scene.log.take();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].id, 1);
  EXPECT_EQ(calls[1].id, 4);
}

INSTANTIATE_TEST_SUITE_P(All, DrawForms, testing::ValuesIn(kDrawForms),
                         [](const auto& form) { return std::string(form.param.name); });

}  // namespace
