#pragma once

#include "displaylist/platform/rendition.h"
#include "displaylist/platform/stream.h"

namespace files {

class Reading;
class Writing;

/// What drawables draw with, but for clips and selector data: those are the view's.
void put_rendition(ZtFsStream& stream, const LM_Rendition& rendition, Writing& writing);

/// Fills a new rendition. False when the record ends or refers to what is not
/// there.
[[nodiscard]] bool get_rendition(Reading& reading, LM_Rendition& rendition);

}  // namespace files
