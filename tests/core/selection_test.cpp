#include <gtest/gtest.h>

#include "tests/support/draw_forms.h"
#include "tests/support/probe_info.h"
#include "tests/support/probe_scene.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kPlane = Bounds::plane();
constexpr Bounds kRight{10, 10, 20, 20};
constexpr Bounds kLeft{-20, 10, -10, 20};

/// A closed leaf with the probes 1 and 2, an open one with probe 3, and a
/// selector that the list's rendition draws into.
struct Selection : testing::Test {
  Selection() {
    scene.add(kRight);
    scene.add(kRight);
    scene.add(kLeft);
    for (Group* leaf = scene.root().m_pFirst.group; leaf != nullptr; leaf = leaf->m_pNext) {
      for (DL::Drawable* d = leaf->m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
        drawables.push_back(d);
      }
    }
    scene.list.m_rendition.set_selector_data(selector);
    scene.log.on_draw = [this](int, DL::DisplayList&) {
      keys.push_back(selector->key());
      indices.push_back(selector->index());
    };
  }

  ProbeScene scene{2, 5};
  std::vector<const void*> drawables;
  LM_Handle<LM_Selector_Data> selector = LM_Create<LM_Selector_Data>();
  std::vector<const void*> keys;
  std::vector<int> indices;
};

TEST_F(Selection, EachDrawableIsDrawnUnderItsOwnKey) {
  ASSERT_EQ(drawables.size(), 3U);
  for (const DrawForm& form : kDrawForms) {
    if (!form.selection) continue;
    for (const Bounds& inner : {kPlane, Bounds()}) {
      SCOPED_TRACE(form.name);
      keys.clear();
      indices.clear();
      selector->set_selection_key(nullptr, 7);
      EXPECT_TRUE(form.draw(scene.root(), scene.list, inner, kPlane));
      EXPECT_EQ(keys, drawables);
      EXPECT_EQ(indices, (std::vector<int>{0, 0, 0}));
      const bool clipped = form.bounded && inner != kPlane;
      EXPECT_EQ(scene.log.take(),
                calls_of(clipped ? DrawSlot::clipped_selection : DrawSlot::unclipped_selection,
                         {1, 2, 3}));
    }
  }
}

TEST_F(Selection, OrdinaryFormsLeaveTheKeyAlone) {
  int here = 0;
  selector->set_selection_key(&here, 7);
  for (const DrawForm& form : kDrawForms) {
    if (form.selection) continue;
    form.draw(scene.root(), scene.list, kPlane, kPlane);
    EXPECT_EQ(selector->key(), &here) << form.name;
    EXPECT_EQ(selector->index(), 7) << form.name;
  }
  EXPECT_FALSE(scene.log.take().empty());
}

TEST_F(Selection, DrawableThatIsNotDrawnSetsNoKey) {
  ProbeInfo skipped(false);
  for (const void* d : drawables) {
    static_cast<DL::Drawable*>(const_cast<void*>(d))->set_drawable_info(&skipped);
  }
  int here = 0;
  selector->set_selection_key(&here, 7);
  scene.root().draw_unclipped_selection(scene.list);
  scene.root().draw_bounded_selection(scene.list, Bounds(), kPlane);
  EXPECT_EQ(selector->key(), &here);
  EXPECT_EQ(skipped.asked, 6);
  EXPECT_TRUE(scene.log.take().empty());
}

TEST_F(Selection, WithoutSelectorDataTheDrawablesAreDrawnAllTheSame) {
  scene.list.m_rendition.set_selector_data(nullptr);
  scene.root().draw_unclipped_selection(scene.list);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped_selection, {1, 2, 3}));
}

TEST_F(Selection, TheSelectorIsGivenBackAfterEachDrawable) {
  scene.root().draw_unclipped_selection(scene.list);
  scene.list.m_rendition.set_selector_data(nullptr);
  EXPECT_FALSE(selector->is_shared());
}

TEST_F(Selection, TheSelectorIsTakenAnewForEachDrawable) {
  const auto second = LM_Create<LM_Selector_Data>();
  scene.log.on_draw = [&](int, DL::DisplayList& list) {
    list.m_rendition.set_selector_data(second);
  };
  scene.root().draw_unclipped_selection(scene.list);
  EXPECT_EQ(selector->key(), drawables[0]);
  EXPECT_EQ(second->key(), drawables[2]);
}

TEST_F(Selection, BoundedDrawingSkipsWhatDoesNotMeetTheRegion) {
  scene.list.m_pOpenGroup->close();
  scene.root().draw_bounded_selection(scene.list, Bounds(), {0, 0, 15, 15});
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::clipped_selection, {1, 2}));
  scene.root().draw_bounded_selection(scene.list, {0, 0, 1, 1}, {0, 0, 1, 1});
  EXPECT_TRUE(scene.log.take().empty());
}

}  // namespace
