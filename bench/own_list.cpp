#include "bench/own_list.h"

namespace bench {

OwnList::OwnList()
    : m_nothing(LM_Create<LM_Renderer>()), m_raster(LM_Create<lumen::RasterDevice>(m_picture)) {}

DL::DisplayList& OwnList::start() {
  m_built = std::make_unique<BuiltList>();
  return m_built->list;
}

void OwnList::build(const scenes::Polylines& lines) {
  scenes::add_to(start(), lines);
}

void OwnList::draw(const View& view, Target target) {
  DL::DisplayList& list = m_built->list;
  list.m_pRenderer = target == Target::null ? m_nothing : LM_Handle<LM_Renderer>(m_raster);
  look_at(list, view.window);
  list.m_pRootGroup->draw_bounded(list, view.window, view.window);
  if (list.m_pMultithread != nullptr) list.m_pMultithread->WaitForAllThreads();
}

std::unique_ptr<Contestant> make_own_list() {
  return std::make_unique<OwnList>();
}

void OwnList::remove(std::span<const scenes::Point> points) {
  DL::DLPolyline prototype({0}, static_cast<std::int32_t>(points.size()), points.data());
  DL::Search search;
  search.prototype = &prototype;
  search.type = prototype.type();
  search.m_bounds = scenes::bounds_of(points);
  list().m_pRootGroup->remove_fast(search);
}

}  // namespace bench
