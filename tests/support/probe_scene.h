#pragma once

#include <cstdint>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "tests/support/probe_drawable.h"
#include "tests/support/test_heap.h"

/// A display list of probes, which are numbered as they are added.
struct ProbeScene {
  using Bounds = DL::BoundsTemplate<long>;

  explicit ProbeScene(std::int32_t capacity = DL::DisplayList::kDefaultCapacity,
                      std::int32_t max_level = DL::DisplayList::kDefaultDeepestLevel,
                      LumenHeap* heap = nullptr)
      : list(heap) {
    list.m_cMaxOpenDrawables = capacity;
    list.m_cMaxLevel = max_level;
  }

  ProbeDrawable* make(const Bounds& bounds) { return new ProbeDrawable(log, next_id++, bounds); }
  /// Adds a new probe; null, with the probe gone, when the list does not take it.
  DL::Group* add(const Bounds& bounds, unsigned long flags = 0) {
    ProbeDrawable* probe = make(bounds);
    DL::Group* group = list.add(probe, bounds, flags);
    if (group == nullptr) delete probe;
    return group;
  }

  [[nodiscard]] DL::Group& root() { return *list.m_pRootGroup; }
  /// Child number `index` of a group.
  [[nodiscard]] static DL::Group* child(const DL::Group& group, int index) {
    DL::Group* found = group.m_pFirst.group;
    while (index-- > 0 && found != nullptr) found = found->m_pNext;
    return found;
  }
  /// The numbers of the probes in a leaf, in drawing order.
  [[nodiscard]] static std::vector<int> ids_in(const DL::Group& leaf) {
    std::vector<int> ids;
    for (DL::Drawable* d = leaf.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      ids.push_back(static_cast<ProbeDrawable*>(d)->id());
    }
    return ids;
  }

  ProbeLog log;
  DL::DisplayList list;
  int next_id = 1;
};
