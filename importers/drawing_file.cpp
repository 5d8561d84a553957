#include "importers/drawing_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>

#include "displaylist/core/group.h"
#include "displaylist/core/iterators.h"

namespace importers {

namespace {

// Told apart from the notes of others by how they begin.
constexpr std::string_view extent_key = "drawing extent";
constexpr std::string_view map_key = "drawing is map";
constexpr std::string_view points_key = "drawing points";
constexpr std::string_view features_key = "drawing features";
constexpr std::array own_keys{extent_key, map_key, points_key, features_key};
constexpr std::string_view yes = "yes";

/// The shortest text that reads back as the same number.
template <class Number>
std::string text_of(Number number) {
  std::array<char, 40> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
  return {text.data(), end.ptr};
}

/// The numbers of a text, as many as there are up to the first that is none.
template <class Number, std::size_t n>
std::size_t numbers_in(std::string_view text, std::array<Number, n>& numbers) {
  const char* at = text.data();
  const char* const end = at + text.size();
  std::size_t count = 0;
  while (count < n) {
    while (at != end && *at == ' ') ++at;
    const std::from_chars_result result = std::from_chars(at, end, numbers[count]);
    if (result.ec != std::errc()) break;
    at = result.ptr;
    ++count;
  }
  return count;
}

std::string_view note(const files::Properties& properties, std::string_view key) {
  const auto found = std::find_if(properties.notes.begin(), properties.notes.end(),
                                  [&](const auto& entry) { return entry.first == key; });
  return found == properties.notes.end() ? std::string_view() : found->second;
}

bool is_own(std::string_view key) {
  return std::find(own_keys.begin(), own_keys.end(), key) != own_keys.end();
}

std::size_t count_in(const files::Properties& properties, std::string_view key) {
  std::array<std::size_t, 1> count{};
  return numbers_in(note(properties, key), count) == 1 ? count[0] : 0;
}

Extent extent_of(const files::Properties& properties, DL::DisplayList& list) {
  std::array<double, 4> sides{};
  if (numbers_in(note(properties, extent_key), sides) == sides.size() &&
      std::all_of(sides.begin(), sides.end(), [](double side) { return std::isfinite(side); })) {
    return {sides[0], sides[1], sides[2], sides[3]};
  }
  DL::BoundsTemplate<long> bounds;
  if (list.m_pRootGroup != nullptr) list.m_pRootGroup->add_bounds(bounds);
  Extent extent;
  if (bounds.is_empty()) return extent;
  const double scale = properties.unit_scale;
  extent.widen(bounds.min.x / scale + properties.origin_x,
               bounds.min.y / scale + properties.origin_y);
  extent.widen(bounds.max.x / scale + properties.origin_x,
               bounds.max.y / scale + properties.origin_y);
  return extent;
}

/// Whether a drawing can lie there: its sides and its size can be told.
bool is_finite(const Extent& extent) {
  return std::isfinite(extent.min_x) && std::isfinite(extent.min_y) &&
         std::isfinite(extent.width()) && std::isfinite(extent.height());
}

std::size_t count_drawables(DL::DisplayList& list) {
  std::size_t count = 0;
  if (list.m_pRootGroup == nullptr) return count;
  DL::DisplayListIterator at(&list);
  for (const DL::Drawable* d = at.current(); d != nullptr; d = at.next()) ++count;
  return count;
}

bool is_usable(const files::Properties& properties) {
  return std::isfinite(properties.unit_scale) && properties.unit_scale > 0 &&
         std::isfinite(properties.origin_x) && std::isfinite(properties.origin_y);
}

}  // namespace

files::Properties properties_of(const Drawing& drawing) {
  files::Properties properties;
  properties.unit_scale = drawing.mapping.scale;
  properties.origin_x = drawing.mapping.origin_x;
  properties.origin_y = drawing.mapping.origin_y;
  properties.layers = drawing.layers;
  const Extent& extent = drawing.extent;
  properties.notes.emplace_back(extent_key, text_of(extent.min_x) + ' ' + text_of(extent.min_y) +
                                                ' ' + text_of(extent.max_x) + ' ' +
                                                text_of(extent.max_y));
  if (drawing.is_map) properties.notes.emplace_back(map_key, yes);
  properties.notes.emplace_back(points_key, text_of(drawing.points));
  properties.notes.emplace_back(features_key, text_of(drawing.features));
  properties.notes.insert(properties.notes.end(), drawing.notes.begin(), drawing.notes.end());
  return properties;
}

std::string take_over(files::Contents contents, Drawing& drawing) {
  const files::Properties& properties = contents.properties;
  drawing.drawables = count_drawables(*contents.list);
  if (is_usable(properties)) drawing.extent = extent_of(properties, *contents.list);
  if (!is_usable(properties) || !is_finite(drawing.extent)) {
    return "has a unit that is no length; it was not written for drawings";
  }
  if (drawing.drawables == 0 || drawing.extent.is_empty()) {
    return "has nothing to draw; choose a file with points, lines or areas";
  }
  drawing.mapping = {properties.origin_x, properties.origin_y, properties.unit_scale};
  drawing.layers = properties.layers;
  drawing.is_map = note(properties, map_key) == yes;
  drawing.points = count_in(properties, points_key);
  drawing.features = count_in(properties, features_key);
  std::copy_if(properties.notes.begin(), properties.notes.end(), std::back_inserter(drawing.notes),
               [](const auto& entry) { return !is_own(entry.first); });
  // The list before the heap that it lies in.
  drawing.list = std::move(contents.list);
  drawing.renditions = std::move(contents.renditions);
  drawing.heap = std::move(contents.heap);
  return {};
}

}  // namespace importers
