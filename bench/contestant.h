#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "bench/views.h"
#include "scenes/scene.h"

namespace bench {

/// What a redraw draws into: nothing at all, or pixels.
enum class Target : std::uint8_t { null, raster };

/// Somebody who keeps a drawing and redraws parts of it.
class Contestant {
 public:
  Contestant() = default;
  Contestant(const Contestant&) = delete;
  Contestant& operator=(const Contestant&) = delete;
  virtual ~Contestant() = default;

  /// Takes in the polylines one after the other, into storage of its own.
  virtual void build(const scenes::Polylines& lines) = 0;
  /// Gives back what was built.
  virtual void clear() = 0;
  /// Told before windows of another size are drawn; not timed.
  virtual void prepare([[maybe_unused]] const View& view) {}
  virtual void draw(const View& view, Target target) = 0;
  [[nodiscard]] virtual bool can_draw([[maybe_unused]] Target target) const { return true; }
  /// The picture that Target::raster draws into, kWidth by kHeight words whose
  /// low 24 bits are the colour.
  [[nodiscard]] virtual std::span<std::uint32_t> pixels() = 0;
};

struct Entry {
  std::string_view name;
  std::unique_ptr<Contestant> (*make)();
  /// Takes well below a minute for a scene of ten million.
  bool is_light;
};

inline constexpr std::string_view kLowerBound = "lower bound";
inline constexpr std::string_view kOurs = "display list";
/// We again, in an order of our own; only where that differs.
inline constexpr std::string_view kReordered = "reordered display list";

/// Everybody that this build knows, the lower bound first, we second.
std::span<const Entry> contestants();

/// Who was left out of the build since a package is missing; empty: nobody.
std::string_view left_out();

std::unique_ptr<Contestant> make_lower_bound();
std::unique_ptr<Contestant> make_own_list();
std::unique_ptr<Contestant> make_reordered_list();
std::unique_ptr<Contestant> make_flat_array();
std::unique_ptr<Contestant> make_blocked_array();
std::unique_ptr<Contestant> make_dynamic_rtree();
std::unique_ptr<Contestant> make_packed_rtree();
std::unique_ptr<Contestant> make_cairo_recording();
std::unique_ptr<Contestant> make_qt_scene();

}  // namespace bench
