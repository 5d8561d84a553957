#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "tests/support/point_printing.h"
#include "tests/text/nested_lists.h"

// Nested lists against the same drawables placed by hand.

namespace {

using namespace nested;

/// Where a nested list lies.
struct Place {
  Factors scale;
  Factors offset;
};

Factors moved_by(const Place& place, const Factors& p) {
  return {p.x * place.scale.x + place.offset.x, p.y * place.scale.y + place.offset.y};
}

/// One figure of the scene: in which of the lists, the outermost being 0.
struct Figure {
  std::size_t depth;
  std::vector<LogicalPoint> points;
};

DL::Drawable* make(const std::vector<LogicalPoint>& points, std::uint32_t color) {
  const LM_RGB32 rgb{color};
  const auto count = static_cast<std::int32_t>(points.size());
  if (count == 1) return new DL::DLDot(rgb, points[0]);
  if (count == 2) return new DL::DLPolyline(rgb, count, points.data());
  return new DL::DLPolygon(rgb, count, points.data());
}

/// Three lists inside a fourth, each drawn after the figures of the list around
/// it; the same figures in one list at the places that they come to lie at.
struct Scene {
  static constexpr std::size_t depth = 3;

  Scene(const std::vector<Place>& places, const std::vector<Figure>& figures,
        const ScreenBounds& screen)
      : inside(window, screen), by_hand(window, screen) {
    std::vector<DL::DisplayList*> lists = {&inside.list};
    for (std::size_t i = 0; i < depth; ++i) lists.push_back(new DL::DisplayList);
    for (DL::DisplayList* list : {lists[0], lists[1], lists[2], lists[3], &by_hand.list}) {
      list->m_cMaxOpenDrawables = 4;
    }
    for (std::size_t level = 0; level <= depth; ++level) {
      for (std::size_t i = 0; i < figures.size(); ++i) {
        if (figures[i].depth == level) add(*lists[level], figures[i], places, i + 1);
      }
    }
    for (std::size_t level = depth; level > 0; --level) {
      const Place& place = places[level - 1];
      // Room around the content: what lies on the border of a list inside another
      // may round out of it.
      constexpr std::int32_t room = 30000;
      LogicalBounds bounds;
      lists[level]->m_pRootGroup->add_bounds(bounds);
      if (!bounds.is_empty()) {
        bounds = {bounds.min.x - room, bounds.min.y - room, bounds.max.x + room,
                  bounds.max.y + room};
      }
      lists[level - 1]->add(nest(lists[level], place.scale, place.offset, bounds).release());
    }
  }

  void add(DL::DisplayList& list, const Figure& figure, const std::vector<Place>& places,
           std::size_t number) {
    const auto color = static_cast<std::uint32_t>(number);
    list.add(make(figure.points, color));
    std::vector<LogicalPoint> placed;
    for (const LogicalPoint& point : figure.points) {
      Factors p{1.0 * point.x, 1.0 * point.y};
      for (std::size_t level = figure.depth; level > 0; --level) p = moved_by(places[level - 1], p);
      placed.push_back({static_cast<std::int32_t>(std::lround(p.x)),
                        static_cast<std::int32_t>(std::lround(p.y))});
    }
    by_hand.list.add(make(placed, color));
  }

