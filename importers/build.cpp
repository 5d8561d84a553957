#include "importers/build.h"

#include <algorithm>
#include <numeric>

#include "importers/coloring.h"
#include "importers/list_filler.h"
#include "importers/palette.h"

namespace importers {

namespace {

/// What lies lower is drawn earlier: areas below lines below points.
int storey(const Sketch::Layer& layer) {
  if (!layer.areas.empty()) return 0;
  return layer.lines.empty() ? 2 : 1;
}

double mean_area(const Sketch::Layer& layer) {
  return layer.areas.empty() ? 0.0 : layer.area_sizes / static_cast<double>(layer.areas.size());
}

/// The indices of the layers in drawing order.
std::vector<std::size_t> drawing_order(const std::vector<Sketch::Layer>& layers,
                                       const ReadOptions& options) {
  std::vector<std::size_t> order(layers.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (!options.layers.empty()) return order;
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const int storeys = storey(layers[a]) - storey(layers[b]);
    return storeys != 0 ? storeys < 0 : mean_area(layers[a]) > mean_area(layers[b]);
  });
  return order;
}

void add_areas(const Sketch& sketch, const Sketch::Layer& layer, std::size_t index,
               const ReadOptions& options, ListFiller& filler) {
  if (options.fill) {
    const std::vector<std::uint32_t> colors = color_areas(sketch, layer, palette::area_colors);
    for (std::size_t i = 0; i < layer.areas.size(); ++i) {
      filler.add_fill(layer, layer.areas[i], palette::area(colors[i]));
    }
    filler.end_kind();
  }
  const LM_RGB32 usual = options.fill ? palette::outline : palette::line(index);
  const LM_RGB32 color = options.line_color.value_or(usual);
  for (const Sketch::Ring& ring : layer.rings) filler.add_outline(ring, color);
  filler.end_kind();
}

void add_layer(const Sketch& sketch, std::size_t index, const ReadOptions& options,
               ListFiller& filler) {
  const Sketch::Layer& layer = sketch.layers()[index];
  add_areas(sketch, layer, index, options, filler);
  const LM_RGB32 line_color = options.line_color.value_or(palette::line(index));
  for (const Sketch::Run& line : layer.lines) filler.add_line(line, line_color);
  filler.end_kind();
  if (layer.points.empty()) return;
  filler.begin_points(palette::point(index), options.point_size);
  for (const std::size_t point : layer.points) filler.add_point(sketch.vertex(point));
  filler.end_kind();
}

void take_over_counts(const Sketch& sketch, Drawing& drawing) {
  drawing.points = sketch.vertex_count();
  drawing.features = sketch.feature_count();
  drawing.empty_features = sketch.empty_feature_count();
  drawing.unusable_points = sketch.unusable_vertex_count();
  drawing.first_unusable = sketch.first_unusable();
}

bool is_map(const Sketch& sketch, const ReadOptions& options) {
  const auto any_area = [](const Sketch::Layer& layer) { return !layer.areas.empty(); };
  const auto geographic = [](const Sketch::Layer& layer) { return layer.geographic; };
  const std::vector<Sketch::Layer>& layers = sketch.layers();
  return options.fill && std::any_of(layers.begin(), layers.end(), any_area) &&
         std::all_of(layers.begin(), layers.end(), geographic);
}

}  // namespace

std::string build(const Sketch& sketch, const ReadOptions& options, Drawing& drawing) {
  take_over_counts(sketch, drawing);
  if (sketch.extent().is_empty()) {
    return sketch.unusable_vertex_count() > 0
               ? "has no point whose coordinates are finite and within 1e15; repair them"
               : "has no geometry to draw; choose a file with points, lines or areas";
  }
  drawing.extent = sketch.extent();
  drawing.mapping = Mapping::fitting(drawing.extent);
  drawing.is_map = is_map(sketch, options);
  drawing.list = std::make_unique<DL::DisplayList>(drawing.heap.get());
  ListFiller filler(sketch, drawing, options.reorder);
  for (const std::size_t index : drawing_order(sketch.layers(), options)) {
    drawing.layers.push_back(sketch.layers()[index].name);
    add_layer(sketch, index, options, filler);
  }
  return filler.is_out_of_memory() ? "needs more memory than there is; read fewer layers" : "";
}

}  // namespace importers
