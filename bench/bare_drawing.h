#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "bench/contestant.h"

namespace bench {

/// The least that drawing a polyline takes: its points transformed in a loop,
/// and then an indirect call that does nothing, or bare aliased lines of one
/// pixel. The lower bound draws with it, and whoever keeps ids or bounds only.
class BareDrawing {
 public:
  BareDrawing() : m_pixels(static_cast<std::size_t>(kWidth) * kHeight, 0x00FFFFFF) {}

  /// Looks through the view from now on.
  void begin(const View& view, Target target) {
    m_scale = view.scale;
    m_offset = view.offset;
    m_target = target;
  }

  void draw(std::span<const scenes::Point> points, LM_RGB32 color) {
    if (m_device.size() < points.size()) m_device.resize(points.size());
    LM_DCI_Point* device = m_device.data();
    for (std::size_t i = 0; i < points.size(); ++i) {
      // Through 64 bits: what lies far outside wraps instead of being undefined.
      const double x = points[i].x * m_scale.x + m_offset.x;
      const double y = points[i].y * m_scale.y + m_offset.y;
      device[i] = {static_cast<std::int32_t>(static_cast<std::int64_t>(x)),
                   static_cast<std::int32_t>(static_cast<std::int64_t>(y)), 0};
    }
    const auto count = static_cast<std::int32_t>(points.size());
    if (m_target == Target::null) {
      m_nothing(count, device);
    } else {
      draw_pixels(count, device, color);
    }
  }

  [[nodiscard]] std::span<std::uint32_t> pixels() { return m_pixels; }

 private:
  using Nothing = void (*)(std::int32_t count, const LM_DCI_Point* points);
  static void do_nothing(std::int32_t count, const LM_DCI_Point* points);

  void draw_pixels(std::int32_t count, const LM_DCI_Point* points, LM_RGB32 color);
  void draw_line(const LM_DCI_Point& from, const LM_DCI_Point& to, std::uint32_t color);

  DL::PointTemplate<double> m_scale{};
  DL::PointTemplate<double> m_offset{};
  Target m_target = Target::null;
  Nothing m_nothing = &do_nothing;
  std::vector<LM_DCI_Point> m_device;
  std::vector<std::uint32_t> m_pixels;
};

}  // namespace bench
