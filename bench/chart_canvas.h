#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "displaylist/displaylist.h"

namespace bench {

struct Place {
  double x = 0.0;
  double y = 0.0;
};

/// Where a text stands to its place, along the line.
enum class Anchor : std::uint8_t { start, middle, end };

struct Lettering {
  LM_RGB32 color{0x00403C34};
  double size = 13.0;
  Anchor anchor = Anchor::start;
  bool is_bold = false;
};

/// A page that charts are drawn on: a display list, in pixels from the left
/// upper corner.
class Canvas {
 public:
  Canvas(std::int32_t width, std::int32_t height);

  void area(Place corner, Place opposite, LM_RGB32 color);
  void line(Place from, Place to, LM_RGB32 color);
  void disc(Place center, double radius, LM_RGB32 color);
  /// The place is on the middle of the small letters' height.
  void text(Place at, std::string_view text, const Lettering& lettering);

  /// Writes an SVG file. Empty on success, else what is wrong.
  [[nodiscard]] std::string write(const std::string& path);

 private:
  [[nodiscard]] DL::PointTemplate<long> logical(Place place) const;

  std::int32_t m_width;
  std::int32_t m_height;
  DL::DisplayList m_list;
};

}  // namespace bench
