#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "displaylist/platform/font.h"
#include "lumen/text/font_face_p.h"

struct _FcFontSet;
struct _FcPattern;

namespace lumen {

/// What the fonts of the system have for a description. One thread uses any of
/// these objects at a time.
class FontSearch {
 public:
  struct Found {
    FaceSource source;
    std::string family;
  };

  explicit FontSearch(const LM_Font_Description& description);
  FontSearch(const FontSearch&) = delete;
  FontSearch& operator=(const FontSearch&) = delete;
  ~FontSearch();

  /// The name asked for, in UTF-8; empty where none is given.
  [[nodiscard]] const std::string& name() const { return m_name; }
  /// Whether the name is that of no font and of no kind of fonts either.
  [[nodiscard]] bool is_name_missing() const;

  /// The face that fits best; nothing where the system has no font.
  [[nodiscard]] std::optional<Found> best() const;

  /// The number of the face that fits best of those with the character; nothing
  /// where there is none.
  [[nodiscard]] std::optional<std::size_t> substitute_with(char32_t character);
  /// The face of a number.
  [[nodiscard]] FaceSource substitute(std::size_t number) const;

 private:
  void ask_for_name(const LM_Font_Description& description);
  void ask_for_style(const LM_Font_Description& description);

  std::string m_name;
  _FcPattern* m_pattern;
  _FcFontSet* m_substitutes = nullptr;  ///< null until it is needed
};

}  // namespace lumen
