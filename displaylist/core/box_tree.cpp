#include "displaylist/core/box_tree_p.h"

#include <algorithm>
#include <bit>

#include "displaylist/core/hilbert_curve_p.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace DL {

namespace {

constexpr std::uint32_t divided_up(std::uint32_t count, std::uint32_t by) {
  return count / by + (count % by != 0 ? 1 : 0);
}

/// How far `to` lies beyond `from`, which it does.
constexpr std::uint32_t distance(std::int32_t from, std::int32_t to) {
  return static_cast<std::uint32_t>(to) - static_cast<std::uint32_t>(from);
}

/// Cells of the curve along each axis, as a power of two.
constexpr std::uint32_t kCurveBits = 13;

/// What boxes are sorted by: how large they are, then where along the curve.
class SortingKey {
 public:
  explicit SortingKey(const BoundsTemplate<long>& whole) : m_origin(whole.min) {
    const std::uint32_t extent =
        std::max(distance(whole.min.x, whole.max.x), distance(whole.min.y, whole.max.y));
    const auto width = static_cast<std::uint32_t>(std::bit_width(extent));
    m_shift = width > kCurveBits ? width - kCurveBits : 0;
  }

  [[nodiscard]] std::uint64_t of(const BoundsTemplate<long>& box) const {
    const std::uint32_t width = distance(box.min.x, box.max.x);
    const std::uint32_t height = distance(box.min.y, box.max.y);
    const auto size = static_cast<std::uint64_t>(std::bit_width(std::max(width, height)));
    const std::uint32_t x = (distance(m_origin.x, box.min.x) + width / 2) >> m_shift;
    const std::uint32_t y = (distance(m_origin.y, box.min.y) + height / 2) >> m_shift;
    return size << (2 * kCurveBits) | place_on_hilbert_curve(x, y, kCurveBits);
  }

 private:
  PointTemplate<long> m_origin;
  std::uint32_t m_shift;
};

}  // namespace

/// How many entries the level above one of so many has; the top has none above.
std::uint32_t BoxTree::entries_above(std::uint32_t entries) {
  return entries <= kFanOut ? 0 : divided_up(entries, kFanOut);
}

std::size_t BoxTree::size_of(std::uint32_t count) {
  std::size_t nodes = 0;
  for (std::uint32_t entries = count; entries != 0; entries = entries_above(entries)) {
    nodes += divided_up(entries, kFanOut);
  }
  return nodes * sizeof(Node) + divided_up(count, 2) * sizeof(std::uint64_t);
}

void BoxTree::lay_out(void* memory, std::uint32_t count) {
  auto* nodes = static_cast<Node*>(memory);
  for (std::uint32_t entries = count; entries != 0; entries = entries_above(entries)) {
    m_levels[m_cLevels++] = {nodes, entries};
    nodes = std::fill_n(nodes, divided_up(entries, kFanOut), Node::without_boxes());
  }
  m_numbers = reinterpret_cast<std::uint32_t*>(nodes);
}

BoxTree::BoxTree(void* memory, std::uint32_t count, const Source& source, std::uint64_t* keys) {
  lay_out(memory, count);
  BoundsTemplate<long> whole;
  for (std::uint32_t i = 0; i < count; ++i) whole.widen(source.box(source.context, i));
  const SortingKey key(whole);
  for (std::uint32_t i = 0; i < count; ++i) {
    keys[i] = key.of(source.box(source.context, i)) << 32 | i;
  }
  std::sort(keys, keys + count);

  for (std::uint32_t entry = 0; entry < count; ++entry) {
    m_numbers[entry] = static_cast<std::uint32_t>(keys[entry]);
    widen_from_entry(entry, source.box(source.context, m_numbers[entry]));
  }
}

BoxTree::Node BoxTree::Node::without_boxes() {
  constexpr BoundsTemplate<long> none;
  Node node;
  std::ranges::fill(node.min_x, none.min.x);
  std::ranges::fill(node.min_y, none.min.y);
  std::ranges::fill(node.max_x, none.max.x);
  std::ranges::fill(node.max_y, none.max.y);
  return node;
}

void BoxTree::Node::widen(std::uint32_t entry, const BoundsTemplate<long>& box) {
  min_x[entry] = std::min(min_x[entry], box.min.x);
  min_y[entry] = std::min(min_y[entry], box.min.y);
  max_x[entry] = std::max(max_x[entry], box.max.x);
  max_y[entry] = std::max(max_y[entry], box.max.y);
}

void BoxTree::widen_from_entry(std::uint32_t entry, const BoundsTemplate<long>& box) {
  for (std::uint32_t level = 0; level < m_cLevels; ++level, entry /= kFanOut) {
    m_levels[level].nodes[entry / kFanOut].widen(entry % kFanOut, box);
  }
}

#if defined(__SSE2__)

std::uint32_t BoxTree::Node::entries_meeting(const BoundsTemplate<long>& rectangle) const {
  const __m128i left = _mm_set1_epi32(rectangle.min.x);
  const __m128i lower = _mm_set1_epi32(rectangle.min.y);
  const __m128i right = _mm_set1_epi32(rectangle.max.x);
  const __m128i upper = _mm_set1_epi32(rectangle.max.y);
  const auto four = [](const std::int32_t* values) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(values));
  };
  std::uint32_t apart = 0;
  for (std::uint32_t i = 0; i < kFanOut; i += 4) {
    const __m128i beside = _mm_or_si128(_mm_cmpgt_epi32(left, four(max_x + i)),
                                        _mm_cmpgt_epi32(four(min_x + i), right));
    const __m128i over = _mm_or_si128(_mm_cmpgt_epi32(lower, four(max_y + i)),
                                      _mm_cmpgt_epi32(four(min_y + i), upper));
    const int bits = _mm_movemask_ps(_mm_castsi128_ps(_mm_or_si128(beside, over)));
    apart |= static_cast<std::uint32_t>(bits) << i;
  }
  return apart ^ ((1U << kFanOut) - 1);
}

#else

std::uint32_t BoxTree::Node::entries_meeting(const BoundsTemplate<long>& rectangle) const {
  std::uint32_t meeting = 0;
  for (std::uint32_t i = 0; i < kFanOut; ++i) {
    const BoundsTemplate<long> box{min_x[i], min_y[i], max_x[i], max_y[i]};
    meeting |= (box.meets(rectangle) ? 1U : 0U) << i;
  }
  return meeting;
}

#endif

void BoxTree::mark_meeting(const BoundsTemplate<long>& rectangle, MarkSet& marks) const {
  if (m_cLevels != 0) mark_below(m_cLevels - 1, 0, rectangle, marks);
}

void BoxTree::mark_below(std::uint32_t level, std::uint32_t node,
                         const BoundsTemplate<long>& rectangle, MarkSet& marks) const {
  const std::uint32_t first = node * kFanOut;
  std::uint32_t meeting = m_levels[level].nodes[node].entries_meeting(rectangle);
  const std::uint32_t used = m_levels[level].entries - first;
  if (used < kFanOut) meeting &= (1U << used) - 1;
  for (; meeting != 0; meeting &= meeting - 1) {
    const std::uint32_t entry = first + static_cast<std::uint32_t>(std::countr_zero(meeting));
    if (level == 0) {
      marks.insert(m_numbers[entry]);
    } else {
      mark_below(level - 1, entry, rectangle, marks);
    }
  }
}

}  // namespace DL
