#include "apps/dlview/color.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace dlview {

namespace {

struct NamedColor {
  std::string_view name;
  LM_RGB32 color;
};

constexpr std::array<NamedColor, 9> named_colors{{{"white", white},
                                                  {"black", {0x00000000}},
                                                  {"grey", {0x00808080}},
                                                  {"red", {0x00C62828}},
                                                  {"green", {0x002E7D32}},
                                                  {"blue", {0x001F5FA8}},
                                                  {"sea", sea},
                                                  {"paper", paper},
                                                  {"night", {0x00101C2C}}}};

}  // namespace

std::optional<LM_RGB32> parse_color(const std::string& text) {
  const auto* named = std::find_if(named_colors.begin(), named_colors.end(),
                                   [&](const NamedColor& color) { return color.name == text; });
  if (named != named_colors.end()) return named->color;
  if (text.size() != 7 || text.front() != '#') return {};
  LM_RGB32 color{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + 1, end, color.word, 16);
  if (error != std::errc{} || stop != end) return {};
  return color;
}

std::string color_names() {
  std::string names;
  for (const NamedColor& color : named_colors) {
    if (!names.empty()) names += ", ";
    names += color.name;
  }
  return names;
}

}  // namespace dlview
