#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/platform/font.h"
#include "displaylist/platform/image.h"
#include "displaylist/platform/rendition.h"
#include "displaylist/platform/stream.h"

namespace files {

/// Things that are kept once and referred to by number, in the order in which
/// they were asked for first.
template <class T>
class Numbered {
 public:
  std::uint32_t number_of(const T* thing) {
    const auto [place, is_new] =
        m_numbers.try_emplace(thing, static_cast<std::uint32_t>(m_things.size()));
    if (is_new) m_things.push_back(thing);
    return place->second;
  }
  [[nodiscard]] const std::vector<const T*>& things() const { return m_things; }

 private:
  std::unordered_map<const T*, std::uint32_t> m_numbers;
  std::vector<const T*> m_things;
};

/// What the lists of one file share while it is written. Everything is written
/// twice: first to a ScanStream, which finds out what there is to be shared.
class Writing {
 public:
  /// The one that the list is written by: the context of its callback.
  static Writing& of(DL::DisplayList& list) {
    return *static_cast<Writing*>(list.m_pRenditionToIndexContext);
  }
  static int rendition_to_index(void* self, LM_Rendition* rendition) {
    return static_cast<Writing*>(self)->index_of(rendition);
  }

  /// The number of a font or an image; kNone for none.
  std::uint32_t font_number(const LM_Font* font);
  std::uint32_t image_number(const LM_Image* image);
  /// The number of a list that was added; kNone for null.
  [[nodiscard]] std::uint32_t list_number(const DL::DisplayList* list) const;
  void add_list(const DL::DisplayList& list);
  /// The index of a rendition, which means nothing until choose_indices.
  int index_of(const LM_Rendition* rendition);

  /// Tells that there is a multibyte text beyond ASCII.
  void note_character_set() { m_has_character_set = true; }
  /// The name of the locale's character set, empty where no text is in it.
  [[nodiscard]] std::string character_set() const;

  /// Gives each rendition an index that is not among the words.
  void choose_indices(const std::unordered_set<std::uint32_t>& taken_words);

  [[nodiscard]] const std::vector<const LM_Font_Data*>& fonts() const { return m_fonts.things(); }
  [[nodiscard]] const std::vector<const LM_Image*>& images() const { return m_images.things(); }
  [[nodiscard]] const std::vector<const LM_Rendition*>& renditions() const {
    return m_renditions.things();
  }

 private:
  Numbered<LM_Font_Data> m_fonts;
  Numbered<LM_Image> m_images;
  Numbered<LM_Rendition> m_renditions;
  std::vector<std::int32_t> m_indices;  ///< of the renditions
  std::unordered_map<const DL::DisplayList*, std::uint32_t> m_list_numbers;
  bool m_has_character_set = false;
};

/// Keeps nothing of what is written but the words that may be plain colours.
class ScanStream final : public ZtFsStream {
 public:
  void write(const void* buffer, std::int32_t size) override;
  void read(void* buffer, std::int32_t* size) override;

  /// Every word that was written after the tag of a colour.
  [[nodiscard]] const std::unordered_set<std::uint32_t>& words() const { return m_words; }

 private:
  bool m_follows_tag = false;
  std::unordered_set<std::uint32_t> m_words;
};

}  // namespace files
