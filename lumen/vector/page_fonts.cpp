#include "lumen/vector/page_fonts_p.h"

#include <cairo-ft.h>
#include <ft2build.h>
#include <hb.h>

#include FT_FREETYPE_H

namespace lumen {
namespace {

/// An opened font file. Cairo keeps faces beyond the device that made them, so
/// each brings along all that it needs.
struct OpenFace {
  explicit OpenFace(const FontFace& face) {
    hb_blob_t* blob = hb_face_reference_blob(hb_font_get_face(face.shaper()));
    unsigned size = 0;
    const char* bytes = hb_blob_get_data(blob, &size);
    hb_blob_destroy(blob);  // the face still has it
    if (FT_Init_FreeType(&library) != 0) {
      library = nullptr;
    } else if (FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(bytes),
                                  static_cast<FT_Long>(size), face.source().index, &letters) != 0) {
      letters = nullptr;
    }
  }
  OpenFace(const OpenFace&) = delete;
  OpenFace& operator=(const OpenFace&) = delete;
  ~OpenFace() {
    if (library != nullptr) FT_Done_FreeType(library);
  }

  static void close(void* face) { delete static_cast<OpenFace*>(face); }

  FT_Library library = nullptr;
  FT_Face letters = nullptr;  ///< null when it cannot be read
};

cairo_font_face_t* new_font(const FontFace& face) {
  static const cairo_user_data_key_t key{};
  auto opened = std::make_unique<OpenFace>(face);
  if (opened->letters == nullptr) return nullptr;
  cairo_font_face_t* font =
      cairo_ft_font_face_create_for_ft_face(opened->letters, FT_LOAD_NO_HINTING);
  if (cairo_font_face_set_user_data(font, &key, opened.get(), &OpenFace::close) !=
      CAIRO_STATUS_SUCCESS) {
    cairo_font_face_destroy(font);
    return nullptr;
  }
  static_cast<void>(opened.release());  // the font's now
  if (face.source().is_emboldened)
    cairo_ft_font_face_set_synthesize(font, CAIRO_FT_SYNTHESIZE_BOLD);
  return font;
}

}  // namespace

cairo_font_face_t* PageFonts::of(const FontFace& face) {
  const auto [place, is_new] = m_fonts.try_emplace(&face);
  if (is_new) place->second.reset(new_font(face));
  return place->second.get();
}

}  // namespace lumen
