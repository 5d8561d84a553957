#pragma once

#include <map>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/platform/rendition.h"

/// A client's palette behind the stream callbacks of a display list: a
/// rendition for every index, and a note of what was asked. It outlives every
/// drawable that was read with it; one at a time.
class Palette {
 public:
  explicit Palette(DL::DisplayList& list) {
    list.m_pfnRenditionToIndex = [](void* self, LM_Rendition* rendition) {
      return static_cast<Palette*>(self)->index_of(rendition);
    };
    list.m_pRenditionToIndexContext = this;
    list.m_pfnIndexToRendition = [](void* self, int index) {
      auto* palette = static_cast<Palette*>(self);
      palette->asked_indices.push_back(index);
      return palette->at(index);
    };
    list.m_pIndexToRenditionContext = this;
    list.m_pfnPostRead = [](DL::Drawable* drawable) { unsupported.push_back(drawable); };
    unsupported.clear();
  }
  Palette(const Palette&) = delete;
  Palette& operator=(const Palette&) = delete;

  LM_Rendition* at(int index) {
    LM_Rendition* rendition = &m_renditions[index];
    m_indices[rendition] = index;
    return rendition;
  }

  std::vector<int> asked_indices;
  std::vector<LM_Rendition*> asked_renditions;
  /// The drawables that the unsupported-palette callback was called with.
  static inline std::vector<DL::Drawable*> unsupported;

 private:
  int index_of(LM_Rendition* rendition) {
    asked_renditions.push_back(rendition);
    return m_indices.at(rendition);
  }

  std::map<int, LM_Rendition> m_renditions;
  std::map<const LM_Rendition*, int> m_indices;
};
