#include "lumen/raster/image_blit_p.h"

#include <cstddef>

#include "lumen/pixel_blend_p.h"
#include "lumen/raster/pixel_access_p.h"

namespace lumen {
namespace {

void blit_row(const std::uint32_t* from, const std::uint8_t* mask, std::ptrdiff_t length,
              std::uint32_t* to) {
  for (std::ptrdiff_t i = 0; i < length; ++i) {
    const std::uint32_t opacity = opacity_of({from[i]});
    lay_on_pixel(to[i], from[i] & 0x00FFFFFF,
                 mask == nullptr ? opacity : scale_255(opacity, mask[i]));
  }
}

}  // namespace

void blit_image(const LM_Image& image, const LM_DCI_Point& corner, const PixelRectangle& part,
                const std::uint8_t* mask, Picture& picture) {
  // The distance of a far corner takes more than 32 bits, the place in the
  // image does not.
  const std::ptrdiff_t left = std::ptrdiff_t{part.min_x} - corner.x;
  const std::ptrdiff_t length = std::ptrdiff_t{part.max_x} - part.min_x + 1;
  for (std::int32_t y = part.min_y; y <= part.max_y; ++y) {
    const auto row = static_cast<std::int32_t>(std::int64_t{y} - corner.y);
    const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(y) * picture.width() + part.min_x;
    blit_row(image.row(row) + left, mask == nullptr ? nullptr : mask + offset, length,
             picture.row(y) + part.min_x);
  }
}

}  // namespace lumen
