// Which leaves worker threads have drawn with the bands of a device, and which the
// calling thread draws by itself.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

#include "displaylist/displaylist.h"
#include "displaylist/platform/ordered_drawing.h"
#include "tests/support/client_drawables.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/probe_info.h"

namespace {

using DL::DisplayListMultithread;

/// Notes who draws polylines through it, and how it is asked to draw in order. What
/// is put off is drawn with the bands, of which there is one.
class Order final : public LM_Renderer, private LM_Ordered_Drawing {
 public:
  struct PutOff {
    std::uint64_t number;
    std::uint64_t piece;
    std::int32_t first_row;
    std::int32_t last_row;
  };

  Order() {
    actions.polyline_clipped = {this, &LM_Bound_Action<&Order::note>::call};
    actions.polyline_unclipped = actions.polyline_clipped;
  }
  [[nodiscard]] LM_Ordered_Drawing* ordered_drawing() override { return this; }

  std::set<std::thread::id> drawers;  ///< threads that drew polylines
  int drawn = 0;                      ///< polylines
  std::set<std::uint64_t> groups;     ///< begun
  std::vector<PutOff> all_put_off;
  int bands = 0;  ///< how often they were drawn
  bool takes_light = true;
  bool takes_pieces = true;

 private:
  void note(LM_Rendition*, std::int32_t, const LM_DCI_Point*) {
    const std::scoped_lock lock(m_mutex);
    drawers.insert(std::this_thread::get_id());
    ++drawn;
  }

  [[nodiscard]] bool begin(std::int32_t, const LM_Piece_Action& pieces) override {
    m_pieces = pieces;
    m_self = LM_Handle<LM_Renderer>(this);
    return true;
  }
  [[nodiscard]] const LM_Handle<LM_Renderer>& collector(std::int32_t) override { return m_self; }
  void begin_group(std::int32_t, std::uint64_t number) override {
    const std::scoped_lock lock(m_mutex);
    EXPECT_TRUE(groups.insert(number).second) << number;
  }
  [[nodiscard]] bool can_put_off(const LM_Rendition&) const override { return takes_light; }
  [[nodiscard]] bool put_off(std::int32_t, std::uint64_t number, std::uint64_t piece,
                             std::int32_t first_row, std::int32_t last_row) override {
    const std::scoped_lock lock(m_mutex);
    if (takes_pieces) all_put_off.push_back({number, piece, first_row, last_row});
    return takes_pieces;
  }
  [[nodiscard]] bool is_full(std::int32_t) const override { return false; }
  void start_bands(std::uint64_t) override { ++bands; }
  void draw_bands(std::int32_t thread) override {
    if (thread != 0) return;
    for (const PutOff& each : all_put_off) {
      m_pieces.draw(m_pieces.context, thread, each.piece, m_self);
    }
  }
  void finish_bands() override {}
  void end() override { m_self = nullptr; }

  std::mutex m_mutex;
  LM_Piece_Action m_pieces;
  LM_Handle<LM_Renderer> m_self;
};

/// Leaves of two polylines each, a row or more from the one before.
struct Leaves {
  explicit Leaves(int count = 0) {
    list.m_pRenderer = order;
    list.m_rendition.set_clip_rectangle({0, 999, 0, 999});
    hand_made::plant(list, hand_made::inner(0, {0, 0, 999, 999}, 0, {}));
    for (int i = 0; i < count; ++i) add({polyline(i), polyline(i + 1)});
  }
  static DL::DLPolyline* polyline(std::int32_t y, int count = 3) {
    std::vector<DL::PointTemplate<long>> points;
    for (int i = 0; i < count; ++i) points.push_back({5 + i, y + i % 2});
    return new DL::DLPolyline({}, count, points.data());
  }
  void add(std::initializer_list<DL::Drawable*> drawables, std::uint32_t flags = 0) {
    DL::BoundsTemplate<long> bounds;
    for (const DL::Drawable* each : drawables) each->add_bounds(bounds);
    DL::Group* leaf = hand_made::leaf(1, bounds, flags, drawables);
    list.m_pRootGroup->append_child(leaf);
    leaf->m_pParent = list.m_pRootGroup;
  }
  void draw(int workers) {
    DisplayListMultithread threads(workers);
    draw(threads);
  }
  void draw(DisplayListMultithread& threads) {
    threads.m_pDisplayList = &list;
    list.m_pMultithread = &threads;
    list.m_pRootGroup->draw_unclipped(list);
    threads.WaitForAllThreads();
    list.m_pMultithread = nullptr;
  }
  [[nodiscard]] bool drew_alone() const {
    return order->bands == 0 && order->drawers == std::set{std::this_thread::get_id()};
  }

