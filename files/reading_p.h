#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/font.h"
#include "displaylist/platform/image.h"
#include "displaylist/platform/rendition.h"
#include "displaylist/text/drawable_display_list.h"
#include "files/drawing_file.h"
#include "files/payload_reader_p.h"
#include "files/word_renditions_p.h"

namespace files {

/// The heap of what is read; tells when it is exhausted.
class WatchedHeap final : public LumenHeap {
 public:
  WatchedHeap(LumenHeap& heap, PayloadReader& reader) : m_heap(heap), m_reader(reader) {}
  void* allocate(std::size_t size) noexcept override;

 private:
  LumenHeap& m_heap;
  PayloadReader& m_reader;
};

/// What the lists of one file share while it is read.
class Reading {
 public:
  Reading(PayloadReader& payload, LumenHeap& own_heap, const ReadOptions& client)
      : reader(payload), heap(own_heap, payload), options(client) {}
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  /// Destroys the children that no drawable has taken.
  ~Reading() = default;

  /// The one that the list is read by: the context of its callbacks.
  static Reading& of(DL::DisplayList& list) {
    return *static_cast<Reading*>(list.m_pIndexToRenditionContext);
  }
  // The callbacks of DisplayList::serialize_in. None of them throws.
  static LM_Rendition* index_to_rendition(void* self, int index);
  static DL::Drawable* create_drawable(void* self, int tag);
  static void post_read(DL::Drawable* drawable);

  /// Adds to the palette; false when it has one of that index.
  [[nodiscard]] bool add_rendition(std::int32_t index, std::unique_ptr<LM_Rendition> rendition);
  /// Whether the rendition is one of the file's.
  [[nodiscard]] bool is_in_palette(const LM_Rendition* rendition) const {
    return m_palette.contains(rendition);
  }
  /// Whether the rendition stands for the colour of a plain drawable.
  [[nodiscard]] bool is_made_for_word(const LM_Rendition* rendition) const {
    return m_word_renditions.hold(rendition) || m_lasting.contains(rendition);
  }
  /// Hands over the renditions that may be in use when all is read.
  [[nodiscard]] std::vector<std::unique_ptr<LM_Rendition>> take_renditions() {
    return std::move(m_renditions);
  }

  /// Takes over a list that those after it may nest.
  void add_child(std::unique_ptr<DL::DisplayList> list);
  [[nodiscard]] std::size_t child_count() const { return m_children.size(); }
  /// Nests a child in the drawable of the list that is being read now; fails
  /// when there is none of that number or nesting is too deep.
  void nest(DL::DrawableDisplayList& drawable, std::uint32_t number,
            const DL::BoundsTemplate<long>& bounds);

  PayloadReader& reader;
  WatchedHeap heap;
  const ReadOptions& options;
  std::vector<LM_Font> fonts;
  std::vector<LM_Handle<LM_Image>> images;
  /// Whether multibyte texts are in a character set other than the locale's.
  bool has_foreign_texts = false;

 private:
  struct Child {
    /// Owns the list beside the drawables that nest it.
    std::unique_ptr<DL::DrawableDisplayList> holder;
    std::uint32_t depth;  ///< how many lists lie in each other there
  };

  LM_Rendition* rendition_at(std::int32_t index);
  LM_Rendition* make_for_word(std::uint32_t word);
  DL::Drawable* create(std::uint32_t tag);
  void expect_client_classes();
  void fail_of_class(std::uint32_t tag);

  std::vector<std::unique_ptr<LM_Rendition>> m_renditions;
  std::unordered_set<const LM_Rendition*> m_palette;
  std::unordered_map<std::int32_t, LM_Rendition*> m_by_index;
  WordRenditions m_word_renditions;
  /// In a file with client classes: the renditions for words that outlive the
  /// reading, among m_renditions.
  std::unordered_set<const LM_Rendition*> m_lasting;
  LM_Rendition m_stand_in;  ///< in the place of one that there is no memory for
  bool m_has_client_classes = false;
  std::vector<Child> m_children;
  std::uint32_t m_depth = 1;  ///< of the list that is being read
};

}  // namespace files
