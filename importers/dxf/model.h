#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "displaylist/platform/points.h"
#include "importers/dxf/affine.h"
#include "importers/dxf/curves.h"
#include "importers/dxf/fonts.h"

/// A DXF file as plain values, names resolved to indices, strings decoded.
namespace importers::dxf {

/// Where a colour or a line type comes from.
enum class Source : std::uint8_t { layer, block, own };

struct Color {
  Source source = Source::layer;
  LM_RGB32 rgb{0};  ///< of its own
};

struct LineType {
  std::string name;
  std::vector<double> dashes;  ///< dashes above 0, gaps below, dots 0
};

struct Layer {
  std::string name;  ///< UTF-8, as the file spells it
  LM_RGB32 color{0};
  std::size_t line_type = 0;
  bool is_frozen = false;
  bool is_off = false;
};

struct TextStyle {
  FontChoice font;
  double width_factor = 1.0;
  double height = 0.0;  ///< of all its texts, where not 0
};

/// What an entity looks like.
struct Look {
  std::size_t layer = 0;
  Color color;
  Source line_type_source = Source::layer;
  std::size_t line_type = 0;  ///< of its own
};

struct Corner {
  Vertex at;
  double bulge = 0.0;  ///< of the side that starts here
};

struct Polyline {
  std::vector<Corner> corners;
  bool is_closed = false;
};

struct Spot {
  Vertex at;
};

/// Half a line from the base on, or all of it.
struct Ray {
  Vertex base;
  Vertex direction;
  bool both_ways = false;
};

/// A family of parallel lines that fill a hatch.
struct HatchLines {
  double angle = 0.0;  ///< radians
  Vertex base{0, 0};
  Vertex step{0, 0};           ///< from each line to the next
  std::vector<double> dashes;  ///< as of a line type; none: a whole line
};

/// An area within loops by the even-odd rule, solid unless it has lines.
struct Hatch {
  std::vector<std::vector<Vertex>> loops;
  bool is_solid = true;
  std::vector<HatchLines> lines;
};

/// A line of text.
struct Text {
  Vertex at;      ///< where it starts, for the usual alignment
  Vertex second;  ///< where it is aligned to, for others
  double height = 1.0;
  double rotation = 0.0;  ///< radians
  double width_factor = 1.0;
  int horizontal = 0;  ///< 0 left, 1 center, 2 right, 3 aligned, 4 middle, 5 fit
  int vertical = 0;    ///< 0 baseline, 1 bottom, 2 middle, 3 top
  std::size_t style = 0;
  std::wstring text;
};

/// Lines of text with formatting codes in them.
struct Paragraphs {
  Vertex at;
  double height = 1.0;
  double rotation = 0.0;  ///< radians
  double width = 0.0;     ///< where lines wrap; 0: nowhere
  double spacing = 1.0;   ///< of lines, as a factor of the usual
  int attachment = 1;     ///< of `at` to the box: 1 top left to 9 bottom right
  std::size_t style = 0;
  std::wstring text;
};

struct Insert {
  std::size_t block = 0;
  Vertex at{0, 0};
  Vertex scale{1, 1};
  double rotation = 0.0;  ///< radians
  int columns = 1;
  int rows = 1;
  Vertex spacing{0, 0};
};

using Geometry = std::variant<Polyline, Arc, Spline, Spot, Ray, Hatch, Text, Paragraphs, Insert>;

struct Entity {
  Look look;
  Affine placement;  ///< from the coordinates of the geometry to the file's
  bool in_paper_space = false;
  bool is_invisible = false;
  Geometry geometry;
};

struct Block {
  std::string name;
  Vertex base{0, 0};
  std::vector<Entity> entities;
};

/// Names, none of which differ by case only, and what they stand for. What is
/// named before it is defined has default values until then.
template <class T>
class Names {
 public:
  [[nodiscard]] std::size_t index(const std::string& upper_name) {
    const auto [place, is_new] = m_indices.try_emplace(upper_name, m_items.size());
    if (is_new) m_items.emplace_back();
    return place->second;
  }
  [[nodiscard]] bool contains(const std::string& upper_name) const {
    return m_indices.contains(upper_name);
  }
  [[nodiscard]] T& operator[](std::size_t index) { return m_items[index]; }
  [[nodiscard]] const T& operator[](std::size_t index) const { return m_items[index]; }
  [[nodiscard]] const std::vector<T>& items() const { return m_items; }

 private:
  std::unordered_map<std::string, std::size_t> m_indices;
  std::vector<T> m_items;
};

/// Of dimensions and leaders that are not drawn by the file.
struct DimensionSizes {
  double text = 2.5;
  double arrow = 2.5;
  double scale = 1.0;  ///< of both
};

struct Model {
  Names<Layer> layers;         ///< the first one is layer 0
  Names<LineType> line_types;  ///< the first one is continuous
  Names<TextStyle> styles;
  Names<Block> blocks;
  std::vector<Entity> entities;
  DimensionSizes dimensions;

  std::size_t records = 0;                   ///< entities of the file, read or not
  std::map<std::string, std::size_t> kinds;  ///< entities that were not understood, by kind
  std::size_t unusable = 0;                  ///< entities with a number beyond what is drawn
  std::string first_unusable;                ///< the first of them, in words
  std::size_t cut_lines = 0;                 ///< lines whose ends were left out for their length
  bool has_end = false;                      ///< the file ends as it should
};

}  // namespace importers::dxf
