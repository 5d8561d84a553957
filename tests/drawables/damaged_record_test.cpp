#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <sstream>

#include "tests/support/client_drawables.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/memory_stream.h"
#include "tests/support/palette.h"
#include "tests/support/recorded_list.h"
#include "tests/support/test_heap.h"

// Bytes that no writer produced: what was read is still a list of drawables
// that can be used in every way.

namespace {

using Words = std::vector<std::uint32_t>;

/// Steps through a drawable's outline forwards and back again.
void walk(DL::Drawable& drawable) {
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(drawable.create_vector_iterator(true));
  if (iterator == nullptr) return;
  for (int steps = 0; steps < 10 && iterator->next() != nullptr; ++steps) {
  }
  for (int steps = 0; steps < 20 && iterator->prev() != nullptr; ++steps) {
  }
  iterator->next();
}

/// Uses the drawable in every way that there is.
void use(DL::Drawable& drawable, RecordedList& recorded) {
  drawable.draw_unclipped(recorded.list);
  drawable.draw_clipped_selection(recorded.list);
  recorded.recorder->clear();
  LogicalBounds bounds;
  drawable.add_bounds(bounds);
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  drawable.dump(os, 1, statistics);
  EXPECT_FALSE(os.str().empty());
  walk(drawable);
  DL::Search search;
  search.prototype = &drawable;
  search.type = drawable.type();
  drawable.remove(search);
  const std::unique_ptr<DL::Drawable> copy(drawable.clone());
  drawable.hide();
  drawable.unhide();
}

struct Reader {
  Reader() { recorded.list.m_pfnCreateDrawable = &client::create; }

  DL::Drawable* read(MemoryStream& stream) { return read_drawables(stream, recorded.list); }
  void use_all(const DrawableChain& chain) {
    for (DL::Drawable* drawable : chain.drawables()) use(*drawable, recorded);
  }
  Words write(const DrawableChain& chain) {
    MemoryStream stream;
    if (chain.first() != nullptr) chain.first()->serialize_out(&stream, recorded.list);
    return stream.words();
  }

  RecordedList recorded;
  Palette palette{recorded.list};
};

DrawableChain& good_chain() {
  static DrawableChain chain{new DL::DLDot({1}, {10, 11}),
                             make_polyline({{1, 2}, {3, 4}, {5, 6}}, {2}),
                             new client::StoredMark(3),
                             new client::Folder(new DL::DLDot({4}, {4, 4})),
                             make_polyline({{7, 7}, {7, 7}}, {5}),
                             new DL::DLDot({6}, {12, 13})};
  return chain;
}

TEST(DamagedRecord, CutOffAtAnyByteLeavesAChainThatCanBeUsed) {
  Reader reader;
  MemoryStream whole;
  good_chain().first()->serialize_out(&whole, reader.recorded.list);
  std::size_t longest = 0;
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    MemoryStream stream(whole.words());
    stream.truncate(size);
    const DrawableChain chain(reader.read(stream));
    const std::size_t length = chain.drawables().size();
    EXPECT_GE(length, longest) << "cut at " << size;
    longest = std::max(longest, length);
    reader.use_all(chain);
  }
  EXPECT_EQ(longest, 6U);
}

TEST(DamagedRecord, WithAnyWordReplacedLeavesAChainThatCanBeUsed) {
  Reader reader;
  const Words good = reader.write(good_chain());
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (const std::uint32_t word : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 0x80000010U,
                                     0x80000200U, 0x40000002U, 0x10000002U, 0x20000001U}) {
      Words damaged = good;
      damaged[at] = word;
      MemoryStream stream(damaged);
      const DrawableChain chain(reader.read(stream));
      reader.use_all(chain);
    }
  }
}

rc::Gen<std::uint32_t> likely_words() {
  return rc::gen::weightedOneOf<std::uint32_t>(
      {{4, rc::gen::element<std::uint32_t>(0x80000010, 0x80000200)},
       {3, rc::gen::element<std::uint32_t>(0x20000001, 0x20000002, 0x10000002)},
       {1, rc::gen::element<std::uint32_t>(0x80000000, 0xFFFFFFFF, 0x7FFFFFFF, 0x40000004)},
       {4, rc::gen::cast<std::uint32_t>(rc::gen::inRange(0, 5))},
       {1, rc::gen::arbitrary<std::uint32_t>()}});
}

