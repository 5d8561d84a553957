#include "lumen/selector_device.h"

#include "lumen/selector/selector_p.h"

namespace lumen {

SelectorDevice::SelectorDevice() : m_selector(std::make_unique<Selector>()) {
  actions = LM_Actions_Of(m_selector.get());
  options.supports_complex_clip = true;
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

}  // namespace lumen
