#include "lumen/vector/text_segments_p.h"

#include <algorithm>

#include "lumen/text/unicode_p.h"

namespace lumen {
namespace {

/// Values that are set aside and no characters; files are refused for them.
bool is_set_aside(char32_t value) {
  return (value & 0xFFFE) == 0xFFFE || (value >= 0xFDD0 && value <= 0xFDEF);
}

}  // namespace

void TextSegments::assign(const TextCharacters& characters, const TextRun& run) {
  m_segments.clear();
  take_text(characters);
  take_clusters(run);
  const std::size_t count = run.glyphs.size();
  std::int64_t direction = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::int64_t next = i == 0 ? 0 : step(i);
    const bool goes_on = i > 0 && run.glyphs[i].face == run.glyphs[i - 1].face &&
                         (next == 0 || ((next == 1 || next == -1) && next * direction >= 0));
    if (!goes_on) {
      m_segments.push_back({i, i, false});
      direction = 0;
    } else if (next != 0) {
      direction = next;
    }
    m_segments.back().last = i + 1;
    m_segments.back().is_backward = direction < 0;
  }
}

void TextSegments::take_text(const TextCharacters& characters) {
  m_text.clear();
  m_offsets.clear();
  const auto reach = [this](std::int32_t place) {
    m_offsets.resize(static_cast<std::size_t>(place) + 1, m_text.size());
  };
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const char32_t value = characters.values()[i];
    if (characters.place(i) >= static_cast<std::int32_t>(m_offsets.size())) {
      reach(characters.place(i));
    }
    if (value == TextCharacters::no_room) continue;
    append_utf8(m_text, is_set_aside(value) ? replacement_character : value);
  }
  reach(characters.string_length());
}

void TextSegments::take_clusters(const TextRun& run) {
  m_starts.clear();
  for (const PlacedGlyph& glyph : run.glyphs) m_starts.push_back(glyph.character);
  std::sort(m_starts.begin(), m_starts.end());
  m_starts.erase(std::unique(m_starts.begin(), m_starts.end()), m_starts.end());
  m_clusters.clear();
  for (const PlacedGlyph& glyph : run.glyphs) {
    const auto found = std::lower_bound(m_starts.begin(), m_starts.end(), glyph.character);
    m_clusters.push_back(static_cast<std::uint32_t>(found - m_starts.begin()));
  }
  m_starts.push_back(static_cast<std::int32_t>(m_offsets.size()) - 1);
}

std::string_view TextSegments::between(std::size_t first_cluster, std::size_t last_cluster) const {
  const std::size_t start = m_offsets[static_cast<std::size_t>(m_starts[first_cluster])];
  const std::size_t end = m_offsets[static_cast<std::size_t>(m_starts[last_cluster + 1])];
  return std::string_view(m_text).substr(start, end - start);
}

std::string_view TextSegments::text_of(const TextSegment& segment) const {
  const std::uint32_t a = m_clusters[segment.first];
  const std::uint32_t b = m_clusters[segment.last - 1];
  return between(std::min(a, b), std::max(a, b));
}

std::string_view TextSegments::text_of(std::size_t glyph) const {
  return between(m_clusters[glyph], m_clusters[glyph]);
}

}  // namespace lumen
