#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "lumen/text/font_face_p.h"

struct hb_set_t;

namespace lumen {

/// The faces that an SVG embeds: of each only what its texts need.
class SvgFonts {
 public:
  /// A face has glyphs with this text to be shown.
  void add_text(const FontFace& face, std::string_view text);
  void add_glyph(const FontFace& face, std::uint32_t glyph);
  /// How an element names the face: attributes, the embedded face first and then
  /// the installed one that it comes from.
  [[nodiscard]] const std::string& attributes(const FontFace& face);
  /// The rules that embed the faces. One that cannot be embedded is left out.
  [[nodiscard]] std::string rules() const;

 private:
  struct Delete {
    void operator()(hb_set_t* set) const;
  };
  using Set = std::unique_ptr<hb_set_t, Delete>;
  struct Font {
    const FontFace* face;
    Set characters;
    Set glyphs;
    std::string name;   ///< of the embedded face
    std::string style;  ///< its weight and so on, as a rule has it
    std::string attributes;
  };

  Font& font(const FontFace& face);

  std::vector<Font> m_fonts;
  std::map<const FontFace*, std::size_t> m_places;  ///< among the fonts
};

}  // namespace lumen
