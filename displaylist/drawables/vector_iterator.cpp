#include "displaylist/drawables/vector_iterator.h"

#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/memory.h"

namespace DL {

DrawableVectorIterator::~DrawableVectorIterator() = default;

bool DrawableVectorIterator::initialize(Drawable* drawable) {
  m_count = drawable->get_vector_count();
  m_bFast = drawable->supports_fast_vector_iterator();
  if (!m_bFast) {
    m_bDone = true;
    return false;
  }
  m_pDrawable = drawable;
  m_index = 0;
  m_bDone = false;
  m_pDrawable->get_vector(0, m_vector);
  return true;
}

VectorTemplate<long>* DrawableVectorIterator::next() {
  if (m_pDrawable == nullptr) return nullptr;
  if (m_index < m_count) ++m_index;
  m_bDone = m_index >= m_count;
  if (m_bDone) return nullptr;
  m_pDrawable->get_vector(m_index, m_vector);
  return &m_vector;
}

VectorTemplate<long>* DrawableVectorIterator::prev() {
  if (m_pDrawable == nullptr) return nullptr;
  if (m_index >= 0) --m_index;
  m_bDone = m_index < 0;
  if (m_bDone) return nullptr;
  m_pDrawable->get_vector(m_index, m_vector);
  return &m_vector;
}

void* DrawableVectorIterator::operator new(std::size_t size) noexcept {
  return LD_AllocateMemory(size, nullptr);
}

void DrawableVectorIterator::operator delete(void* memory) noexcept {
  LD_ReleaseMemory(memory);
}

}  // namespace DL
