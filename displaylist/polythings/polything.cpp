#include "displaylist/polythings/polything.h"

#include <algorithm>
#include <cstddef>

#include "displaylist/core/array_p.h"
#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/drawables/dump_p.h"

namespace DL {

namespace {

/// How many points are taken on trust before any has arrived.
constexpr std::int32_t kFirstReadPoints = 1 << 16;

}  // namespace

void* Polything::_parent_type = nullptr;

Polything::Polything(LM_RGB32 color, std::int32_t n, const PointTemplate<long>* source,
                     LumenHeap* heap)
    : Drawable(color), points(copy_array(source, n, heap)) {
  if (points != nullptr) count = n;
}

Polything::~Polything() {
  LD_ReleaseMemory(points);
}

void* Polything::my_type() {
  return &_parent_type;
}

void* Polything::type() const {
  return my_type();
}

void Polything::add_bounds(BoundsTemplate<long>& bounds) const {
  // Where points lie is anybody's guess: no branch depends on it.
  BoundsTemplate<long> all = bounds;
  for (std::int32_t i = 0; i < count; ++i) {
    const PointTemplate<long> point = points[i];
    all.min = {std::min(all.min.x, point.x), std::min(all.min.y, point.y)};
    all.max = {std::max(all.max.x, point.x), std::max(all.max.y, point.y)};
  }
  bounds = all;
}

int Polything::get_vector_count() const {
  return count == INT32_MIN ? count : count - 1;  // a stream may hold any count
}

bool Polything::get_vector(int index, VectorTemplate<long>& vector) const {
  vector = {points[index], points[index + 1]};
  return true;
}

DrawableVectorIterator* Polything::create_vector_iterator(bool) {
  return new DrawableVectorIteratorPolything(*this);
}

bool Polything::has_same_points(const Polything& other) const {
  return count == other.count && std::equal(points, points + std::max(count, 0), other.points);
}

void Polything::discard_points() {
  LD_ReleaseMemory(points);
  points = nullptr;
  count = 0;
}

Drawable* Polything::complete_or_null(Polything* copy) {
  if (copy == nullptr || copy->points != nullptr) return copy;
  delete copy;
  return nullptr;
}

void Polything::count_memory(DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 48;
  constexpr std::uint32_t point_bytes = 8;
  dump_line::count(statistics, point_bytes * static_cast<std::uint32_t>(count) + object_bytes);
}

void Polything::dump_colored(std::ostream& os, int level, std::string_view label,
                             DisplayListDebug& statistics) const {
  dump_line::indent(os, level);
  os << (is_palettized() ? "Palettized " : "") << label << ": level  " << level
     << ", points = " << count;
  if (is_palettized()) {
    os << ", rendition = " << static_cast<const void*>(m_colorData.m_pRendition);
  } else {
    os << ", color = " << static_cast<std::int32_t>(m_colorData.m_color.word);
  }
  dump_line::end(os, this);
  count_memory(statistics);
}

void Polything::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::write_points(os, level, "Polything", count, this);
  count_memory(statistics);
}

void Polything::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, count);
  coding::write_array(*stream, points, static_cast<std::size_t>(std::max(count, 0)));
  Drawable::serialize_out(stream, list);
}

void Polything::serialize_in(ZtFsStream* stream, DisplayList& list) {
  discard_points();
  std::int32_t wanted = 0;
  const bool has_count = coding::read(*stream, wanted);
  if (has_count && wanted >= 1) {
    read_points(*stream, wanted, list.m_heap);
  } else {
    count = wanted;
  }
  Drawable::serialize_in(stream, list);
}

void Polything::read_points(ZtFsStream& stream, std::int32_t wanted, LumenHeap* heap) {
  // A damaged count must not ask for memory that the stream cannot fill: the
  // array grows with what arrives. Points without memory are read and dropped,
  // so that what follows them is still found.
  std::int32_t capacity = std::min(wanted, kFirstReadPoints);
  points = allocate_array<PointTemplate<long>>(capacity, heap);
  const std::size_t bytes = static_cast<std::size_t>(capacity) * sizeof *points;
  if (points != nullptr && capacity == wanted && stream.take(points, bytes)) {
    count = wanted;
    return;
  }
  PointTemplate<long> point{};
  for (std::int32_t i = 0; i < wanted; ++i) {
    if (!coding::read(stream, point)) return;
    if (points != nullptr && count == capacity) {
      capacity = capacity > wanted / 2 ? wanted : capacity * 2;
      grow_points(capacity, heap);
    }
    if (points != nullptr) points[count++] = point;
  }
}

void Polything::grow_points(std::int32_t capacity, LumenHeap* heap) {
  auto* grown = allocate_array<PointTemplate<long>>(capacity, heap);
  if (grown != nullptr) {
    std::copy_n(points, count, grown);
  } else {
    count = 0;
  }
  LD_ReleaseMemory(points);
  points = grown;
}

DrawableVectorIteratorPolything::DrawableVectorIteratorPolything(Polything& polything)
    : last(std::max(polything.count, 0) - 1) {
  // A polydot of one point has a vector, but no pair of points.
  if (initialize(&polything) && last > 0) DrawableVectorIteratorPolything::get_vector(0);
  m_bDone = false;
}

VectorTemplate<long>* DrawableVectorIteratorPolything::next() {
  ++index;
  if (index < last) {
    m_bDone = false;
    get_vector(index);
    return &m_vector;
  }
  m_bDone = true;
  index = last - 1;
  return nullptr;
}

VectorTemplate<long>* DrawableVectorIteratorPolything::prev() {
  --index;
  if (index >= 0) {
    m_bDone = false;
    get_vector(index);
    return &m_vector;
  }
  index = 0;
  m_bDone = true;
  return nullptr;
}

void DrawableVectorIteratorPolything::get_vector(int i) {
  const auto* polything = static_cast<const Polything*>(m_pDrawable);
  m_vector = {polything->points[i], polything->points[i + 1]};
}

}  // namespace DL
