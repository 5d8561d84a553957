#pragma once

#include <thread>
#include <vector>

#include "displaylist/core/multithread.h"
#include "tests/support/client_drawables.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/probe_info.h"

/// A mark that also notes the thread it was drawn by.
class ThreadMark final : public client::Mark {
 public:
  using Mark::Mark;

  void draw_unclipped(DL::DisplayList& list) override {
    Mark::draw_unclipped(list);
    drawn_by = std::this_thread::get_id();
  }
  void draw_clipped(DL::DisplayList& list) override {
    Mark::draw_clipped(list);
    drawn_by = std::this_thread::get_id();
  }

  std::thread::id drawn_by;
};

/// A list whose root holds closed leaves of marks, all of them in one box.
struct MarkedList {
  static constexpr DL::BoundsTemplate<long> kBox{0, 0, 100, 100};

  explicit MarkedList(int leaf_count, int marks_in_each = 2, std::uint32_t flags = 0) {
    hand_made::plant(list, hand_made::inner(0, kBox, 0, {}));
    for (int i = 0; i < leaf_count; ++i) add_leaf(marks_in_each, flags);
  }

  DL::BottomGroup& add_leaf(int mark_count, std::uint32_t flags) {
    auto* leaf = static_cast<DL::BottomGroup*>(hand_made::leaf(1, kBox, flags, {}));
    DL::Drawable** link = &leaf->m_pFirst.drawable;
    for (int i = 0; i < mark_count; ++i) {
      marks.push_back(new ThreadMark);
      *link = marks.back();
      link = &marks.back()->m_pNext;
    }
    leaf->count_and_set_last_drawable();
    root().append_child(leaf);
    leaf->m_pParent = &root();
    leaves.push_back(leaf);
    return *leaf;
  }

  /// Makes the list draw with these threads.
  void draw_with(DL::DisplayListMultithread& threads) {
    threads.m_pDisplayList = &list;
    list.m_pMultithread = &threads;
  }
  [[nodiscard]] DL::Group& root() { return *list.m_pRootGroup; }
  [[nodiscard]] DL::BottomGroup& leaf(int index) const {
    return *leaves.at(static_cast<std::size_t>(index));
  }
  [[nodiscard]] ThreadMark& mark(int index) const {
    return *marks.at(static_cast<std::size_t>(index));
  }

  /// How often each mark was drawn, in order.
  [[nodiscard]] std::vector<int> draws() const {
    std::vector<int> counts;
    for (const ThreadMark* mark : marks) {
      counts.push_back(mark->unclipped_draws + mark->clipped_draws);
    }
    return counts;
  }
  /// That many draws of every mark.
  [[nodiscard]] std::vector<int> each_drawn(int times) const {
    return std::vector<int>(marks.size(), times);
  }

  DL::DisplayList list;
  std::vector<DL::BottomGroup*> leaves;
  std::vector<ThreadMark*> marks;
};
