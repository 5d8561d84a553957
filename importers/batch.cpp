#include "importers/batch.h"

#include "displaylist/core/insertion_order.h"

namespace importers {

Batch::~Batch() {
  clear();
}

void Batch::clear() {
  for (const DL::Drawable* drawable : m_drawables) delete drawable;
  m_drawables.clear();
  m_bounds.clear();
}

void Batch::push(DL::Drawable* drawable, const DL::BoundsTemplate<long>& bounds) {
  m_bounds.push_back(bounds);
  m_drawables.push_back(drawable);
}

std::size_t Batch::add_to(DL::DisplayList& list) {
  std::vector<std::size_t> order(size());
  std::size_t added = 0;
  // Without memory for it they keep the order that they have.
  static_cast<void>(DL::insertion_order(m_bounds, order));
  for (const std::size_t index : order) {
    if (list.add(m_drawables[index], m_bounds[index], 0) == nullptr) break;
    m_drawables[index] = nullptr;
    ++added;
  }
  clear();
  return added;
}

}  // namespace importers
