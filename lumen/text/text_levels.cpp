#include "lumen/text/text_levels_p.h"

#include <fribidi.h>

#include <algorithm>
#include <type_traits>

namespace lumen {
namespace {

// The lists of the header are those of the library.
static_assert(std::is_same_v<FriBidiChar, std::uint32_t>);
static_assert(std::is_same_v<FriBidiCharType, std::uint32_t>);
static_assert(std::is_same_v<FriBidiBracketType, std::uint32_t>);
static_assert(std::is_same_v<FriBidiLevel, signed char>);

/// The first character that is not the same in every direction.
constexpr std::uint32_t first_of_right_to_left = 0x0590;

}  // namespace

void TextLevels::assign(const std::vector<std::uint32_t>& text) {
  m_levels.assign(text.size(), 0);
  const bool is_plain = std::all_of(text.begin(), text.end(), [](std::uint32_t character) {
    return character < first_of_right_to_left;
  });
  if (!is_plain) find_levels(text);
}

void TextLevels::find_levels(const std::vector<std::uint32_t>& text) {
  m_types.resize(text.size());
  m_brackets.resize(text.size());
  m_found.resize(text.size());
  const auto count = static_cast<FriBidiStrIndex>(text.size());
  FriBidiParType direction = FRIBIDI_PAR_ON;
  fribidi_get_bidi_types(text.data(), count, m_types.data());
  fribidi_get_bracket_types(text.data(), count, m_types.data(), m_brackets.data());
  if (fribidi_get_par_embedding_levels_ex(m_types.data(), m_brackets.data(), count, &direction,
                                          m_found.data()) == 0) {
    return;
  }
  std::transform(m_found.begin(), m_found.end(), m_levels.begin(), [](signed char level) {
    return static_cast<std::uint8_t>(std::max<int>(level, 0));
  });
  // Blanks at the end stay at the end of the paragraph.
  const auto own_level = static_cast<std::uint8_t>(FRIBIDI_DIR_TO_LEVEL(direction));
  for (std::size_t i = text.size(); i-- > 0 && FRIBIDI_IS_EXPLICIT_OR_BN_OR_WS(m_types[i]);) {
    m_levels[i] = own_level;
  }
}

}  // namespace lumen