  LM_Handle<Order> order = LM_Create<Order>();
  DL::DisplayList list;
};

TEST(LightLeavesInOrder, AreDrawnByTheCallingThreadWhereTheyOrTheWorkersAreFew) {
  for (const int workers : {2, 3, 4}) {
    for (const int count : {1, 64, 65, 200}) {
      SCOPED_TRACE(testing::Message() << count << " leaves, " << workers << " workers");
      Leaves leaves(count);
      leaves.draw(workers);
      EXPECT_EQ(leaves.order->drawn, 2 * count);
      const bool alone = count <= 64 || workers == 2;
      EXPECT_EQ(leaves.drew_alone(), alone);
      EXPECT_EQ(leaves.order->all_put_off.size(), alone ? 0U : unsigned(count));
    }
  }
}

TEST(LightLeavesInOrder, OfAOneThreadTeamAreDrawnByTheCallingThread) {
  Leaves leaves(300);
  leaves.add({Leaves::polyline(1, 1000)});
  leaves.draw(1);
  EXPECT_EQ(leaves.order->drawn, 601);
  EXPECT_TRUE(leaves.drew_alone());
}

TEST(LightLeavesInOrder, AreDrawnByThreadsWithAHeavyOneAmongThem) {
  const auto draw_with = [](std::initializer_list<DL::Drawable*> heavy) {
    Leaves leaves(10);
    leaves.add(heavy);
    leaves.draw(2);
    EXPECT_FALSE(leaves.drew_alone());
    EXPECT_EQ(leaves.order->groups.size(), 1U);
    EXPECT_EQ(leaves.order->all_put_off.size(), 10U);
  };
  draw_with({Leaves::polyline(1, 257)});
  draw_with({Leaves::polyline(1), new client::Mark});
  draw_with({new client::Mark, Leaves::polyline(1)});
  DL::Drawable* const hidden = Leaves::polyline(1);
  hidden->hide();
  draw_with({Leaves::polyline(1), hidden});
  ProbeInfo info(true);
  DL::Drawable* const asked = Leaves::polyline(1);
  asked->m_pDrawableInfo = &info;
  draw_with({Leaves::polyline(1), asked});
  EXPECT_EQ(info.asked, 1);
}

TEST(LightLeavesInOrder, OfUpTo256PointsAreLight) {
  for (const int count : {0, 1, 2, 255, 256}) {
    Leaves leaves(3);
    leaves.add({Leaves::polyline(7), Leaves::polyline(7, count)});
    leaves.draw(2);
    EXPECT_TRUE(leaves.drew_alone()) << count;
  }
}

TEST(LightLeavesInOrder, ArePutOffWithAllTheirRowsAndFewMore) {
  for (const double scale : {1.0, -1.0, 0.3, -2.6}) {
    for (const double offset : {0.0, 17.5, -1000.25}) {
      SCOPED_TRACE(testing::Message() << "scale " << scale << ", offset " << offset);
      Leaves leaves(70);
      leaves.list.m_scale = {1.0, scale};
      leaves.list.m_offset = {0.0, offset};
      leaves.draw(3);
      ASSERT_EQ(leaves.order->all_put_off.size(), 70U);
      std::map<std::uint64_t, Order::PutOff> by_number;
      for (const Order::PutOff& each : leaves.order->all_put_off) by_number[each.number] = each;
      std::int32_t y = 0;
      for (const auto& [number, rows] : by_number) {
        // The lowest point of the leaf is at y, the highest two above.
        LM_DCI_Point ends[2];
        leaves.list.transform_point(DL::PointTemplate<long>{5, y}, ends[0]);
        leaves.list.transform_point(DL::PointTemplate<long>{5, y + 2}, ends[1]);
        const auto [first, last] = std::minmax(ends[0].y, ends[1].y);
        EXPECT_TRUE(rows.first_row == first || rows.first_row == first - 1) << y;
        EXPECT_TRUE(rows.last_row == last || rows.last_row == last + 1) << y;
        ++y;
      }
    }
  }
}

TEST(LightLeavesInOrder, AreNotPutOffWhereTheirRowsAreNotKnown) {
  for (const double scale : {1e9, -1e9, 1e300}) {
    Leaves leaves(0);
    for (int i = 0; i < 70; ++i) leaves.add({Leaves::polyline(5)});
    leaves.list.m_scale = {1.0, scale};
    leaves.draw(2);
    EXPECT_TRUE(leaves.order->all_put_off.empty());
    EXPECT_EQ(leaves.order->groups.size(), 70U);
  }
  Leaves turned(70);
  turned.list.m_bRotated = true;
  turned.draw(2);
  EXPECT_TRUE(turned.order->all_put_off.empty());
  EXPECT_EQ(turned.order->drawn, 140);
}

TEST(LightLeavesInOrder, AreCollectedByARendererThatPutsNothingOff) {
  for (const bool may_put_off : {false, true}) {
    Leaves leaves(70);
    leaves.order->takes_light = may_put_off;
    leaves.order->takes_pieces = false;
    leaves.draw(3);
    EXPECT_EQ(leaves.order->drawn, 140);
    EXPECT_EQ(leaves.order->groups.size(), 70U);
    EXPECT_FALSE(leaves.drew_alone());
  }
}

TEST(LightLeavesInOrder, AreNotDrawnAloneBehindWhatTheCallingThreadHasCollected) {
  for (const int workers : {1, 2}) {
    Leaves leaves(3);
    leaves.add({Leaves::polyline(8)}, 1);
    DisplayListMultithread threads(workers);
    leaves.draw(threads);
    EXPECT_EQ(leaves.order->bands, 1);
    EXPECT_EQ(leaves.order->drawn, 7);
    // The next redraw of the same team has collected nothing at first.
    leaves.list.m_pRootGroup->remove_bounded({0, 8, 999, 10});
    leaves.order->bands = 0;
    leaves.order->drawers.clear();
    leaves.draw(threads);
    EXPECT_EQ(leaves.order->drawn, 13);
    EXPECT_TRUE(leaves.drew_alone());
  }
}

class Throwing final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList&) override { throw std::runtime_error("no paper"); }
};

TEST(LightLeavesInOrder, OfAOneThreadTeamPassOnWhatIsThrown) {
  Leaves leaves(3);
  leaves.add({new Throwing});
  DisplayListMultithread threads(1);
  threads.m_pDisplayList = &leaves.list;
  leaves.list.m_pMultithread = &threads;
  for (int repeat = 1; repeat <= 2; ++repeat) {
    leaves.list.m_pRootGroup->draw_unclipped(leaves.list);
    EXPECT_THROW(threads.WaitForAllThreads(), std::runtime_error);
    EXPECT_TRUE(threads.is_drained());
    EXPECT_EQ(leaves.order->drawn, 6 * repeat);
  }
  leaves.list.m_pMultithread = nullptr;
}

}  // namespace
