#include "fuzz/use_list.h"

#include <algorithm>
#include <cstdint>
#include <sstream>

#include "displaylist/displaylist.h"
#include "fuzz/require.h"

namespace {

using DL::Drawable;
using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kPlane = Bounds::plane();

/// Whether the group and everything below is linked as it must be; its drawables
/// in order.
void collect(const Group& group, const Group* parent, std::vector<const Drawable*>& drawables) {
  require(group.m_pParent == parent);
  if (!group.contains_drawables()) {
    const Group* last = nullptr;
    for (const Group* child = group.m_pFirst.group; child != nullptr; child = child->m_pNext) {
      collect(*child, &group, drawables);
      last = child;
    }
    require(group.m_pLastChild.group == last);
    return;
  }
  const Drawable* last = nullptr;
  for (const Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
    drawables.push_back(d);
    last = d;
  }
  require(group.m_pLastChild.drawable == last);
}

void expect_same_walks(DL::DisplayList& list, const std::vector<const Drawable*>& drawables) {
  std::vector<const Drawable*> walked;
  DL::DisplayListIterator forward(&list);
  for (const Drawable* d = forward.current(); d != nullptr; d = forward.next()) walked.push_back(d);
  require(walked == drawables);

  // Groups whose bounds damage has turned around meet nothing; what is left comes
  // in the opposite order.
  DL::DisplayListReverseIterator backward(&list, kPlane);
  auto expected = drawables.rbegin();
  for (const Drawable* d = backward.current(); d != nullptr; d = backward.next()) {
    expected = std::find(expected, drawables.rend(), d);
    require(expected != drawables.rend());
  }
}

/// Keeps from drawing what takes as long as its numbers say: rows of billions of
/// dots, and lists that are nested in each other many times.
class NotDrawn final : public DL::Extra_Drawable_Info {
 public:
  explicit NotDrawn(DL::DisplayList& list) : m_list(list) { give(this); }
  NotDrawn(const NotDrawn&) = delete;
  NotDrawn& operator=(const NotDrawn&) = delete;
  ~NotDrawn() { give(nullptr); }

  bool is_drawn() override { return false; }

 private:
  static bool takes_long(Drawable& drawable) {
    if (drawable.type() == DL::DrawableDisplayList::my_type()) return true;
    constexpr std::int32_t many_dots = 10'000;
    return drawable.type() == DL::DLRowOfDots::my_type() &&
           static_cast<DL::DLRowOfDots&>(drawable).dot_count > many_dots;
  }
  void give(DL::Extra_Drawable_Info* info) {
    DL::DisplayListIterator at(&m_list);
    for (Drawable* d = at.current(); d != nullptr; d = at.next()) {
      if (takes_long(*d)) d->set_drawable_info(info);
    }
  }

  DL::DisplayList& m_list;
};

void draw(DL::DisplayList& list) {
  const NotDrawn not_drawn(list);
  const Group& root = *list.m_pRootGroup;
  const Bounds inner{-1000, -1000, 1000, 1000};
  root.draw_unclipped(list);
  root.draw_circled(list);
  root.draw_complex(list);
  root.draw_bounded(list, inner, kPlane);
  root.draw_circled_bounded(list, inner, kPlane);
  root.draw_complex_bounded(list, inner, kPlane);
  root.draw_unclipped_interrupt(list);
  root.draw_bounded_interrupt(list, inner, kPlane);
  root.draw_circled_bounded_interrupt(list, inner, kPlane);
  root.draw_complex_bounded_interrupt(list, inner, kPlane);
  root.draw_unclipped_selection(list);
  root.draw_bounded_selection_interrupt(list, inner, kPlane);
}

}  // namespace

std::vector<const Drawable*> use_list(DL::DisplayList& list) {
  if (list.m_pRootGroup == nullptr) return {};
  const Group* open = list.m_pOpenGroup;
  require(open == nullptr || open->is_open());
  std::vector<const Drawable*> drawables;
  collect(*list.m_pRootGroup, nullptr, drawables);
  expect_same_walks(list, drawables);
  draw(list);
  std::ostringstream dump;
  DL::DisplayListDebug statistics;
  list.m_pRootGroup->dump_subtree(dump, 0, statistics);
  require(statistics.m_cDrawables == drawables.size());
  return drawables;
}
