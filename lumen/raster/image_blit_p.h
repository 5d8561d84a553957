#pragma once

#include <cstdint>

#include "displaylist/platform/image.h"
#include "displaylist/platform/points.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/picture.h"

namespace lumen {

/// Lays part of an image, drawn with its left upper pixel on the corner, on the
/// picture, each pixel as transparent as it is. The pixels of the part are both
/// the image's and the picture's; `mask` is null or has a byte per pixel of the
/// picture.
void blit_image(const LM_Image& image, const LM_DCI_Point& corner, const PixelRectangle& part,
                const std::uint8_t* mask, Picture& picture);

}  // namespace lumen
