#include "lumen/selector_device.h"

#include "lumen/selector/selector_p.h"

namespace lumen {

SelectorDevice::SelectorDevice() : m_selector(std::make_unique<Selector>()) {
  actions = LM_Actions_Of(m_selector.get());
  options.supports_complex_clip = true;
  option_table.set(LM_String(LM_IS_SELECTOR), {1});
}

SelectorDevice::~SelectorDevice() = default;

void SelectorDevice::set_pick_box(const LM_Clip_Rectangle& box) {
  m_selector->set_pick_box(box);
}

const std::vector<SelectorDevice::Hit>& SelectorDevice::hits() const {
  return m_selector->hits();
}

void SelectorDevice::clear() {
  m_selector->clear();
}

void SelectorDevice::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                               const wchar_t* characters, std::int32_t count) {
  m_selector->draw_text(*rendition, start, characters, count);
}

void SelectorDevice::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                               const unsigned char* characters, std::int32_t count) {
  m_selector->draw_text(*rendition, start, characters, count);
}

}  // namespace lumen
