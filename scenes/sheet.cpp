#include "scenes/sheet.h"

namespace scenes {

unsigned long add_flags(const DL::Drawable& drawable) {
  const bool is_text = dynamic_cast<const DL::DLText*>(&drawable) != nullptr;
  const bool is_nested = dynamic_cast<const DL::DrawableDisplayList*>(&drawable) != nullptr;
  return is_nested || (is_text && drawable.is_palettized()) ? 1 : 0;
}

DL::DisplayList& Sheet::add_layer() {
  m_layers.push_back(std::make_unique<DL::DisplayList>());
  m_layers.back()->m_logicalBounds = m_bounds;
  return *m_layers.back();
}

LM_Rendition& Sheet::add_rendition() {
  m_renditions.push_back(std::make_unique<LM_Rendition>());
  return *m_renditions.back();
}

void Sheet::draw(const LM_Handle<LM_Renderer>& renderer, std::int32_t width, std::int32_t height) {
  const LM_Clip_Rectangle page{0, width - 1, 0, height - 1};
  for (const auto& rendition : m_renditions) rendition->set_clip_rectangle(page);
  for (const auto& layer : m_layers) {
    layer->m_pRenderer = renderer;
    layer->m_rendition.set_clip_rectangle(page);
    layer->set_screen_bounds({0, height - 1, width - 1, 0});
    layer->m_pRootGroup->draw_unclipped(*layer);
  }
}

}  // namespace scenes
