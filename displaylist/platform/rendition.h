#pragma once

#include <cstdint>

#include "displaylist/platform/change_counter.h"
#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/counted.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/font.h"
#include "displaylist/platform/marker.h"
#include "displaylist/platform/points.h"
#include "displaylist/platform/texture_pages.h"

/// How a stroke ends; the two ends of a line style carry one value each.
/// A value outside the enumeration draws as `flat`.
enum LM_End_Style : std::int32_t { LM_END_FLAT = 0, LM_END_ROUND = 1, LM_END_SQUARE = 2 };

/// Line patterns. A value outside the enumeration draws solid.
enum LM_Line_Pattern : std::int32_t {
  LM_PATTERN_SOLID = 0,
  LM_PATTERN_DASH = 1,
  LM_PATTERN_DOT = 2,
  LM_PATTERN_DASH_DOT = 3,
  LM_PATTERN_DASH_DOT_DOT = 4,
};

/// The edge mode word that asks filled strips for an outline.
inline constexpr std::uint32_t LM_EDGE_MODE_OUTLINE = 64;

/// How lines are stroked.
struct LM_Line_Style {
  std::int32_t weight = 1;                  ///< width in device units; 0 and less draw as 1
  std::int32_t pattern = LM_PATTERN_SOLID;  ///< an LM_Line_Pattern
  std::int32_t start_style = LM_END_FLAT;   ///< an LM_End_Style
  std::int32_t end_style = LM_END_FLAT;     ///< an LM_End_Style
  std::uint64_t change_serial = 0;

  /// Both end styles when they are equal, else -1.
  [[nodiscard]] std::int32_t common_end_style() const {
    return start_style == end_style ? start_style : -1;
  }
};

/// What a selection pass draws into: the key of the drawable being drawn.
class LM_Selector_Data : public LM_Counted {
 public:
  /// Names the drawable whose actions follow. `index` tells parts of one
  /// drawable apart; 0 is the drawable itself.
  void set_selection_key(const void* key, std::int32_t index) {
    m_key = key;
    m_index = index;
  }
  [[nodiscard]] const void* key() const { return m_key; }
  [[nodiscard]] std::int32_t index() const { return m_index; }

 private:
  const void* m_key = nullptr;
  std::int32_t m_index = 0;
};

/// How text is set. Shared by count, cloned on write.
struct LM_Text_Attributes : LM_Counted {
  /// The height of the font's em square in device units; see LM_Renderer for
  /// what a negative size means.
  float size = 0.0F;
  float rotation = 0.0F;     ///< radians, in [0, 2 pi)
  float width_scale = 1.0F;  ///< stretch of the glyphs along the text
  LM_Font font;
  std::uint64_t change_serial = 0;
};

/// What a rendition refers to. Shared by count, cloned on write.
struct LM_Rendition_Data : LM_Counted {
  LM_RGB32 color{};
  LM_Clip_Rectangle clip_rectangle;
  LM_Line_Style line_style;
  LM_Contour_Set complex_clip;
  LM_Contour_Set hard_complex_clip;
  bool hard_complex_clip_validated = false;
  std::uint32_t edge_mode = 0;
  LM_Marker marker;
  LM_Handle<const LM_Texture_Pages> texture_pages;
  LM_Handle<LM_Selector_Data> selector_data;
  LM_Handle<LM_Text_Attributes> text_attributes;
  std::uint64_t change_serial = 0;
};

/// The rendering state that a device action is called with: a counted
/// copy-on-write handle. A copy shares the data until one of the two is
/// changed. One rendition is used by one thread at a time; copies in several
/// threads do not see each other's changes. Several threads may read one that
/// none of them changes, which drawing on a device does not do either.
///
/// Every setter leaves a value that is already set alone; a setter that
/// changes one stamps the data with a fresh change serial.
class LUMEN_API LM_Rendition {
 public:
  LM_Rendition();
  // Copied only: a rendition without data does not exist.
  LM_Rendition(const LM_Rendition&) = default;
  LM_Rendition& operator=(const LM_Rendition&) = default;
  ~LM_Rendition() = default;

