#pragma once

#include <ft2build.h>
#include <gtest/gtest.h>
#include <hb.h>

#include <cmath>
#include <string>
#include <vector>

#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/rendition.h"
#include "lumen/text_renderer.h"

#include FT_FREETYPE_H
#include FT_OUTLINE_H

/// Text as the libraries for fonts tell it when they are asked by hand, for tests.
namespace reference_text {

/// UTF-16, an element per code unit.
inline std::wstring utf16(const std::u32string& text) {
  std::wstring units;
  for (const char32_t value : text) {
    if (value < 0x10000) {
      units += static_cast<wchar_t>(value);
    } else {
      units += static_cast<wchar_t>(0xD800 + ((value - 0x10000) >> 10));
      units += static_cast<wchar_t>(0xDC00 + ((value - 0x10000) & 0x3FF));
    }
  }
  return units;
}

inline std::int32_t length(const std::wstring& text) {
  return static_cast<std::int32_t>(text.size());
}

/// A glyph and where it is, in ems from the start of its text.
struct Glyph {
  std::uint32_t number;
  double x;
  double y;
  double advance;
};

/// One of the faces that every test may use.
class Face {
 public:
  explicit Face(const std::string& name = "DejaVuSans") {
    const std::string path = "/usr/share/fonts/truetype/dejavu/" + name + ".ttf";
    EXPECT_EQ(FT_Init_FreeType(&m_library), 0);
    EXPECT_EQ(FT_New_Face(m_library, path.c_str(), 0, &m_face), 0) << path;
    hb_blob_t* blob = hb_blob_create_from_file(path.c_str());
    hb_face_t* face = hb_face_create(blob, 0);
    m_shaper = hb_font_create(face);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
  }
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;
  ~Face() {
    hb_font_destroy(m_shaper);
    FT_Done_FreeType(m_library);
  }

  /// The width of one character in ems, of a missing one that of the mark for it.
  double advance(char32_t character) {
    EXPECT_EQ(FT_Load_Char(m_face, character, FT_LOAD_NO_SCALE), 0);
    return ems(m_face->glyph->metrics.horiAdvance);
  }
  [[nodiscard]] double ascent() const { return ems(m_face->ascender); }
  [[nodiscard]] double descent() const { return -ems(m_face->descender); }
  double height(char32_t character) {
    EXPECT_EQ(FT_Load_Char(m_face, character, FT_LOAD_NO_SCALE), 0);
    return ems(m_face->glyph->metrics.horiBearingY);
  }

  /// Text of one script and direction, left to right from `x`.
  [[nodiscard]] std::vector<Glyph> shape(const std::u32string& text, bool right_to_left = false,
                                         double x = 0) const {
    hb_buffer_t* buffer = hb_buffer_create();
    const std::vector<std::uint32_t> values(text.begin(), text.end());
    hb_buffer_add_codepoints(buffer, values.data(), static_cast<int>(values.size()), 0,
                             static_cast<int>(values.size()));
    hb_buffer_guess_segment_properties(buffer);
    hb_buffer_set_direction(buffer, right_to_left ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_language(buffer, HB_LANGUAGE_INVALID);
    hb_shape(m_shaper, buffer, nullptr, 0);
    unsigned count = 0;
    const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* places = hb_buffer_get_glyph_positions(buffer, &count);
    std::vector<Glyph> result;
    for (unsigned i = 0; i < count; ++i) {
      const double width = ems(places[i].x_advance);
      result.push_back(
          {glyphs[i].codepoint, x + ems(places[i].x_offset), ems(places[i].y_offset), width});
      x += width;
    }
    hb_buffer_destroy(buffer);
    return result;
  }

  /// The outlines of the glyphs as fine straight contours; `place(x, y)` takes
  /// ems to a point.
  template <class Place>
  LM_Contour_Set outlines(const std::vector<Glyph>& glyphs, const Place& place) {
    auto set = LM_Create<LM_Contour_Set_Data>(LM_Fill_Rule::non_zero);
    for (const Glyph& glyph : glyphs) {
      EXPECT_EQ(FT_Load_Glyph(m_face, glyph.number, FT_LOAD_NO_SCALE), 0);
      Path path;
      const FT_Outline_Funcs steps{&Path::move, &Path::line, &Path::bend, &Path::bend_twice, 0, 0};
      EXPECT_EQ(FT_Outline_Decompose(&m_face->glyph->outline, &steps, &path), 0);
      for (const auto& contour : path.contours) {
        std::vector<LM_Point> points;
        for (const auto& [x, y] : contour) {
          points.push_back(place(glyph.x + ems(x), glyph.y + ems(y)));
        }
        set->add_contour(points.data(), static_cast<std::int32_t>(points.size()));
      }
    }
    return set;
  }

 private:
  struct Path {
    std::vector<std::vector<std::pair<double, double>>> contours;

    static Path& of(void* user) { return *static_cast<Path*>(user); }
    static int move(const FT_Vector* to, void* user) {
      of(user).contours.emplace_back();
      return line(to, user);
    }
    static int line(const FT_Vector* to, void* user) {
      of(user).contours.back().emplace_back(to->x, to->y);
      return 0;
    }
    static int bend(const FT_Vector* over, const FT_Vector* to, void* user) {
      auto& contour = of(user).contours.back();
      const auto from = contour.back();
      for (int i = 1; i <= 8; ++i) {
        const double t = i / 8.0;
        const double u = 1 - t;
        contour.emplace_back(u * u * from.first + 2 * u * t * static_cast<double>(over->x) +
                                 t * t * static_cast<double>(to->x),
                             u * u * from.second + 2 * u * t * static_cast<double>(over->y) +
                                 t * t * static_cast<double>(to->y));
      }
      return 0;
    }
    static int bend_twice(const FT_Vector*, const FT_Vector*, const FT_Vector*, void*) {
      ADD_FAILURE() << "these faces have no such curves";
      return 1;
    }
  };

  template <class Number>
  [[nodiscard]] double ems(Number units) const {
    return static_cast<double>(units) / m_face->units_per_EM;
  }

  FT_Library m_library = nullptr;
  FT_Face m_face = nullptr;
  hb_font_t* m_shaper = nullptr;
};

inline double total(const std::vector<Glyph>& glyphs) {
  double sum = 0;
  for (const Glyph& glyph : glyphs) sum += glyph.advance;
  return sum;
}

/// A font by the name of its family.
inline LM_Font_Description named(const std::wstring& family) {
  LM_Font_Description description;
  description.name = family;
  description.given = LM_Font_Description::NAME;
  return description;
}

/// What a renderer tells of a text that starts at (0, 0), at size 1.
struct Extent {
  explicit Extent(const std::wstring& text, const LM_Font& font = {}) : widths(text.size()) {
    LM_Rendition rendition;
    rendition.set_text_size(1);
    rendition.set_shared_font(font);
    LM_Text_Extent told{widths.data()};
    lumen::TextRenderer().text_extent(&rendition, {0, 0, 0}, text.data(), length(text), corners,
                                      true, told);
  }
  [[nodiscard]] float advance() const { return corners[1].x; }

  LM_Point corners[4]{};
  std::vector<float> widths;
};

}  // namespace reference_text
