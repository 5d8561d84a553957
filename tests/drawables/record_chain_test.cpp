#include <gtest/gtest.h>

#include <cstddef>

#include "tests/support/drawable_chain.h"
#include "tests/support/memory_stream.h"
#include "tests/support/palette.h"
#include "tests/support/recorded_list.h"
#include "tests/support/small_stack.h"

// A chain of a million drawables: one call per drawable would need more than
// 8 MB of stack; here there are a few kilobytes.

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kStackSize = 512 * 1024;  // its own frames are large
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr std::size_t kStackSize = 512 * 1024;
#else
constexpr std::size_t kStackSize = 64 * 1024;
#endif
#else
constexpr std::size_t kStackSize = 64 * 1024;
#endif
constexpr int kLength = 1'000'000;

DL::Drawable* make_long_chain() {
  DL::Drawable* first = nullptr;
  for (int i = kLength - 1; i >= 0; --i) {
    auto* dot = new DL::DLDot({3}, {i, -i});
    dot->m_pNext = first;
    first = dot;
  }
  return first;
}

TEST(LongChain, IsWrittenAndReadWithConstantStack) {
  const DrawableChain chain(make_long_chain());
  RecordedList recorded;
  Palette palette(recorded.list);
  MemoryStream stream;
  run_with_stack(kStackSize, [&] { chain.first()->serialize_out(&stream, recorded.list); });
  // Five words each and the end marker.
  ASSERT_EQ(stream.size(), 4U * (5U * kLength + 1U));

  DL::Drawable* first = nullptr;
  run_with_stack(kStackSize, [&] { first = read_drawables(stream, recorded.list); });
  const DrawableChain read_chain(first);
  EXPECT_TRUE(stream.at_end());
  int length = 0;
  for (DL::Drawable* each = first; each != nullptr; each = each->m_pNext, ++length) {
    const LogicalBounds expected(length, -length, length, -length);
    if (bounds_of(*each) != expected || !each->is_palettized()) break;
  }
  EXPECT_EQ(length, kLength);
}

TEST(LongChain, OfDrawablesThatAreNotStoredIsWrittenWithConstantStack) {
  auto* first = new DL::DLDot({3}, {1, 2});
  const DrawableChain chain(first);
  for (int i = 0; i < kLength; ++i) {
    auto* unstored = new DL::DLColorizedDot({}, {}, {});
    unstored->m_pNext = first->m_pNext;
    first->m_pNext = unstored;
  }
  RecordedList recorded;
  MemoryStream stream;
  run_with_stack(kStackSize, [&] { first->serialize_out(&stream, recorded.list); });
  EXPECT_EQ(stream.words(),
            (std::vector<std::uint32_t>{0x80000010, 1, 2, 0x20000002, 3, 0x10000002}));
}

TEST(LongChain, ThatIsCutOffIsReadWithConstantStack) {
  RecordedList recorded;
  MemoryStream stream;
  {
    const DrawableChain chain(make_long_chain());
    chain.first()->serialize_out(&stream, recorded.list);
  }
  stream.truncate(stream.size() - 4 - 3 * 4);  // the last dot has tag and x
  DL::Drawable* first = nullptr;
  run_with_stack(kStackSize, [&] { first = read_drawables(stream, recorded.list); });
  const DrawableChain read_chain(first);
  EXPECT_EQ(read_chain.drawables().size(), static_cast<std::size_t>(kLength));
}

}  // namespace
