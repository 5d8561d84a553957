#pragma once

#include "displaylist/core/group.h"
#include "displaylist/platform/stack.h"

namespace DL {

/// The groups of a tree stream whose children are still to come: those of a
/// chain of siblings from the last one back, then those of the chain above.
///
/// Without memory it remembers only the last one and finds the one before it
/// by walking the siblings.
class PendingGroups {
 public:
  /// `start` begins the topmost chain.
  explicit PendingGroups(Group& start) : m_start(start) {}

  /// The next group of a chain, in order.
  void push(Group* group) {
    if (m_last != nullptr && m_is_complete && !m_earlier.push(m_last)) {
      m_is_complete = false;
      m_earlier.clear();
    }
    m_last = group;
  }
  /// The group whose children come next; null at the end.
  Group* take() {
    Group* taken = m_last;
    if (!m_is_complete) {
      m_last = before(taken);
    } else {
      m_last = m_earlier.is_empty() ? nullptr : m_earlier.pop();
    }
    return taken;
  }

 private:
  /// The group of the same chain before this one, else of the chain above.
  Group* before(Group* group) const {
    while (group != nullptr && group != &m_start) {
      const bool is_topmost = group->m_pParent == m_start.m_pParent;
      Group* previous = is_topmost ? &m_start : group->m_pParent->m_pFirst.group;
      if (previous == group) {
        group = group->m_pParent;
        continue;
      }
      while (previous->m_pNext != group) previous = previous->m_pNext;
      return previous;
    }
    return nullptr;
  }

  Group& m_start;
  Group* m_last = nullptr;
  LM_Stack<Group*> m_earlier;
  bool m_is_complete = true;
};

}  // namespace DL
