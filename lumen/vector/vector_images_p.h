#pragma once

#include <cairo.h>

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "displaylist/platform/counted.h"
#include "displaylist/platform/image.h"
#include "lumen/vector/vector_page_p.h"

namespace lumen {

/// Draws images on the page of a vector device. What was drawn is kept, so that
/// it is embedded once.
class VectorImages {
 public:
  explicit VectorImages(VectorPage& page) : m_page(page) {}

  /// `corner` is the device point of the left upper pixel.
  void draw(const LM_Image& image, const LM_DCI_Point& corner);
  /// An image that is not drawn again.
  void draw_once(LM_Handle<const LM_Image> image, const LM_DCI_Point& corner);

 private:
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };
  using Surface = std::unique_ptr<cairo_surface_t, Destroy>;
  /// An image in pieces as large as Cairo holds, by column and row.
  struct Pieces {
    LM_Handle<const LM_Image> image;
    std::map<std::pair<std::int64_t, std::int64_t>, Surface> surfaces;
  };

  void draw_pieces(Pieces& pieces, const LM_DCI_Point& corner);
  void draw_piece(Pieces& pieces, std::int64_t column, std::int64_t row,
                  const LM_DCI_Point& corner);

  VectorPage& m_page;
  std::map<const LM_Image*, Pieces> m_images;
};

}  // namespace lumen
