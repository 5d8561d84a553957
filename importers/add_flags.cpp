#include "importers/add_flags.h"

namespace importers {

unsigned long add_flags(const DL::Drawable& drawable) {
  const bool is_text = dynamic_cast<const DL::DLText*>(&drawable) != nullptr;
  const bool is_nested = dynamic_cast<const DL::DrawableDisplayList*>(&drawable) != nullptr;
  return is_nested || (is_text && drawable.is_palettized()) ? 1 : 0;
}

}  // namespace importers
