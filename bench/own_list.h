#pragma once

#include <memory>

#include "bench/contestant.h"
#include "lumen/packed_heap.h"
#include "lumen/picture.h"
#include "lumen/raster_device.h"

namespace bench {

/// A display list in a heap of its own.
struct BuiltList {
  lumen::PackedHeap heap;
  DL::DisplayList list{&heap};
};

/// The display list as a contestant.
class OwnList : public Contestant {
 public:
  OwnList();

  void build(const scenes::Polylines& lines) override;
  void clear() override { m_built.reset(); }
  void draw(const View& view, Target target) override;
  std::span<std::uint32_t> pixels() override {
    return {m_picture.row(0), static_cast<std::size_t>(kWidth) * kHeight};
  }

  /// An empty list to be filled by the caller.
  DL::DisplayList& start();
  [[nodiscard]] DL::DisplayList& list() { return m_built->list; }
  /// Whether what is drawn into pixels has smooth edges from now on.
  void set_antialiased(bool antialiased) { m_raster->set_antialiased(antialiased); }
  /// Removes the first polyline of these points by a search.
  void remove(std::span<const scenes::Point> points);

 private:
  lumen::Picture m_picture{kWidth, kHeight};
  LM_Handle<LM_Renderer> m_nothing;
  LM_Handle<lumen::RasterDevice> m_raster;
  std::unique_ptr<BuiltList> m_built;
};

/// The display list, filled in the order that insertion_order gives: for drawings
/// whose drawables have none among themselves.
class ReorderedList final : public OwnList {
 public:
  void build(const scenes::Polylines& lines) override;
};

}  // namespace bench
