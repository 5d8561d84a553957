// The record that every stored drawable ends with: its colour, then the rest
// of the chain.

#include <cstddef>
#include <cstring>

#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/tags.h"
#include "displaylist/drawables/class_table_p.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/record_chain_p.h"

namespace DL {

namespace {

/// Makes a chain the list's current one for its own lifetime.
class CurrentChain {
 public:
  CurrentChain(DisplayList& list, RecordChain& chain)
      : m_list(list), m_outer(RecordChain::of(list)) {
    RecordChain::of(list) = &chain;
  }
  CurrentChain(const CurrentChain&) = delete;
  CurrentChain& operator=(const CurrentChain&) = delete;
  ~CurrentChain() { RecordChain::of(m_list) = m_outer; }

 private:
  DisplayList& m_list;
  RecordChain* m_outer;
};

/// Whether a loop asked this drawable; tells the loop that it was reached.
bool leaves_rest_to_loop(const Drawable& drawable, DisplayList& list) {
  RecordChain* chain = RecordChain::of(list);
  if (chain == nullptr || chain->asked != &drawable) return false;
  chain->reached_base_record = true;
  return true;
}

/// Passes on what is written and notes whether the last of it was the end
/// marker.
class LastWord final : public ZtFsStream {
 public:
  explicit LastWord(ZtFsStream& stream) : m_stream(stream) { pass_on_to(stream); }

  void write(const void* buffer, std::int32_t size) override {
    m_stream.write(buffer, size);
    m_word = 0;
    if (size == static_cast<std::int32_t>(sizeof m_word))
      std::memcpy(&m_word, buffer, sizeof m_word);
    m_behind_word = place();
  }
  void read(void* buffer, std::int32_t* size) override { m_stream.read(buffer, size); }

  void forget() { m_word = 0; }
  /// What the library itself writes does not come by here, but for the marker; it
  /// moves the place.
  [[nodiscard]] bool is_end() const { return m_word == tag::kEnd && m_behind_word == place(); }

 private:
  struct Place {
    const std::byte* room;
    std::uint64_t passed;

    friend bool operator==(const Place&, const Place&) = default;
  };
  [[nodiscard]] Place place() const { return {room().data(), calls_passed()}; }

  ZtFsStream& m_stream;
  std::uint32_t m_word = 0;
  Place m_behind_word{};
};

void write_color(const Drawable& drawable, ZtFsStream& stream, const DisplayList& list) {
  if (!drawable.is_palettized()) {
    coding::write(stream, tag::kColor);
    coding::write(stream, drawable.m_colorData.m_color.word);
    return;
  }
  std::int32_t index = 0;
  if (list.m_pfnRenditionToIndex != nullptr) {
    index = list.m_pfnRenditionToIndex(list.m_pRenditionToIndexContext,
                                       drawable.m_colorData.m_pRendition);
  }
  coding::write(stream, tag::kPaletteIndex);
  coding::write(stream, index);
}

/// Every tag that a writer produces leads to the palette: the test is of bits,
/// not of the whole tag, and a colour word is taken for an index. Only a list
/// without a palette keeps colours as they stand.
void read_color(Drawable& drawable, ZtFsStream& stream, DisplayList& list) {
  std::uint32_t color_tag = 0;
  std::uint32_t word = 0;
  if (!coding::read(stream, color_tag) || !coding::read(stream, word)) return;
  if ((color_tag & tag::kPaletteIndex) == 0 || list.m_pfnIndexToRendition == nullptr) {
    drawable.m_colorData.m_color.word = word;
    return;
  }
  drawable.m_colorData.m_pRendition =
      list.m_pfnIndexToRendition(list.m_pIndexToRenditionContext, static_cast<std::int32_t>(word));
  if (!palettize(drawable) && list.m_pfnPostRead != nullptr) list.m_pfnPostRead(&drawable);
}

/// The drawable for the next class tag, unfilled; null at the end marker, or
/// where the chain is cut.
Drawable* read_class(ZtFsStream& stream, DisplayList& list) {
  std::uint32_t class_tag = 0;
  if (RecordChain::was_cut(list)) return nullptr;
  if (coding::read(stream, class_tag) && class_tag == tag::kEnd) return nullptr;
  Drawable* drawable = list.create_drawable(class_tag);
  RecordChain::was_cut(list) = drawable == nullptr;
  return drawable;
}

/// Reads records one after the other, each linked where the one before says.
void read_records(Drawable** link, ZtFsStream& stream, DisplayList& list) {
  if (RecordChain::of(list) == nullptr) RecordChain::was_cut(list) = false;
  RecordChain chain;
  const CurrentChain current(list, chain);
  do {
    *link = read_class(stream, list);
    if (*link == nullptr) return;
    chain = {*link, false};
    (*link)->serialize_in(&stream, list);
    link = &(*link)->m_pNext;
  } while (chain.reached_base_record);
}

}  // namespace

bool read_record_chain(Drawable*& first, ZtFsStream& stream, DisplayList& list) {
  read_records(&first, stream, list);
  return !RecordChain::was_cut(list);
}

void write_record_chain(Drawable* first, ZtFsStream& stream, DisplayList& list) {
  RecordChain chain;
  const CurrentChain current(list, chain);
  LastWord watched(stream);
  for (Drawable* drawable = first; drawable != nullptr; drawable = drawable->m_pNext) {
    watched.forget();
    chain = {drawable, false};
    drawable->serialize_out(&watched, list);
    // A client's class may write the end of its record itself, and with it all
    // that follows.
    if (!chain.reached_base_record && watched.is_end()) return;
  }
  write_end(stream);
}

void Drawable::serialize_out(ZtFsStream* stream, DisplayList& list) {
  write_color(*this, *stream, list);
  if (!leaves_rest_to_loop(*this, list)) write_record_chain(m_pNext, *stream, list);
}

void Drawable::serialize_in(ZtFsStream* stream, DisplayList& list) {
  read_color(*this, *stream, list);
  if (!leaves_rest_to_loop(*this, list)) read_records(&m_pNext, *stream, list);
}

}  // namespace DL
