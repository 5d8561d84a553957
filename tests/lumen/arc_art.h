#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>

#include "tests/lumen/text_art.h"

/// Parts of ellipses to draw, for tests.
namespace arc_art {

inline constexpr float turn = 2 * std::numbers::pi_v<float>;

/// The arguments of an elliptical arc; a whole ellipse if nothing else is said.
struct Arc {
  LM_DCI_Point center;
  LM_DCI_Point radii;
  float start = 0;
  float end = turn;
  float rotation = 0;
};

/// Draws its line, and the area up to its chord if there is a colour.
inline void stroke(text_art::Canvas& canvas, const Arc& arc, const LM_RGB32* fill = nullptr) {
  canvas.device.actions.elliptical_arc(&canvas.rendition, &arc.center, &arc.radii, arc.start,
                                       arc.end, arc.rotation, fill);
}

/// Draws its area up to the centre.
inline void fill(text_art::Canvas& canvas, const Arc& arc, const LM_RGB32* color = nullptr) {
  canvas.device.actions.elliptical_arc_colored(&canvas.rendition, &arc.center, &arc.radii,
                                               arc.start, arc.end, arc.rotation, color);
}

/// A whole one that lies at least partly in a picture of 64 by 64 pixels.
inline Arc random_ellipse(std::mt19937& random) {
  std::uniform_int_distribution<std::int32_t> place(0, 63);
  std::uniform_int_distribution<std::int32_t> radius(1, 40);
  std::uniform_real_distribution<float> rotation(-4, 4);
  return {{place(random), place(random), 0},
          {radius(random), radius(random), 0},
          0,
          turn,
          rotation(random)};
}

}  // namespace arc_art
