#include "lumen/raster/band_log_p.h"

#include <algorithm>
#include <cstring>

namespace lumen {
namespace {

/// Low bands would have little to share the start of their steps with.
constexpr std::int32_t least_shift = 3;

/// How many words a thread keeps at a time, unless a single group takes more.
constexpr std::size_t most_words = std::size_t{1} << 20;

/// States, unlike words, are looked for before they are noted: the ones that
/// drawables take turns with are among the last.
constexpr std::size_t looked_at = 8;

std::size_t words_for(std::int32_t covers) {
  return (static_cast<std::size_t>(covers) + 3) / 4;
}

/// Holds a thing that is not the last one of those held.
template <class T>
std::uint32_t hold_in(std::vector<LM_Handle<const T>>& held, const T& thing) {
  if (held.empty() || held.back().get() != &thing) held.push_back(LM_Handle<const T>(&thing));
  return static_cast<std::uint32_t>(held.size() - 1);
}

}  // namespace

BandGrid::BandGrid(const Picture& picture, std::int32_t threads) : m_shift(least_shift) {
  const std::int32_t most = std::clamp(threads, 1, most_bands / bands_a_thread) * bands_a_thread;
  const std::int32_t last_row = picture.height() - 1;
  while (last_row >> m_shift >= most && m_shift < row_bits) ++m_shift;
  m_row_mask = (1U << m_shift) - 1;
  m_count = picture.is_empty() ? 0 : (last_row >> m_shift) + 1;
}

void BandLog::Band::clear() {
  words.clear();
  groups.clear();
  drawn = 0;
  setting = 0;
  group = no_group;
}

void BandLog::start(const BandGrid& grid) {
  m_grid = grid;
  forget_all();
}

void BandLog::forget_all() {
  for (Band& band : m_bands) band.clear();
  m_states.clear();
  m_pages.clear();
  m_images.clear();
  m_serial = no_serial;
  m_state = none;
  ++m_setting;
}

void BandLog::forget(std::uint64_t limit) {
  bool is_empty = true;
  for (std::int32_t i = 0; i < m_grid.count(); ++i) {
    while (next_group(i) < limit) take_group(i);
    is_empty = is_empty && next_group(i) == no_group;
  }
  if (is_empty) forget_all();
}

bool BandLog::is_full() const {
  std::size_t words = m_states.size() * sizeof(State) / sizeof(std::uint32_t);
  for (std::int32_t i = 0; i < m_grid.count(); ++i) {
    words += m_bands[static_cast<std::size_t>(i)].words.size();
  }
  return words > most_words;
}

void BandLog::look_at(const LM_Rendition& rendition) {
  const State state{visible_pixels(m_picture, rendition.clip_rectangle()),
                    LM_Handle<const LM_Contour_Set_Data>(rendition.device_clip())};
  const std::uint32_t number = number_of(state);
  m_serial = rendition.change_serial();
  if (number == m_state) return;
  m_state = number;
  m_inside = state.inside;
  ++m_setting;
}

std::uint32_t BandLog::number_of(const State& state) {
  const std::size_t first = m_states.size() - std::min(m_states.size(), looked_at);
  for (std::size_t i = m_states.size(); i > first; --i) {
    const State& known = m_states[i - 1];
    if (known.inside == state.inside && known.clip == state.clip) {
      return static_cast<std::uint32_t>(i - 1);
    }
  }
  m_states.push_back(state);
  return static_cast<std::uint32_t>(m_states.size() - 1);
}

void BandLog::enter(Band& band) const {
  const bool is_new = band.group != m_group;
  if (is_new) band.begin(m_group);
  if (band.state != m_state) {
    *band.words.extend(1) = first_word(BandStep::state, m_state);
    band.state = m_state;
  }
  if (is_new || band.ink != m_ink) {
    std::uint32_t* const words = band.words.extend(2);
    words[0] = first_word(BandStep::ink, 0);
    words[1] = m_ink;
    band.ink = m_ink;
  }
  band.setting = m_setting;
}

void BandLog::add_piece(const RowRange& rows, std::uint64_t piece) {
  const BandPiece words{static_cast<std::uint32_t>(piece),
                        static_cast<std::uint32_t>(piece >> 32U)};
  const std::int32_t last = m_grid.band_of(rows.last);
  for (std::int32_t i = m_grid.band_of(rows.first); i <= last; ++i) {
    Band& band = m_bands[static_cast<std::size_t>(i)];
    band.begin(m_group);
    std::uint32_t* const step = band.words.extend(1 + words_of(&words).size());
    step[0] = first_word(BandStep::piece, 0);
    std::ranges::copy(words_of(&words), step + 1);
  }
}

void BandLog::solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t cover) {
  if (length == 1 && cover == 255) return pixel(x, y);
  std::uint32_t* const words = extend(y, 2);
  words[0] = place(BandStep::solid, x, y);
  words[1] = static_cast<std::uint32_t>(length) | cover << 16;
}

void BandLog::varied(std::int32_t x, std::int32_t y, std::int32_t length,
                     const std::uint8_t* covers) {
  if (length == 1) return solid(x, y, 1, covers[0]);
  const std::size_t cover_words = words_for(length);
  std::uint32_t* const words = extend(y, 2 + cover_words);
  words[0] = place(BandStep::varied, x, y);
  words[1] = static_cast<std::uint32_t>(length);
  words[1 + cover_words] = 0;  // the last ones may fill part of a word
  std::memcpy(words + 2, covers, static_cast<std::size_t>(length));
}

std::uint32_t BandLog::hold(const LM_Texture_Pages* pages) {
  return pages == nullptr ? none : hold_in(m_pages, *pages);
}

std::uint32_t BandLog::hold(const LM_Image& image) {
  return hold_in(m_images, image);
}

std::span<const std::uint32_t> BandLog::take_group(std::int32_t number) {
  Band& band = m_bands[static_cast<std::size_t>(number)];
  const std::size_t from = band.groups[band.drawn++].start;
  const bool is_last = band.drawn == band.groups.size();
  return band.words.part(from, is_last ? band.words.size() : band.groups[band.drawn].start);
}

}  // namespace lumen
