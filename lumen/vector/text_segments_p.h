#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lumen/text/text_characters_p.h"
#include "lumen/text/text_run_p.h"

namespace lumen {

/// Neighbouring glyphs of a run that show neighbouring characters in one face
/// and in one direction.
struct TextSegment {
  std::size_t first;  ///< of its glyphs in the run
  std::size_t last;   ///< past the last one
  bool is_backward;   ///< from right to left
};

/// A run cut into segments, and what each of them says. It allocates only while
/// it grows.
class TextSegments {
 public:
  /// The characters are those that the run was set from; the run outlives the
  /// segments.
  void assign(const TextCharacters& characters, const TextRun& run);

  [[nodiscard]] const std::vector<TextSegment>& segments() const { return m_segments; }
  /// What the segment says, in reading order, as UTF-8 that XML can hold.
  [[nodiscard]] std::string_view text_of(const TextSegment& segment) const;
  /// What a glyph says together with those of the same characters.
  [[nodiscard]] std::string_view text_of(std::size_t glyph) const;
  /// Whether a glyph shows the same characters as the one before.
  [[nodiscard]] bool continues(std::size_t glyph) const {
    return m_clusters[glyph] == m_clusters[glyph - 1];
  }

 private:
  /// How the glyph's cluster follows that of the glyph before.
  [[nodiscard]] std::int64_t step(std::size_t glyph) const {
    return std::int64_t{m_clusters[glyph]} - std::int64_t{m_clusters[glyph - 1]};
  }
  void take_text(const TextCharacters& characters);
  void take_clusters(const TextRun& run);
  [[nodiscard]] std::string_view between(std::size_t first_cluster, std::size_t last_cluster) const;

  std::string m_text;
  std::vector<std::size_t> m_offsets;     ///< in the text, per character of the string and its end
  std::vector<std::int32_t> m_starts;     ///< of the clusters, rising, and the end of the last one
  std::vector<std::uint32_t> m_clusters;  ///< of the glyphs, by their place in the string
  std::vector<TextSegment> m_segments;
};

}  // namespace lumen
