// The stream of a whole list: read, used in every way, written and read again,
// gone on with, emptied.

#include <cstdint>

#include "displaylist/displaylist.h"
#include "fuzz/byte_stream.h"
#include "fuzz/palette.h"
#include "fuzz/require.h"
#include "fuzz/use_list.h"

namespace {

/// A list to read into, and its palette.
struct Reader {
  explicit Reader(ByteStream stream) {
    list.serialize_in(&stream, &Palette::rendition_of, &palette, &DL::standard_factory, nullptr,
                      &Palette::make_black);
  }

  ByteStream written() {
    ByteStream stream;
    list.serialize_out(&stream, &Palette::index_of, &palette);
    return stream;
  }

  // Before the list, whose drawables refer to it.
  Palette palette;
  DL::DisplayList list;
};

/// What was written is read as the same again. The first copy alone may differ
/// from the second, whose colours are all palette indices.
void expect_stable(ByteStream first_copy, std::size_t count) {
  Reader second(std::move(first_copy));
  require(use_list(second.list).size() == count);
  const ByteStream second_copy = second.written();
  Reader third(second_copy);
  require(third.written().bytes() == second_copy.bytes());
}

void go_on(DL::DisplayList& list, std::size_t count) {
  for (std::int32_t i = 0; i < 5; ++i) {
    auto* dot = new DL::DLDot(LM_RGB32{}, {i * 1000, -i});
    require(dot != nullptr);
    if (list.add(dot) == nullptr) {
      // Damaged bounds of a root take nothing.
      delete dot;
      return;
    }
    ++count;
    require(use_list(list).size() == count);
  }
}

void empty(DL::DisplayList& list) {
  if (list.m_pRootGroup == nullptr) return;
  list.m_pRootGroup->remove_bounded({-1000, -1000, 1000, 1000});
  use_list(list);
  list.m_pRootGroup->remove_all();
  require(use_list(list).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Reader reader(ByteStream(data, size));
  const std::size_t count = use_list(reader.list).size();
  expect_stable(reader.written(), count);
  go_on(reader.list, count);
  empty(reader.list);
  return 0;
}
