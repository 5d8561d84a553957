#pragma once

#include "tests/support/probe_scene.h"

inline constexpr DL::BoundsTemplate<long> kFirst{10, 10, 20, 20};
inline constexpr DL::BoundsTemplate<long> kLeft{-20, 10, -10, 20};

/// A root with a closed leaf (probe 1, right) and an open one (probe 2, left).
struct TwoLeaves : ProbeScene {
  TwoLeaves() : ProbeScene(1, 5) {
    add(kFirst, 2);
    add(kLeft, 4);
  }
  DL::Group& closed() { return *child(root(), 0); }
  DL::Group& open() { return *child(root(), 1); }
};
