#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "displaylist/displaylist.h"

namespace scenes {

/// The flags to add a drawable to a layer with: bit 0, which keeps its group on
/// the calling thread, for what worker threads may not draw. That is a text that
/// writes into a rendition of the sheet, and a nested list.
[[nodiscard]] unsigned long add_flags(const DL::Drawable& drawable);

/// A drawing of layers, one display list each, drawn one over the other in one
/// view, and the renditions that palettized drawables draw with.
class Sheet {
 public:
  /// `bounds` is what a picture of the sheet shows, logical, y upwards;
  /// drawables may reach beyond.
  explicit Sheet(const DL::BoundsTemplate<long>& bounds) : m_bounds(bounds) {}

  /// A new layer on top of the others.
  DL::DisplayList& add_layer();
  /// From the lowest to the top one.
  [[nodiscard]] const std::vector<std::unique_ptr<DL::DisplayList>>& layers() const {
    return m_layers;
  }
  /// A new rendition that lives as long as the sheet.
  LM_Rendition& add_rendition();

  /// Draws all layers on a device of this size, in device units.
  void draw(const LM_Handle<LM_Renderer>& renderer, std::int32_t width, std::int32_t height);

  [[nodiscard]] const DL::BoundsTemplate<long>& bounds() const { return m_bounds; }

 private:
  DL::BoundsTemplate<long> m_bounds;
  std::vector<std::unique_ptr<LM_Rendition>> m_renditions;
  std::vector<std::unique_ptr<DL::DisplayList>> m_layers;  // destroyed before the renditions
};

}  // namespace scenes
