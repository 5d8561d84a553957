#pragma once

#include <cstdint>
#include <new>

#include "displaylist/core/class_change.h"
#include "displaylist/core/coding.h"
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
    DL::coding::write(*stream, Tag);
    Record<T>().write(*this, *stream, Writing::of(list));
    Record<T>::Parent::serialize_out(stream, list);
  }

  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override {
    T& drawable = *this;
    // Now, since the record of the parent may make a palettized T of it.
    DL::class_change::become<T>(this);
    Reading& reading = Reading::of(list);
    try {
      read_record(drawable, *stream, list);
    } catch (const std::bad_alloc&) {
      reading.reader.fail_of_memory();  // nothing is thrown through the library
    }
  }

 private:
  static void read_record(T& drawable, ZtFsStream& stream, DL::DisplayList& list) {
    using Parent = typename Record<T>::Parent;
    Reading& reading = Reading::of(list);
    Record<T> record;
    std::uint32_t parent_tag = 0;
    if (!record.read(drawable, reading) ||
        (Record<T>::kParentTag != 0 && !DL::coding::read(reading.reader, parent_tag)) ||
        parent_tag != Record<T>::kParentTag) {
      return reading.reader.fail_of_damage();
    }
    Parent& parent = drawable;
    parent.Parent::serialize_in(&stream, list);
    record.complete(drawable, reading);
  }
};

}  // namespace files
