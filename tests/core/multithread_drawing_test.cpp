// Pictures that several threads draw are those of one, and no rendition shows it.

#include <gtest/gtest.h>

#include "displaylist/displaylist.h"
#include "lumen/raster_device.h"
#include "tests/support/contours.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/marked_list.h"
#include "tests/support/recorded_list.h"

namespace {

using DL::DisplayListMultithread;

constexpr std::int32_t kCell = 20;
constexpr std::int32_t kColumns = 32;
constexpr std::int32_t kRows = 24;
constexpr std::int32_t kWidth = kCell * kColumns;
constexpr std::int32_t kHeight = kCell * kRows;
constexpr int kAllWorkers[] = {-1, 1, 2, 3, 4};

/// Renditions of palettized drawables, each unlike the others.
struct Renditions {
  static constexpr int kCount = 6;

  Renditions() {
    for (int i = 0; i < kCount; ++i) {
      LM_Rendition& r = each[i];
      r.set_color({0x00102030U * static_cast<std::uint32_t>(i + 1)}, false);
      r.set_clip_rectangle({0, kWidth - 1, 0, kHeight - 1});
      r.set_line_weight(1 + i);
      r.set_line_pattern(i % 5);
      r.set_end_styles(i % 3, (i + 1) % 3);
      r.set_edge_mode(i % 2 == 0 ? LM_EDGE_MODE_OUTLINE : 0);
    }
  }

  LM_Rendition each[kCount];
};

template <class T, class... Arguments>
DL::Drawable* plain_or_palettized(int number, Renditions* renditions, Arguments... arguments) {
  const auto n = static_cast<std::uint32_t>(number);
  if (renditions == nullptr || number % 3 == 0)
    return new T(LM_RGB32{(n * 0x00050301U) & 0x00FFFFFFU}, arguments...);
  return new DL::PalettizedDrawable<T>(&renditions->each[number % Renditions::kCount],
                                       arguments...);
}

/// Drawable number `number`, well inside the cell at the corner. Without
/// renditions it is plain.
DL::Drawable* make_drawable(int number, Renditions* renditions, LogicalPoint corner) {
  const auto at = [&](std::int32_t x, std::int32_t y) {
    return LogicalPoint{corner.x + x, corner.y + y};
  };
  const LogicalPoint points[] = {at(7, 7), at(12, 8), at(8, 12), at(12, 12)};
  switch (number % 5) {
    case 0:
      return plain_or_palettized<DL::DLDot>(number, renditions, at(9, 9));
    case 1:
      return plain_or_palettized<DL::DLPolydot>(number, renditions, 4, points);
    case 2:
      return plain_or_palettized<DL::DLPolyline>(number, renditions, 4, points);
    case 3:
      return plain_or_palettized<DL::DLPolytriangle>(number, renditions, 4, points);
    default:
      return plain_or_palettized<DL::DLPolysegment>(number, renditions, 4, points);
  }
}

/// A list drawn into a picture, one pixel for each logical unit.
struct PictureList {
  PictureList() {
    list.m_pRenderer = device;
    list.m_cMaxOpenDrawables = 3;
    list.m_bWideDots = true;
    list.m_screenBounds = {0, 0, kWidth - 1, kHeight - 1};
    list.m_rendition.set_clip_rectangle({0, kWidth - 1, 0, kHeight - 1});
    list.m_rendition.set_line_weight(4);
    list.m_rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  }

  /// Fills the cells of rows [first, last) with one drawable each.
  void fill(int first_row, int last_row, unsigned long flags = 0) {
    for (int i = first_row * kColumns; i < last_row * kColumns; ++i) {
      list.add(make_drawable(i, &renditions, {i % kColumns * kCell, i / kColumns * kCell}), flags);
    }
  }
  /// The picture of the list drawn by these workers.
  lumen::Picture drawn(int workers, bool bounded = false) {
    picture.clear({0x00FFFFFF});
    DisplayListMultithread threads(workers);
    threads.m_pDisplayList = &list;
    list.m_pMultithread = &threads;
    if (bounded) {
      list.m_pRootGroup->draw_bounded(list, {100, 100, 400, 300}, {40, 40, 500, 400});
    } else {
      list.m_pRootGroup->draw_unclipped(list);
    }
    threads.WaitForAllThreads();
    list.m_pMultithread = nullptr;
    return picture;
  }

