#pragma once

#include <cstdint>
#include <ostream>
#include <string_view>

#include "displaylist/drawables/debug.h"

/// The pieces that lines of the debug dump are made of.
namespace DL::dump_line {

inline void indent(std::ostream& os, int level) {
  for (int i = 0; i < level; ++i) os << "    ";
}

inline void end(std::ostream& os, const void* object) {
  os << ", this = " << object << std::endl;
}

/// "label: level  n, this = address"
inline void write(std::ostream& os, int level, std::string_view label, const void* object) {
  indent(os, level);
  os << label << ": level  " << level;
  end(os, object);
}

/// The same with the point count after the level.
inline void write_points(std::ostream& os, int level, std::string_view label, std::int32_t points,
                         const void* object) {
  indent(os, level);
  os << label << ": level  " << level << ", points = " << points;
  end(os, object);
}

/// Adds a drawable with a line of its own to the statistics.
inline void count(DisplayListDebug& statistics, std::uint32_t bytes) {
  constexpr std::uint32_t entry_bytes = 32;
  statistics.m_cDrawableBytes += bytes;
  statistics.m_cEntryBytes += entry_bytes;
}

}  // namespace DL::dump_line
