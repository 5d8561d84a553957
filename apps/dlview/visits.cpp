#include "apps/dlview/visits.h"

#include <deque>

#include "displaylist/core/group.h"
#include "displaylist/drawables/drawable.h"

namespace dlview {

namespace {

/// Counts how many drawables of one leaf the library asks before drawing.
class LeafCounter final : public DL::Extra_Drawable_Info {
 public:
  bool is_drawn() override {
    ++m_drawn;
    return true;
  }
  [[nodiscard]] std::size_t drawn() const { return m_drawn; }

 private:
  std::size_t m_drawn = 0;
};

void set_info(const DL::Group& leaf, DL::Extra_Drawable_Info* info) {
  for (DL::Drawable* d = leaf.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
    d->set_drawable_info(info);
  }
}

void attach(const DL::Group& group, std::deque<LeafCounter>& counters) {
  if (group.contains_drawables()) return set_info(group, &counters.emplace_back());
  for (const DL::Group* g = group.m_pFirst.group; g != nullptr; g = g->m_pNext) {
    attach(*g, counters);
  }
}

/// Detaches in the order of attaching, and adds up. Tells whether anything was
/// drawn in the group.
bool collect(const DL::Group& group, std::deque<LeafCounter>& counters, Visits& visits) {
  if (group.contains_drawables()) {
    const std::size_t drawn = counters.front().drawn();
    set_info(group, nullptr);
    counters.pop_front();
    visits.drawables += drawn;
    return drawn > 0;
  }
  std::size_t children = 0;
  bool any_drawn = false;
  for (const DL::Group* g = group.m_pFirst.group; g != nullptr; g = g->m_pNext) {
    ++children;
    any_drawn = collect(*g, counters, visits) || any_drawn;
  }
  if (any_drawn) visits.groups += children;
  return any_drawn;
}

}  // namespace

Visits count_visits(DL::DisplayList& list, DrawForm form, const Region& region) {
  std::deque<LeafCounter> counters;
  attach(*list.m_pRootGroup, counters);
  const LM_Handle<LM_Renderer> renderer = list.m_pRenderer;
  list.m_pRenderer = LM_Create<LM_Renderer>();
  draw(list, form, region);
  list.m_pRenderer = renderer;
  Visits visits{0, 1};
  collect(*list.m_pRootGroup, counters, visits);
  return visits;
}

}  // namespace dlview
