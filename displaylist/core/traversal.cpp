// The walk that draws: one template for all draw forms of inner groups, one
// for those of leaves.

#include "displaylist/core/clip_test_p.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/draw_form_p.h"
#include "displaylist/core/group.h"
#include "displaylist/core/leaf_drawing_p.h"
#include "displaylist/core/leaf_index_p.h"
#include "displaylist/core/multithread.h"
#include "displaylist/core/wrapping_p.h"

namespace DL {

namespace {

using draw::bounded;
using draw::Clip;
using draw::Form;
using draw::interruptible;
using draw::kCircled;
using draw::kComplex;
using draw::kSelection;
using draw::kUnclipped;
using draw::Region;
using draw::without_bounds;
using draw::without_clip;

constexpr Region kEverywhere{nullptr, nullptr};

/// How a group lies to the region of a bounded form.
enum class Place : std::uint8_t { inside, meeting, apart };

Place place_of(const BoundsTemplate<long>& bounds, const Region& region) {
  if (bounds.is_inside(*region.inner)) return Place::inside;
  return bounds.meets(*region.outer) ? Place::meeting : Place::apart;
}

/// Counts visits; false when one of them polls and the test asks to stop.
template <Form F>
bool goes_on(DisplayList& list, std::int64_t visits = 1) {
  std::int32_t& counter = F.selection ? list.m_cSelInterruptCounter : list.m_cInterruptCounter;
  const std::int32_t& visits_between_polls =
      F.selection ? DisplayList::m_cSelInterruptCount : DisplayList::m_cInterruptCount;
  while (visits > 0) {
    const std::int64_t missing = std::int64_t{visits_between_polls} - counter;
    if (missing <= 0 || visits < missing) {
      counter = wrapping_add(counter, static_cast<std::int32_t>(visits));
      return true;
    }
    visits -= missing;
    counter = 0;
    const InterruptTest test = F.selection ? list.m_pfnSelInterrupt : list.m_pfnInterrupt;
    void* context = F.selection ? list.m_pSelInterruptContext : list.m_pInterruptContext;
    if (test != nullptr && !test(context, &list)) return false;
  }
  return true;
}

// --- Inner groups -----------------------------------------------------------

/// Whether the leaves' own bounds tell what a form draws: a complex clip is tested
/// group by group, and polls of the selection count leaves that lie apart.
template <Form F>
constexpr bool kTakesLeaves = F.bounded&& F.clip != Clip::complex && !(F.selection && F.interrupt);

/// Draws a leaf of which only its own place in the region is known.
template <Form F>
bool visit_leaf(const Group& leaf, DisplayList& list, const Region& region) {
  if constexpr (F.interrupt) {
    // Below a group that lies inside, drawables are drawn without polls.
    if (leaf.m_pParent->m_bounds.is_inside(*region.inner)) {
      return draw::visit<without_bounds(F)>(leaf, list, region);
    }
  }
  return draw::visit<F>(leaf, list, region);
}

template <Form F>
bool visit_leaves(LeafIndex::Hits& leaves, DisplayList& list, const Region& region) {
  for (;;) {
    const Group* leaf = leaves.next();
    if constexpr (F.interrupt) {
      if (!goes_on<F>(list, leaves.inner_groups_passed())) return false;
    }
    if (leaf == nullptr) return true;
    if (!visit_leaf<F>(*leaf, list, region)) return false;
  }
}

/// Visits the children from one on and returns how many there are; -1 when it was
/// stopped.
template <Form F>
std::int64_t walk_children(const Group* child, DisplayList& list, const Region& region) {
  std::int64_t count = 0;
  for (; child != nullptr; child = child->m_pNext, ++count) {
    if constexpr (F.bounded && !F.interrupt) {
      // Spares the call where it would draw nothing. The interruptible forms
      // count each visit.
      if (place_of(child->m_bounds, region) == Place::apart) continue;
    }
    if (!draw::visit<F>(*child, list, region)) return -1;
  }
  return count;
}

/// Visits the leaves that the group's index covers, then the children that are in
/// no index.
template <Form F>
bool visit_by_index(const Group& group, DisplayList& list, const Region& region) {
  const Group* rest = group.m_pFirst.group;
  LeafIndex* index = LeafIndex::of(group);
  LeafIndex::Hits leaves(index, *region.outer, F.interrupt);
  if (leaves) {
    if (!visit_leaves<F>(leaves, list, region)) return false;
    rest = leaves.tail();  // as it is now: an interrupt test may have added to it
  }
  const std::int64_t walked = walk_children<F>(rest, list, region);
  if (walked < 0) return false;
  // One that others use is as good as one can be made.
  if (leaves || index == nullptr) {
    LeafIndex::make_if_due(group, static_cast<std::uint32_t>(walked), list);
  }
  return true;
}

template <Form F>
bool visit_children(const Group& group, DisplayList& list, const Region& region) {
  if constexpr (kTakesLeaves<F>) {
    if (region.inner->is_inside(*region.outer)) return visit_by_index<F>(group, list, region);
  }
  return walk_children<F>(group.m_pFirst.group, list, region) >= 0;
}

/// Draws a group whose place in the region is settled, by its place in the clip.
template <Form F>
bool draw_by_clip(const Group& group, DisplayList& list, const Region& region) {
  if constexpr (F.clip != Clip::none) {
    const ClipAnswer answer = test_clip<F.clip>(list, group.m_bounds);
    if (answer == ClipAnswer::outside) return true;
    if (answer == ClipAnswer::inside) {
      const LiftedClip lifted(list.m_rendition);
      return visit_children<without_clip(F)>(group, list, region);
    }
  }
  return visit_children<F>(group, list, region);
}

template <Form F>
bool draw_inner(const Group& group, DisplayList& list, const Region& region) {
  if constexpr (F.interrupt) {
    if (!goes_on<F>(list)) return false;
  }
  if constexpr (F.bounded) {
    switch (place_of(group.m_bounds, region)) {
      case Place::inside:
        return draw_by_clip<without_bounds(F)>(group, list, region);
      case Place::meeting:
        return draw_by_clip<F>(group, list, region);
      case Place::apart:
        return true;
    }
  }
  return draw_by_clip<F>(group, list, region);
}

// --- Leaves -----------------------------------------------------------------

/// Hands a closed leaf to the worker threads; false when it is drawn here.
bool hand_to_threads(const BottomGroup& group, DisplayList& list, bool clipped) {
  constexpr std::uint32_t calling_thread_only = 1;
  return list.m_pMultithread != nullptr && list.m_pMultithread->m_pDisplayList == &list &&
         (group.m_flags & calling_thread_only) == 0 && !group.is_open() &&
         list.m_pMultithread->hand_over(group, clipped, group.m_flags);
}

/// Draws a leaf whose place in the region is settled, by its place in the clip.
template <Form F, bool Clipped>
bool draw_leaf_by_clip(const BottomGroup& group, DisplayList& list) {
  constexpr LeafForm leaf{Clipped, F.selection};
  if constexpr (F.clip != Clip::none) {
    const ClipAnswer answer = test_clip<F.clip>(list, group.m_bounds);
    if (answer == ClipAnswer::outside) return true;
    if (answer == ClipAnswer::inside) {
      const LiftedClip lifted(list.m_rendition);
      const InTurn in_turn(list);
      draw_drawables<leaf>(group, list);
      return true;
    }
  } else if constexpr (!F.selection) {
    if (hand_to_threads(group, list, Clipped)) return true;
    if constexpr (F.interrupt && F.bounded) {
      const InTurn in_turn(list);
      return draw_drawables<leaf>(group, list, [&] { return goes_on<F>(list); });
    }
  }
  const InTurn in_turn(list);
  draw_drawables<leaf>(group, list);
  return true;
}

template <Form F>
bool draw_leaf(const BottomGroup& group, DisplayList& list, const Region& region) {
  if (group.m_pFirst.drawable == nullptr) return true;
  if constexpr (F.bounded) {
    if constexpr (F.selection && F.interrupt) {
      if (!goes_on<F>(list)) return false;
    }
    switch (place_of(group.m_bounds, region)) {
      case Place::inside:
        return draw_leaf_by_clip<F, false>(group, list);
      case Place::meeting:
        return draw_leaf_by_clip<F, true>(group, list);
      case Place::apart:
        return true;
    }
  }
  return draw_leaf_by_clip<F, false>(group, list);
}

}  // namespace

// Each operation names its form.

void Group::draw_unclipped(DisplayList& list) const {
  draw_inner<kUnclipped>(*this, list, kEverywhere);
}

void Group::draw_circled(DisplayList& list) const {
  draw_inner<kCircled>(*this, list, kEverywhere);
}

void Group::draw_complex(DisplayList& list) const {
  draw_inner<kComplex>(*this, list, kEverywhere);
}

void Group::draw_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                         const BoundsTemplate<long>& outer) const {
  draw_inner<bounded(kUnclipped)>(*this, list, {&inner, &outer});
}

