// Cairo's recording surface, replayed to an image surface.

#include <cairo.h>

#include "bench/contestant.h"

namespace bench {

namespace {

/// Units of the recording. Cairo's coordinates are 24 bits before the point and
/// 8 behind it, and its recordings bear no extents of some 100,000 units.
constexpr double kUnits = 16384.0;
/// Of its height: in proportion to the picture, so that lines are as wide both ways.
constexpr double kUnitsDown = kUnits * kHeight / kWidth;

class CairoRecording final : public Contestant {
 public:
  CairoRecording()
      : m_image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)),
        m_context(cairo_create(m_image)) {}
  ~CairoRecording() override {
    clear();
    cairo_destroy(m_context);
    cairo_surface_destroy(m_image);
  }

  void build(const scenes::Polylines& lines) override {
    m_lines = &lines;
    m_whole = scenes::bounds_of(lines);
    m_lineWidth = kUnits / kWidth;
    record();
  }
  void clear() override {
    if (m_recording != nullptr) cairo_surface_destroy(m_recording);
    m_recording = nullptr;
  }
  /// Lines are as wide as recorded: each size of windows has a recording whose
  /// lines are a pixel wide there.
  void prepare(const View& view) override {
    const double line_width = 1.0 / (view.scale.x / units_per_logical().x);
    if (line_width == m_lineWidth) return;
    m_lineWidth = line_width;
    clear();
    record();
  }
  bool can_draw(Target target) const override { return target == Target::raster; }
  void draw(const View& view, Target /*target*/) override {
    const DL::PointTemplate<double> units = units_per_logical();
    const DL::PointTemplate<double> scale{view.scale.x / units.x, view.scale.y / units.y};
    cairo_identity_matrix(m_context);
    cairo_translate(m_context, view.offset.x + m_whole.min.x * view.scale.x,
                    view.offset.y + m_whole.min.y * view.scale.y);
    cairo_scale(m_context, scale.x, scale.y);
    cairo_set_source_surface(m_context, m_recording, 0.0, 0.0);
    cairo_paint(m_context);
    cairo_surface_flush(m_image);
  }
  std::span<std::uint32_t> pixels() override {
    return {reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(m_image)),
            static_cast<std::size_t>(kWidth) * kHeight};
  }

 private:
  [[nodiscard]] DL::PointTemplate<double> units_per_logical() const {
    return {kUnits / (static_cast<double>(m_whole.max.x) - m_whole.min.x),
            kUnitsDown / (static_cast<double>(m_whole.max.y) - m_whole.min.y)};
  }

  void record() {
    const cairo_rectangle_t extents{0.0, 0.0, kUnits, kUnitsDown};
    m_recording = cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents);
    cairo_t* context = cairo_create(m_recording);
    cairo_set_antialias(context, CAIRO_ANTIALIAS_NONE);
    cairo_set_line_width(context, m_lineWidth);
    const DL::PointTemplate<double> units = units_per_logical();
    for (std::size_t i = 0; i < m_lines->count(); ++i) {
      const std::uint32_t color = m_lines->color(i).word;
      cairo_set_source_rgb(context, (color >> 16 & 0xFF) / 255.0, (color >> 8 & 0xFF) / 255.0,
                           (color & 0xFF) / 255.0);
      for (const scenes::Point& point : m_lines->polyline(i)) {
        cairo_line_to(context, (static_cast<double>(point.x) - m_whole.min.x) * units.x,
                      (static_cast<double>(point.y) - m_whole.min.y) * units.y);
      }
      cairo_stroke(context);
    }
    cairo_destroy(context);
  }

  const scenes::Polylines* m_lines = nullptr;  ///< outlive this
  scenes::Bounds m_whole;
  double m_lineWidth = 0.0;
  cairo_surface_t* m_recording = nullptr;
  cairo_surface_t* m_image;
  cairo_t* m_context;
};

}  // namespace

std::unique_ptr<Contestant> make_cairo_recording() {
  return std::make_unique<CairoRecording>();
}

}  // namespace bench
