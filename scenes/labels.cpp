// The scenes of texts and of nested lists.

#include <array>
#include <string>

#include "lumen/fonts.h"
#include "scenes/generators_p.h"

namespace scenes {

namespace {

constexpr std::size_t kNeighbours = 50;        ///< drawables of one run
constexpr std::int64_t kRunExtent = 1 << 23;   ///< how far a run spreads
constexpr double kTextHeight = 1 << 20;        ///< of the em square
constexpr std::int64_t kPartExtent = 1 << 12;  ///< of a drawing that is placed many times
constexpr std::size_t kParts = 8;

/// Places in runs of neighbours.
class Places {
 public:
  explicit Places(std::uint64_t seed) : random(seed) {}

  Point next() {
    if (m_given++ % kNeighbours == 0) m_center = start_in(random, kExtent);
    return moved(m_center, random, kRunExtent);
  }

  Random random;

 private:
  Point m_center{};
  std::size_t m_given = 0;
};

std::wstring word(Random& random) {
  std::wstring letters;
  const std::int32_t length = random.between(4, 14);
  for (std::int32_t i = 0; i < length; ++i) {
    letters += static_cast<wchar_t>(L'a' + random.between(0, 25));
  }
  return letters;
}

DL::DisplayList* new_part(std::uint64_t seed) {
  constexpr std::size_t lines = 100;
  constexpr std::size_t points = 6;
  auto* part = new DL::DisplayList;
  Random random(seed);
  for (std::size_t i = 0; i < lines; ++i) {
    std::array<Point, points> line;
    line[0] = start_in(random, kPartExtent);
    for (std::size_t p = 1; p < points; ++p) line.at(p) = moved(line.at(p - 1), random, 200);
    part->add(new DL::DLPolyline(color_of(seed), points, line.data()));
  }
  return part;
}

}  // namespace

void fill_texts(DL::DisplayList& list, std::size_t count, std::uint64_t seed) {
  const LM_Font font(
      LM_Font_Description{.name = L"DejaVu Sans", .given = LM_Font_Description::NAME});
  Places places(seed);
  for (std::size_t i = 0; i < count; ++i) {
    const Point at = places.next();
    const std::wstring text = word(places.random);
    const auto length = static_cast<std::int32_t>(text.size());
    const double width = kTextHeight * lumen::measure_text(font, text.data(), length).advance;
    const auto height = static_cast<std::int32_t>(kTextHeight);
    const Bounds bounds{at.x, at.y - height / 3, at.x + static_cast<std::int32_t>(width),
                        at.y + height};
    list.add(new DL::DLText(color_of(i), font, {1.0 * at.x, 1.0 * at.y}, text.data(), length,
                            kTextHeight, 0.0, bounds, &list, true));
  }
}

void fill_nested(DL::DisplayList& list, std::size_t count, std::uint64_t seed) {
  std::array<DL::DrawableDisplayList*, kParts> parts{};
  for (std::size_t i = 0; i < kParts; ++i) {
    parts.at(i) = new DL::DrawableDisplayList(nullptr, new_part(i), nullptr);
  }
  Places places(seed);
  for (std::size_t i = 0; i < count; ++i) {
    const Point at = places.next();
    DL::DrawableDisplayList& part = *parts.at(places.random.next() % kParts);
    auto* placed = static_cast<DL::DrawableDisplayList*>(part.clone());
    const double scale = 1.0 * places.random.between(64, 512);
    placed->set_scale({scale, scale});
    placed->set_offset({1.0 * at.x, 1.0 * at.y});
    list.add(placed, 1);  // the children are shared, which one thread bears
  }
  for (DL::DrawableDisplayList* part : parts) delete part;
}

}  // namespace scenes
