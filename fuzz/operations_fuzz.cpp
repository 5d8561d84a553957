// Bytes as operations on a list: adding at the end and before others, removing in
// every way, hiding, storing, drawing. After each one the list holds what a plain
// row of drawables does.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

#include "displaylist/displaylist.h"
#include "fuzz/byte_stream.h"
#include "fuzz/palette.h"
#include "fuzz/require.h"
#include "fuzz/use_list.h"

namespace {

using DL::Drawable;
using DL::Group;
using Bounds = DL::BoundsTemplate<long>;
using Point = DL::PointTemplate<long>;

Bounds bounds_of(const Drawable& drawable) {
  Bounds bounds;
  drawable.add_bounds(bounds);
  return bounds;
}

/// The bytes, one after the other; zeros after the last.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

  [[nodiscard]] bool is_at_end() const { return m_at == m_end; }
  std::uint8_t byte() { return is_at_end() ? 0 : *m_at++; }
  /// Near 0, or anywhere on a grid over all of the plane.
  std::int32_t coordinate() {
    const auto value = static_cast<std::int8_t>(byte());
    return (byte() & 1) != 0 ? value : static_cast<std::int32_t>(value) * 0x01000000;
  }
  Point point() {
    const std::int32_t x = coordinate();
    return {x, coordinate()};
  }
  Bounds bounds() {
    Bounds bounds;
    bounds.widen(point());
    bounds.widen(point());
    return bounds;
  }

 private:
  const std::uint8_t* m_at;
  const std::uint8_t* m_end;
};

/// The list and, beside it, its drawables in a row.
class Machine {
 public:
  explicit Machine(Source source) : m_source(source) {
    m_list.m_cMaxOpenDrawables = 1 + m_source.byte() % 8;
    m_list.m_cMaxLevel = 1 + m_source.byte() % 8;
  }

  void run() {
    constexpr void (Machine::*operations[])() = {&Machine::add,         &Machine::add,
                                                 &Machine::add_before,  &Machine::remove_found,
                                                 &Machine::detach,      &Machine::remove_directly,
                                                 &Machine::remove_area, &Machine::hide,
                                                 &Machine::hide_group,  &Machine::copy_by_stream,
                                                 &Machine::remove_all};
    // As many as keep checking all of the list after each affordable.
    for (int i = 0; i < 200 && !m_source.is_at_end(); ++i) {
      (this->*operations[m_source.byte() % std::size(operations)])();
      require(use_list(m_list) == m_row);
    }
  }

 private:
  Drawable* make() {
    const Point at = m_source.point();
    if (m_source.byte() % 2 == 0) return new DL::DLDot(LM_RGB32{}, at);
    const Point points[] = {at, m_source.point(), m_source.point()};
    return new DL::DLPolyline(LM_RGB32{}, 3, points);
  }

  /// Where one of the row is; the row is not empty.
  std::ptrdiff_t any() { return static_cast<std::ptrdiff_t>(m_source.byte() % m_row.size()); }
  Drawable* drawable_at(std::ptrdiff_t index) {
    return const_cast<Drawable*>(m_row[static_cast<std::size_t>(index)]);
  }
  Group* group_of(Drawable* drawable) {
    return DL::SubEntityIterator(drawable, drawable, m_list.m_pRootGroup).m_pGroup;
  }

  void add() {
    Drawable* drawable = make();
    require(m_list.add(drawable, m_source.byte()) != nullptr);
    m_row.push_back(drawable);
  }

  void add_before() {
    if (m_row.empty()) return add();
    const std::ptrdiff_t index = any();
    Drawable* drawable = make();
    require(m_list.add_before(m_list.m_pRootGroup, drawable_at(index), drawable,
                              bounds_of(*drawable)) != nullptr);
    m_row.insert(m_row.begin() + index, drawable);
  }

  /// The first of the row that the search finds, as the list has it.
  template <class Find>
  void search_with(const Find& find) {
    if (m_row.empty()) return;
    Drawable* wanted = drawable_at(any());
    Drawable* prototype = wanted->clone();
    DL::Search search{prototype, wanted->type(), bounds_of(*wanted), false};
    const auto is_match = [&](const Drawable* d) {
      return const_cast<Drawable*>(d)->remove(search);
    };
    const auto found = std::find_if(m_row.begin(), m_row.end(), is_match);
    require(found != m_row.end());
    find(search, *found);
    m_row.erase(found);
    delete prototype;
  }

  void remove_found() {
    search_with([this](DL::Search& search, const Drawable*) {
      require(m_list.m_pRootGroup->remove_inside(search) != nullptr);
    });
  }

  void detach() {
    search_with([this](DL::Search& search, const Drawable* found) {
      require(m_list.m_pRootGroup->detach_fast(search) != nullptr);
      require(search.m_pDetached == found && found->m_pNext == nullptr);
      delete search.m_pDetached;
    });
  }

  void remove_directly() {
    if (m_row.empty()) return;
    const std::ptrdiff_t index = any();
    Drawable* drawable = drawable_at(index);
    Group* group = group_of(drawable);
    Drawable* previous = nullptr;
    for (Drawable* d = group->m_pFirst.drawable; d != drawable; d = d->m_pNext) previous = d;
    require(group->remove(drawable, previous) != nullptr);
    m_row.erase(m_row.begin() + index);
  }

  void remove_area() {
    const Bounds area = m_source.bounds();
    std::erase_if(m_row, [&](const Drawable* d) { return bounds_of(*d).is_inside(area); });
    m_list.m_pRootGroup->remove_bounded(area);
  }

  void remove_all() {
    if (m_source.byte() % 4 != 0) return;
    m_list.m_pRootGroup->remove_all();
    m_row.clear();
  }

  void hide() {
    if (m_row.empty()) return;
    Drawable* drawable = drawable_at(any());
    drawable->is_hidden() ? drawable->unhide() : drawable->hide();
  }

  void hide_group() {
    if (m_row.empty()) return;
    for (Group* group = group_of(drawable_at(any())); group != nullptr; group = group->m_pParent) {
      group->is_hidden() ? group->make_visible() : group->make_hidden();
    }
  }

  void copy_by_stream() {
    ByteStream stream;
    Palette palette;
    m_list.serialize_out(&stream, &Palette::index_of, &palette);
    DL::DisplayList copy;
    copy.serialize_in(&stream, &Palette::rendition_of, &palette, &DL::standard_factory, nullptr,
                      &Palette::make_black);
    require(use_list(copy).size() == m_row.size());
  }

  Source m_source;
  DL::DisplayList m_list;
  std::vector<const Drawable*> m_row;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Machine(Source(data, size)).run();
  return 0;
}
