#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/counted.h"
#include "lumen/geometry/shape_p.h"
#include "lumen/picture.h"

namespace lumen {

/// The complex clips that were drawn with last, as masks of a byte per pixel.
/// A clip that is held here stays alive, so that its address names it. Kept
/// per thread; masks that are too large together are kept one at a time.
class ClipMasks {
 public:
  /// How much of each pixel of a picture of this size lies inside the clip, 0
  /// to 255, row after row. Valid until the next call.
  const std::uint8_t* mask(const LM_Contour_Set_Data& clip, const Picture& picture,
                           bool antialiased);

 private:
  struct Entry {
    LM_Handle<const LM_Contour_Set_Data> clip;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool antialiased = false;
    std::vector<std::uint8_t> bytes;

    [[nodiscard]] bool is_of(const LM_Contour_Set_Data& other, const Picture& picture,
                             bool smooth) const {
      return clip.get() == &other && width == picture.width() && height == picture.height() &&
             antialiased == smooth;
    }
  };

  /// Lets go of what leaves too little room for a mask of so many bytes in the
  /// latest entry.
  void make_room(std::size_t size);
  void draw(Entry& entry);

  std::array<Entry, 2> m_entries;
  std::size_t m_latest = 0;
  Shape m_shape;
};

}  // namespace lumen
