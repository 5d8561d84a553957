#pragma once

#include <string>
#include <vector>

#include "displaylist/platform/font.h"
#include "lumen/text/font_face_p.h"
#include "lumen/text/font_search_p.h"

namespace lumen {

/// The faces that text in one font is shown in. There is one for each
/// description, which is never deleted; any thread may use it.
class FontSet {
 public:
  /// Only one set may be made at a time.
  explicit FontSet(const LM_Font_Description& description);
  FontSet(const FontSet&) = delete;
  FontSet& operator=(const FontSet&) = delete;
  ~FontSet() = delete;

  /// The face of the font; null where there is none at all.
  [[nodiscard]] const FontFace* face() const { return m_face; }
  /// A face that has the character, that of the font if it does; else null.
  [[nodiscard]] const FontFace* face_with(char32_t character) const;

  /// The font that all who ask for the description get.
  [[nodiscard]] const LM_Font& font() const { return m_font; }

  /// The name asked for, if there is no such font.
  [[nodiscard]] std::string missing_name() const;
  /// The family of the face; empty where there is none.
  [[nodiscard]] const std::string& family() const { return m_family; }

 private:
  LM_Font m_font;
  mutable FontSearch m_search;
  std::string m_family;
  const FontFace* m_face = nullptr;
  mutable std::vector<const FontFace*> m_substitutes;  ///< by their number; null until needed
};

/// The set of a font; the usual one of a font without data. A name that is
/// missing is told of, once.
const FontSet& font_set(const LM_Font& font);
const FontSet& font_set(const LM_Font_Description& description);

}  // namespace lumen
