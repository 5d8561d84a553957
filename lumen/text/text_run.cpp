#include "lumen/text/text_run_p.h"

#include <array>

#include "lumen/text/font_set_p.h"
#include "lumen/text/text_cache_p.h"
#include "lumen/text/text_characters_p.h"
#include "lumen/text/text_layout_p.h"

namespace lumen {
namespace {

/// The sets of the fonts that a thread used last: few pictures need more, and
/// no lock is taken for these.
class KnownFonts {
 public:
  const FontSet& set_of(const LM_Font& font) {
    for (const Known& known : m_known) {
      if (known.set != nullptr && known.font == font) return *known.set;
    }
    Known& place = m_known[m_next];
    m_next = (m_next + 1) % m_known.size();
    // The font is held: its address names it.
    place = {font, &font_set(font)};
    return *place.set;
  }

 private:
  struct Known {
    LM_Font font;
    const FontSet* set = nullptr;
  };

  std::array<Known, 8> m_known;
  std::size_t m_next = 0;
};

/// What a thread keeps from one text to the next.
struct TextSetter {
  KnownFonts fonts;
  TextCharacters characters;
  TextLayout layout;
  TextCache cache;
  TextRun long_run;

  template <class Character>
  const TextRun& set(const LM_Font& font, const Character* text, std::int32_t count) {
    // Before anything of the thread is touched: who is told of a missing font
    // may set text, too.
    const FontSet& set = fonts.set_of(font);
    characters.assign(text, count);
    if (const TextRun* known = cache.find(set, characters)) return *known;
    TextRun run = layout.set(characters, set);
    if (characters.size() <= TextCache::longest) return cache.put(set, characters, std::move(run));
    long_run = std::move(run);
    return long_run;
  }
};

TextSetter& setter() {
  thread_local TextSetter instance;
  return instance;
}

}  // namespace

const TextRun& set_text(const LM_Font& font, const wchar_t* characters, std::int32_t count) {
  return setter().set(font, characters, count);
}

const TextRun& set_text(const LM_Font& font, const unsigned char* characters, std::int32_t count) {
  return setter().set(font, characters, count);
}

}  // namespace lumen
