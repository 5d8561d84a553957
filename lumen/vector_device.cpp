#include "lumen/vector_device.h"

#include "lumen/vector/vector_painter_p.h"

namespace lumen {

VectorDevice::VectorDevice(VectorFormat format, std::int32_t width, std::int32_t height,
                           const std::string& path)
    : m_painter(std::make_unique<VectorPainter>(format, width, height, path)) {
  m_painter->fill_table(actions);
  options.supports_complex_clip = true;
}

VectorDevice::~VectorDevice() = default;

std::string VectorDevice::finish() {
  return m_painter->finish();
}

void VectorDevice::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                             const wchar_t* characters, std::int32_t count) {
  m_painter->draw_text(rendition, start, characters, count);
}

void VectorDevice::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                             const unsigned char* characters, std::int32_t count) {
  m_painter->draw_text(rendition, start, characters, count);
}

}  // namespace lumen
