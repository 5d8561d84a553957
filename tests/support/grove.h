#pragma once

#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"

/// A scene whose tree has leaves at three depths, one probe in each:
///
///     root
///       right            1
///       inner, left
///         shallow        2
///         deeper
///           deep         3
///       open, right      4
struct Grove : ProbeScene {
  static constexpr Bounds k1{10, 10, 20, 20};
  static constexpr Bounds k2{-20, 10, -15, 15};
  static constexpr Bounds k3{-12, 10, -10, 12};
  static constexpr Bounds k4{30, 30, 40, 40};

  Grove() : ProbeScene(1, 5) {
    for (const Bounds& bounds : {k1, k2, k3, k4}) add(bounds);
    right = child(root(), 0);
    inner = child(root(), 1);
    shallow = child(*inner, 0);
    deeper = child(*inner, 1);
    deep = child(*deeper, 0);
    open = child(root(), 2);
  }

  [[nodiscard]] std::vector<int> ids() {
    std::vector<int> all;
    for (DL::Group* leaf : leaves_of(list)) {
      for (const int id : ids_in(*leaf)) all.push_back(id);
    }
    return all;
  }
  [[nodiscard]] std::string broken() { return broken_invariants(list, TreeHistory::removals); }

  DL::Group* right;
  DL::Group* inner;
  DL::Group* shallow;
  DL::Group* deeper;
  DL::Group* deep;
  DL::Group* open;
};
