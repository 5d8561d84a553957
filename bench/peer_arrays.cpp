// Arrays of polylines with their bounds, one by one or in blocks.

#include <algorithm>

#include "bench/bare_drawing.h"

namespace bench {

namespace {

using scenes::Bounds;

class FlatArray : public Contestant {
 public:
  void build(const scenes::Polylines& lines) override {
    for (std::size_t i = 0; i < lines.count(); ++i) {
      const std::span<const scenes::Point> points = lines.polyline(i);
      m_lines.append(points, lines.color(i));
      m_bounds.push_back(scenes::bounds_of(points));
    }
  }
  void clear() override {
    m_lines = {};
    m_bounds = {};
  }
  void draw(const View& view, Target target) override {
    m_drawing.begin(view, target);
    draw_range(view.window, 0, m_bounds.size());
  }
  std::span<std::uint32_t> pixels() override { return m_drawing.pixels(); }

 protected:
  void draw_range(const Bounds& window, std::size_t first, std::size_t end) {
    for (std::size_t i = first; i < end; ++i) {
      if (m_bounds[i].meets(window)) m_drawing.draw(m_lines.polyline(i), m_lines.color(i));
    }
  }

  scenes::Polylines m_lines;
  std::vector<Bounds> m_bounds;
  BareDrawing m_drawing;
};

class BlockedArray final : public FlatArray {
 public:
  void build(const scenes::Polylines& lines) override {
    FlatArray::build(lines);
    for (std::size_t i = 0; i < m_bounds.size(); ++i) {
      if (i % kBlock == 0) m_blocks.emplace_back();
      m_blocks.back().widen(m_bounds[i]);
    }
  }
  void clear() override {
    FlatArray::clear();
    m_blocks = {};
  }
  void draw(const View& view, Target target) override {
    m_drawing.begin(view, target);
    for (std::size_t block = 0; block < m_blocks.size(); ++block) {
      if (!m_blocks[block].meets(view.window)) continue;
      const std::size_t first = block * kBlock;
      draw_range(view.window, first, std::min(first + kBlock, m_bounds.size()));
    }
  }

 private:
  static constexpr std::size_t kBlock = 64;  ///< consecutive polylines
  std::vector<Bounds> m_blocks;
};

}  // namespace

std::unique_ptr<Contestant> make_flat_array() {
  return std::make_unique<FlatArray>();
}

std::unique_ptr<Contestant> make_blocked_array() {
  return std::make_unique<BlockedArray>();
}

}  // namespace bench
