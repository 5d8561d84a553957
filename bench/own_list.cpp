#include "bench/own_list.h"

#include <vector>

#include "displaylist/core/insertion_order.h"

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

void ReorderedList::build(const scenes::Polylines& lines) {
  std::vector<scenes::Bounds> bounds;
  for (std::size_t i = 0; i < lines.count(); ++i) {
    bounds.push_back(scenes::bounds_of(lines.polyline(i)));
  }
  std::vector<std::size_t> order(bounds.size());
  if (!DL::insertion_order(bounds, order)) return;
  scenes::Polylines reordered;
  for (const std::size_t i : order) reordered.append(lines.polyline(i), lines.color(i));
  OwnList::build(reordered);
}

std::unique_ptr<Contestant> make_reordered_list() {
  return std::make_unique<ReorderedList>();
}

}  // namespace bench
