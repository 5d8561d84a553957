#include "apps/dlview/option_values.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>
#include <optional>

#include "apps/dlview/color.h"
#include "apps/dlview/words.h"
#include "importers/loader.h"
#include "lumen/picture.h"

namespace dlview {

namespace {

/// A whole number that takes up all of the text.
std::optional<std::int32_t> whole_number(const char* first, const char* last) {
  std::int32_t number = 0;
  const auto [stop, error] = std::from_chars(first, last, number);
  if (error != std::errc{} || stop != last) return {};
  return number;
}

bool can_be_held(const PictureSize& size) {
  const auto is_side = [](std::int32_t side) {
    return side >= 2 && side <= lumen::Picture::max_side;
  };
  return is_side(size.width) && is_side(size.height) &&
         static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) <=
             lumen::Picture::max_pixels;
}

std::optional<double> finite_number(const std::string& text) {
  char* stop = nullptr;
  const double number = std::strtod(text.c_str(), &stop);
  if (text.empty() || *stop != '\0' || !std::isfinite(number)) return {};
  return number;
}

}  // namespace

void refuse(const std::string& name, const std::string& must_be, const std::string& text) {
  throw CLI::ValidationError(name + " must be " + must_be + ", not '" + text + "'");
}

std::string most_pixels() {
  return std::to_string(lumen::Picture::max_pixels / 1'000'000) + " million";
}

PictureSize size_value(const std::string& name, const std::string& text) {
  const char* first = text.data();
  const char* last = first + text.size();
  const std::size_t cross = std::min(text.find('x'), text.size());
  const std::optional<std::int32_t> width = whole_number(first, first + cross);
  if (width && cross < text.size()) {
    const std::optional<std::int32_t> height = whole_number(first + cross + 1, last);
    if (height && can_be_held({*width, *height})) return {*width, *height};
  }
  refuse(name,
         "WxH like 1920x1080, with sides of 2 to " + std::to_string(lumen::Picture::max_side) +
             " and at most " + most_pixels() + " pixels in all",
         text);
}

std::int32_t whole_value(const std::string& name, const std::string& text, std::int32_t least,
                         std::int32_t most) {
  const std::optional<std::int32_t> number = whole_number(text.data(), text.data() + text.size());
  if (number && *number >= least && *number <= most) return *number;
  refuse(name, "a whole number from " + std::to_string(least) + " to " + std::to_string(most),
         text);
}

importers::Extent window_value(const std::string& name, const std::vector<std::string>& texts) {
  std::array<double, 4> numbers{};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::optional<double> number = finite_number(texts.at(i));
    if (!number) refuse(name, "four finite numbers MINX MINY MAXX MAXY", texts.at(i));
    numbers.at(i) = *number;
  }
  return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

DrawForm form_value(const std::string& name, const std::string& text) {
  static const std::map<std::string, DrawForm> forms{{"unclipped", DrawForm::unclipped},
                                                     {"bounded", DrawForm::bounded},
                                                     {"circled", DrawForm::circled},
                                                     {"complex", DrawForm::complex}};
  const auto form = forms.find(text);
  if (form == forms.end()) refuse(name, "unclipped, bounded, circled or complex", text);
  return form->second;
}

std::string importer_value(const std::string& name, const std::string& text) {
  const std::vector<std::string> names = importers::importer_names();
  if (names.empty() || std::find(names.begin(), names.end(), text) != names.end()) return text;
  refuse(name, alternatives(names), text);
}

LM_RGB32 color_value(const std::string& name, const std::string& text) {
  const std::optional<LM_RGB32> color = parse_color(text);
  if (!color) refuse(name, "#RRGGBB or one of " + color_names(), text);
  return *color;
}

}  // namespace dlview
