#include "importers/dxf/line_patterns.h"

#include <algorithm>

#include "displaylist/platform/rendition.h"

namespace importers::dxf {

namespace {

std::int32_t pattern_of_name(const std::string& name) {
  const auto has = [&](const char* word) { return name.find(word) != std::string::npos; };
  if (has("DIVIDE") || has("PHANTOM")) return LM_PATTERN_DASH_DOT_DOT;
  if (has("CENTER") || has("DASHDOT")) return LM_PATTERN_DASH_DOT;
  if (has("DASH") || has("HIDDEN")) return LM_PATTERN_DASH;
  return has("DOT") ? LM_PATTERN_DOT : LM_PATTERN_SOLID;
}

}  // namespace

std::int32_t pattern_of(const LineType& type) {
  if (type.dashes.empty()) return pattern_of_name(type.name);
  const double longest = *std::max_element(type.dashes.begin(), type.dashes.end());
  const bool has_gap =
      std::any_of(type.dashes.begin(), type.dashes.end(), [](double d) { return d < 0; });
  if (!has_gap) return LM_PATTERN_SOLID;
  if (longest <= 0) return LM_PATTERN_DOT;
  // Dashes that are short beside others look like dots.
  const auto dots = std::count_if(type.dashes.begin(), type.dashes.end(),
                                  [=](double d) { return d >= 0 && d < 0.55 * longest; });
  if (dots == 0) return LM_PATTERN_DASH;
  return dots == 1 ? LM_PATTERN_DASH_DOT : LM_PATTERN_DASH_DOT_DOT;
}

}  // namespace importers::dxf