RC_GTEST_PROP(DamagedRecord, OfRandomWordsLeavesAChainThatCanBeUsed, ()) {
  Reader reader;
  Words words = *rc::gen::container<Words>(likely_words());
  words.insert(words.begin(), *rc::gen::element<std::uint32_t>(0x80000010, 0x80000200, 0x40000002));
  MemoryStream stream(words);
  const DrawableChain chain(reader.read(stream));
  RC_ASSERT(chain.first() != nullptr);
  reader.use_all(chain);
}

RC_GTEST_PROP(DamagedRecord, SettlesAfterItWasWrittenAndReadAgain, ()) {
  Reader reader;
  Words words = *rc::gen::container<Words>(likely_words());
  words.insert(words.begin(), *rc::gen::element<std::uint32_t>(0x80000010, 0x80000200));
  MemoryStream stream(words);
  const DrawableChain first(reader.read(stream));
  MemoryStream once(reader.write(first));
  const DrawableChain second(reader.read(once));
  const Words twice_written = reader.write(second);
  MemoryStream twice(twice_written);
  const DrawableChain third(reader.read(twice));
  RC_ASSERT(twice.at_end());
  RC_ASSERT(reader.write(third) == twice_written);
}

TEST(DamagedRecord, WithAHugeCountTakesMemoryOnlyForWhatArrives) {
  for (const std::size_t points_there : {0U, 3U, 300'000U}) {
    Reader reader;
    TestHeap heap;
    reader.recorded.list.m_heap = &heap;
    Words words{0x80000200, 0x7FFFFFFF};
    words.insert(words.end(), 2 * points_there, 5);
    MemoryStream stream(words);
    const DrawableChain chain(reader.read(stream));
    ASSERT_NE(chain.first(), nullptr);
    EXPECT_EQ(static_cast<DL::DLPolyline*>(chain.first())->count,
              static_cast<std::int32_t>(points_there));
    EXPECT_LE(heap.bytes(), (1U << 20) + 8 * 8 * points_there);
    reader.use_all(chain);
  }
}

TEST(DamagedRecord, WithANegativeCountHasNoPoints) {
  for (const std::uint32_t count : {0x80000000U, 0x80000001U, 0xFFFFFFFFU, 0U}) {
    Reader reader;
    MemoryStream stream(
        Words{0x80000200, count, 0x20000002, 7, 0x80000010, 1, 2, 0x20000002, 8, 0x10000002});
    const DrawableChain chain(reader.read(stream));
    ASSERT_EQ(chain.drawables().size(), 2U) << std::hex << count;
    const auto* polyline = static_cast<DL::DLPolyline*>(chain.first());
    EXPECT_EQ(polyline->points, nullptr);
    EXPECT_FALSE(polyline->supports_fast_vector_iterator());
    EXPECT_TRUE(bounds_of(*polyline).is_empty());
    EXPECT_TRUE(stream.at_end());
    reader.use_all(chain);
  }
}

TEST(DamagedRecord, WithATagOfNoClassEndsTheChain) {
  Reader reader;
  for (const std::uint32_t tag : {0U, 0x3FFFFFFFU, 0x40000100U, 0x80000004U}) {
    MemoryStream stream(Words{0x80000010, 1, 2, 0x20000002, 8, tag, 1, 2, 0x20000002, 8});
    const DrawableChain chain(reader.read(stream));
    EXPECT_EQ(chain.drawables().size(), 1U) << std::hex << tag;
  }
}

TEST(DamagedRecord, ReadWithAHeapThatFailsAnywhereLeavesAChainThatCanBeUsed) {
  std::size_t longest = 0;
  for (std::int64_t good_requests = 0; good_requests <= 7; ++good_requests) {
    Reader reader;
    TestHeap heap(good_requests);
    MemoryStream stream(reader.write(good_chain()));
    reader.recorded.list.m_heap = &heap;
    const DrawableChain chain(reader.read(stream));
    reader.use_all(chain);
    const std::size_t length = chain.drawables().size();
    EXPECT_GE(length, longest);
    longest = length;
  }
  EXPECT_EQ(longest, 6U);
}

}  // namespace
