#include "displaylist/catalogue.h"

#include "displaylist/drawables/class_table_p.h"
#include "displaylist/platform/rendition.h"
#include "displaylist/polythings/polyline_run_p.h"

namespace DL {

bool palettize(Drawable& drawable) {
  const void* type = drawable.type();
#define DL_PALETTIZE(Class)                                     \
  if (type == Class::my_type()) {                               \
    class_change::become<PalettizedDrawable<Class>>(&drawable); \
    return true;                                                \
  }
  DL_PALETTIZED_CLASSES(DL_PALETTIZE)
#undef DL_PALETTIZE
  return false;
}

const DrawableRun& frequent_run() {
  static const DrawableRun run = polyline_run();
  return run;
}

Drawable* construct_built_in(std::uint32_t class_tag, LumenHeap* heap) {
  switch (class_tag) {
#define DL_CONSTRUCT(Class, value) \
  case value:                      \
    return new (heap) Class(class_change::kUnfilled);
    DL_STORED_CLASSES(DL_CONSTRUCT)
#undef DL_CONSTRUCT
    default:
      return nullptr;
  }
}

Drawable* standard_factory(void*, int class_tag) {
  switch (static_cast<std::uint32_t>(class_tag)) {
#define DL_CONSTRUCT(Class, value) \
  case value:                      \
    return new Class(class_change::kUnfilled);
    DL_FACTORY_CLASSES(DL_CONSTRUCT)
#undef DL_CONSTRUCT
    default:
      return nullptr;
  }
}

void standard_post_read(Drawable* drawable) {
  const LM_RGB32 color = drawable->m_colorData.m_pRendition->color();
  // Nothing of the address stays beside the colour: some classes compare both.
  drawable->m_colorData.m_pRendition = nullptr;
  drawable->m_colorData.m_color = color;
}

bool make_plain(Drawable& drawable) {
  if (!drawable.is_palettized()) return false;
  const void* type = drawable.type();
#define DL_MAKE_PLAIN(Class)                \
  if (type == Class::my_type()) {           \
    standard_post_read(&drawable);          \
    class_change::become<Class>(&drawable); \
    return true;                            \
  }
  DL_PALETTIZED_CLASSES(DL_MAKE_PLAIN)
#undef DL_MAKE_PLAIN
  return false;
}

bool is_built_in(std::uint32_t class_tag) {
  switch (class_tag) {
#define DL_CASE(Class, value) case value:
    DL_STORED_CLASSES(DL_CASE)
#undef DL_CASE
    return true;
    default:
      return false;
  }
}

}  // namespace DL
