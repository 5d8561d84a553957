#include "importers/dxf/composer.h"

#include <algorithm>
#include <utility>

#include "importers/dxf/drafting.h"
#include "importers/dxf/line_patterns.h"

namespace importers::dxf {

namespace {

/// The map without what is left of a turn by a multiple of a right angle.
Affine without_noise(Affine affine) {
  constexpr double noise = 1e-12;
  const double straight = std::max(std::fabs(affine.xx), std::fabs(affine.yy));
  const double across = std::max(std::fabs(affine.xy), std::fabs(affine.yx));
  if (across < noise * straight) affine.xy = affine.yx = 0.0;
  if (straight < noise * across) affine.xx = affine.yy = 0.0;
  return affine;
}

bool is_finite(const Affine& a) {
  return std::isfinite(a.xx) && std::isfinite(a.xy) && std::isfinite(a.yx) && std::isfinite(a.yy) &&
         std::isfinite(a.dx) && std::isfinite(a.dy);
}

}  // namespace

Composer::Composer(const Model& model, const ReadOptions& options, std::set<std::size_t> chosen)
    : m_model(model),
      m_options(options),
      m_chosen(std::move(chosen)),
      m_layer_is_used(model.layers.items().size()) {
  for (const LineType& type : model.line_types.items()) m_patterns.push_back(pattern_of(type));
}

Plan Composer::compose(bool paper_space) {
  Plan plan;
  Context context;
  context.plan = &plan;
  for (const Entity& entity : m_model.entities) {
    // None takes all that is left, so that it does not silence those after it.
    m_limit = m_copies + (most_copies - m_copies) / 5 * 4;
    if (entity.in_paper_space == paper_space) add_entity(entity, context);
  }
  cut_beams(plan);
  return plan;
}

void Composer::add_all(const std::vector<Entity>& entities, const Context& context) {
  for (const Entity& entity : entities) {
    if (m_copies >= m_limit) {
      ++m_left_out.too_many;
      return;
    }
    ++m_copies;
    add_entity(entity, context);
  }
}

void Composer::add_entity(const Entity& entity, const Context& context) {
  // What a block has in layer 0 is in the layer of its insert.
  const bool inherits = entity.look.layer == 0 && context.depth > 0;
  const std::size_t layer = inherits ? context.layer : entity.look.layer;
  const Insert* insert = std::get_if<Insert>(&entity.geometry);
  if (is_hidden(entity, layer)) {
    ++m_left_out.hidden;
    return;
  }
  const Pen pen = pen_of(entity.look, layer, context);
  const Affine affine = context.affine * entity.placement;
  if (insert != nullptr) {
    Context inner = context;
    inner.affine = affine;
    inner.layer = layer;
    inner.pen = pen;
    ++inner.depth;
    return add_insert(*insert, inner);
  }
  if (!m_chosen.empty() && !m_chosen.contains(layer)) return;
  const DraftStyle style{pen, m_options.fill, context.to_root, m_model};
  if (!draft(entity.geometry, affine, style, *context.plan)) {
    ++m_left_out.degenerate;
    return;
  }
  note_layer(layer);
}

void Composer::note_layer(std::size_t layer) {
  if (m_layer_is_used[layer]) return;
  m_layer_is_used[layer] = true;
  m_layers.push_back(layer);
}

bool Composer::is_hidden(const Entity& entity, std::size_t layer) const {
  const Layer& own = m_model.layers[layer];
  // A layer that is only off hides no inserts, but what inherits it.
  const bool is_insert = std::holds_alternative<Insert>(entity.geometry);
  return entity.is_invisible || own.is_frozen || (own.is_off && !is_insert);
}

LM_RGB32 Composer::color_of(const Look& look, const Layer& layer, const Context& context) const {
  if (m_options.line_color) return *m_options.line_color;
  switch (look.color.source) {
    case Source::own:
      return look.color.rgb;
    case Source::block:
      return context.pen.color;
    default:
      return layer.color;
  }
}

Pen Composer::pen_of(const Look& look, std::size_t layer, const Context& context) const {
  const Layer& own = m_model.layers[layer];
  Pen pen{color_of(look, own, context), context.pen.pattern};
  if (look.line_type_source == Source::own) pen.pattern = m_patterns[look.line_type];
  if (look.line_type_source == Source::layer) {
    pen.pattern = own.line_type < m_patterns.size() ? m_patterns[own.line_type] : 0;
  }
  return pen;
}

void Composer::add_insert(const Insert& insert, const Context& inner) {
  if (insert.block >= m_model.blocks.items().size()) return;
  const Block& block = m_model.blocks[insert.block];
  if (block.entities.empty()) {
    if (block.name.empty()) ++m_left_out.missing;
    return;
  }
  const auto& open = m_open_blocks;
  if (std::find(open.begin(), open.end(), insert.block) != open.end()) {
    ++m_left_out.endless;
    return;
  }
  if (inner.depth > deepest) {
    ++m_left_out.too_deep;
    return;
  }
  m_open_blocks.push_back(insert.block);
  add_copies(insert, inner);
  m_open_blocks.pop_back();
}

void Composer::add_copies(const Insert& insert, const Context& inner) {
  const Block& block = m_model.blocks[insert.block];
  const auto rows = static_cast<std::size_t>(std::max(1, insert.rows));
  const auto columns = static_cast<std::size_t>(std::max(1, insert.columns));
  const Affine turned = inner.affine * Affine::moving(insert.at.x, insert.at.y) *
                        without_noise(Affine::turning(insert.rotation));
  const Affine scaled = Affine::scaling(insert.scale.x, insert.scale.y) *
                        Affine::moving(-block.base.x, -block.base.y);
  for (std::size_t i = 0; i < rows * columns; ++i) {
    if (m_copies >= m_limit) {
      m_left_out.too_many += rows * columns - i;
      return;
    }
    ++m_copies;
    const Vertex place{static_cast<double>(i % columns) * insert.spacing.x,
                       static_cast<double>(i / columns) * insert.spacing.y};
    Context copy = inner;
    copy.affine = without_noise(turned * Affine::moving(place.x, place.y) * scaled);
    add_copy(insert, copy);
  }
}

void Composer::add_copy(const Insert& insert, const Context& inner) {
  const Affine& affine = inner.affine;
  if (!is_finite(affine) || affine.determinant() == 0.0) {
    ++m_left_out.degenerate;
    return;
  }
  if (!affine.is_axis_aligned()) return add_all(m_model.blocks[insert.block].entities, inner);
  std::shared_ptr<const Plan> plan = plan_of(insert.block, inner);
  if (plan->extent.is_empty()) return;
  Shape shape;
  shape.pen = inner.pen;
  shape.what = Nest{plan, {affine.xx, affine.yy}, {affine.dx, affine.dy}};
  for (const Vertex& corner : {Vertex{plan->extent.min_x, plan->extent.min_y},
                               Vertex{plan->extent.max_x, plan->extent.max_y}}) {
    const Vertex v = affine.point(corner);
    shape.extent.widen(v.x, v.y);
  }
  if (!append(*inner.plan, std::move(shape))) ++m_left_out.degenerate;
}

std::shared_ptr<const Plan> Composer::plan_of(std::size_t block, const Context& inner) {
  // Texts know how they are placed; their size does not matter to them.
  Affine to_root = inner.to_root * inner.affine;
  const double unit = std::fabs(to_root.yy);
  const PlanKey key{block,
                    inner.layer,
                    inner.pen.color.word,
                    inner.pen.pattern,
                    to_root.xx / unit,
                    std::copysign(1.0, to_root.yy)};
  const auto known = m_plans.find(key);
  if (known != m_plans.end()) return known->second;
  const std::size_t refused = m_left_out.refused();
  auto plan = std::make_shared<Plan>();
  Context own = inner;
  own.affine = {};
  own.to_root = Affine::scaling(to_root.xx / unit, std::copysign(1.0, to_root.yy));
  own.plan = plan.get();
  add_all(m_model.blocks[block].entities, own);
  cut_beams(*plan);
  // What is refused here may have its place elsewhere.
  if (m_left_out.refused() == refused) m_plans.emplace(key, plan);
  return plan;
}

}  // namespace importers::dxf
