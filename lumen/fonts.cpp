#include "lumen/fonts.h"

#include "lumen/text/missing_fonts_p.h"
#include "lumen/text/text_run_p.h"

namespace lumen {

void set_missing_font_handler(void (*handler)(const char* message)) {
  replace_missing_font_handler(handler);
}

TextMeasure measure_text(const LM_Font& font, const wchar_t* characters, std::int32_t count) {
  const TextRun& run = set_text(font, characters, count);
  return {run.advance, run.ascent, run.descent, run.cap_height};
}

}  // namespace lumen
