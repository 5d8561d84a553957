#include "lumen/vector/vector_text_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "lumen/text/text_shape_p.h"

namespace lumen {
namespace {

/// Larger letters are filled shapes: what shows pages draws them astray.
constexpr double largest_size = 8192;
/// Smaller ones leave nothing to be seen.
constexpr double smallest_size = 1.0 / 1024;

PagePoint place_of(const TextPlacement& placement, double along, double up) {
  return {placement.x(along, up) + 0.5, placement.y(along, up) + 0.5};
}

/// A box that nothing is in.
constexpr PageBox no_ink{
    std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

/// False for what is not finite, too.
bool meet(const PageBox& a, const PageBox& b) {
  return a.min_x <= b.max_x && b.min_x <= a.max_x && a.min_y <= b.max_y && b.min_y <= a.max_y;
}

void add_ink(PageBox& box, const PlacedGlyph& glyph, const TextPlacement& placement) {
  const GlyphOutline& outline = glyph.face->outline(glyph.glyph);
  if (outline.is_empty()) return;
  const GlyphOutline::Box& ink = outline.box();
  for (const float x : {ink.min_x, ink.max_x}) {
    for (const float y : {ink.min_y, ink.max_y}) {
      const PagePoint corner =
          place_of(placement, double{1} * glyph.x + x, double{1} * glyph.y + y);
      box = {std::min(box.min_x, corner.x), std::min(box.min_y, corner.y),
             std::max(box.max_x, corner.x), std::max(box.max_y, corner.y)};
    }
  }
}

PageBox ink_of(const TextRun& run, const TextSegment& segment, const TextPlacement& placement) {
  PageBox box = no_ink;
  for (std::size_t i = segment.first; i < segment.last; ++i) {
    add_ink(box, run.glyphs[i], placement);
  }
  return box;
}

/// Leaves of a segment what lies between the first and the last glyph in the box.
TextSegment part_near(const PageBox& box, const TextRun& run, TextSegment segment,
                      const TextPlacement& placement) {
  const auto is_far = [&](std::size_t i) {
    const PlacedGlyph& glyph = run.glyphs[i];
    if (glyph.face->outline(glyph.glyph).is_empty()) {
      return !box.contains(place_of(placement, glyph.x, glyph.y));
    }
    PageBox ink = no_ink;
    add_ink(ink, glyph, placement);
    return !meet(ink, box);
  };
  while (segment.first < segment.last && is_far(segment.first)) ++segment.first;
  while (segment.first < segment.last && is_far(segment.last - 1)) --segment.last;
  return segment;
}

/// From ems of a face's glyphs, y down, to the page; without a place.
cairo_matrix_t frame_of(const FontFace& face, const TextPlacement& placement) {
  const auto& [xx, xy, yx, yy] = face.source().matrix;
  const cairo_matrix_t own{xx, -yx, -xy, yy, 0, 0};
  const cairo_matrix_t place{
      placement.along_x, placement.along_y, -placement.up_x, -placement.up_y, 0, 0};
  cairo_matrix_t frame;
  cairo_matrix_multiply(&frame, &own, &place);
  return frame;
}

/// Adds contours to the path of a page.
class PageContours {
 public:
  PageContours(VectorPage& page, Contour& scratch) : m_page(page), m_contour(scratch) {}
  PageContours(const PageContours&) = delete;
  PageContours& operator=(const PageContours&) = delete;
  ~PageContours() { end_contour(); }

  void move_to(double x, double y) {
    end_contour();
    line_to(x, y);
  }
  void line_to(double x, double y) { m_contour.push_back({x + 0.5, y + 0.5}); }

 private:
  void end_contour() {
    if (!m_contour.empty()) m_page.add(m_contour);
    m_contour.clear();
  }

  VectorPage& m_page;
  Contour& m_contour;
};

}  // namespace

void VectorText::draw(const TextRun& run, const TextPlacement& placement, LM_RGB32 color) {
  const double width = std::hypot(placement.along_x, placement.along_y);
  const double height = std::hypot(placement.up_x, placement.up_y);
  if (!(std::min(width, height) >= smallest_size)) return;
  const LM_Clip_Rectangle& visible = m_page.visible();
  const PageBox seen{static_cast<double>(visible.min_x), static_cast<double>(visible.min_y),
                     visible.max_x + 1.0, visible.max_y + 1.0};
  // Cairo writes no glyphs to a PDF that are out of sight, but what they say.
  const PageBox near = m_page.format() == VectorFormat::pdf ? seen : m_page.box();
  m_page.set_ink(color);
  m_segments.assign(m_characters, run);
  for (const TextSegment& whole : m_segments.segments()) {
    const TextSegment segment = part_near(near, run, whole, placement);
    const PageBox ink = ink_of(run, segment, placement);
    if (!meet(ink, seen)) continue;
    if (std::max(width, height) > largest_size) {
      fill_outlines(run, segment, placement);
    } else if (m_page.format() == VectorFormat::pdf) {
      show_glyphs(run, segment, placement);
    } else {
      show_element(run, segment, placement, ink, color);
    }
  }
}

void VectorText::take_glyphs(const TextRun& run, const TextSegment& segment,
                             const TextPlacement& placement) {
  m_glyphs.clear();
  m_clusters.clear();
  for (std::size_t i = segment.first; i < segment.last; ++i) {
    const PlacedGlyph& glyph = run.glyphs[i];
    // Cairo makes outlines bold when they are upside down: they grow downwards.
    const PagePoint place = place_of(placement, glyph.x, glyph.y + glyph.face->extra_advance());
    m_glyphs.push_back({glyph.glyph, place.x, place.y});
    if (i == segment.first || !m_segments.continues(i)) {
      m_clusters.push_back({static_cast<int>(m_segments.text_of(i).size()), 0});
    }
    ++m_clusters.back().num_glyphs;
  }
  if (segment.is_backward) std::reverse(m_clusters.begin(), m_clusters.end());
}

void VectorText::show_glyphs(const TextRun& run, const TextSegment& segment,
                             const TextPlacement& placement) {
  const FontFace& face = *run.glyphs[segment.first].face;
  cairo_font_face_t* font = m_fonts.of(face);
  const cairo_matrix_t frame = frame_of(face, placement);
  if (font == nullptr) return fill_outlines(run, segment, placement);
  cairo_t* cairo = m_page.cairo();
  cairo_set_font_face(cairo, font);
  cairo_set_font_matrix(cairo, &frame);
  take_glyphs(run, segment, placement);
  const std::string_view text = m_segments.text_of(segment);
  const auto glyph_count = static_cast<int>(m_glyphs.size());
  if (text.empty()) return cairo_show_glyphs(cairo, m_glyphs.data(), glyph_count);
  cairo_show_text_glyphs(
      cairo, text.data(), static_cast<int>(text.size()), m_glyphs.data(), glyph_count,
      m_clusters.data(), static_cast<int>(m_clusters.size()),
      segment.is_backward ? CAIRO_TEXT_CLUSTER_FLAG_BACKWARD : cairo_text_cluster_flags_t{});
}

void VectorText::show_element(const TextRun& run, const TextSegment& segment,
                              const TextPlacement& placement, const PageBox& ink, LM_RGB32 color) {
  const PlacedGlyph& first = run.glyphs[segment.first];
  const FontFace& face = *first.face;
  cairo_matrix_t frame = frame_of(face, placement);
  const PagePoint start = place_of(placement, first.x, 0);
  frame.x0 = start.x;
  frame.y0 = start.y;
  double end = first.x;
  for (std::size_t i = segment.first; i < segment.last; ++i) {
    const PlacedGlyph& glyph = run.glyphs[i];
    end = std::max(end, double{1} * glyph.x + glyph.advance);
    m_page.svg_texts().add_glyph(face, glyph.glyph);
  }
  const SvgText text{&face,
                     m_segments.text_of(segment),
                     segment.is_backward,
                     frame,
                     std::hypot(placement.up_x, placement.up_y),
                     (end - first.x) / face.source().matrix[0],
                     color};
  const PagePoint corner{std::floor(ink.min_x), std::floor(ink.min_y)};
  set_source(m_page.cairo(), m_page.svg_texts().add(text, corner));
  // A triangle: what a rectangle is drawn as depends on where it is.
  cairo_move_to(m_page.cairo(), corner.x, corner.y);
  cairo_line_to(m_page.cairo(), std::ceil(ink.max_x) + 1, corner.y);
  cairo_line_to(m_page.cairo(), corner.x, std::ceil(ink.max_y) + 1);
  cairo_close_path(m_page.cairo());
  cairo_fill(m_page.cairo());
}

void VectorText::fill_outlines(const TextRun& run, const TextSegment& segment,
                               const TextPlacement& placement) {
  m_contour.clear();
  {
    PageContours contours(m_page, m_contour);
    for (std::size_t i = segment.first; i < segment.last; ++i) {
      const PlacedGlyph& glyph = run.glyphs[i];
      glyph.face->outline(glyph.glyph)
          .visit(FlatOutline<PageContours>(placement, glyph.x, glyph.y, contours));
    }
  }
  cairo_set_fill_rule(m_page.cairo(), CAIRO_FILL_RULE_WINDING);
  cairo_fill(m_page.cairo());
}

}  // namespace lumen
