#pragma once

#include <utility>

#include "displaylist/platform/image.h"
#include "lumen/picture.h"

namespace lumen {

/// A picture as a shared image: `LM_Create<PictureImage>(read_png("logo.png"))`.
class PictureImage final : public LM_Image {
 public:
  explicit PictureImage(Picture picture)
      : LM_Image(picture.width(), picture.height()), m_picture(std::move(picture)) {}

  [[nodiscard]] const std::uint32_t* row(std::int32_t y) const override { return m_picture.row(y); }

 private:
  Picture m_picture;
};

}  // namespace lumen
