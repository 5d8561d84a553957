#pragma once

#include <string>

#include "displaylist/core/display_list.h"
#include "files/drawing_file.h"
#include "files/payload_reader_p.h"
#include "files/payload_writer_p.h"

/// The sections of a payload, in their order.
namespace files {

/// Empty on success, else what stands in the way. May throw std::bad_alloc.
[[nodiscard]] std::string write_payload(PayloadWriter& writer, DL::DisplayList& list,
                                        const Properties& properties);

/// Fills new contents, or makes the reader fail. May throw std::bad_alloc.
void read_payload(PayloadReader& reader, const ReadOptions& options, Contents& contents);

}  // namespace files