  [[nodiscard]] LM_RGB32 color() const { return m_data->color; }
  /// `keep_equal`: an equal colour is left alone, serial included; else the
  /// colour is stored and stamped in any case.
  void set_color(LM_RGB32 color, bool keep_equal) {
    if (keep_equal && color == m_data->color) return;
    writable().color = color;
  }

  /// The device clip rectangle, inclusive. By default the whole device plane.
  [[nodiscard]] const LM_Clip_Rectangle& clip_rectangle() const { return m_data->clip_rectangle; }
  void set_clip_rectangle(const LM_Clip_Rectangle& rectangle);

  [[nodiscard]] const LM_Line_Style& line_style() const { return m_data->line_style; }
  void set_line_weight(std::int32_t weight);
  void set_line_pattern(std::int32_t pattern);
  /// Sets both ends; -1 is what common_end_style() tells of two different ends.
  void set_end_styles(std::int32_t style) { set_end_styles(style, style); }
  void set_end_styles(std::int32_t start, std::int32_t end);

  [[nodiscard]] std::uint32_t edge_mode() const { return m_data->edge_mode; }
  void set_edge_mode(std::uint32_t mode);

  [[nodiscard]] const LM_Marker& marker() const { return m_data->marker; }
  void set_marker(const LM_Marker& marker);

  /// What textured strips are covered with; null for nothing.
  [[nodiscard]] const LM_Texture_Pages* texture_pages() const {
    return m_data->texture_pages.get();
  }
  void set_texture_pages(LM_Handle<const LM_Texture_Pages> pages);

  /// The complex clip in device units, inside which alone is drawn; null for none.
  [[nodiscard]] LM_Contour_Set complex_clip() const { return m_data->complex_clip; }
  /// `invalidate_hard`: the hard clip is derived anew before its next use.
  void set_complex_clip(LM_Contour_Set clip, bool invalidate_hard);

  /// The hard complex clip: the clip as straight edges, as devices use it.
  [[nodiscard]] bool hard_complex_clip_validated() const {
    return m_data->hard_complex_clip_validated;
  }
  void validate_hard_complex_clip();
  /// Null when there is none or when it is not validated.
  [[nodiscard]] const LM_Contour_Set_Data* hard_complex_clip() const {
    return m_data->hard_complex_clip.get();
  }
  /// The clip that devices draw through: the hard one or, where it is not
  /// validated, what validating would derive. Null for none. It only reads, so
  /// that several threads may draw with one rendition.
  [[nodiscard]] const LM_Contour_Set_Data* device_clip() const;

  [[nodiscard]] LM_Handle<LM_Selector_Data> selector_data() const { return m_data->selector_data; }
  void set_selector_data(LM_Handle<LM_Selector_Data> data);

  [[nodiscard]] const LM_Text_Attributes& text_attributes() const {
    return *m_data->text_attributes;
  }
  void set_text_size(float size);
  /// Stores an angle, brought into [0, 2 pi).
  void set_text_rotation(float rotation);
  void set_text_width_scale(float scale);

  // The same without cloning what is shared: every handle of the data sees the
  // change. They stamp the data and its text attributes.
  void set_shared_text_size(float size);
  void set_shared_text_rotation(float rotation);
  void set_shared_font(const LM_Font& font);

  /// Takes over all that the other refers to, serials included, as assignment
  /// does, but shares neither the data nor the text attributes: no change to one
  /// handle is seen by the other, those without cloning included. Blocks that no
  /// other handle holds are filled anew, so that repeated calls do not allocate.
  void copy_state(const LM_Rendition& other);

  /// The serial of the last change of anything but the text attributes.
  [[nodiscard]] std::uint64_t change_serial() const { return m_data->change_serial; }
  /// Whether both handles share one state.
  [[nodiscard]] bool shares_data_with(const LM_Rendition& other) const {
    return m_data == other.m_data;
  }

 private:
  /// The data, made this handle's own and stamped with a fresh serial.
  LM_Rendition_Data& writable();
  /// The line style of writable data, stamped as well.
  LM_Line_Style& writable_line_style();
  /// The text attributes, made this handle's own and stamped.
  LM_Text_Attributes& writable_text_attributes();
  /// The text attributes as they are shared; they and the data are stamped.
  LM_Text_Attributes& shared_text_attributes();

  LM_Handle<LM_Rendition_Data> m_data;
};
