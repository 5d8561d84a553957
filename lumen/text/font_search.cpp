#include "lumen/text/font_search_p.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>

#include "lumen/text/unicode_p.h"

namespace lumen {
namespace {

const FcChar8* fc_string(const char* text) {
  return reinterpret_cast<const FcChar8*>(text);
}

std::string string_of(const FcPattern* pattern, const char* item) {
  FcChar8* value = nullptr;
  if (FcPatternGetString(pattern, item, 0, &value) != FcResultMatch) return {};
  return reinterpret_cast<const char*>(value);
}

bool is_true(const FcPattern* pattern, const char* item) {
  FcBool value = FcFalse;
  return FcPatternGetBool(pattern, item, 0, &value) == FcResultMatch && value == FcTrue;
}

/// Where a prepared pattern finds its face.
FaceSource source_of(const FcPattern* pattern) {
  FaceSource source;
  source.file = string_of(pattern, FC_FILE);
  int index = 0;
  FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
  // An instance of 0x8000 stands for a variable font as such.
  source.index = (index >> 16) == 0x8000 ? index & 0xFFFF : index;
  FcMatrix* matrix = nullptr;
  if (FcPatternGetMatrix(pattern, FC_MATRIX, 0, &matrix) == FcResultMatch) {
    source.matrix = {matrix->xx, matrix->xy, matrix->yx, matrix->yy};
  }
  source.is_emboldened = is_true(pattern, FC_EMBOLDEN);
  return source;
}

/// Names that stand for a kind of font, of which there is always one.
bool is_kind(const std::string& name) {
  static constexpr const char* kinds[] = {"",      "sans-serif", "sans serif", "sans",
                                          "serif", "monospace",  "mono"};
  return std::any_of(std::begin(kinds), std::end(kinds), [&](const char* kind) {
    return FcStrCmpIgnoreCase(fc_string(kind), fc_string(name.c_str())) == 0;
  });
}

void add_character(FcPattern* pattern, std::int32_t character) {
  FcCharSet* set = FcCharSetCreate();
  FcCharSetAddChar(set, static_cast<FcChar32>(character));
  FcPatternAddCharSet(pattern, FC_CHARSET, set);
  FcCharSetDestroy(set);
}

}  // namespace

FontSearch::FontSearch(const LM_Font_Description& description) : m_pattern(FcPatternCreate()) {
  ask_for_name(description);
  ask_for_style(description);
  FcConfigSubstitute(nullptr, m_pattern, FcMatchPattern);
  FcDefaultSubstitute(m_pattern);
}

FontSearch::~FontSearch() {
  if (m_substitutes != nullptr) FcFontSetDestroy(m_substitutes);
  FcPatternDestroy(m_pattern);
}

void FontSearch::ask_for_name(const LM_Font_Description& description) {
  if ((description.given & LM_Font_Description::NAME) != 0) {
    const std::wstring& name = description.name;
    m_name = utf8_of(name.substr(0, name.find(L'\0')));
  }
  if (!m_name.empty()) FcPatternAddString(m_pattern, FC_FAMILY, fc_string(m_name.c_str()));
  FcPatternAddString(m_pattern, FC_FAMILY, fc_string("sans-serif"));
  FcPatternAddBool(m_pattern, FC_SCALABLE, FcTrue);
}

void FontSearch::ask_for_style(const LM_Font_Description& description) {
  const auto is_given = [&](std::uint32_t item) { return (description.given & item) != 0; };
  if (is_given(LM_Font_Description::WEIGHT) && description.weight > 0) {
    const double weight = std::clamp(description.weight, 100, 900);
    FcPatternAddDouble(m_pattern, FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
  } else if (is_given(LM_Font_Description::BOLD)) {
    FcPatternAddInteger(m_pattern, FC_WEIGHT,
                        description.bold != 0 ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  }
  if (is_given(LM_Font_Description::ITALIC)) {
    FcPatternAddInteger(m_pattern, FC_SLANT,
                        description.italic != 0 ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  }
  if (is_given(LM_Font_Description::WIDTH) && description.width > 0) {
    FcPatternAddInteger(m_pattern, FC_WIDTH, std::clamp(description.width, 50, 200));
  }
  if (is_given(LM_Font_Description::CHARACTER) && description.character > 0) {
    add_character(m_pattern, description.character);
  }
}

bool FontSearch::is_name_missing() const {
  if (is_kind(m_name)) return false;
  FcPattern* named = FcPatternCreate();
  FcPatternAddString(named, FC_FAMILY, fc_string(m_name.c_str()));
  FcObjectSet* items = FcObjectSetCreate();
  FcFontSet* fonts = FcFontList(nullptr, named, items);
  const bool is_missing = fonts == nullptr || fonts->nfont == 0;
  if (fonts != nullptr) FcFontSetDestroy(fonts);
  FcObjectSetDestroy(items);
  FcPatternDestroy(named);
  return is_missing;
}

std::optional<FontSearch::Found> FontSearch::best() const {
  FcResult result = FcResultNoMatch;
  FcPattern* match = FcFontMatch(nullptr, m_pattern, &result);
  if (match == nullptr) return std::nullopt;
  Found found{source_of(match), string_of(match, FC_FAMILY)};
  FcPatternDestroy(match);
  if (found.source.file.empty()) return std::nullopt;
  return found;
}

std::optional<std::size_t> FontSearch::substitute_with(char32_t character) {
  if (m_substitutes == nullptr) {
    FcResult result = FcResultNoMatch;
    m_substitutes = FcFontSort(nullptr, m_pattern, FcTrue, nullptr, &result);
    if (m_substitutes == nullptr) m_substitutes = FcFontSetCreate();
  }
  for (int i = 0; i < m_substitutes->nfont; ++i) {
    const FcPattern* font = m_substitutes->fonts[i];
    FcCharSet* characters = nullptr;
    if (FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) == FcResultMatch &&
        FcCharSetHasChar(characters, character) == FcTrue && is_true(font, FC_OUTLINE)) {
      return static_cast<std::size_t>(i);
    }
  }
  return std::nullopt;
}

FaceSource FontSearch::substitute(std::size_t number) const {
  FcPattern* font = FcFontRenderPrepare(nullptr, m_pattern, m_substitutes->fonts[number]);
  if (font == nullptr) return {};
  FaceSource source = source_of(font);
  FcPatternDestroy(font);
  return source;
}

}  // namespace lumen
