#pragma once

#include <cstdint>

#include "displaylist/platform/image.h"

/// An image of any size that notes its end.
class WatchedImage final : public LM_Image {
 public:
  WatchedImage(std::int32_t width, std::int32_t height) : LM_Image(width, height) {}
  ~WatchedImage() override { ++destroyed; }
  [[nodiscard]] const std::uint32_t* row(std::int32_t) const override { return nullptr; }

  static inline int destroyed = 0;
};