void Group::draw_circled_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                                 const BoundsTemplate<long>& outer) const {
  draw_inner<bounded(kCircled)>(*this, list, {&inner, &outer});
}

void Group::draw_complex_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                                 const BoundsTemplate<long>& outer) const {
  draw_inner<bounded(kComplex)>(*this, list, {&inner, &outer});
}

bool Group::draw_unclipped_interrupt(DisplayList& list) const {
  return draw_inner<interruptible(kUnclipped)>(*this, list, kEverywhere);
}

bool Group::draw_circled_interrupt(DisplayList& list) const {
  return draw_inner<interruptible(kCircled)>(*this, list, kEverywhere);
}

bool Group::draw_complex_interrupt(DisplayList& list) const {
  return draw_inner<interruptible(kComplex)>(*this, list, kEverywhere);
}

bool Group::draw_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                   const BoundsTemplate<long>& outer) const {
  return draw_inner<interruptible(bounded(kUnclipped))>(*this, list, {&inner, &outer});
}

bool Group::draw_circled_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                           const BoundsTemplate<long>& outer) const {
  return draw_inner<interruptible(bounded(kCircled))>(*this, list, {&inner, &outer});
}

bool Group::draw_complex_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                           const BoundsTemplate<long>& outer) const {
  return draw_inner<interruptible(bounded(kComplex))>(*this, list, {&inner, &outer});
}

