#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "displaylist/core/geometry.h"
#include "displaylist/core/mark_set_p.h"

namespace DL {

/// Numbered logical boxes in a packed tree that tells which of them meet a
/// rectangle: sixteen to a node, near ones together, large ones apart from small
/// ones.
///
/// The nodes of a level lie one after the other. Entry i of node n stands for
/// node 16 n + i of the level below, or at the lowest level for a numbered box.
/// The tree lies in memory of the caller's, who keeps it.
class BoxTree {
 public:
  /// How one learns of a box; numbers run from 0.
  struct Source {
    const void* context;
    BoundsTemplate<long> (*box)(const void* context, std::uint32_t number);
  };

  /// Bytes that the tree of `count` boxes takes, a multiple of 8.
  static std::size_t size_of(std::uint32_t count);

  BoxTree() = default;
  /// Builds the tree of `count` boxes in `memory`; `keys` is room for as many
  /// words, used meanwhile.
  BoxTree(void* memory, std::uint32_t count, const Source& source, std::uint64_t* keys);

  /// Inserts each number whose box meets the rectangle, inclusive.
  void mark_meeting(const BoundsTemplate<long>& rectangle, MarkSet& marks) const;

 private:
  static constexpr std::uint32_t kFanOut = 16;
  static constexpr std::uint32_t kMostLevels = 8;

  /// The boxes of its entries, coordinate by coordinate.
  struct Node {
    std::int32_t min_x[kFanOut];
    std::int32_t min_y[kFanOut];
    std::int32_t max_x[kFanOut];
    std::int32_t max_y[kFanOut];

    static Node without_boxes();
    void widen(std::uint32_t entry, const BoundsTemplate<long>& box);
    [[nodiscard]] std::uint32_t entries_meeting(const BoundsTemplate<long>& rectangle) const;
  };
  /// A level: the boxes, or nodes below, that its nodes hold.
  struct Level {
    Node* nodes;
    std::uint32_t entries;
  };

  static std::uint32_t entries_above(std::uint32_t entries);
  void lay_out(void* memory, std::uint32_t count);
  void widen_from_entry(std::uint32_t entry, const BoundsTemplate<long>& box);
  void mark_below(std::uint32_t level, std::uint32_t node, const BoundsTemplate<long>& rectangle,
                  MarkSet& marks) const;

  std::array<Level, kMostLevels> m_levels{};  ///< from the lowest on
  std::uint32_t m_cLevels = 0;
  std::uint32_t* m_numbers = nullptr;  ///< of the entries of the lowest level
};

}  // namespace DL
