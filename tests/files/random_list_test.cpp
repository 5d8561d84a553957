#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <vector>

#include "files/drawing_file.h"
#include "tests/files/file_checks.h"
#include "tests/support/sample_drawables.h"

namespace {

std::int32_t any_coordinate() {
  return *rc::gen::oneOf(rc::gen::inRange<std::int32_t>(-1000, 1000),
                         rc::gen::arbitrary<std::int32_t>());
}

LogicalPoint any_point() {
  const std::int32_t x = any_coordinate();
  return {x, any_coordinate()};
}

DL::Drawable* any_drawable(std::vector<LM_Rendition>& renditions) {
  LM_Rendition* rendition = &renditions[*rc::gen::inRange<std::size_t>(0, renditions.size())];
  const LM_RGB32 color{*rc::gen::inRange<std::uint32_t>(0, 6)};
  const std::vector<LogicalPoint> points(*rc::gen::inRange<std::size_t>(1, 6), any_point());
  const auto count = static_cast<std::int32_t>(points.size());
  switch (*rc::gen::inRange(0, 6)) {
    case 0:
      return new DL::DLDot(color, any_point());
    case 1:
      return new DL::PalettizedDrawable<DL::DLDot>(rendition, any_point());
    case 2:
      return new DL::DLPolygon(color, count, points.data());
    case 3:
      return new DL::PalettizedDrawable<DL::DLPolyline>(rendition, count, points.data());
    case 4:
      return samples::make_palettized<DL::DLText>(rendition).release();
    default:
      return new DL::DLColorizedDot(color, any_point(),
                                    LM_RGB32{*rc::gen::arbitrary<std::uint32_t>()});
  }
}

void fill(DL::DisplayList& list, std::vector<LM_Rendition>& renditions, int depth) {
  list.m_cMaxOpenDrawables = *rc::gen::inRange(1, 6);
  const int count = *rc::gen::inRange(0, 40);
  for (int i = 0; i < count; ++i) {
    DL::Drawable* drawable = any_drawable(renditions);
    if (depth > 0 && *rc::gen::inRange(0, 10) == 0) {
      delete drawable;
      auto* child = new DL::DisplayList;
      fill(*child, renditions, depth - 1);
      drawable = new DL::DrawableDisplayList(nullptr, child, nullptr);
    }
    if (*rc::gen::inRange(0, 4) == 0) drawable->hide();
    list.add(drawable, *rc::gen::inRange(0UL, 16UL));
  }
  for (DL::Group* leaf : leaves_of(list)) {
    if (*rc::gen::inRange(0, 4) == 0) leaf->make_hidden();
  }
}

RC_GTEST_PROP(RandomList, ComesBackAndIsWrittenTheSameAgain, ()) {
  std::vector<LM_Rendition> renditions(3);
  for (std::size_t i = 0; i < renditions.size(); ++i) {
    renditions[i].set_line_weight(static_cast<std::int32_t>(i) + 2);
  }
  DL::DisplayList list;
  fill(list, renditions, 2);
  file_checks::Bytes bytes;
  RC_ASSERT(files::write_bytes(bytes, list).empty());
  files::Contents contents;
  RC_ASSERT(files::read_bytes(bytes, {}, contents).empty());
  file_checks::Bytes again;
  RC_ASSERT(files::write_bytes(again, *contents.list).empty());
  RC_ASSERT(again == bytes);
  RC_ASSERT(file_checks::describe(*contents.list) == file_checks::describe(list));
  RC_ASSERT(broken_invariants(*contents.list) == broken_invariants(list));
  RC_ASSERT(file_checks::drawn(*contents.list) == file_checks::drawn(list));
}

}  // namespace