  // Many logical units to a pixel, so that the rounding of the places does not show.
  static constexpr LogicalBounds window{0, 0, 1000000, 600000};
  Parent inside;
  Parent by_hand;
};

std::string kind_of(const lumen::RecordedCall& call) {
  return call.action.substr(0, call.action.find('_'));
}

bool leaves(const lumen::RecordedCall& call, const LM_Clip_Rectangle& clip, std::int32_t by) {
  return std::any_of(call.points.begin(), call.points.end(), [&](const LM_DCI_Point& p) {
    return p.x < clip.min_x - by || p.x > clip.max_x + by || p.y < clip.min_y - by ||
           p.y > clip.max_y + by;
  });
}

/// Whether the box of the points reaches the clip rectangle, shrunk by a margin
/// for what groups and windows round.
bool surely_seen(const lumen::RecordedCall& call, const LM_Clip_Rectangle& clip,
                 std::int32_t margin) {
  DL::BoundsTemplate<int> box;
  for (const LM_DCI_Point& p : call.points) box.widen({p.x, p.y});
  return box.max.x >= clip.min_x + margin && box.min.x <= clip.max_x - margin &&
         box.max.y >= clip.min_y + margin && box.min.y <= clip.max_y - margin;
}

void expect_alike(const lumen::RecordedCall& a, const lumen::RecordedCall& b) {
  RC_ASSERT(kind_of(a) == kind_of(b));
  RC_ASSERT(a.points.size() == b.points.size());
  for (std::size_t i = 0; i < a.points.size(); ++i) {
    RC_ASSERT(std::abs(a.points[i].x - b.points[i].x) <= 1);
    RC_ASSERT(std::abs(a.points[i].y - b.points[i].y) <= 1);
  }
}

/// Every call of the nested lists is one of those by hand, in their order, and
/// what is seen is not missing.
void expect_same_picture(Scene& scene, std::int32_t margin) {
  std::map<std::uint32_t, const lumen::RecordedCall*> drawn;
  const LM_Clip_Rectangle clip = scene.inside.list.m_rendition.clip_rectangle();
  std::uint32_t last = 0;
  for (const lumen::RecordedCall& call : scene.inside.recorder->calls()) {
    // Figures are numbered from the outermost list inward, as they are drawn.
    RC_ASSERT(call.color.word > last);
    last = call.color.word;
    RC_ASSERT(drawn.emplace(call.color.word, &call).second);
    if (call.action.ends_with("_unclipped")) RC_ASSERT(!leaves(call, clip, 0));
  }
  for (const lumen::RecordedCall& call : scene.by_hand.recorder->calls()) {
    const auto found = drawn.find(call.color.word);
    if (found == drawn.end()) {
      RC_ASSERT(!surely_seen(call, clip, margin));
    } else {
      expect_alike(*found->second, call);
    }
  }
}

rc::Gen<double> any_scale() {
  const auto size = rc::gen::map(rc::gen::inRange(50, 200), [](int n) { return n / 100.0; });
  return rc::gen::apply([](double s, bool mirrored) { return mirrored ? -s : s; }, size,
                        rc::gen::arbitrary<bool>());
}

Place any_place() {
  const auto offset = rc::gen::inRange(-400000, 900000);
  return {{*any_scale(), *any_scale()}, {*offset + 0.25, *offset - 0.25}};
}

std::vector<Figure> any_figures() {
  std::vector<Figure> figures;
  const int count = *rc::gen::inRange(4, 40);
  for (int i = 0; i < count; ++i) {
    Figure& figure = figures.emplace_back();
    figure.depth = *rc::gen::inRange<std::size_t>(0, Scene::depth + 1);
    const LogicalPoint start{*rc::gen::inRange(-600000, 600000),
                             *rc::gen::inRange(-600000, 600000)};
    const int corners = *rc::gen::inRange(1, 5);
    for (int k = 0; k < corners; ++k) {
      // Far enough from each other to stay apart on the screen.
      figure.points.push_back({start.x + k * 150000 + *rc::gen::inRange(0, 20000),
                               start.y + k * k * 90000 + *rc::gen::inRange(0, 20000)});
    }
  }
  std::stable_sort(figures.begin(), figures.end(),
                   [](const Figure& a, const Figure& b) { return a.depth < b.depth; });
  return figures;
}

RC_GTEST_PROP(NestedLists, DrawTheSameAsPlacedByHand, (bool upside_down)) {
  const ScreenBounds screen =
      upside_down ? ScreenBounds{0, 600, 1000, 0} : ScreenBounds{0, 0, 1000, 600};
  const std::vector<Place> places = {any_place(), any_place(), any_place()};
  Scene scene(places, any_figures(), screen);
  scene.inside.list.m_pRootGroup->draw_unclipped(scene.inside.list);
  scene.by_hand.list.m_pRootGroup->draw_unclipped(scene.by_hand.list);
  RC_ASSERT(scene.inside.recorder->calls().size() == scene.by_hand.recorder->calls().size());
  expect_same_picture(scene, 0);
  scene.inside.recorder->clear();
  // What the bounded form draws is held against all that there is.
  scene.inside.draw_window();
  expect_same_picture(scene, 2);
}

RC_GTEST_PROP(NestedLists, DrawTheSameInPartsOfTheWindow, (bool upside_down)) {
  const ScreenBounds screen =
      upside_down ? ScreenBounds{0, 600, 1000, 0} : ScreenBounds{0, 0, 1000, 600};
  Scene scene({any_place(), any_place(), any_place()}, any_figures(), screen);
  const LogicalBounds zoomed{*rc::gen::inRange(0, 400000), *rc::gen::inRange(0, 200000),
                             *rc::gen::inRange(600000, 1000000), *rc::gen::inRange(400000, 600000)};
  for (Parent* parent : {&scene.inside, &scene.by_hand}) {
    parent->list.m_logicalBounds = zoomed;
    parent->list.recompute_transform();
  }
  scene.by_hand.list.m_pRootGroup->draw_unclipped(scene.by_hand.list);
  scene.inside.draw_window();
  expect_same_picture(scene, 2);
}

}  // namespace
