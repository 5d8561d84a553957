#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/memory_stream.h"
#include "tests/support/recorded_list.h"

/// What any drawable answers, in a form that tests compare.
namespace answers {

using Lines = std::vector<std::string>;
using Words = std::vector<std::uint32_t>;

/// A clip rectangle with a different number at each side, the points of its
/// border that tell the sides apart, and the points one unit outside.
inline constexpr LM_Clip_Rectangle kClip{-5, 20, -7, 30};
inline constexpr LogicalPoint kOnTheBorder[] = {{-5, 0}, {20, 0}, {0, -7}, {0, 30}, {20, 30}};
inline constexpr LogicalPoint kOneUnitOutside[] = {{-6, 0}, {21, 0}, {0, -8}, {0, 31}};

inline std::string text(const LogicalPoint& p) {
  return "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")";
}

inline std::string text(const void* address) {
  std::ostringstream os;
  os << address;
  return os.str();
}

/// Turns the list's view by a quarter: (x, y) becomes (100 - y, 200 + x), while
/// the scale and the offset would put it elsewhere.
inline void turn_by_a_quarter(DL::DisplayList& list) {
  list.m_bRotated = true;
  const double quarter_turn[6] = {1.0, -1.0, 100.0, 200.0, 0.0, 0.0};
  for (int i = 0; i < 6; ++i) list.m_rotation[i] = quarter_turn[i];
  list.m_scale = {7.0, 7.0};
}

inline Lines unclipped(RecordedList& recorded, DL::Drawable& drawable) {
  drawable.draw_unclipped(recorded.list);
  return recorded.take_lines();
}

inline Lines clipped(RecordedList& recorded, DL::Drawable& drawable) {
  drawable.draw_clipped(recorded.list);
  return recorded.take_lines();
}

/// The lines of all four ways to draw, one after the other.
inline Lines all_ways(RecordedList& recorded, DL::Drawable& drawable) {
  drawable.draw_unclipped(recorded.list);
  drawable.draw_clipped(recorded.list);
  drawable.draw_unclipped_selection(recorded.list);
  drawable.draw_clipped_selection(recorded.list);
  return recorded.take_lines();
}

/// Whether a search for `wanted` stops at `drawable`.
inline bool finds(DL::Drawable& wanted, DL::Drawable& drawable) {
  DL::Search search;
  search.prototype = &wanted;
  search.type = wanted.type();
  search.m_bounds = bounds_of(wanted);
  return drawable.remove(search);
}

inline Words record_of(DL::Drawable& drawable, DL::DisplayList& list) {
  MemoryStream stream;
  drawable.serialize_out(&stream, list);
  EXPECT_EQ(stream.writes(), stream.words().size()) << "a write for each word";
  return stream.words();
}

/// Neither stream operation does anything, whatever follows the drawable.
inline void expect_not_stored(DL::Drawable& drawable) {
  RecordedList recorded;
  const auto successor = std::make_unique<DL::DLDot>(LM_RGB32{2}, LogicalPoint{6, 7});
  const LogicalBounds bounds = bounds_of(drawable);
  drawable.m_pNext = successor.get();
  MemoryStream stream;
  drawable.serialize_out(&stream, recorded.list);
  EXPECT_EQ(stream.writes(), 0U);
  MemoryStream input(Words{1, 2, 3, 4});
  drawable.serialize_in(&input, recorded.list);
  EXPECT_EQ(input.position(), 0U);
  EXPECT_EQ(drawable.m_pNext, successor.get());
  EXPECT_EQ(bounds_of(drawable), bounds);
  drawable.m_pNext = nullptr;
}

/// The line of the drawable at a level, without its address, and its memory.
inline void expect_dump(const DL::Drawable& drawable, int level, const std::string& line,
                        std::uint32_t bytes) {
  DL::DisplayListDebug statistics;
  std::ostringstream os;
  drawable.dump(os, level, statistics);
  EXPECT_EQ(os.str(), line + ", this = " + text(&drawable) + "\n");
  EXPECT_EQ(statistics.m_cDrawableBytes, bytes);
  EXPECT_EQ(statistics.m_cEntryBytes, 32U);
  EXPECT_EQ(statistics.m_cDrawables + statistics.m_cGroups + statistics.m_cGroupBytes, 0U);
}

}  // namespace answers
