#include <algorithm>
#include <cmath>

#include "lumen/raster/clip_mask_p.h"

namespace lumen {
namespace {

/// What a thread keeps of masks, in bytes, unless a single one needs more.
constexpr std::size_t max_kept = std::size_t{64} << 20;

/// Writes covers into a mask.
class MaskPen {
 public:
  MaskPen(std::uint8_t* bytes, std::int32_t width) : m_bytes(bytes), m_width(width) {}

  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t cover) {
    std::fill_n(at(x, y), length, static_cast<std::uint8_t>(cover));
  }
  void varied(std::int32_t x, std::int32_t y, std::int32_t length, const std::uint8_t* covers) {
    std::copy_n(covers, length, at(x, y));
  }

 private:
  [[nodiscard]] std::uint8_t* at(std::int32_t x, std::int32_t y) const {
    return m_bytes + static_cast<std::ptrdiff_t>(y) * m_width + x;
  }

  std::uint8_t* m_bytes;
  std::int32_t m_width;
};

void add_contour(const LM_Contour& contour, Shape& shape) {
  if (contour.points == nullptr) return;
  bool started = false;
  for (std::int32_t i = 0; i < contour.count; ++i) {
    const LM_Point& point = contour.points[i];
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) continue;
    if (started) {
      shape.line_to(point.x, point.y);
    } else {
      shape.move_to(point.x, point.y);
    }
    started = true;
  }
}

}  // namespace

const std::uint8_t* ClipMasks::mask(const LM_Contour_Set_Data& clip, const Picture& picture,
                                    bool antialiased) {
  for (std::size_t i = 0; i < m_entries.size(); ++i) {
    if (!m_entries[i].is_of(clip, picture, antialiased)) continue;
    m_latest = i;
    return m_entries[i].bytes.data();
  }
  m_latest = (m_latest + 1) % m_entries.size();
  Entry& entry = m_entries[m_latest];
  make_room(static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height()));
  entry.clip = LM_Handle<const LM_Contour_Set_Data>(&clip);
  entry.width = picture.width();
  entry.height = picture.height();
  entry.antialiased = antialiased;
  draw(entry);
  return entry.bytes.data();
}

void ClipMasks::make_room(std::size_t size) {
  Entry& latest = m_entries[m_latest];
  if (latest.bytes.capacity() < size || latest.bytes.capacity() > max_kept) latest = Entry();
  std::size_t kept = std::max(latest.bytes.capacity(), size);
  for (Entry& entry : m_entries) {
    if (&entry == &latest) continue;
    kept += entry.bytes.capacity();
    if (kept > max_kept) entry = Entry();
  }
}

void ClipMasks::draw(Entry& entry) {
  entry.bytes.assign(static_cast<std::size_t>(entry.width) * static_cast<std::size_t>(entry.height),
                     0);
  m_shape.clear();
  for (std::int32_t i = 0; i < entry.clip->contour_count(); ++i) {
    add_contour(entry.clip->contour(i), m_shape);
  }
  MaskPen pen(entry.bytes.data(), entry.width);
  m_shape.fill(entry.clip->fill_rule(), entry.antialiased,
               {0, 0, entry.width - 1, entry.height - 1}, pen);
}

}  // namespace lumen
