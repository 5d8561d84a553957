#pragma once

#include <cstdint>

namespace DL {

class BottomGroup;

/// Where the traversal hands over closed bottom groups to be drawn elsewhere.
class DisplayListMultithread {
 public:
  /// Takes over drawing a group with each drawable's clipped or unclipped
  /// operation; false when the group is to be drawn by the caller.
  virtual bool hand_over(const BottomGroup& group, bool clipped, std::uint32_t flags) = 0;

 protected:
  DisplayListMultithread() = default;
  DisplayListMultithread(const DisplayListMultithread&) = default;
  DisplayListMultithread& operator=(const DisplayListMultithread&) = default;
  ~DisplayListMultithread() = default;
};

}  // namespace DL
