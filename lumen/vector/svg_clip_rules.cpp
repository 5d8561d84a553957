#include "lumen/vector/svg_clip_rules_p.h"

#include <string_view>
#include <unordered_set>

namespace lumen {
namespace {

using std::string_view;

/// What lies between `before` and `after`, searched from `position` on, which
/// is moved to the end of it; empty when there is none.
string_view next_between(string_view text, string_view before, string_view after,
                         std::size_t& position) {
  const std::size_t found = text.find(before, position);
  if (found == string_view::npos) return {};
  const std::size_t start = found + before.size();
  const std::size_t end = text.find(after, start);
  if (end == string_view::npos) return {};
  position = end;
  return text.substr(start, end - start);
}

std::unordered_set<string_view> even_odd_clips(string_view svg) {
  constexpr string_view mark = ")\" clip-rule=\"evenodd\"";
  std::unordered_set<string_view> names;
  std::size_t position = 0;
  for (;;) {
    const string_view name = next_between(svg, "clip-path=\"url(#", ")", position);
    if (name.empty()) return names;
    if (svg.substr(position).starts_with(mark)) names.insert(name);
  }
}

}  // namespace

std::string with_clip_rules(std::string svg) {
  constexpr string_view path = "<path ";
  const string_view text = svg;
  const std::unordered_set<string_view> names = even_odd_clips(text);
  if (names.empty()) return svg;
  std::string result;
  std::size_t written = 0;
  std::size_t position = 0;
  for (;;) {
    const string_view name = next_between(text, "<clipPath id=\"", "\"", position);
    if (name.empty()) return result.append(text.substr(written));
    if (!names.contains(name)) continue;
    position = text.find(path, position);
    if (position == string_view::npos) return result.append(text.substr(written));
    position += path.size();
    result.append(text.substr(written, position - written)).append("clip-rule=\"evenodd\" ");
    written = position;
  }
}

}  // namespace lumen
