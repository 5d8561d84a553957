#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "displaylist/platform/counted.h"
#include "displaylist/platform/image.h"

/// The images that textured strips take their texels from, by number. Shared
/// by count; not changed once a rendition has it.
class LM_Texture_Pages : public LM_Counted {
 public:
  /// Page 0, 1, 2, ...; a null page is like one that is missing.
  explicit LM_Texture_Pages(std::vector<LM_Handle<const LM_Image>> pages)
      : m_pages(std::move(pages)) {}

  /// One more than the highest number of a page.
  [[nodiscard]] std::size_t count() const { return m_pages.size(); }
  /// The page; null when there is none of that number.
  [[nodiscard]] const LM_Image* page(std::uint32_t number) const {
    return number < m_pages.size() ? m_pages[number].get() : nullptr;
  }

 private:
  std::vector<LM_Handle<const LM_Image>> m_pages;
};
