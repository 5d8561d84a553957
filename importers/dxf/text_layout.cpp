#include "importers/dxf/text_layout.h"

#include <algorithm>

#include "lumen/fonts.h"

namespace importers::dxf {

LM_Font font_of(const FontChoice& choice) {
  if (choice.family.empty()) return {};
  LM_Font_Description description;
  description.name = choice.family;
  description.bold = choice.is_bold ? 1 : 0;
  description.italic = choice.is_italic ? 1 : 0;
  description.given =
      LM_Font_Description::NAME | LM_Font_Description::BOLD | LM_Font_Description::ITALIC;
  return LM_Font(description);
}

TextMeasures measures(const LM_Font& font, const std::wstring& text) {
  const auto count = static_cast<std::int32_t>(text.size());
  const lumen::TextMeasure m = lumen::measure_text(font, text.c_str(), count);
  // Where there is no font at all, as most fonts are.
  if (!(m.cap_height > 0)) return {0.6 * count, 0.9, 0.25, 0.72};
  return {m.advance, m.ascent, m.descent, m.cap_height};
}

std::vector<TextRun> laid_out(const Text& text, const Model& model) {
  constexpr int aligned = 3;
  constexpr int middle = 4;
  constexpr int fit = 5;
  if (text.text.empty() || !(text.height > 0)) return {};
  TextRun run;
  run.font = font_of(model.styles[text.style].font);
  run.text = text.text;
  run.rotation = text.rotation;
  run.cap_height = text.height;
  run.width_factor = text.width_factor > 0 ? text.width_factor : 1.0;
  const TextMeasures m = measures(run.font, run.text);
  const double natural = m.advance / m.cap_height * run.width_factor;

  const Vertex way = text.second - text.at;
  const bool spans = (text.horizontal == aligned || text.horizontal == fit) && length(way) > 0;
  if (spans) run.rotation = angle(way);
  if (spans && natural > 0) {
    if (text.horizontal == aligned) run.cap_height = length(way) / natural;
    if (text.horizontal == fit) run.width_factor *= length(way) / (natural * run.cap_height);
  }
  const double width = m.advance / m.cap_height * run.width_factor * run.cap_height;
  const double descent = m.descent / m.cap_height * run.cap_height;
  const double across[] = {0, width / 2, width, 0, width / 2, 0};
  const double up[] = {0, -descent, run.cap_height / 2, run.cap_height};
  const int vertical = text.horizontal == middle ? 2 : std::clamp(text.vertical, 0, 3);
  const bool from_second = !spans && (text.horizontal != 0 || text.vertical != 0);
  const Affine turn = Affine::turning(run.rotation);
  run.start = (from_second ? text.second : text.at) -
              turn.direction({across[std::clamp(text.horizontal, 0, 5)], up[vertical]});
  return {run};
}

namespace {

/// Whether one reads along the direction rather than against it.
bool is_readable(const Vertex& direction) {
  const double level = 1e-9 * length(direction);
  return direction.x > level || (direction.x > -level && direction.y > 0);
}

}  // namespace

Shape label_of(const TextRun& run, const Affine& affine, const Affine& to_root, const Pen& pen) {
  const TextMeasures m = measures(run.font, run.text);
  const double em = run.cap_height / m.cap_height;
  const Affine turn = Affine::turning(run.rotation);
  const Vertex end = turn.direction({m.advance * em * run.width_factor, 0});
  const Vertex cap = turn.direction({0, run.cap_height});
  const Affine seen = to_root * affine;
  const Vertex along = seen.direction(turn.direction({1, 0}));
  const bool is_mirrored = seen.determinant() < 0;
  const bool from_end = is_mirrored && !is_readable(along);
  const bool from_top = is_mirrored && !from_end;

  Label label;
  const Vertex start = from_end ? run.start + end : from_top ? run.start + cap : run.start;
  label.start = affine.point(start);
  const double seen_rotation = angle(from_end ? Vertex{-along.x, -along.y} : along);
  // Upside-down lists turn their texts the other way.
  label.rotation = to_root.yy < 0 ? -seen_rotation : seen_rotation;
  const double stretch = length(along);
  const double upright = std::fabs(seen.determinant()) / stretch;
  label.em = em * upright;
  label.width_factor = std::clamp(run.width_factor * stretch / upright, 0.01, 100.0);
  label.font = run.font;
  label.text = run.text;

  Shape shape{{run.color.value_or(pen.color), 0}, {}, {}};
  const double below = from_top ? m.ascent - m.cap_height : m.descent;
  const double above = from_top ? m.descent + m.cap_height : m.ascent;
  for (const double height : {-below * em, above * em}) {
    const Vertex side = run.start + turn.direction({0, height});
    for (const Vertex& corner : {side, side + end}) {
      const Vertex v = affine.point(corner);
      shape.extent.widen(v.x, v.y);
    }
  }
  const bool is_finite = std::isfinite(label.em) && std::isfinite(label.rotation);
  if (!is_finite) shape.extent = {-HUGE_VAL, -HUGE_VAL, HUGE_VAL, HUGE_VAL};
  shape.what = std::move(label);
  return shape;
}

}  // namespace importers::dxf
