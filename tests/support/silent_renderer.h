#pragma once

#include <cstdint>

#include "displaylist/platform/renderer.h"

/// A renderer that counts the points that it is given and allocates nothing.
class SilentRenderer final : public LM_Renderer {
 public:
  SilentRenderer() {
    for (LM_Points_Action* action : {&actions.polyline_clipped, &actions.polyline_unclipped}) {
      *action = {this, [](void* self, LM_Rendition*, std::int32_t count, const LM_DCI_Point*) {
                   static_cast<SilentRenderer*>(self)->points += count;
                 }};
    }
    for (LM_Polygon_Action* action : {&actions.polygon_clipped, &actions.polygon_unclipped}) {
      *action = {this, [](void* self, LM_Rendition*, std::int32_t count, const LM_DCI_Point*,
                          std::int32_t) { static_cast<SilentRenderer*>(self)->points += count; }};
    }
    for (LM_Colored_Points_Action* action :
         {&actions.gouraud_polyline_clipped, &actions.gouraud_polyline_unclipped}) {
      *action = {this,
                 [](void* self, LM_Rendition*, std::int32_t count, const LM_DCI_Point*,
                    const LM_RGB32*) { static_cast<SilentRenderer*>(self)->points += count; }};
    }
  }

  std::int64_t points = 0;
};
