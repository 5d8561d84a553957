#include "scenes/gallery.h"

#include <cmath>

#include "scenes/gallery_p.h"

namespace scenes {

namespace {

constexpr LM_RGB32 kPaper{0x00FBFAF6};
constexpr LM_RGB32 kFrame{0x00D9D4C7};

constexpr std::array kVariants{Variant::plain, Variant::palettized, Variant::hidden,
                               Variant::cut_off};

}  // namespace

DL::PointTemplate<long> Cell::center() const {
  const auto place = static_cast<std::int32_t>(variant);
  const std::int32_t outwards = kGutter / 2 + kCellWidth / 2 + place * kCellWidth;
  const auto row = static_cast<std::int32_t>(number % kRows);
  return {kGalleryWidth / 2 + (is_left() ? -outwards : outwards),
          kGalleryHeight - kHeading - kCellHeight / 2 - row * kCellHeight};
}

DL::PointTemplate<long> around(const DL::PointTemplate<long>& center, double radius_x,
                               double radius_y, double angle) {
  return {center.x + static_cast<std::int32_t>(std::lround(radius_x * std::cos(angle))),
          center.y + static_cast<std::int32_t>(std::lround(radius_y * std::sin(angle)))};
}

LM_RGB32 mixed(LM_RGB32 from, LM_RGB32 to, double part) {
  std::uint32_t word = 0;
  for (std::uint32_t shift = 0; shift < 24; shift += 8) {
    const double a = from.word >> shift & 0xFFU;
    const double b = to.word >> shift & 0xFFU;
    word |= static_cast<std::uint32_t>(std::lround(a + (b - a) * part)) << shift;
  }
  return {word};
}

std::span<const Gallery::Entry> Gallery::entries() {
  static constexpr Entry table[] = {
      {"DLDot", &Gallery::add_dots, kHasPalettized<DL::DLDot>},
      {"DLColorizedDot", &Gallery::add_colorized_dots, kHasPalettized<DL::DLColorizedDot>},
      {"DLPolydot", &Gallery::add_polydot, kHasPalettized<DL::DLPolydot>},
      {"DLRowOfDots", &Gallery::add_rows_of_dots, kHasPalettized<DL::DLRowOfDots>},
      {"DLPolyline", &Gallery::add_polyline, kHasPalettized<DL::DLPolyline>},
      {"DLGouraudPolyline", &Gallery::add_gouraud_polyline, kHasPalettized<DL::DLGouraudPolyline>},
      {"DLPolysegment", &Gallery::add_polysegment, kHasPalettized<DL::DLPolysegment>},
      {"DLPolymarker", &Gallery::add_polymarker, kHasPalettized<DL::DLPolymarker>},
      {"DLImage", &Gallery::add_image, kHasPalettized<DL::DLImage>},
      {"DLPolygon", &Gallery::add_polygon, kHasPalettized<DL::DLPolygon>},
      {"DLPolytriangleWithNoBorder", &Gallery::add_strip_without_border,
       kHasPalettized<DL::DLPolytriangleWithNoBorder>},
      {"DLPolytriangle", &Gallery::add_strip, kHasPalettized<DL::DLPolytriangle>},
      {"DLGouraudPolytriangle", &Gallery::add_gouraud_strip,
       kHasPalettized<DL::DLGouraudPolytriangle>},
      {"DLTexturedPolytriangle", &Gallery::add_textured_strip,
       kHasPalettized<DL::DLTexturedPolytriangle>},
      {"DLEllipse", &Gallery::add_ellipse, kHasPalettized<DL::DLEllipse>},
      {"DLEllipticalArc", &Gallery::add_arc, kHasPalettized<DL::DLEllipticalArc>},
      {"DLEllipticalPie", &Gallery::add_pie, kHasPalettized<DL::DLEllipticalPie>},
      {"DLColorizedEllipse", &Gallery::add_colorized_ellipse,
       kHasPalettized<DL::DLColorizedEllipse>},
      {"DLText", &Gallery::add_texts, kHasPalettized<DL::DLText>},
      {"DrawableDisplayList", &Gallery::add_nested_list, kHasPalettized<DL::DrawableDisplayList>},
  };
  return table;
}

Gallery::Gallery(Sheet& sheet, const LM_Handle<LM_Image>& image)
    : m_image(image),
      m_frames(sheet.add_layer()),
      m_labels(sheet.add_layer()),
      m_specimens(sheet.add_layer()) {
  m_specimens.m_bWideDots = true;

  LM_Rendition& working = m_specimens.m_rendition;
  working.set_line_weight(2);
  working.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  working.set_texture_pages(LM_Create<LM_Texture_Pages>(
      std::vector<LM_Handle<const LM_Image>>{LM_Handle<const LM_Image>(image)}));
  for (std::int32_t shape = 0; shape < kMarkerShapes; ++shape) {
    DL::DisplayList& layer = sheet.add_layer();
    layer.m_rendition.set_marker({shape, 13});
    m_markers.at(static_cast<std::size_t>(shape)) = &layer;
  }
  for (std::size_t i = 0; i < kColors.size(); ++i) {
    LM_Rendition& rendition = sheet.add_rendition();
    rendition.set_color(kColors.at((i + 1) % kColors.size()), true);
    rendition.set_line_weight(4);
    rendition.set_line_pattern(LM_PATTERN_DASH);
    m_palette[i] = &rendition;
  }
}

void Gallery::fill() {
  const Point page[] = {{-1, -1},
                        {kGalleryWidth + 1, -1},
                        {kGalleryWidth + 1, kGalleryHeight + 1},
                        {-1, kGalleryHeight + 1}};
  m_frames.add(new DL::DLPolygon(kPaper, std::size(page), page));
  add_headings();
  for (std::size_t number = 0; number < entries().size(); ++number) {
    const Entry& entry = entries()[number];
    add_name(number);
    for (const Variant variant : kVariants) {
      if (variant == Variant::palettized && !entry.has_palettized) continue;
      const Cell cell{number, variant};
      add_frame(cell);
      (this->*entry.add)(cell);
    }
  }
}

void Gallery::add_frame(const Cell& cell) {
  const Point c = cell.center();
  constexpr std::int32_t half_width = kCellWidth / 2 - 5;
  constexpr std::int32_t half_height = kCellHeight / 2 - 5;
  const Point frame[] = {{c.x - half_width, c.y - half_height},
                         {c.x + half_width, c.y - half_height},
                         {c.x + half_width, c.y + half_height},
                         {c.x - half_width, c.y + half_height},
                         {c.x - half_width, c.y - half_height}};
  m_frames.add(new DL::DLPolyline(kFrame, std::size(frame), frame));
}

std::vector<std::string_view> gallery_classes() {
  std::vector<std::string_view> names;
  for (const Gallery::Entry& entry : Gallery::entries()) names.push_back(entry.name);
  return names;
}

std::unique_ptr<Sheet> make_gallery(const LM_Handle<LM_Image>& image) {
  auto sheet = std::make_unique<Sheet>(
      DL::BoundsTemplate<long>{0, 0, kGalleryWidth - 1, kGalleryHeight - 1});
  Gallery(*sheet, image).fill();
  return sheet;
}

}  // namespace scenes
