#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "displaylist/platform/export.h"
#include "displaylist/platform/rendition.h"
#include "lumen/text_renderer.h"

namespace lumen {

class Selector;

/// The renderer that tells what is under a pick box. It draws nothing.
///
/// An action touches the box when RasterDevice without antialiasing would cover
/// a pixel of it with that action, inside the rendition's clip rectangle and its
/// complex clip: what is picked is what is seen. Text touches it with every
/// pixel that its letters, or the bar that stands in for tiny ones, have a part
/// of. There is no picture here; the box may lie anywhere among the 32-bit
/// coordinates. The option LM_IS_SELECTOR is set.
///
/// Colours do not matter, but for invisible ones (transparency 0xFF):
///
/// - Invisible ink and invisible pixels of images cannot be picked.
/// - Lines and strips with a colour for each vertex are picked as a whole,
///   unless all of these are invisible.
/// - So are textured strips, whatever their texels, unless the ground colours
///   are invisible or null and no vertex is on a texture page that exists.
/// - What is drawn over by others can be picked: it is an earlier hit.
///
/// RasterDevice takes outlines of strokes and of complex clips to the nearest
/// 1/256 pixel, at places that depend on the rectangle it draws into: pixels
/// whose centre is that close to the edge of one may be told otherwise. So may
/// those of which letters have a part of 1/255.
///
/// The device is used by one thread at a time. It allocates only until it has
/// seen its largest shape and its longest list of hits.
class LUMEN_API SelectorDevice final : public TextRenderer {
 public:
  /// Which drawable touched the box: the rendition's LM_Selector_Data when it
  /// was drawn, null and 0 where it had none.
  struct Hit {
    const void* key = nullptr;
    std::int32_t index = 0;

    friend bool operator==(const Hit&, const Hit&) = default;
  };

  /// With an empty pick box, which nothing touches.
  SelectorDevice();
  SelectorDevice(const SelectorDevice&) = delete;
  SelectorDevice& operator=(const SelectorDevice&) = delete;
  ~SelectorDevice() override;

  /// What is looked into from now on, in device pixels, inclusive; forgets the
  /// hits. An inverted box is empty. A side longer than Picture::max_side is
  /// cut to it on the right or below. Not called within an action.
  void set_pick_box(const LM_Clip_Rectangle& box);

  /// The hits in drawing order, the topmost one last. Actions under one key
  /// that follow each other are one hit. Valid until the device is used again.
  [[nodiscard]] const std::vector<Hit>& hits() const;
  [[nodiscard]] bool touched() const { return !hits().empty(); }
  /// Forgets the hits.
  void clear();

  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                 std::int32_t count) override;
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                 const unsigned char* characters, std::int32_t count) override;

 private:
  std::unique_ptr<Selector> m_selector;
};

}  // namespace lumen
