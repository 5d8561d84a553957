#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "displaylist/core/class_change.h"
#include "displaylist/core/display_list.h"
#include "displaylist/drawables/drawable.h"
#include "files/writing_p.h"

namespace files {

/// Lists that are being written: the drawables in them that have no record of
/// their own, or no exact one, are objects of other classes meanwhile. The
/// destructor gives all of them and the lists back as they were.
class ListWriter {
 public:
  ListWriter() = default;
  ListWriter(const ListWriter&) = delete;
  ListWriter& operator=(const ListWriter&) = delete;
  ~ListWriter();

  /// Prepares a list and those nested in it. Empty on success, else what stands
  /// in the way, in a sentence.
  [[nodiscard]] std::string prepare(DL::DisplayList& list);

  /// Writes the lists, those that others nest first.
  void write(ZtFsStream& stream);

  [[nodiscard]] Writing& writing() { return m_writing; }

 private:
  struct Prepared {
    DL::DisplayList* list = nullptr;
    // Its callback before.
    int (*rendition_to_index)(void*, LM_Rendition*) = nullptr;
    void* index_context = nullptr;
    std::uint64_t groups = 0;
    std::uint64_t drawables = 0;
    std::vector<std::uint64_t> hidden_drawables;  ///< by their place in drawing order
    std::vector<std::uint64_t> hidden_groups;     ///< by their place, parents first
  };

  /// Prepares the list after those in it. Returns how many lists lie in each
  /// other there, 0 when they are too many.
  std::uint32_t visit(DL::DisplayList& list, std::uint32_t depth);
  std::uint32_t visit_children(const DL::DisplayList& list, std::uint32_t depth);
  void prepare_list(DL::DisplayList& list);
  void prepare_tree(Prepared& prepared);
  void prepare_drawable(Prepared& prepared, DL::Drawable& drawable);
  void change(DL::Drawable& drawable, DL::class_change::OperationTable form);
  void write_settings(const Prepared& prepared, ZtFsStream& stream);

  Writing m_writing;
  std::vector<Prepared> m_prepared;
  /// What `visit` returned; 0 on the way down to the list being visited.
  std::unordered_map<const DL::DisplayList*, std::uint32_t> m_heights;
  std::vector<std::pair<DL::Drawable*, DL::class_change::OperationTable>> m_changed;
  std::uint64_t m_unstored = 0;        ///< drawables that write no record of their own
  std::uint64_t m_unpalettizable = 0;  ///< drawables with a rendition that must not have one
};

}  // namespace files
