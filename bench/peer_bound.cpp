// The lower bound: what is visible is known beforehand.

#include "bench/bare_drawing.h"

namespace bench {

namespace {

class LowerBound final : public Contestant {
 public:
  void build(const scenes::Polylines& lines) override {
    for (std::size_t i = 0; i < lines.count(); ++i) {
      m_lines.append(lines.polyline(i), lines.color(i));
    }
  }
  void clear() override { m_lines = {}; }
  void draw(const View& view, Target target) override {
    m_drawing.begin(view, target);
    for (const std::uint32_t id : view.visible) {
      m_drawing.draw(m_lines.polyline(id), m_lines.color(id));
    }
  }
  std::span<std::uint32_t> pixels() override { return m_drawing.pixels(); }

 private:
  scenes::Polylines m_lines;
  BareDrawing m_drawing;
};

}  // namespace

std::unique_ptr<Contestant> make_lower_bound() {
  return std::make_unique<LowerBound>();
}

}  // namespace bench
