#include "lumen/text/font_face_p.h"

#include <ft2build.h>
#include <hb-ot.h>
#include <hb.h>

#include <algorithm>
#include <cmath>

#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace lumen {
namespace {

/// What a face that stands in for a bold one grows by, in ems.
constexpr double bold_growth = 1.0 / 24;

/// Of a face that does not say.
constexpr FontFace::Metrics usual_metrics{0.8F, 0.2F, 0.5F, 0.7F};

/// Made by the first face, under the lock that faces are made under.
FT_Library outline_library() {
  static FT_Library library = [] {
    FT_Library made = nullptr;
    return FT_Init_FreeType(&made) == 0 ? made : nullptr;
  }();
  return library;
}

/// Hands the steps of an outline to a GlyphOutline, in ems.
struct OutlineCollector {
  GlyphOutline& target;
  double scale;

  [[nodiscard]] float ems(FT_Pos units) const {
    return static_cast<float>(static_cast<double>(units) * scale);
  }
  static OutlineCollector& of(void* user) { return *static_cast<OutlineCollector*>(user); }

  static int move(const FT_Vector* to, void* user) {
    const OutlineCollector& self = of(user);
    self.target.move_to(self.ems(to->x), self.ems(to->y));
    return 0;
  }
  static int line(const FT_Vector* to, void* user) {
    const OutlineCollector& self = of(user);
    self.target.line_to(self.ems(to->x), self.ems(to->y));
    return 0;
  }
  static int quadratic(const FT_Vector* bend, const FT_Vector* to, void* user) {
    const OutlineCollector& self = of(user);
    self.target.quadratic_to(self.ems(bend->x), self.ems(bend->y), self.ems(to->x),
                             self.ems(to->y));
    return 0;
  }
  static int cubic(const FT_Vector* bend1, const FT_Vector* bend2, const FT_Vector* to,
                   void* user) {
    const OutlineCollector& self = of(user);
    self.target.cubic_to(self.ems(bend1->x), self.ems(bend1->y), self.ems(bend2->x),
                         self.ems(bend2->y), self.ems(to->x), self.ems(to->y));
    return 0;
  }
};

FT_Fixed fixed(double value) {
  return static_cast<FT_Fixed>(std::lround(std::clamp(value, -100.0, 100.0) * 65536));
}

}  // namespace

FontFace::FontFace(const FaceSource& source) : m_source(source), m_metrics(usual_metrics) {
  // Empty where there is no such file, as is all that is made of it.
  m_bytes = hb_blob_create_from_file(source.file.c_str());
  // What is above the lower half of the index is the instance of a variable font.
  const auto index = static_cast<unsigned>(source.index);
  hb_face_t* face = hb_face_create(m_bytes, index & 0xFFFF);
  m_units_per_em = hb_face_get_upem(face);
  m_shaper = hb_font_create(face);
  hb_face_destroy(face);
  if (const unsigned instance = (index >> 16) & 0x7FFF; instance > 0) {
    hb_font_set_var_named_instance(m_shaper, instance - 1);
  }
  open_outlines();
  hb_font_make_immutable(m_shaper);
  m_metrics = measured();
}

void FontFace::open_outlines() {
  unsigned size = 0;
  const char* bytes = hb_blob_get_data(m_bytes, &size);
  if (outline_library() == nullptr || size == 0) return;
  const auto* start = reinterpret_cast<const FT_Byte*>(bytes);
  if (FT_New_Memory_Face(outline_library(), start, static_cast<FT_Long>(size), m_source.index,
                         &m_outlines) != 0) {
    m_outlines = nullptr;
    return;
  }
  m_glyph_count = static_cast<std::uint32_t>(std::max<FT_Long>(m_outlines->num_glyphs, 0));
  m_loaded = std::make_unique<std::atomic<const GlyphOutline*>[]>(m_glyph_count);
  if (m_outlines->units_per_EM > 0) m_outline_units = m_outlines->units_per_EM;
}

double FontFace::extra_advance() const {
  return m_source.is_emboldened ? bold_growth : 0;
}

std::uint32_t FontFace::glyph_of(char32_t character) const {
  hb_codepoint_t glyph = 0;
  return hb_font_get_nominal_glyph(m_shaper, character, &glyph) != 0 ? glyph : 0;
}

const GlyphOutline& FontFace::outline(std::uint32_t glyph) const {
  static const GlyphOutline nothing;
  if (glyph >= m_glyph_count) return nothing;
  std::atomic<const GlyphOutline*>& place = m_loaded[glyph];
  if (const GlyphOutline* known = place.load(std::memory_order_acquire)) return *known;

  const std::lock_guard lock(m_loading);
  // Another thread may have been faster.
  if (const GlyphOutline* known = place.load(std::memory_order_acquire)) return *known;
  const GlyphOutline* made = load(glyph);
  place.store(made, std::memory_order_release);
  return *made;
}

const GlyphOutline* FontFace::load(std::uint32_t glyph) const {
  auto made = std::make_unique<GlyphOutline>();
  if (FT_Load_Glyph(m_outlines, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0 ||
      m_outlines->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
    return made.release();
  }
  FT_Outline& outline = m_outlines->glyph->outline;
  if (m_source.is_emboldened) {
    FT_Outline_Embolden(&outline, static_cast<FT_Pos>(m_outline_units * bold_growth));
  }
  const auto& [xx, xy, yx, yy] = m_source.matrix;
  const FT_Matrix matrix{fixed(xx), fixed(xy), fixed(yx), fixed(yy)};
  FT_Outline_Transform(&outline, &matrix);

  OutlineCollector collector{*made, 1 / m_outline_units};
  const FT_Outline_Funcs steps{&OutlineCollector::move,
                               &OutlineCollector::line,
                               &OutlineCollector::quadratic,
                               &OutlineCollector::cubic,
                               0,
                               0};
  // What a damaged glyph has before the damage is good to be shown.
  static_cast<void>(FT_Outline_Decompose(&outline, &steps, &collector));
  return made.release();
}

float FontFace::height_of(char32_t character, float otherwise) const {
  const std::uint32_t glyph = glyph_of(character);
  const float height = glyph == 0 ? 0.0F : outline(glyph).box().max_y;
  return height > 0 ? height : otherwise;
}

FontFace::Metrics FontFace::measured() const {
  const auto ems = [this](hb_position_t units) {
    return static_cast<float>(units / m_units_per_em);
  };
  Metrics metrics = usual_metrics;
  hb_font_extents_t extents{};
  if (hb_font_get_h_extents(m_shaper, &extents) != 0 && extents.ascender > extents.descender) {
    metrics.ascent = std::max(ems(extents.ascender), 0.0F);
    metrics.descent = std::max(-ems(extents.descender), 0.0F);
  }
  const auto height = [&](hb_ot_metrics_tag_t tag, char32_t letter, float otherwise) {
    hb_position_t units = 0;
    const bool is_told = hb_ot_metrics_get_position(m_shaper, tag, &units) != 0 && units > 0;
    return is_told ? ems(units) : height_of(letter, otherwise);
  };
  metrics.x_height = height(HB_OT_METRICS_TAG_X_HEIGHT, U'x', usual_metrics.x_height);
  metrics.cap_height = height(HB_OT_METRICS_TAG_CAP_HEIGHT, U'H', usual_metrics.cap_height);
  return metrics;
}

}  // namespace lumen
