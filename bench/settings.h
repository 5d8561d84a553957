#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace bench {

/// How much is measured.
struct Settings {
  bool is_quick = false;
  bool is_light = false;  ///< without the contestants that take minutes
  int rounds_wanted = 0;  ///< 0: the usual
  std::string only;       ///< a scene or a part; empty: all
  std::string csv;        ///< where the numbers go; empty: nowhere

  [[nodiscard]] bool wants(std::string_view name) const { return only.empty() || only == name; }
  [[nodiscard]] int rounds() const { return rounds_wanted > 0 ? rounds_wanted : is_quick ? 3 : 5; }
  /// Of what takes in a whole scene.
  [[nodiscard]] int build_rounds() const { return std::max(1, rounds() - 2); }
  [[nodiscard]] std::size_t windows() const { return is_quick ? 10 : 100; }
  /// Of a scene that usually has so many drawables.
  [[nodiscard]] std::size_t count(std::size_t usual) const { return is_quick ? usual / 10 : usual; }
};

}  // namespace bench
