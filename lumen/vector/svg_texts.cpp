#include "lumen/vector/svg_texts_p.h"

#include <charconv>
#include <cmath>
#include <utility>

#include "lumen/vector/svg_write_p.h"

namespace lumen {
namespace {

using std::string_view;

/// No ordinary colour is so opaque: these are so many 255ths.
constexpr double mark_opacity = 0.12345;
constexpr string_view mark_of_opacity = "fill-opacity:0.12345;";

/// The number of a text is written in its mark's colour, 12 bits a channel: Cairo
/// takes colours for the same that differ by less than 1/65536 times the opacity.
constexpr int bits_of_channel = 12;
constexpr double last_of_channel = (1 << bits_of_channel) - 1;

PageColor color_of_number(std::size_t number) {
  const auto channel = [number](int shift) {
    return static_cast<double>(number >> shift & ((1 << bits_of_channel) - 1)) / last_of_channel;
  };
  return {channel(2 * bits_of_channel), channel(bits_of_channel), channel(0), mark_opacity};
}

/// The number after `name`, which is moved past it; 0 when there is none.
double number_after(string_view& text, string_view name) {
  const std::size_t found = text.find(name);
  if (found == string_view::npos) return 0;
  text.remove_prefix(found + name.size());
  double value = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
  text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
  return value;
}

std::size_t number_of_color(string_view mark) {
  std::size_t number = 0;
  for (const string_view name : {"fill:rgb(", "%,", "%,"}) {
    const double channel = number_after(mark, name) / 100 * last_of_channel;
    number = number << bits_of_channel | static_cast<std::size_t>(std::lround(channel));
  }
  return number;
}

PagePoint corner_of(string_view mark) {
  const double x = number_after(mark, " d=\"M ");
  return {x, number_after(mark, " ")};
}

void append_attribute(std::string& xml, string_view name, double value) {
  xml.append(" ").append(name).append("=\"");
  append_number(xml, value);
  xml += '"';
}

void append_color(std::string& xml, string_view name, LM_RGB32 color) {
  constexpr string_view digits = "0123456789abcdef";
  xml.append(" ").append(name).append("=\"#");
  for (int shift = 20; shift >= 0; shift -= 4) xml += digits[color.word >> shift & 15];
  xml += '"';
}

/// From a text's own space, in units, to the page.
cairo_matrix_t matrix_of(const SvgText& text) {
  cairo_matrix_t matrix = text.frame;
  // A stroke grows to both sides, an emboldened outline right and up.
  const double growth = text.face->extra_advance();
  cairo_matrix_translate(&matrix, growth / 2, -growth / 2);
  cairo_matrix_scale(&matrix, 1 / text.font_size, 1 / text.font_size);
  return matrix;
}

void append_paint(std::string& xml, const SvgText& text) {
  append_color(xml, "fill", text.color);
  if (const double growth = text.face->extra_advance(); growth > 0) {
    append_color(xml, "stroke", text.color);
    append_attribute(xml, "stroke-width", growth * text.font_size);
    append_attribute(xml, "letter-spacing", growth * text.font_size);
  }
  const std::uint32_t opacity = opacity_of(text.color);
  if (opacity < 255) append_attribute(xml, "opacity", opacity / 255.0);
}

}  // namespace

PageColor SvgTexts::add(const SvgText& text, const PagePoint& corner) {
  m_fonts.add_text(*text.face, text.text);
  std::string xml = " " + m_fonts.attributes(*text.face);
  append_attribute(xml, "font-size", text.font_size);
  append_paint(xml, text);
  append_attribute(xml, "textLength", text.length * text.font_size);
  xml += " lengthAdjust=\"spacingAndGlyphs\" xml:space=\"preserve\">";
  if (text.is_backward) xml += "<tspan direction=\"rtl\" unicode-bidi=\"bidi-override\">";
  append_escaped(xml, text.text);
  if (text.is_backward) xml += "</tspan>";
  xml += "</text>";
  m_elements.push_back({corner, matrix_of(text), std::move(xml)});
  return color_of_number(m_elements.size() - 1);
}

void SvgTexts::append_element(std::string& svg, string_view mark) const {
  const std::size_t number = number_of_color(mark);
  if (number >= m_elements.size()) return;
  const Element& element = m_elements[number];
  const cairo_matrix_t& matrix = element.matrix;
  // In a group, everything is moved.
  const PagePoint corner = corner_of(mark);
  svg += "<text transform=\"matrix(";
  for (const double value :
       {matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0 + corner.x - element.corner.x}) {
    append_number(svg, value);
    svg += ',';
  }
  append_number(svg, matrix.y0 + corner.y - element.corner.y);
  svg.append(")\"").append(element.rest);
}

std::string SvgTexts::put_into(std::string svg) const {
  if (m_elements.empty()) return svg;
  const string_view text = svg;
  std::size_t written = text.find('>', text.find("<svg ")) + 1;
  std::string result = svg.substr(0, written);
  result += "\n<style type=\"text/css\">\ntext{text-rendering:geometricPrecision}\n" +
            m_fonts.rules() + "</style>";
  for (;;) {
    const std::size_t found = text.find(mark_of_opacity, written);
    if (found == string_view::npos) return result.append(text.substr(written));
    const std::size_t start = text.rfind("<path ", found);
    const std::size_t end = text.find("/>", found) + 2;
    result.append(text.substr(written, start - written));
    append_element(result, text.substr(start, end - start));
    written = end;
  }
}

}  // namespace lumen
