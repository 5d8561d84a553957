#pragma once

#include <cstdint>

#include "displaylist/platform/export.h"
#include "displaylist/platform/font.h"

namespace lumen {

/// Sets who is told of a font name that no font of the system has: once for
/// each name, in one sentence, by the thread that draws or measures text in the
/// font first. The usual sans-serif face stands in for such a font. At first the
/// sentence is printed to standard error; null keeps quiet. The sentence is valid
/// during the call; the handler may be called by several threads at once.
LUMEN_API void set_missing_font_handler(void (*handler)(const char* message));

/// What room a text takes, in ems.
struct TextMeasure {
  float advance = 0.0F;     ///< from its start to its end
  float ascent = 0.0F;      ///< of the font above the baseline, positive
  float descent = 0.0F;     ///< of the font below the baseline, positive
  float cap_height = 0.0F;  ///< of the font's capital letters
};

/// Measures `count` UTF-16 code units, or up to a zero, for those who place text
/// themselves. All 0 where the system has no font. Any thread may call.
[[nodiscard]] LUMEN_API TextMeasure measure_text(const LM_Font& font, const wchar_t* characters,
                                                 std::int32_t count);

}  // namespace lumen
