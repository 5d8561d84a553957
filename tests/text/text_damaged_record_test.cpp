#include <gtest/gtest.h>

#include "tests/support/failing_default_heap.h"
#include "tests/text/text_records.h"

// Bytes that no writer produced, and memory that runs out: what was read is
// still a text that can be used in every way.

namespace {

using namespace text_records;

struct DamagedTextRecord : TextRecord {};

TEST_F(DamagedTextRecord, CutOffAtAnyByteLeavesTextsThatCanBeUsed) {
  const DrawableChain source{wide_text(L"h\u3042", setting()).release(),
                             multibyte_text("last", setting()).release()};
  const Bytes whole = joined(written(*source.first()));
  std::size_t longest = 0;
  for (std::size_t size = 4; size <= whole.size(); ++size) {
    const DrawableChain chain(read(first(whole, size)));
    ASSERT_NE(chain.first(), nullptr) << size;
    const auto drawables = chain.drawables();
    EXPECT_GE(drawables.size(), longest) << size;
    longest = drawables.size();
    for (DL::Drawable* drawable : drawables) use(*drawable);
  }
  EXPECT_EQ(longest, 2U);
}

TEST_F(DamagedTextRecord, WithAnyByteReplacedLeavesTextsThatCanBeUsed) {
  const DrawableChain source{wide_text(L"h\u3042", setting()).release(),
                             multibyte_text("last", setting()).release()};
  const Bytes whole = joined(written(*source.first()));
  for (std::size_t at = 4; at < whole.size(); ++at) {
    for (const std::uint8_t byte : {std::uint8_t{0}, std::uint8_t{0x7F}, std::uint8_t{0xFF}}) {
      Bytes damaged = whole;
      damaged[at] = byte;
      const DrawableChain chain(read(damaged));
      ASSERT_NE(chain.first(), nullptr);
      for (DL::Drawable* drawable : chain.drawables()) use(*drawable);
    }
  }
}

TEST_F(DamagedTextRecord, OfANameLengthBelowOneHasAnEmptyName) {
  for (const std::int32_t length : {0, -1, INT32_MIN}) {
    Pieces pieces = whole_record();
    pieces[1] = bytes_of(length);
    pieces.erase(pieces.begin() + 2, pieces.begin() + 5);
    renderer->asked_fonts.clear();
    const DrawableChain chain(read(joined(pieces)));
    ASSERT_EQ(renderer->asked_fonts.size(), 1U);
    EXPECT_EQ(renderer->asked_fonts[0].name, L"");
    EXPECT_EQ(renderer->asked_fonts[0].weight, 700);
    EXPECT_EQ(as_text(chain.first()).text()->length(), 2);
  }
}

TEST_F(DamagedTextRecord, WhoseNameLengthLiesEndsTheReading) {
  Pieces pieces = whole_record();
  for (const std::int32_t length : {1000, INT32_MAX}) {
    pieces[1] = bytes_of(length);
    const DrawableChain chain(read(joined(pieces)));
    ASSERT_NE(chain.first(), nullptr);
    EXPECT_EQ(as_text(chain.first()).text(), nullptr);
    use(*chain.first());
  }
}

TEST_F(DamagedTextRecord, WhoseStringLengthLiesEndsTheReading) {
  Pieces pieces = whole_record();
  pieces[1 + kFontPieces.size() + 1] = bytes_of(INT32_MAX);
  const DrawableChain chain(read(joined(pieces)));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_GT(as_text(chain.first()).text()->length(), 2);
  EXPECT_LT(as_text(chain.first()).text()->length(), 100);
  use(*chain.first());
}

TEST_F(DamagedTextRecord, IsReadWhereverMemoryRunsOut) {
  const Bytes record = joined(whole_record());
  int complete = 0;
  for (std::int64_t good_requests = 0; good_requests < 6; ++good_requests) {
    DL::Drawable* first = nullptr;
    {
      const FailingDefaultHeap failing(good_requests);
      first = read(record);
    }
    const DrawableChain chain(first);
    EXPECT_EQ(first != nullptr, good_requests > 0);
    if (first == nullptr) continue;
    EXPECT_EQ(bytes_read, record.size()) << "what follows is found all the same";
    EXPECT_EQ(as_text(first).bounds(), (LogicalBounds{10, -20, 60, 40}));
    use(*first);
    const auto& text = *static_cast<DL::DLText*>(first);
    if (text.text() != nullptr && text.text()->unicodeString() != nullptr) ++complete;
  }
  EXPECT_EQ(complete, 2) << "a text takes four requests";
}

}  // namespace
