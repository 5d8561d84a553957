#pragma once

#include <dxflib/dl_dxf.h>

#include <string>
#include <string_view>

#include "importers/dxf/pairs.h"
#include "importers/dxf/receiver.h"

namespace importers::dxf {

/// Hands records to dxflib, one after the other, in a form that it can bear: it
/// believes the counts that a file states, takes what is no number for 0 and
/// has buffers of fixed sizes for lines.
class Feeder {
 public:
  explicit Feeder(Receiver& receiver) : m_receiver(receiver) {}

  /// A layer, a line type or a text style; others are left out.
  void feed_definition(const Record& record);
  /// An entity or the begin or end of a block. The receiver is told of those
  /// that dxflib does not know and of those with unusable numbers.
  void feed_entity(const Record& record);
  /// Makes dxflib end what it has.
  void flush();

 private:
  void feed(const Record& record);
  void begin(const std::string& name);
  void add(int code, std::string_view value);
  /// The value as chunks that are short enough; tells how many.
  std::size_t add_chunks(const Pair& pair);
  void run(std::size_t pairs);

  Receiver& m_receiver;
  DL_Dxf m_dxf;
  std::string m_text;  ///< pairs on their way to dxflib
};

}  // namespace importers::dxf
