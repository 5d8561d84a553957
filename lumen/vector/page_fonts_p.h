#pragma once

#include <cairo.h>

#include <map>
#include <memory>

#include "lumen/text/font_face_p.h"

namespace lumen {

/// The faces of a page that are written into its file, as Cairo takes them. Each
/// device has its own: Cairo keeps them to itself, and so do threads.
class PageFonts {
 public:
  /// The face, made when it is asked for first; null when Cairo cannot have it.
  /// It does not have the matrix of the face's source.
  [[nodiscard]] cairo_font_face_t* of(const FontFace& face);

 private:
  struct Destroy {
    void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
  };

  std::map<const FontFace*, std::unique_ptr<cairo_font_face_t, Destroy>> m_fonts;
};

}  // namespace lumen
