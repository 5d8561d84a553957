// The scene of every drawable class.

#include <array>
#include <cmath>

#include "lumen/picture_image.h"
#include "scenes/generators_p.h"

namespace scenes {

namespace {

constexpr std::size_t kNeighbours = 200;      ///< drawables of one run
constexpr std::int64_t kRunExtent = 1 << 22;  ///< how far a run spreads
constexpr std::int64_t kSize = 1 << 17;       ///< of a drawable, about
constexpr std::int32_t kPoints = 8;
constexpr float kTurn = 6.2831853F;

/// What the next drawable is made of.
struct Material {
  LM_RGB32 color;
  Point place;
  std::array<Point, kPoints> points;     ///< a walk from the place
  std::array<LM_RGB32, kPoints> colors;  ///< one for each of them
  std::int32_t major, minor;             ///< of ellipses
  float start, end;                      ///< angles
  DL::DisplayList& list;
  const LM_Handle<LM_Image>& image;
  const LM_Font& font;
};

template <class T>
DL::Drawable* of_points(const Material& m) {
  return new T(m.color, kPoints, m.points.data());
}

template <class T>
DL::Drawable* of_colored_points(const Material& m) {
  return new T(m.color, kPoints, m.points.data(), m.colors.data());
}

template <class T>
DL::Drawable* of_arc(const Material& m) {
  return new T(m.color, m.place, m.major, m.minor, m.start, m.start, m.end, &m.list);
}

DL::Drawable* new_textured_strip(const Material& m) {
  std::array<LM_Vertex_Triple, kPoints> triples;
  for (std::size_t i = 0; i < kPoints; ++i) {
    triples.at(i) =
        LM_Vertex_Triple::at(static_cast<float>(i) / kPoints, i % 2 == 0 ? 0.F : 1.F, 0);
  }
  return new DL::DLTexturedPolytriangle(m.color, kPoints, m.points.data(),
                                        {m.colors.data(), triples.data(), nullptr, nullptr});
}

DL::Drawable* new_image(const Material& m) {
  const auto side = static_cast<std::int32_t>(kSize);
  return new DL::DLImage(m.color, {m.place.x, m.place.y, m.place.x + side, m.place.y + side},
                         m.image);
}

DL::Drawable* new_text(const Material& m) {
  const auto height = static_cast<std::int32_t>(kSize);
  return new DL::DLText(
      m.color, m.font, {1.0 * m.place.x, 1.0 * m.place.y}, L"label", 5, 1.0 * height, 0.0,
      {m.place.x, m.place.y - height, m.place.x + 4 * height, m.place.y + height}, &m.list, true);
}

DL::Drawable* new_nested_list(const Material& m) {
  auto* child = new DL::DisplayList;
  const Point line[] = {{0, 0}, {100, 100}, {200, 0}};
  child->add(new DL::DLPolyline(m.color, 3, line));
  auto* nested = new DL::DrawableDisplayList(nullptr, child, nullptr);
  const double scale = kSize / 200.0;
  nested->set_scale({scale, scale});
  nested->set_offset({1.0 * m.place.x, 1.0 * m.place.y});
  return nested;
}

using Maker = DL::Drawable* (*)(const Material& material);

constexpr Maker kMakers[] = {
    [](const Material& m) -> DL::Drawable* { return new DL::DLDot(m.color, m.place); },
    [](const Material& m) -> DL::Drawable* {
      return new DL::DLColorizedDot(m.color, m.place, m.colors[0]);
    },
    [](const Material& m) -> DL::Drawable* {
      return new DL::DLRowOfDots(m.color, m.place, {1 << 12, 1 << 10}, 4 * kPoints);
    },
    &of_points<DL::DLPolydot>,
    &of_points<DL::DLPolyline>,
    &of_points<DL::DLPolysegment>,
    &of_points<DL::DLPolymarker>,
    &of_points<DL::DLPolygon>,
    &of_points<DL::DLPolytriangle>,
    &of_points<DL::DLPolytriangleWithNoBorder>,
    &of_colored_points<DL::DLGouraudPolyline>,
    &of_colored_points<DL::DLGouraudPolytriangle>,
    &new_textured_strip,
    &new_image,
    [](const Material& m) -> DL::Drawable* {
      return new DL::DLEllipse(m.color, m.place, m.major, m.minor, m.start, &m.list);
    },
    &of_arc<DL::DLEllipticalArc>,
    &of_arc<DL::DLEllipticalPie>,
    [](const Material& m) -> DL::Drawable* {
      return new DL::DLColorizedEllipse(m.color, m.place, m.major, m.minor, 0.F, m.start, m.end,
                                        m.colors[0], true, &m.list);
    },
    &new_text,
    &new_nested_list,
};

/// A small checkered image.
LM_Handle<LM_Image> new_checkered_image() {
  constexpr std::int32_t side = 8;
  lumen::Picture picture(side, side, {0x00E8D4B0});
  for (std::int32_t y = 0; y < side; ++y) {
    for (std::int32_t x = y % 2; x < side; x += 2) picture.row(y)[x] = 0x008A5A2B;
  }
  return LM_Create<lumen::PictureImage>(std::move(picture));
}

void shape(Material& material, Random& random) {
  Point at = material.place;
  for (std::size_t i = 0; i < kPoints; ++i) {
    material.points.at(i) = at;
    material.colors.at(i) = {random.next() & 0x00FFFFFFU};
    at = moved(at, random, kSize);
  }
  material.major = random.between(kSize / 8, kSize);
  material.minor = random.between(kSize / 8, kSize);
  material.start = kTurn * static_cast<float>(random.between(0, 100)) / 100.F;
  material.end = material.start + kTurn * static_cast<float>(random.between(10, 90)) / 100.F;
}

}  // namespace

void fill_mixed(DL::DisplayList& list, std::size_t count, std::uint64_t seed) {
  const LM_Handle<LM_Image> image = new_checkered_image();
  const LM_Font font(
      LM_Font_Description{.name = L"DejaVu Sans", .given = LM_Font_Description::NAME});
  list.m_rendition.set_texture_pages(LM_Create<LM_Texture_Pages>(
      std::vector<LM_Handle<const LM_Image>>{LM_Handle<const LM_Image>(image)}));
  Random random(seed);
  Point center{};
  for (std::size_t i = 0; i < count; ++i) {
    if (i % kNeighbours == 0) center = start_in(random, kExtent);
    const Point place = moved(center, random, kRunExtent);
    Material material{color_of(i), place, {}, {}, 0, 0, 0.F, 0.F, list, image, font};
    shape(material, random);
    list.add(kMakers[i % std::size(kMakers)](material));
  }
}

}  // namespace scenes
