// What adding and redrawing a million polylines costs, beside a lower bound
// that knows the visible ones beforehand and only transforms and draws them.
// Usage: bench_redraw [SCENE [CAPACITY [DEEPEST LEVEL [COUNT]]]]; prints CSV.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "bench/measure.h"
#include "displaylist/displaylist.h"
#include "lumen/packed_heap.h"
#include "lumen/picture.h"
#include "lumen/raster_device.h"
#include "scenes/random.h"
#include "scenes/scene.h"

namespace {

using scenes::Bounds;
using scenes::Point;
using scenes::Polylines;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kRounds = 9;
constexpr int kWindows = 100;

/// A list in a heap of its own.
struct BuiltList {
  lumen::PackedHeap heap;
  DL::DisplayList list{&heap};
};

std::unique_ptr<BuiltList> build(const Polylines& lines, int capacity, int deepest_level) {
  auto built = std::make_unique<BuiltList>();
  built->list.m_cMaxOpenDrawables = capacity;
  built->list.m_cMaxLevel = deepest_level;
  scenes::add_to(built->list, lines);
  return built;
}

Bounds bounds_of(std::span<const Point> points) {
  Bounds bounds;
  for (const Point& point : points) bounds.widen(point);
  return bounds;
}

/// Windows of `share` of the area of the whole, anywhere in it.
std::vector<Bounds> windows_in(const Bounds& whole, double share) {
  const double side = std::sqrt(share);
  const auto length = [&](std::int32_t low, std::int32_t high) {
    return static_cast<std::int32_t>((static_cast<double>(high) - low) * side);
  };
  const std::int32_t width = length(whole.min.x, whole.max.x);
  const std::int32_t height = length(whole.min.y, whole.max.y);
  scenes::Random random(2);
  std::vector<Bounds> windows;
  for (int i = 0; i < kWindows; ++i) {
    const Point corner{random.between(whole.min.x, whole.max.x - width),
                       random.between(whole.min.y, whole.max.y - height)};
    windows.emplace_back(corner.x, corner.y, corner.x + width, corner.y + height);
  }
  return windows;
}

void look_at(DL::DisplayList& list, const Bounds& window) {
  list.m_logicalBounds = window;
  list.m_screenBounds = {};
  list.set_screen_bounds({0, 0, kWidth - 1, kHeight - 1});
  list.m_rendition.set_clip_rectangle({0, kWidth - 1, 0, kHeight - 1});
}

std::vector<std::size_t> visible_in(const Polylines& lines, const Bounds& window) {
  std::vector<std::size_t> visible;
  for (std::size_t i = 0; i < lines.count(); ++i) {
    if (bounds_of(lines.polyline(i)).meets(window)) visible.push_back(i);
  }
  return visible;
}

/// The lower bound: the visible polylines, transformed and handed over.
void draw_known(const Polylines& lines, const std::vector<std::size_t>& visible,
                DL::DisplayList& list) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  const LM_Clip_Rectangle& clip = list.m_rendition.clip_rectangle();
  for (const std::size_t index : visible) {
    LM_DCI_Point device[scenes::kLargestPolyline];
    const std::span<const Point> points = lines.polyline(index);
    bool inside = true;
    for (std::size_t i = 0; i < points.size(); ++i) {
      // Within this scene's range a plain conversion rounds well enough.
      device[i] = {static_cast<std::int32_t>(points[i].x * list.m_scale.x + list.m_offset.x),
                   static_cast<std::int32_t>(points[i].y * list.m_scale.y + list.m_offset.y), 0};
      inside = inside && clip.contains(device[i]);
    }
    (inside ? actions.polyline_unclipped : actions.polyline_clipped)(
        &list.m_rendition, static_cast<std::int32_t>(points.size()), device);
  }
}

/// One window and what of the scene meets it.
struct View {
  Bounds window;
  std::vector<std::size_t> visible;
};

void measure(const char* name, const Polylines& lines, DL::DisplayList& list,
             const std::vector<Bounds>& windows) {
  std::vector<View> views;
  std::size_t visible = 0;
  for (const Bounds& window : windows) {
    views.push_back({window, visible_in(lines, window)});
    visible += views.back().visible.size();
  }
  lumen::Picture picture(kWidth, kHeight);
  const LM_Handle<LM_Renderer> null_renderer = LM_Create<LM_Renderer>();
  const LM_Handle<LM_Renderer> raster = LM_Create<lumen::RasterDevice>(picture);

  const auto redraw = [&](const LM_Handle<LM_Renderer>& renderer) {
    list.m_pRenderer = renderer;
    for (const View& view : views) {
      look_at(list, view.window);
      list.m_pRootGroup->draw_bounded(list, view.window, view.window);
    }
  };
  const auto bound = [&](const LM_Handle<LM_Renderer>& renderer) {
    list.m_pRenderer = renderer;
    for (const View& view : views) {
      look_at(list, view.window);
      draw_known(lines, view.visible, list);
    }
  };
  const std::vector<double> seconds =
      bench::medians(kRounds, {[&] { redraw(null_renderer); }, [&] { bound(null_renderer); },
                               [&] { redraw(raster); }, [&] { bound(raster); }});
  const auto per_window = [&](double s) { return s * 1e3 / static_cast<double>(windows.size()); };
  const auto per_visible = [&](double s) {
    return s * 1e9 / static_cast<double>(std::max<std::size_t>(visible, 1));
  };
  std::printf("%s,%zu,%.4f,%.1f,%.2f,%.4f,%.1f,%.2f\n", name, visible / windows.size(),
              per_window(seconds[0]), per_visible(seconds[0]), seconds[0] / seconds[1],
              per_window(seconds[2]), per_visible(seconds[2]), seconds[2] / seconds[3]);
}

}  // namespace

int main(int argc, char** argv) {
  const auto number = [&](int index, int otherwise) {
    return argc > index ? std::atoi(argv[index]) : otherwise;
  };
  const std::string name = argc > 1 ? argv[1] : "coherent";
  const int capacity = number(2, DL::DisplayList::kDefaultCapacity);
  const int deepest_level = number(3, DL::DisplayList::kDefaultDeepestLevel);
  const int count = number(4, 1'000'000);
  const scenes::Scene* scene = scenes::find(name);
  if (scene == nullptr || count < 1) {
    std::fprintf(stderr, "bench_redraw: no scene '%s'; there are:\n", name.c_str());
    for (const scenes::Scene& known : scenes::all()) {
      std::fprintf(stderr, "  %s: %s\n", known.name.data(), known.description.data());
    }
    return 2;
  }

  const Polylines lines = scene->generate(static_cast<std::size_t>(count), 1);
  std::unique_ptr<BuiltList> built;
  const double seconds =
      bench::medians(3, {[&] { built = build(lines, capacity, deepest_level); }})[0];
  std::printf("scene,capacity,deepest_level,drawables,insert_ns,bytes_per_drawable\n");
  std::printf("%s,%d,%d,%d,%.1f,%.1f\n", name.c_str(), capacity, deepest_level, count,
              seconds * 1e9 / count, static_cast<double>(built->heap.bytes_reserved()) / count);

  std::printf("window,visible,null_ms,null_ns,null_ratio,raster_ms,raster_ns,raster_ratio\n");
  const Bounds whole = bounds_of(lines.points);
  measure("whole", lines, built->list, {whole});
  measure("1 %", lines, built->list, windows_in(whole, 0.01));
  measure("0.01 %", lines, built->list, windows_in(whole, 0.0001));
  return 0;
}
