#pragma once

#include "displaylist/displaylist.h"
#include "displaylist/platform/memory_stream.h"

namespace bench {

inline void write_stream(DL::DisplayList& list, ZtFsMemoryStream& stream) {
  list.serialize_out(
      &stream, [](void*, LM_Rendition*) { return 0; }, nullptr);
}

/// All colours come back as one rendition, which is the list's own.
inline void read_stream(DL::DisplayList& list, ZtFsMemoryStream& stream) {
  const auto rendition = [](void* context, int) { return static_cast<LM_Rendition*>(context); };
  list.serialize_in(&stream, rendition, &list.m_rendition, &DL::standard_factory, nullptr,
                    &DL::standard_post_read);
}

}  // namespace bench
