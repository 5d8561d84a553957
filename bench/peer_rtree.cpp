// Boost's R-trees over the ids of polylines: what is found is sorted into drawing
// order and drawn.

#include <algorithm>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/geometry/strategies/strategies.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <iterator>
#include <utility>

#include "bench/bare_drawing.h"

namespace bench {

namespace {

namespace bg = boost::geometry;
using BoxPoint = bg::model::point<std::int32_t, 2, bg::cs::cartesian>;
using Box = bg::model::box<BoxPoint>;
using Value = std::pair<Box, std::uint32_t>;
using Tree = bg::index::rtree<Value, bg::index::rstar<16>>;

Box box_of(const scenes::Bounds& bounds) {
  return {{bounds.min.x, bounds.min.y}, {bounds.max.x, bounds.max.y}};
}

/// Inserts one by one, or all at once.
template <bool Packed>
class RTree final : public Contestant {
 public:
  void build(const scenes::Polylines& lines) override {
    std::vector<Value> values;
    for (std::size_t i = 0; i < lines.count(); ++i) {
      const std::span<const scenes::Point> points = lines.polyline(i);
      m_lines.append(points, lines.color(i));
      const Value value{box_of(scenes::bounds_of(points)), static_cast<std::uint32_t>(i)};
      if constexpr (Packed) {
        values.push_back(value);
      } else {
        m_tree.insert(value);
      }
    }
    if constexpr (Packed) m_tree = Tree(values);
  }
  void clear() override {
    m_lines = {};
    m_tree.clear();
  }
  void draw(const View& view, Target target) override {
    m_drawing.begin(view, target);
    m_ids.clear();
    const auto found = [this](const Value& value) { m_ids.push_back(value.second); };
    m_tree.query(bg::index::intersects(box_of(view.window)),
                 boost::make_function_output_iterator(found));
    std::ranges::sort(m_ids);
    for (const std::uint32_t id : m_ids) m_drawing.draw(m_lines.polyline(id), m_lines.color(id));
  }
  std::span<std::uint32_t> pixels() override { return m_drawing.pixels(); }

 private:
  scenes::Polylines m_lines;
  Tree m_tree;
  std::vector<std::uint32_t> m_ids;
  BareDrawing m_drawing;
};

}  // namespace

std::unique_ptr<Contestant> make_dynamic_rtree() {
  return std::make_unique<RTree<false>>();
}

std::unique_ptr<Contestant> make_packed_rtree() {
  return std::make_unique<RTree<true>>();
}

}  // namespace bench
