#pragma once

#include <map>

#include "displaylist/catalogue.h"
#include "displaylist/core/display_list.h"

/// The client's side of the stream operations: a rendition for every index, and
/// the index of every rendition. It outlives what is read with it.
class Palette {
 public:
  static LM_Rendition* rendition_of(void* self, int index) {
    auto* palette = static_cast<Palette*>(self);
    LM_Rendition* rendition = &palette->m_renditions[index];
    palette->m_indices[rendition] = index;
    return rendition;
  }
  static int index_of(void* self, LM_Rendition* rendition) {
    return static_cast<Palette*>(self)->m_indices[rendition];
  }
  /// What has no palettized variant is black.
  static void make_black(DL::Drawable* drawable) {
    drawable->m_colorData.m_pRendition = nullptr;
    drawable->m_colorData.m_color = LM_RGB32{};
  }

  /// For records that are read and written alone.
  void give_to(DL::DisplayList& list) {
    list.m_pfnCreateDrawable = &DL::standard_factory;
    list.m_pfnRenditionToIndex = &index_of;
    list.m_pRenditionToIndexContext = this;
    list.m_pfnIndexToRendition = &rendition_of;
    list.m_pIndexToRenditionContext = this;
    list.m_pfnPostRead = &make_black;
  }

 private:
  std::map<int, LM_Rendition> m_renditions;
  std::map<const LM_Rendition*, int> m_indices;
};