  Renditions renditions;
  lumen::Picture picture{kWidth, kHeight};
  LM_Handle<lumen::RasterDevice> device = LM_Create<lumen::RasterDevice>(picture);
  DL::DisplayList list;
};

std::size_t inked_pixels(const lumen::Picture& picture) {
  std::size_t count = 0;
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    for (std::int32_t x = 0; x < picture.width(); ++x) {
      if (picture.pixel(x, y).word != 0x00FFFFFF) ++count;
    }
  }
  return count;
}

/// Draws with every number of workers, several times.
void expect_equal_pictures(PictureList& scene, bool bounded = false) {
  const lumen::Picture expected = scene.drawn(-1, bounded);
  EXPECT_GT(inked_pixels(expected), 1000U);
  for (const int workers : kAllWorkers) {
    for (int repeat = 0; repeat < 5; ++repeat) {
      ASSERT_TRUE(scene.drawn(workers, bounded) == expected) << workers << " workers";
    }
  }
}

TEST(ThreadedPicture, IsTheSameForAnyNumberOfThreads) {
  for (const bool antialiased : {false, true}) {
    PictureList scene;
    scene.device->set_antialiased(antialiased);
    scene.fill(0, kRows);
    expect_equal_pictures(scene);
    expect_equal_pictures(scene, true);
  }
}

TEST(ThreadedPicture, IsTheSameWithoutWideDots) {
  PictureList scene;
  scene.list.m_bWideDots = false;
  scene.fill(0, kRows);
  expect_equal_pictures(scene);
}

TEST(ThreadedPicture, IsTheSameThroughAComplexClip) {
  PictureList scene;
  scene.list.m_rendition.set_complex_clip(contour_set({{{30, 30, 0}, {600, 50, 0}, {300, 450, 0}}}),
                                          true);
  scene.fill(0, kRows);
  expect_equal_pictures(scene);
}

TEST(ThreadedPicture, IsTheSameWhereSomeGroupsStayHereOrGoToTheFirst) {
  PictureList scene;
  for (int row = 0; row < kRows; ++row) {
    scene.fill(row, row + 1, static_cast<unsigned long>(row % 4));
  }
  expect_equal_pictures(scene);
}

TEST(ThreadedPicture, LeavesTheListsRenditionAsItWas) {
  PictureList scene;
  scene.fill(0, kRows);
  scene.list.m_pRootGroup->close();  // an open group would be drawn here
  const LM_Rendition before = scene.list.m_rendition;
  for (const int workers : {1, 4}) {
    scene.drawn(workers);
    EXPECT_TRUE(scene.list.m_rendition.shares_data_with(before)) << workers;
    EXPECT_EQ(before.line_style().weight, 4);
    EXPECT_EQ(before.color(), LM_RGB32{});
  }
}

TEST(ThreadedPicture, LeavesPalettizedRenditionsAsTheyWere) {
  PictureList scene;
  scene.fill(0, kRows);
  scene.list.m_pRootGroup->close();
  const Renditions before = scene.renditions;
  const Renditions original;
  scene.drawn(4);
  scene.drawn(4, true);
  for (int i = 0; i < Renditions::kCount; ++i) {
    const LM_Rendition& now = scene.renditions.each[i];
    EXPECT_TRUE(now.shares_data_with(before.each[i])) << i;
    EXPECT_EQ(now.line_style().end_style, original.each[i].line_style().end_style);
    EXPECT_EQ(now.edge_mode(), original.each[i].edge_mode());
    EXPECT_EQ(now.color(), original.each[i].color());
  }
}

/// Sets what it finds in the list that it is drawn in, and notes what it found.
class Meddler final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList& list) override {
    found_weight = list.m_rendition.line_style().weight;
    found_scale = list.m_scale.x;
    found_renderer = list.m_pRenderer.get();
    list.m_rendition.set_line_weight(99);
    list.m_rendition.set_shared_text_size(77);
  }

  std::int32_t found_weight = 0;
  double found_scale = 0;
  const LM_Renderer* found_renderer = nullptr;
};

