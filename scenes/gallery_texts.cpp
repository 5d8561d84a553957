// The names of the gallery, and the specimens of texts and nested lists.

#include <cmath>
#include <memory>
#include <numbers>
#include <string>

#include "lumen/fonts.h"
#include "scenes/gallery_p.h"

namespace scenes {

namespace {

constexpr LM_RGB32 kInk{0x00605B50};
constexpr double kLabelHeight = 14.0;
constexpr const wchar_t* kSans = L"DejaVu Sans";
constexpr const wchar_t* kSerif = L"DejaVu Serif";
constexpr std::array kHeadings{L"plain", L"palettized", L"hidden", L"cut off"};

LM_Font font_named(const wchar_t* name) {
  return LM_Font(LM_Font_Description{.name = name, .given = LM_Font_Description::NAME});
}

std::int32_t size_of(std::wstring_view text) {
  return static_cast<std::int32_t>(text.size());
}

/// The width of a text in units.
double width_of(std::wstring_view text, const TextStyle& style) {
  return style.height *
         lumen::measure_text(font_named(style.font), text.data(), size_of(text)).advance;
}

/// Bounds that hold a text of this width, however it is turned.
DL::BoundsTemplate<long> bounds_around(const TextStyle& style, double width) {
  const double radius = std::ceil(std::hypot(width, style.height));
  const auto low = [radius](double at) { return static_cast<std::int32_t>(at - radius); };
  const auto high = [radius](double at) { return static_cast<std::int32_t>(at + radius); };
  return {low(style.start.x), low(style.start.y), high(style.start.x), high(style.start.y)};
}

/// A text, plain or palettized as `color` is a colour or a rendition.
template <class Color>
DL::DLText* new_text(Color color, const TextStyle& style, std::wstring_view text,
                     DL::DisplayList& list) {
  return new DL::DLText(color, font_named(style.font), style.start, text.data(), size_of(text),
                        style.height, style.rotation, bounds_around(style, width_of(text, style)),
                        &list, true);
}

/// A flower of pies around (0, 0), 100 units large.
std::unique_ptr<DL::DisplayList> new_flower(LM_RGB32 color) {
  constexpr std::int32_t petals = 8;
  auto list = std::make_unique<DL::DisplayList>();
  for (std::int32_t i = 0; i < petals; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / petals;
    list->add(new DL::DLEllipse(mixed(color, kWarm, i / (petals - 1.0)),
                                around({0, 0}, 30, 30, angle), 20, 9, static_cast<float>(angle),
                                list.get()));
  }
  list->add(new DL::DLEllipse(color, {0, 0}, 8, 8, 0.0F, list.get()));
  return list;
}

}  // namespace

void Gallery::add_label(std::wstring_view text, const Point& start, bool ends_there) {
  TextStyle style{kSans, {1.0 * start.x, 1.0 * start.y}, kLabelHeight};
  if (ends_there) style.start.x -= width_of(text, style);
  m_labels.add(new_text(kInk, style, text, m_labels));
}

void Gallery::add_headings() {
  for (const bool left : {true, false}) {
    for (std::size_t place = 0; place < kHeadings.size(); ++place) {
      const Cell cell{left ? 0 : kRows, static_cast<Variant>(place)};
      const Point middle{cell.center().x, kGalleryHeight - kHeading + 6};
      const bool cut_off = cell.variant == Variant::cut_off;
      const std::wstring_view text = kHeadings.at(place);
      const TextStyle style{kSans, {}, kLabelHeight};
      const auto half = static_cast<std::int32_t>(width_of(text, style) / 2.0);
      // What is cut off by the edge of the sheet has its heading in the other half.
      const std::int32_t shift = !cut_off ? -half : left ? 2 : -2 - 2 * half;
      add_label(text, {middle.x + shift, middle.y}, false);
    }
  }
}

void Gallery::add_name(std::size_t number) {
  const Cell plain{number, Variant::plain};
  const std::string_view name = entries()[number].name;
  const Point center = plain.center();
  constexpr std::int32_t inwards = kCellWidth / 2 + 6;
  add_label(std::wstring(name.begin(), name.end()),
            {center.x + (plain.is_left() ? inwards : -inwards), center.y - 5}, !plain.is_left());
}

void Gallery::add_text(const Cell& cell, const TextStyle& style, std::wstring_view text) {
  if (cell.variant == Variant::palettized) {
    DL::Drawable* drawable =
        new_text(m_palette[cell.number % kColors.size()], style, text, m_specimens);
    m_specimens.add(drawable, add_flags(*drawable));
    return;
  }
  DL::Drawable* drawable = new_text(cell.color(), style, text, m_specimens);
  if (cell.variant == Variant::hidden) drawable->hide();
  m_specimens.add(drawable, add_flags(*drawable));
}

void Gallery::add_texts(const Cell& cell) {
  const auto [x, y] = cell.center();
  add_text(cell, {kSerif, {x - 54.0, y + 15.0}, 29.0}, L"Waffle");
  add_text(cell, {kSans, {x - 54.0, y - 9.0}, 14.0},
           L"\u03A9\u03BC\u03AD\u03B3\u03B1 \u05E9\u05DC\u05D5\u05DD");
  add_text(cell, {kSans, {x - 50.0, y - 40.0}, 14.0, 0.2}, L"turned");
  add_text(cell, {kSerif, {x + 50.0, y - 40.0}, 14.0, std::numbers::pi / 2.0}, L"upright");
}

void Gallery::add_nested_list(const Cell& cell) {
  const auto [x, y] = cell.center();
  const DL::PointTemplate<double> scales[] = {{0.72, 0.72}, {0.45, 0.6}, {-0.35, 0.32}};
  const Point places[] = {{x - 20, y}, {x + 34, y + 12}, {x + 36, y - 31}};
  for (std::size_t i = 0; i < std::size(scales); ++i) {
    auto* nested =
        new DL::DrawableDisplayList(nullptr, new_flower(cell.color()).release(), nullptr);
    nested->set_scale(scales[i]);
    nested->set_offset({1.0 * places[i].x, 1.0 * places[i].y});
    if (cell.variant == Variant::hidden) nested->hide();
    m_specimens.add(nested, add_flags(*nested));
  }
}

}  // namespace scenes
