// Walks through a drawing, changes it, undoes a removal, and keeps it in a file.

#include <cstdio>
#include <memory>

#include "displaylist/displaylist.h"
#include "files/drawing_file.h"

namespace {

constexpr LM_RGB32 kRed{0x00C02020};
constexpr LM_RGB32 kBlue{0x002020C0};

int count(DL::DisplayList& list) {
  int count = 0;
  DL::DisplayListIterator at(&list);
  for (const DL::Drawable* d = at.current(); d != nullptr; d = at.next()) ++count;
  return count;
}

/// The last drawn of the drawables whose bounds hold a logical point. The iterator
/// tests groups only.
DL::Drawable* topmost_at(DL::DisplayList& list, DL::PointTemplate<long> point) {
  const DL::BoundsTemplate<long> spot(point, point);
  DL::DisplayListReverseIterator at(&list, spot);
  for (DL::Drawable* d = at.current(); d != nullptr; d = at.next()) {
    DL::BoundsTemplate<long> bounds;
    d->add_bounds(bounds);
    if (spot.is_inside(bounds)) return d;
  }
  return nullptr;
}

/// Takes a drawable out of the drawing and gives it to the caller.
std::unique_ptr<DL::Drawable> detach(DL::DisplayList& list, DL::Drawable* drawable) {
  DL::Search search{drawable, drawable->type(), {}, false};
  drawable->add_bounds(search.m_bounds);
  if (list.m_pRootGroup->detach_fast(search) == nullptr) return nullptr;
  return std::unique_ptr<DL::Drawable>(search.m_pDetached);
}

}  // namespace

int main() {
  DL::DisplayList list;
  for (std::int32_t i = 0; i < 100; ++i) {
    const DL::PointTemplate<long> square[] = {
        {i * 100, 0}, {i * 100 + 80, 0}, {i * 100 + 80, 80}, {i * 100, 80}};
    list.add(new DL::DLPolygon(i % 2 == 0 ? kRed : kBlue, 4, square));
  }

  // All that is blue, in drawing order.
  DL::Drawable::ColorData blue;
  blue.m_color = kBlue;
  int blue_ones = 0;
  DL::DisplayListColorIterator at(&list, blue);
  for (const DL::Drawable* d = at.current(); d != nullptr; d = at.next()) ++blue_ones;

  // Out, and in again: at the end of the drawing order, or before another one.
  DL::Drawable* picked = topmost_at(list, {1234, 40});
  DL::Drawable* first = DL::DisplayListIterator(&list).current();
  std::unique_ptr<DL::Drawable> removed = detach(list, picked);
  if (removed == nullptr) return 1;
  const int without = count(list);
  DL::BoundsTemplate<long> bounds;
  removed->add_bounds(bounds);
  list.add_before(list.m_pRootGroup, first, removed.release(), bounds);

  // Everything inside a rectangle, at once.
  list.m_pRootGroup->remove_bounded({5000, -10, 6000, 90});
  first->hide();
  const int left = count(list);
  std::printf("%d blue, %d without the one picked, %d left\n", blue_ones, without, left);

  // The file keeps all of it, the hidden one too.
  std::string problem = files::write_file("editing.dlf", list);
  files::Contents contents;
  if (problem.empty()) problem = files::read_file("editing.dlf", {}, contents);
  if (!problem.empty()) {
    std::fprintf(stderr, "%s\n", problem.c_str());
    return 1;
  }
  const bool same = count(*contents.list) == left &&
                    DL::DisplayListIterator(contents.list.get()).current() != nullptr;
  return blue_ones == 50 && without == 99 && left == 90 && same ? 0 : 1;
}
