#pragma once

#include "displaylist/core/display_list.h"
#include "displaylist/core/tags.h"
#include "displaylist/platform/stream.h"

namespace DL {

class Drawable;

/// The chain of drawable records that is being written or read by a loop.
///
/// A record ends with its successor's record, so by the letter every drawable
/// would call the next one. The loop keeps the stack constant instead: it names
/// the drawable that it is asking, and that drawable's base record leaves the
/// rest of the chain to the loop. A drawable asked outside a loop starts one.
struct RecordChain {
  const Drawable* asked = nullptr;
  bool reached_base_record = false;

  /// The innermost chain that the list is working on; null when there is none.
  static RecordChain*& of(DisplayList& list) { return list.m_pRecordChain; }
  /// Whether a chain ended where the stream did, or at a tag that stands for
  /// nothing. Then those that it lies in end too.
  static bool& was_cut(DisplayList& list) { return list.m_bReadingEnded; }
};

/// Writes the end marker by a call of the stream, always: whoever passes the
/// calls on to another stream sees it.
inline void write_end(ZtFsStream& stream) {
  stream.write(&tag::kEnd, sizeof tag::kEnd);
}

/// Reads a chain up to its end marker into `first`. False when it was cut; what
/// was read then is there all the same.
bool read_record_chain(Drawable*& first, ZtFsStream& stream, DisplayList& list);

/// Writes the records of `first` and its successors and the end marker.
void write_record_chain(Drawable* first, ZtFsStream& stream, DisplayList& list);

}  // namespace DL
