#pragma once

#include <cstdint>
#include <new>

#include "displaylist/core/class_change.h"
#include "files/coding_p.h"
#include "files/records_p.h"

namespace files {

/// A drawable of class T while it is written or read: T itself, or Variant, a
/// palettized T, with a record. Objects become one of these in place and are
/// what they were afterwards.
template <class T, class Variant, std::uint32_t Tag>
class Stored : public Variant {
 public:
  explicit Stored(DL::class_change::Unfilled unfilled) : Variant(unfilled) {}

  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    coding::put(*stream, Tag);
    Record<T>().write(*this, *stream, Writing::of(list));
    Record<T>::Parent::serialize_out(stream, list);
  }

  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override {
    // Now, since the record of the parent may make a palettized T of it.
    DL::class_change::become<T>(this);
    Reading& reading = Reading::of(list);
    try {
      read_record(stream, list, reading);
    } catch (const std::bad_alloc&) {
      reading.reader.fail_of_memory();  // nothing is thrown through the library
    }
  }

 private:
  void read_record(ZtFsStream* stream, DL::DisplayList& list, Reading& reading) {
    Record<T> record;
    std::uint32_t parent_tag = 0;
    if (!record.read(*this, reading) ||
        (Record<T>::kParentTag != 0 && !coding::get(reading.reader, parent_tag)) ||
        parent_tag != Record<T>::kParentTag) {
      return reading.reader.fail_of_damage();
    }
    Record<T>::Parent::serialize_in(stream, list);
    record.complete(*this, reading);
  }
};

}  // namespace files
