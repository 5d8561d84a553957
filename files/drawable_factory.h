#pragma once

#include "displaylist/drawables/drawable.h"
#include "files/export.h"

namespace files {

/// DL::standard_factory for those who read the streams of lists themselves,
/// which makes StretchedText, too. Its texts need no hook of their own:
/// DL::standard_post_read goes with it.
FILES_API DL::Drawable* drawable_factory(void* context, int tag);

}  // namespace files
