#include <array>
#include <cstdio>
#include <string_view>

#include "lumen/recorder.h"

namespace lumen {
namespace {

std::string hexadecimal(LM_RGB32 color) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%08X", color.word);
  return text.data();
}

/// The shortest digits that tell the value apart.
std::string number(double value) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.9g", value);
  return text.data();
}

/// In quotes; what is not printable ASCII by its number, written in `format`.
template <class Character>
std::string quoted(std::basic_string_view<Character> text, const char* format) {
  std::string result = "\"";
  for (const Character character : text) {
    const auto value = static_cast<std::uint32_t>(std::make_unsigned_t<Character>(character));
    const bool is_plain = value >= ' ' && value <= '~' && value != '"' && value != '\\';
    std::array<char, 16> code{static_cast<char>(value)};
    if (!is_plain) std::snprintf(code.data(), code.size(), format, value);
    result += code.data();
  }
  return result + "\"";
}

std::string values_of(const LM_Vertex_Triple& triple) {
  std::string text = "[";
  for (const std::uint32_t value : triple.values) {
    if (text.size() > 1) text += ',';
    text += std::to_string(value);
  }
  return text + "]";
}

void append_state(std::string& line, const RecordedCall& call) {
  line += " color=" + hexadecimal(call.color);
  const LM_Line_Style& style = call.line_style;
  if (style.weight != 1) line += " weight=" + std::to_string(style.weight);
  if (style.pattern != LM_PATTERN_SOLID) line += " pattern=" + std::to_string(style.pattern);
  if (style.start_style != LM_END_FLAT || style.end_style != LM_END_FLAT) {
    line += " ends=" + std::to_string(style.start_style) + "," + std::to_string(style.end_style);
  }
  if (call.edge_mode != 0) line += " edge_mode=" + std::to_string(call.edge_mode);
  if (call.marker != LM_Marker{}) {
    line += " marker=" + std::to_string(call.marker.shape) + "," + std::to_string(call.marker.size);
  }
  if (call.has_complex_clip) line += " complex_clip";
}

void append_arguments(std::string& line, const RecordedCall& call) {
  for (const LM_DCI_Point& point : call.points) {
    line += " (" + std::to_string(point.x) + "," + std::to_string(point.y);
    if (point.z != 0) line += "," + std::to_string(point.z);
    line += ")";
  }
  for (const LM_RGB32& color : call.vertex_colors) line += " #" + hexadecimal(color);
  for (const LM_Vertex_Triple& triple : call.vertex_triples) line += " " + values_of(triple);
  for (const double angle : call.angles) line += " " + number(angle);
  if (call.integer) line += " integer=" + std::to_string(*call.integer);
  for (const std::uint32_t value : call.vertex_values) line += " value=" + std::to_string(value);
  for (const LM_Vertex_Triple& triple : call.vertex_triples_2)
    line += " second=" + values_of(triple);
  if (call.own_color) line += " own_color=" + hexadecimal(*call.own_color);
}

void append_text(std::string& line, const RecordedCall& call) {
  if (call.action == "wide_text") {
    line += " " + quoted(std::wstring_view(call.wide_text), "\\u%04X");
  } else if (call.action == "multibyte_text") {
    line += " " + quoted(std::string_view(call.multibyte_text), "\\x%02X");
  } else {
    return;
  }
  const LM_Text_Attributes& attributes = call.text_attributes;
  line += " size=" + number(attributes.size);
  if (attributes.rotation != 0) line += " rotation=" + number(attributes.rotation);
  if (attributes.width_scale != 1) line += " width_scale=" + number(attributes.width_scale);
  const std::wstring name = attributes.font.description().name;
  if (!name.empty()) line += " font=" + quoted(std::wstring_view(name), "\\u%04X");
}

}  // namespace

std::string to_string(const RecordedCall& call) {
  std::string line = call.action;
  append_state(line, call);
  append_arguments(line, call);
  append_text(line, call);
  return line;
}

}  // namespace lumen
