#pragma once

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/drawables/class_table_p.h"
#include "displaylist/drawables/drawable.h"

namespace DL {

/// How the drawables of a leaf are drawn.
struct LeafForm {
  bool clipped;    ///< with the clipped operations
  bool selection;  ///< with the selection operations, each under its own key
};

template <LeafForm L>
void draw_one(Drawable& drawable, DisplayList& list) {
  if constexpr (L.selection) {
    const LM_Handle<LM_Selector_Data> selector = list.m_rendition.selector_data();
    if (selector) selector->set_selection_key(&drawable, 0);
    L.clipped ? drawable.draw_clipped_selection(list) : drawable.draw_unclipped_selection(list);
  } else {
    L.clipped ? drawable.draw_clipped(list) : drawable.draw_unclipped(list);
  }
}

template <LeafForm L>
void draw_if_shown(Drawable& drawable, DisplayList& list) {
  Extra_Drawable_Info* info = drawable.drawable_info();
  if (info == nullptr || info->is_drawn()) draw_one<L>(drawable, list);
}

/// Draws the drawables that their info lets draw, in order, while `goes_on`
/// tells so before each; false when it told to stop.
template <LeafForm L, class GoesOn>
bool draw_drawables(const BottomGroup& group, DisplayList& list, const GoesOn& goes_on) {
  for (Drawable* drawable = group.m_pFirst.drawable; drawable != nullptr;
       drawable = drawable->m_pNext) {
    if (!goes_on()) return false;
    draw_if_shown<L>(*drawable, list);
  }
  return true;
}

/// The same without stopping.
template <LeafForm L>
void draw_drawables(const BottomGroup& group, DisplayList& list) {
  if constexpr (L.selection) {
    draw_drawables<L>(group, list, [] { return true; });
  } else {
    const DrawableRun& run = frequent_run();
    Drawable* drawable = group.m_pFirst.drawable;
    while (drawable != nullptr) {
      if (class_change::table_of(drawable) == run.table) {
        drawable = run.draw(drawable, list, L.clipped);
      } else {
        draw_if_shown<L>(*drawable, list);
        drawable = drawable->m_pNext;
      }
    }
  }
}

}  // namespace DL
