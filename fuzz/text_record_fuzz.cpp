// The record of a text, without its class tag, and the records that follow it
// in the chain: read, used in every way, and written again.

#include <cstdint>
#include <memory>
#include <sstream>
#include <vector>

#include "displaylist/displaylist.h"
#include "displaylist/drawables/debug.h"
#include "fuzz/byte_stream.h"
#include "fuzz/palette.h"
#include "fuzz/require.h"
#include "lumen/recorder.h"

namespace {

/// A list to read into, and its palette, which outlives what is read.
struct Reader {
  Reader() { palette.give_to(list); }

  DL::DisplayList list;
  Palette palette;
};

/// A chain of drawables, owned.
class Chain {
 public:
  explicit Chain(DL::Drawable* first) {
    for (DL::Drawable* each = first; each != nullptr; each = each->m_pNext) {
      m_drawables.emplace_back(each);
    }
  }

  [[nodiscard]] DL::Drawable* first() const {
    return m_drawables.empty() ? nullptr : m_drawables.front().get();
  }
  [[nodiscard]] const std::vector<std::unique_ptr<DL::Drawable>>& drawables() const {
    return m_drawables;
  }

 private:
  std::vector<std::unique_ptr<DL::Drawable>> m_drawables;
};

Chain read_text(ByteStream& stream, DL::DisplayList& list) {
  DL::Drawable* first = list.create_drawable(DL::tag::kDLText);
  require(first != nullptr);
  first->serialize_in(&stream, list);
  return Chain(first);
}

Chain read_chain(ByteStream& stream, DL::DisplayList& list) {
  std::uint32_t tag = 0;
  std::int32_t size = sizeof tag;
  stream.read(&tag, &size);
  DL::Drawable* first = list.create_drawable(tag);
  require(first != nullptr);
  first->serialize_in(&stream, list);
  return Chain(first);
}

ByteStream written(const Chain& chain, DL::DisplayList& list) {
  ByteStream stream;
  chain.first()->serialize_out(&stream, list);
  return stream;
}

/// What was written is read as the same again. The first copy alone may differ
/// from the second: a reader with a palette takes a plain colour, which damage
/// may leave, for an index.
void expect_stable(ByteStream first_copy, std::size_t count) {
  Reader second;
  const Chain palettized = read_chain(first_copy, second.list);
  require(palettized.drawables().size() == count);
  ByteStream second_copy = written(palettized, second.list);
  Reader third;
  const Chain same = read_chain(second_copy, third.list);
  require(written(same, third.list).bytes() == second_copy.bytes());
}

void walk(DL::Drawable& drawable, bool flag) {
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(drawable.create_vector_iterator(flag));
  require(iterator != nullptr);
  while (!iterator->m_bDone) iterator->next();
  iterator->prev();
}

void draw(DL::Drawable& drawable, DL::DisplayList& list) {
  drawable.draw_unclipped(list);
  drawable.draw_clipped(list);
  drawable.draw_unclipped_selection(list);
  drawable.draw_clipped_selection(list);
}

void use(DL::Drawable& drawable, DL::DisplayList& list) {
  for (const bool turned : {false, true}) {
    list.m_bRotated = turned;
    draw(drawable, list);
  }
  list.m_bAlternateScale = true;
  draw(drawable, list);
  list.m_bAlternateScale = false;
  for (const bool flag : {false, true}) walk(drawable, flag);
  DL::BoundsTemplate<long> bounds;
  drawable.add_bounds(bounds);
  std::ostringstream dump;
  DL::DisplayListDebug statistics;
  drawable.dump(dump, 0, statistics);
  drawable.hide();
  drawable.draw_unclipped(list);
  drawable.unhide();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Reader reader;
  ByteStream bytes(data, size);
  const Chain chain = read_text(bytes, reader.list);
  expect_stable(written(chain, reader.list), chain.drawables().size());

  // From here on with real fonts.
  const auto recorder = LM_Create<lumen::Recorder>();
  reader.list.m_pRenderer = recorder;
  reader.list.m_rendition.set_clip_rectangle({0, 999, 0, 999});
  for (const auto& drawable : chain.drawables()) {
    const std::unique_ptr<DL::Drawable> copy(drawable->clone());
    require(copy != nullptr);
    use(*drawable, reader.list);
    use(*copy, reader.list);
    recorder->clear();
  }
  return 0;
}