void Group::draw_unclipped_selection(DisplayList& list) const {
  draw_inner<kSelection>(*this, list, kEverywhere);
}

void Group::draw_bounded_selection(DisplayList& list, const BoundsTemplate<long>& inner,
                                   const BoundsTemplate<long>& outer) const {
  draw_inner<bounded(kSelection)>(*this, list, {&inner, &outer});
}

bool Group::draw_unclipped_selection_interrupt(DisplayList& list) const {
  return draw_inner<interruptible(kSelection)>(*this, list, kEverywhere);
}

bool Group::draw_bounded_selection_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                             const BoundsTemplate<long>& outer) const {
  return draw_inner<interruptible(bounded(kSelection))>(*this, list, {&inner, &outer});
}

void BottomGroup::draw_unclipped(DisplayList& list) const {
  draw_leaf<kUnclipped>(*this, list, kEverywhere);
}

void BottomGroup::draw_circled(DisplayList& list) const {
  draw_leaf<kCircled>(*this, list, kEverywhere);
}

void BottomGroup::draw_complex(DisplayList& list) const {
  draw_leaf<kComplex>(*this, list, kEverywhere);
}

void BottomGroup::draw_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                               const BoundsTemplate<long>& outer) const {
  draw_leaf<bounded(kUnclipped)>(*this, list, {&inner, &outer});
}

void BottomGroup::draw_circled_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                                       const BoundsTemplate<long>& outer) const {
  draw_leaf<bounded(kCircled)>(*this, list, {&inner, &outer});
}

void BottomGroup::draw_complex_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                                       const BoundsTemplate<long>& outer) const {
  draw_leaf<bounded(kComplex)>(*this, list, {&inner, &outer});
}

bool BottomGroup::draw_unclipped_interrupt(DisplayList& list) const {
  return draw_leaf<interruptible(kUnclipped)>(*this, list, kEverywhere);
}

bool BottomGroup::draw_circled_interrupt(DisplayList& list) const {
  return draw_leaf<interruptible(kCircled)>(*this, list, kEverywhere);
}

bool BottomGroup::draw_complex_interrupt(DisplayList& list) const {
  return draw_leaf<interruptible(kComplex)>(*this, list, kEverywhere);
}

bool BottomGroup::draw_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                         const BoundsTemplate<long>& outer) const {
  return draw_leaf<interruptible(bounded(kUnclipped))>(*this, list, {&inner, &outer});
}

bool BottomGroup::draw_circled_bounded_interrupt(DisplayList& list,
                                                 const BoundsTemplate<long>& inner,
                                                 const BoundsTemplate<long>& outer) const {
  return draw_leaf<interruptible(bounded(kCircled))>(*this, list, {&inner, &outer});
}

bool BottomGroup::draw_complex_bounded_interrupt(DisplayList& list,
                                                 const BoundsTemplate<long>& inner,
                                                 const BoundsTemplate<long>& outer) const {
  return draw_leaf<interruptible(bounded(kComplex))>(*this, list, {&inner, &outer});
}

void BottomGroup::draw_unclipped_selection(DisplayList& list) const {
  draw_leaf<kSelection>(*this, list, kEverywhere);
}

void BottomGroup::draw_bounded_selection(DisplayList& list, const BoundsTemplate<long>& inner,
                                         const BoundsTemplate<long>& outer) const {
  draw_leaf<bounded(kSelection)>(*this, list, {&inner, &outer});
}

bool BottomGroup::draw_unclipped_selection_interrupt(DisplayList& list) const {
  return draw_leaf<interruptible(kSelection)>(*this, list, kEverywhere);
}

bool BottomGroup::draw_bounded_selection_interrupt(DisplayList& list,
                                                   const BoundsTemplate<long>& inner,
                                                   const BoundsTemplate<long>& outer) const {
  return draw_leaf<interruptible(bounded(kSelection))>(*this, list, {&inner, &outer});
}

// An open group draws as a closed one, but that circled-bounded drawing goes
// through the complex clip.

void OpenBottomGroup::draw_circled_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                                           const BoundsTemplate<long>& outer) const {
  draw_leaf<bounded(kComplex)>(*this, list, {&inner, &outer});
}

bool OpenBottomGroup::draw_circled_bounded_interrupt(DisplayList& list,
                                                     const BoundsTemplate<long>& inner,
                                                     const BoundsTemplate<long>& outer) const {
  return draw_leaf<interruptible(bounded(kComplex))>(*this, list, {&inner, &outer});
}

}  // namespace DL
