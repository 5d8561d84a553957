#include "importers/dxf/dimensions.h"

#include <algorithm>
#include <cstdio>

namespace importers::dxf {

namespace {

Polyline segment(const Vertex& from, const Vertex& to) {
  return {{{from}, {to}}, false};
}

/// A measure as the text of the dimension has it.
std::wstring worded(const DimensionStyle& style, const char* prefix, double value,
                    const char* suffix) {
  char number[64];
  const int size = std::snprintf(number, sizeof number, "%s%.6g%s", prefix, value, suffix);
  const std::wstring measure(number, number + std::max(0, size));
  if (style.text.empty()) return measure;
  std::wstring text = style.text;
  const std::size_t place = text.find(L"<>");
  if (place != std::wstring::npos) text.replace(place, 2, measure);
  return text;
}

Paragraphs caption(const DimensionStyle& style, const std::wstring& text, double rotation) {
  constexpr int middle_center = 5;
  Paragraphs caption;
  caption.at = style.middle;
  caption.height = style.text_size;
  // Upside down is turned over.
  caption.rotation = std::remainder(rotation, whole_turn / 2);
  caption.attachment = middle_center;
  caption.text = text;
  return caption;
}

}  // namespace

Hatch arrow(const Vertex& tip, const Vertex& direction, double size) {
  const double way = length(direction);
  const Vertex back = way > 0 ? -size / way * direction : Vertex{0, 0};
  const Vertex aside = 1.0 / 6 * Vertex{-back.y, back.x};
  return {{{tip, tip + back + aside, tip + back - aside}}, true, {}};
}

std::vector<Geometry> linear_dimension(const Vertex& first, const Vertex& second,
                                       const Vertex& place, double angle,
                                       const DimensionStyle& style) {
  const Vertex along{std::cos(angle), std::sin(angle)};
  const auto foot = [&](const Vertex& v) {
    const Vertex from_place = v - place;
    return place + (from_place.x * along.x + from_place.y * along.y) * along;
  };
  const Vertex a = foot(first);
  const Vertex b = foot(second);
  const std::wstring text = worded(style, "", style.factor * length(b - a), "");
  return {segment(first, a),
          segment(second, b),
          segment(a, b),
          arrow(a, a - b, style.arrow_size),
          arrow(b, b - a, style.arrow_size),
          caption(style, text, angle)};
}

std::vector<Geometry> round_dimension(const Vertex& from, const Vertex& to, bool is_diameter,
                                      const DimensionStyle& style) {
  const double measure = style.factor * length(to - from);
  const std::wstring text = worded(style, is_diameter ? "%%c" : "R", measure, "");
  std::vector<Geometry> parts{segment(from, to), arrow(to, to - from, style.arrow_size),
                              caption(style, text, angle(to - from))};
  if (is_diameter) parts.emplace_back(arrow(from, from - to, style.arrow_size));
  return parts;
}

std::vector<Geometry> angular_dimension(const Vertex& center, const Vertex& first,
                                        const Vertex& second, const Vertex& place,
                                        const DimensionStyle& style) {
  const double radius = length(place - center);
  double start = angle(first - center);
  double end = angle(second - center);
  put_in_order(start, end);
  // The arc on the side where its place is.
  double turn = std::fmod(angle(place - center) - start + 2 * whole_turn, whole_turn);
  if (turn > end - start) {
    turn = end;
    end = start + whole_turn;
    start = turn;
  }
  const Arc arc{center, {radius, 0}, {0, radius}, start, end};
  const double degrees = (end - start) / radians(1);
  const Vertex a = arc.at(start);
  const Vertex b = arc.at(end);
  const Vertex from_a = a - center;
  const Vertex from_b = b - center;
  return {segment(first, a),
          segment(second, b),
          arc,
          arrow(a, {from_a.y, -from_a.x}, style.arrow_size),
          arrow(b, {-from_b.y, from_b.x}, style.arrow_size),
          caption(style, worded(style, "", degrees, "%%d"), 0)};
}

std::vector<Geometry> ordinate_dimension(const Vertex& feature, const Vertex& end, double value,
                                         const DimensionStyle& style) {
  return {segment(feature, end), caption(style, worded(style, "", style.factor * value, ""), 0)};
}

}  // namespace importers::dxf
