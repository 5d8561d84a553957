#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "displaylist/platform/image.h"
#include "scenes/sheet.h"

namespace scenes {

/// The size at which a picture of the gallery shows a unit as a pixel.
inline constexpr std::int32_t kGalleryWidth = 1236;
inline constexpr std::int32_t kGalleryHeight = 1064;

/// The classes of the gallery, row by row, the left ones first.
std::vector<std::string_view> gallery_classes();

/// Every drawable class in each variant that it has. A class has a row of four
/// cells; from the middle of the sheet outwards: plain; palettized, where the
/// class can be; hidden; plain once more, cut off by the edge of the sheet.
/// `image` is what the images show and the textured strips
/// are covered with; with none the images are missing.
std::unique_ptr<Sheet> make_gallery(const LM_Handle<LM_Image>& image);

}  // namespace scenes