TEST(WorkersRendition, IsTheListsAsItIsWhenTheQueuesAreReleased) {
  DisplayListMultithread threads(3);
  DL::DisplayList list;
  std::vector<Meddler*> meddlers;
  hand_made::plant(list, hand_made::inner(0, {}, 0, {}));
  for (int i = 0; i < 3; ++i) {
    meddlers.push_back(new Meddler);
    DL::Group* leaf = hand_made::leaf(1, {}, 0, {meddlers.back()});
    list.m_pRootGroup->append_child(leaf);
    leaf->m_pParent = list.m_pRootGroup;
  }
  threads.m_pDisplayList = &list;
  list.m_pMultithread = &threads;
  for (int round = 1; round <= 4; ++round) {
    list.m_pRootGroup->draw_unclipped(list);
    list.m_rendition.set_line_weight(round);
    list.m_scale.x = round;
    list.m_pRenderer = LM_Create<LM_Renderer>();
    const float text_size = list.m_rendition.text_attributes().size;
    threads.WaitForAllThreads();
    for (const Meddler* meddler : meddlers) {
      EXPECT_EQ(meddler->found_weight, round);
      EXPECT_EQ(meddler->found_scale, round);
      EXPECT_EQ(meddler->found_renderer, list.m_pRenderer.get());
    }
    EXPECT_EQ(list.m_rendition.line_style().weight, round);
    EXPECT_EQ(list.m_rendition.text_attributes().size, text_size);
  }
}

// --- Nested lists -----------------------------------------------------------

/// Rows of dots around nested lists, each with a child of its own.
struct NestedScene : PictureList {
  /// The children's drawables share the renditions, or are plain.
  explicit NestedScene(unsigned long flags, bool shares_renditions) {
    fill(0, 8);
    for (int i = 0; i < kChildren; ++i) {
      auto* child = new DL::DisplayList;
      child->m_cMaxOpenDrawables = 2;
      child->m_bWideDots = true;
      for (int n = 0; n < 20; ++n) {
        child->add(make_drawable(n, shares_renditions ? &renditions : nullptr,
                                 {n % 5 * kCell, n / 5 * kCell}));
      }
      auto* nested = new DL::DrawableDisplayList(nullptr, child, nullptr);
      nested->set_offset({i % 5 * 110.0, 200.0 + i / 5 * 110.0});
      list.add(nested, flags);
      children.push_back(child);
    }
    fill(22, kRows);
  }

  static constexpr int kChildren = 10;
  std::vector<DL::DisplayList*> children;
};

TEST(ThreadedNestedLists, DrawnHereGiveTheSamePicture) {
  NestedScene scene(1, true);
  expect_equal_pictures(scene);
}

TEST(ThreadedNestedLists, OfPlainDrawablesWithAChildEachAreDrawnByWorkersToo) {
  NestedScene scene(0, false);
  expect_equal_pictures(scene);
}

TEST(ThreadedNestedLists, HaveTheirOwnThreadsDoneWhenTheyAreDrawn) {
  for (const unsigned long flags : {1UL, 0UL}) {
    NestedScene scene(flags, flags == 1);
    const lumen::Picture expected = scene.drawn(-1);
    std::vector<std::unique_ptr<DisplayListMultithread>> threads;
    for (DL::DisplayList* child : scene.children) {
      threads.push_back(std::make_unique<DisplayListMultithread>(2));
      threads.back()->m_pDisplayList = child;
      child->m_pMultithread = threads.back().get();
    }
    for (const int workers : kAllWorkers) {
      EXPECT_TRUE(scene.drawn(workers) == expected) << workers << " workers, flags " << flags;
      for (const auto& each : threads) EXPECT_TRUE(each->is_drained());
    }
    for (DL::DisplayList* child : scene.children) {
      EXPECT_FALSE(child->m_pRenderer);
      child->m_pMultithread = nullptr;
    }
  }
}

}  // namespace
