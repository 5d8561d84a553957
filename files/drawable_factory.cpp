#include "files/drawable_factory.h"

#include "displaylist/catalogue.h"
#include "files/stretched_text.h"

namespace files {

DL::Drawable* drawable_factory(void* context, int tag) {
  if (static_cast<std::uint32_t>(tag) == StretchedText::kTag) {
    return new StretchedText(DL::class_change::kUnfilled);
  }
  return DL::standard_factory(context, tag);
}

}  // namespace files
