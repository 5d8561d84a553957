#include "importers/dxf/remarks.h"

#include <algorithm>

namespace importers::dxf {

namespace {

/// What was left out, listed.
class List {
 public:
  void add(const std::string& words) {
    m_text += m_text.empty() ? "left out: " : ", ";
    m_text += words;
  }
  void add(std::size_t count, const std::string& one, const std::string& many) {
    if (count > 0) add(std::to_string(count) + " " + (count == 1 ? one : many));
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
  for (const auto& [kind, count] : model.kinds) {
    const std::string words = "of kind " + shown(kind);
    list.add(count, words, words);
  }
  if (with_hidden) {
    list.add(left_out.hidden, "entity hidden, by itself or by its layer",
             "entities hidden, by themselves or by their layers");
  }
  list.add(left_out.paper, "entity in paper space", "entities in paper space");
  list.add(left_out.missing, "insert of a block that is not there",
           "inserts of blocks that are not there");
  list.add(left_out.endless, "insert of a block into itself", "inserts of blocks into themselves");
  list.add(left_out.too_deep, "insert in more than 128 others", "inserts in more than 128 others");
  list.add(left_out.degenerate, "entity without size or too far away",
           "entities without size or too far away");
  list.add(left_out.too_many, "copy of a block beyond the most that are drawn",
           "copies of blocks beyond the most that are drawn");
  list.add(model.cut_lines, "end of a line of more than 65536 bytes",
           "ends of lines of more than 65536 bytes");
  if (!model.has_end) list.add("what follows where the file ends without an end mark");
  return list.text();
}

}  // namespace importers::dxf
