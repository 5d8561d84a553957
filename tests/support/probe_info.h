#pragma once

#include "displaylist/drawables/drawable.h"

/// A client's info that lets its drawable draw or not, and counts the questions.
struct ProbeInfo final : DL::Extra_Drawable_Info {
  explicit ProbeInfo(bool lets_draw) : drawn(lets_draw) {}
  bool is_drawn() override {
    ++asked;
    return drawn;
  }

  bool drawn;
  int asked = 0;
};
