#include <gtest/gtest.h>

#include "tests/support/point_printing.h"
#include "tests/text/nested_lists.h"

// What a child is lent for drawing in its parent, and what it gives back.

namespace {

using namespace nested;

struct NestedView : testing::Test, Parent {
  DL::DisplayList& child() { return *nested->display_list(); }

  std::unique_ptr<Nested> nested =
      nest(new DL::DisplayList, {1, 1}, {0, 0}, LogicalBounds{0, 0, 10, 10});
};

TEST_F(NestedView, LendsRendererAndRenditionAndGivesThemBack) {
  const auto selector = LM_Create<LM_Selector_Data>();
  list.m_rendition.set_selector_data(selector);
  EXPECT_TRUE(nested->push_view(list));
  EXPECT_EQ(child().m_pRenderer.get(), recorder.get());
  EXPECT_TRUE(child().m_rendition.shares_data_with(list.m_rendition));
  nested->pop_view(list);
  EXPECT_EQ(child().m_pRenderer.get(), nullptr);
  EXPECT_FALSE(child().m_rendition.shares_data_with(list.m_rendition));
  EXPECT_EQ(child().m_rendition.selector_data().get(), nullptr);
  EXPECT_EQ(child().m_rendition.clip_rectangle(), LM_Rendition().clip_rectangle());
  EXPECT_EQ(list.m_pRenderer.get(), recorder.get());
  EXPECT_EQ(list.m_rendition.selector_data().get(), selector.get());
}

TEST_F(NestedView, LoansAreCounted) {
  auto renderer = LM_Create<LM_Renderer>();
  auto selector = LM_Create<LM_Selector_Data>();
  list.m_pRenderer = renderer;
  list.m_rendition.set_selector_data(selector);
  nested->push_view(list);
  list.m_pRenderer = nullptr;
  list.m_rendition = LM_Rendition();
  EXPECT_TRUE(renderer->is_shared());
  EXPECT_TRUE(selector->is_shared());
  nested->pop_view(list);
  EXPECT_FALSE(renderer->is_shared());
  EXPECT_FALSE(selector->is_shared());
}

TEST_F(NestedView, PushReleasesWhatTheChildHad) {
  auto renderer = LM_Create<LM_Renderer>();
  child().m_pRenderer = renderer;
  nested->push_view(list);
  EXPECT_FALSE(renderer->is_shared());
}

TEST_F(NestedView, AlternateScaleFollowsTheParentAndStays) {
  list.m_bAlternateScale = true;
  nested->push_view(list);
  EXPECT_TRUE(child().m_bAlternateScale);
  nested->pop_view(list);
  EXPECT_TRUE(child().m_bAlternateScale);
  list.m_bAlternateScale = false;
  nested->push_view(list);
  EXPECT_FALSE(child().m_bAlternateScale);
}

TEST_F(NestedView, ComplexClipFlagIsTheRenderersWhileItIsLent) {
  recorder->options.supports_complex_clip = true;
  nested->push_view(list);
  EXPECT_TRUE(child().m_bComplexClipSupported);
  nested->pop_view(list);
  EXPECT_FALSE(child().m_bComplexClipSupported);
  recorder->options.supports_complex_clip = false;
  child().m_bComplexClipSupported = true;
  nested->push_view(list);
  EXPECT_FALSE(child().m_bComplexClipSupported);
}

TEST_F(NestedView, ParentWithoutARendererLendsNone) {
  list.m_pRenderer = nullptr;
  child().m_bComplexClipSupported = true;
  EXPECT_TRUE(nested->push_view(list));
  EXPECT_EQ(child().m_pRenderer.get(), nullptr);
  EXPECT_FALSE(child().m_bComplexClipSupported);
}

TEST_F(NestedView, PushSucceedsAlsoWhenNothingIsVisible) {
  nested->set_offset({500, 500});
  EXPECT_TRUE(nested->push_view(list));
  EXPECT_EQ(child().m_pRenderer.get(), recorder.get());
  EXPECT_EQ(child().m_offset, (Factors{500, 500}));
}

TEST_F(NestedView, TransformScreenAndWindowStayAfterwards) {
  nested->set_offset({40, 50});
  nested->push_view(list);
  nested->pop_view(list);
  EXPECT_EQ(child().m_offset, (Factors{40, 50}));
  EXPECT_EQ(child().m_screenBounds, (ScreenBounds{40, 50, 50, 60}));
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{0, 0, 10, 10}));
}

TEST_F(NestedView, PushAndPopGoThroughTheClientsTransforms) {
  struct Client : Nested {
    using Nested::Nested;
    bool push_transform(DL::DisplayList& parent, ScreenBounds& clip) override {
      ++pushes;
      Nested::push_transform(parent, clip);
      return false;
    }
    void pop_transform(DL::DisplayList& parent) override {
      EXPECT_NE(display_list()->m_pRenderer.get(), nullptr) << "called first";
      EXPECT_EQ(parent.m_pRootGroup != nullptr, true);
      ++pops;
    }
    int pushes = 0;
    int pops = 0;
  };
  const std::unique_ptr<Client> client(new Client(nullptr, child_with_a_dot({1, 1}), nullptr));
  EXPECT_TRUE(client->push_view(list)) << "the answer is not looked at";
  EXPECT_EQ(client->pushes, 1);
  client->pop_view(list);
  EXPECT_EQ(client->pops, 1);
}

}  // namespace
