#pragma once

#include "displaylist/platform/counted.h"
#include "displaylist/platform/device_actions.h"

/// What a renderer is able to do.
struct LM_Renderer_Options {
  bool supports_complex_clip = false;
};

/// A renderer: the drawing context that a display list carries. Anybody can
/// fill one; as it stands it draws nothing. Shared by count.
class LM_Renderer : public LM_Counted {
 public:
  LM_Device_Actions actions;
  LM_Renderer_Options options;
};
