#include "importers/dxf/remarks.h"

#include <algorithm>

namespace importers::dxf {

namespace {

/// What was left out, listed.
class List {
 public:
  void add(std::size_t count, const std::string& words) {
    if (count == 0) return;
    m_text += m_text.empty() ? "left out: " : ", ";
    m_text += std::to_string(count) + " " + words;
  }
  [[nodiscard]] const std::string& text() const { return m_text; }

 private:
  std::string m_text;
};

/// The name of a kind, as it can be shown in one line.
std::string shown(std::string kind) {
  constexpr std::size_t longest = 40;
  kind.resize(std::min(kind.size(), longest));
  for (char& c : kind) {
    if (c < ' ' || c > '~') c = '?';
  }
  return kind;
}

}  // namespace

std::size_t paper_entities(const Model& model) {
  return static_cast<std::size_t>(
      std::count_if(model.entities.begin(), model.entities.end(),
                    [](const Entity& entity) { return entity.in_paper_space; }));
}

std::string remarks(const Model& model, const LeftOut& left_out, bool with_hidden) {
  List list;
  for (const auto& [kind, count] : model.kinds) list.add(count, "of kind " + shown(kind));
  if (with_hidden) list.add(left_out.hidden, "hidden, by themselves or by their layers");
  list.add(left_out.paper, "in paper space");
  list.add(left_out.missing, "inserts of blocks that are not there");
  list.add(left_out.endless, "inserts of blocks into themselves");
  list.add(left_out.too_deep, "inserts in more than 128 others");
  list.add(left_out.degenerate, "without size or too far away");
  std::string text = list.text();
  if (left_out.too_many > 0) {
    text += text.empty() ? "left out: " : ", ";
    text += "copies of blocks beyond the most that are drawn";
  }
  if (!model.has_end) text += text.empty() ? "" : ", ";
  if (!model.has_end) text += "what follows where the file ends without an end mark";
  return text;
}

}  // namespace importers::dxf
