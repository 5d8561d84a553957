#pragma once

#include <cstdint>

#include "displaylist/core/group.h"

/// How deep groups nest. Cells of the plane divide 32 times, but a list that was
/// read counts its open group as level 0 and nests anew from there.
namespace DL::nesting {

/// From here on full groups are closed instead of split.
inline constexpr std::int32_t kDeepestSplit = 500;
/// What a stream may hold: some more, since reopening a list nests too. Walks
/// that go down by calls need the stack for it.
inline constexpr std::int32_t kDeepest = 600;

/// How many groups lie in each other from the root to this one.
inline std::int32_t depth_of(const Group& group) {
  std::int32_t depth = 1;
  for (const Group* parent = group.m_pParent; parent != nullptr; parent = parent->m_pParent) {
    ++depth;
  }
  return depth;
}

}  // namespace DL::nesting
