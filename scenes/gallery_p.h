#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "scenes/gallery.h"

namespace scenes {

inline constexpr std::int32_t kCellWidth = 128;
inline constexpr std::int32_t kCellHeight = 104;
inline constexpr std::int32_t kGutter = 340;  ///< in the middle, with the names
inline constexpr std::int32_t kHeading = 24;  ///< above the cells
inline constexpr std::size_t kRows = 10;

inline constexpr std::array<LM_RGB32, 6> kColors{
    {{0x002F5D8A}, {0x00B5452C}, {0x003E7A4E}, {0x007A4B8C}, {0x00B07A1E}, {0x001F7A7A}}};
inline constexpr LM_RGB32 kHot{0x00E4572E};
inline constexpr LM_RGB32 kWarm{0x00F3C969};
inline constexpr LM_RGB32 kCool{0x002E86AB};

inline constexpr std::int32_t kMarkerShapes = LM_MARKER_TRIANGLE + 1;

enum class Variant : std::uint8_t { plain, palettized, hidden, cut_off };

/// Whether the library has a palettized variant of the class.
template <class T>
inline constexpr bool kHasPalettized = false;
#define SCENES_HAS_PALETTIZED(Class) \
  template <>                        \
  inline constexpr bool kHasPalettized<DL::Class> = true;
DL_PALETTIZED_CLASSES(SCENES_HAS_PALETTIZED)
#undef SCENES_HAS_PALETTIZED

/// The cell of a variant of a class: the first rows lie left of the middle, the
/// others right.
struct Cell {
  std::size_t number;
  Variant variant;

  [[nodiscard]] bool is_left() const { return number < kRows; }
  [[nodiscard]] DL::PointTemplate<long> center() const;
  [[nodiscard]] LM_RGB32 color() const { return kColors.at(number % kColors.size()); }
};

/// The point at an angle of an ellipse around the centre.
DL::PointTemplate<long> around(const DL::PointTemplate<long>& center, double radius_x,
                               double radius_y, double angle);

/// A colour between two; `part` from 0 to 1.
LM_RGB32 mixed(LM_RGB32 from, LM_RGB32 to, double part);

/// How a text is set.
struct TextStyle {
  const wchar_t* font;
  DL::PointTemplate<double> start;
  double height;
  double rotation = 0.0;
};

/// Fills the layers of a gallery.
class Gallery {
 public:
  using Point = DL::PointTemplate<long>;

  using Specimen = void (Gallery::*)(const Cell&);
  struct Entry {
    std::string_view name;
    Specimen add;
    bool has_palettized;
  };

  /// Every class, in the order of the numbers.
  static std::span<const Entry> entries();

  Gallery(Sheet& sheet, const LM_Handle<LM_Image>& image);
  void fill();

 private:
  template <class T, class... Arguments>
  void add(const Cell& cell, const Arguments&... arguments) {
    add_to<T>(m_specimens, cell, arguments...);
  }
  template <class T, class... Arguments>
  void add_to(DL::DisplayList& list, const Cell& cell, const Arguments&... arguments);

  /// Adds a text in the cell's colour or palette.
  void add_text(const Cell& cell, const TextStyle& style, std::wstring_view text);

  void add_frame(const Cell& cell);
  void add_headings();
  /// The name of a class, beside its plain specimen.
  void add_name(std::size_t number);
  void add_label(std::wstring_view text, const Point& start, bool ends_there);

  void add_dots(const Cell& cell);
  void add_colorized_dots(const Cell& cell);
  void add_polydot(const Cell& cell);
  void add_rows_of_dots(const Cell& cell);
  void add_polyline(const Cell& cell);
  void add_gouraud_polyline(const Cell& cell);
  void add_polysegment(const Cell& cell);
  void add_polymarker(const Cell& cell);
  void add_image(const Cell& cell);
  void add_polygon(const Cell& cell);
  void add_strip_without_border(const Cell& cell);
  void add_strip(const Cell& cell);
  void add_gouraud_strip(const Cell& cell);
  void add_textured_strip(const Cell& cell);
  void add_ellipse(const Cell& cell);
  void add_arc(const Cell& cell);
  void add_pie(const Cell& cell);
  void add_colorized_ellipse(const Cell& cell);
  void add_texts(const Cell& cell);
  void add_nested_list(const Cell& cell);

  LM_Handle<LM_Image> m_image;
  DL::DisplayList& m_frames;
  DL::DisplayList& m_labels;
  DL::DisplayList& m_specimens;
  std::array<DL::DisplayList*, kMarkerShapes> m_markers{};  ///< a layer for each shape
  LM_Rendition* m_palette[kColors.size()] = {};
};

template <class T, class... Arguments>
void Gallery::add_to(DL::DisplayList& list, const Cell& cell, const Arguments&... arguments) {
  if (cell.variant != Variant::palettized) {
    DL::Drawable* drawable = new T(cell.color(), arguments...);
    if (cell.variant == Variant::hidden) drawable->hide();
    list.add(drawable);
  } else if constexpr (kHasPalettized<T>) {
    LM_Rendition* rendition = m_palette[cell.number % kColors.size()];
    list.add(new DL::PalettizedDrawable<T>(rendition, arguments...));
  }
}

}  // namespace scenes
