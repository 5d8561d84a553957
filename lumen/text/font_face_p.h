#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "lumen/text/glyph_outline_p.h"

struct FT_FaceRec_;
struct hb_blob_t;
struct hb_font_t;

namespace lumen {

/// Where the letters of a face come from, and what is done to them when the
/// face stands in for a slanted or bold one that there is not.
struct FaceSource {
  std::string file;
  std::int32_t index = 0;  ///< of the face in its file, as FreeType counts
  /// What outlines are multiplied by: xx, xy, yx, yy.
  std::array<double, 4> matrix{1, 0, 0, 1};
  bool is_emboldened = false;

  friend bool operator==(const FaceSource&, const FaceSource&) = default;
};

/// The letters of one font file. Any thread may use it; it is never deleted. A
/// damaged file has no glyphs and nothing but usual metrics.
class FontFace {
 public:
  /// Lines of a face in ems from its baseline, all positive.
  struct Metrics {
    float ascent;
    float descent;
    float x_height;
    float cap_height;
  };

  /// Only one face may be made at a time.
  explicit FontFace(const FaceSource& source);
  FontFace(const FontFace&) = delete;
  FontFace& operator=(const FontFace&) = delete;
  ~FontFace() = delete;

  /// Where it comes from.
  [[nodiscard]] const FaceSource& source() const { return m_source; }
  /// What shapes text with it, in units of which `units_per_em()` make an em.
  [[nodiscard]] hb_font_t* shaper() const { return m_shaper; }
  [[nodiscard]] double units_per_em() const { return m_units_per_em; }
  /// By how many ems a glyph that advances advances further than the shaper says.
  [[nodiscard]] double extra_advance() const;
  [[nodiscard]] const Metrics& metrics() const { return m_metrics; }

  /// The glyph of a character, 0 for none.
  [[nodiscard]] std::uint32_t glyph_of(char32_t character) const;

  /// The ink of a glyph; none for one that there is not. Never changed or
  /// deleted, and cheap from the second time on.
  [[nodiscard]] const GlyphOutline& outline(std::uint32_t glyph) const;

 private:
  void open_outlines();
  [[nodiscard]] Metrics measured() const;
  [[nodiscard]] float height_of(char32_t character, float otherwise) const;
  [[nodiscard]] const GlyphOutline* load(std::uint32_t glyph) const;

  FaceSource m_source;
  hb_blob_t* m_bytes = nullptr;
  hb_font_t* m_shaper = nullptr;
  double m_units_per_em = 1;
  FT_FaceRec_* m_outlines = nullptr;  ///< null when it cannot be read
  double m_outline_units = 1;         ///< per em
  std::uint32_t m_glyph_count = 0;
  std::unique_ptr<std::atomic<const GlyphOutline*>[]> m_loaded;
  mutable std::mutex m_loading;
  Metrics m_metrics{};
};

}  // namespace lumen
