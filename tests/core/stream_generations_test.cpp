// Lists that are read, gone on with and written, again and again; and chains with
// drawables that write their records in ways of their own.

#include <gtest/gtest.h>

#include "displaylist/displaylist.h"
#include "tests/support/stream_client.h"
#include "tests/support/tree_walk.h"

namespace {

using stream_words::dot_words;
using stream_words::joined;
using stream_words::kEnd;
using stream_words::Words;

/// The words of a list whose root is its open group over the plane.
Words open_root(const Words& drawables) {
  return joined(
      {{stream_words::kOpen, 0x80000000, 0x80000000, 0x7FFFFFFF, 0x7FFFFFFF, 0, kEnd}, drawables});
}

/// A mark that writes and reads all of its record itself, and what follows it.
class InlineMark final : public client::Mark {
 public:
  using Mark::Mark;
  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    for (const std::uint32_t word : {0x40000008U, stream_words::kColor, m_value}) {
      client::write(*stream, word);
    }
    if (m_pNext != nullptr) {
      m_pNext->serialize_out(stream, list);
    } else {
      client::write(*stream, kEnd);
    }
  }
};

TEST(StreamGenerations, OfDrawablesAtOnePlaceLoseNothing) {
  StreamClient client;
  Words words;
  std::size_t count = 0;
  for (int generation = 0; generation < 40; ++generation) {
    DL::DisplayList list;
    if (generation > 0) {
      ASSERT_EQ(client.read(list, words), words.size()) << generation;
    }
    list.m_cMaxOpenDrawables = 2;
    for (int i = 0; i < 100; ++i) {
      ASSERT_NE(list.add(new DL::DLDot({1}, {7, 7})), nullptr);
      ++count;
    }
    ASSERT_EQ(drawables_of(list).size(), count) << generation;
    words = client.written(list);
  }
}

TEST(StreamChain, LeavesOutNestedLists) {
  DL::DisplayList list;
  list.add(new DL::DrawableDisplayList(nullptr, new DL::DisplayList, nullptr));
  list.add(new DL::DLDot({3}, {1, 2}));
  EXPECT_EQ(StreamClient().written(list), open_root(joined({dot_words(1, 2, 3), {kEnd}})));
}

TEST(StreamChain, TakesRecordsThatClientsWriteWhole) {
  for (const int last : {0, 1, 2}) {
    DL::DisplayList list;
    Words expected;
    for (int i = 0; i < 3; ++i) {
      const auto value = static_cast<std::uint32_t>(i);
      if (i == last || i == 0) {
        list.add(new InlineMark(value), {0, 0, 1, 1}, 0);
        expected = joined({expected, {0x40000008, stream_words::kColor, value}});
      } else {
        list.add(new DL::DLDot({value}, {i, i}));
        expected = joined({expected, dot_words(i, i, value)});
      }
    }
    EXPECT_EQ(StreamClient().written(list), open_root(joined({expected, {kEnd}}))) << last;
  }
}

}  // namespace
