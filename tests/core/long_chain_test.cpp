// Millions of drawables in one group and of groups side by side, on a small
// stack. The streams are made up as they are read, and counted as they are
// written.

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>

#include "displaylist/displaylist.h"
#include "tests/support/small_stack.h"
#include "tests/support/stream_client.h"

namespace {

using stream_words::kBottom;
using stream_words::kColor;
using stream_words::kDot;
using stream_words::kEnd;
using stream_words::kGroup;
using stream_words::kIndex;
using stream_words::kOpen;

#if defined(__has_feature)
#define DL_TEST_HAS_FEATURE(x) __has_feature(x)
#else
#define DL_TEST_HAS_FEATURE(x) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || \
    DL_TEST_HAS_FEATURE(address_sanitizer) || DL_TEST_HAS_FEATURE(thread_sanitizer)
constexpr std::size_t kStackSize = 1024 * 1024;  // their own frames are large
constexpr std::uint64_t kDots = 100'000;
constexpr std::uint64_t kGroups = 50'000;
#else
constexpr std::size_t kStackSize = 256 * 1024;
constexpr std::uint64_t kDots = 10'000'000;
constexpr std::uint64_t kGroups = 1'000'000;
#endif

/// The words of a list with one open group of `dots` dots, number i at (i, -i).
struct ChainWords {
  std::uint64_t dots;
  std::uint32_t color_tag;

  std::uint32_t operator[](std::uint64_t at) const {
    constexpr std::uint32_t head[] = {kOpen, 1, 2, 3, 4, 5, kEnd};
    constexpr std::uint64_t head_size = std::size(head);
    if (at < head_size) return head[at];
    const std::uint64_t dot = (at - head_size) / 5;
    if (dot == dots) return kEnd;
    const auto number = static_cast<std::uint32_t>(dot);
    const std::uint32_t record[] = {kDot, number, 0 - number, color_tag, 9};
    return record[(at - head_size) % 5];
  }
  [[nodiscard]] std::uint64_t size() const { return 7 + 5 * dots + 1; }
};

/// The words of a list whose root holds `groups` closed leaves with a dot each.
/// The dots of the last group come first.
struct RowWords {
  std::uint64_t groups;
  std::uint32_t color_tag;

  std::uint32_t operator[](std::uint64_t at) const {
    constexpr std::uint32_t root[] = {kGroup, 0, 0, 9, 9, 0, 0, kEnd};
    if (at < 8) return root[at];
    at -= 8;
    if (at < 7 * groups) {
      const std::uint32_t leaf[] = {kBottom, 1, 1, 2, 2, 1, static_cast<std::uint32_t>(at / 7)};
      return leaf[at % 7];
    }
    at -= 7 * groups;
    if (at == 0) return kEnd;
    const std::uint64_t group = groups - 1 - (at - 1) / 6;
    const std::uint32_t record[] = {kDot, static_cast<std::uint32_t>(group), 1, color_tag, 9, kEnd};
    return record[(at - 1) % 6];
  }
  [[nodiscard]] std::uint64_t size() const { return 8 + 7 * groups + 1 + 6 * groups; }
};

/// Gives the words as they are asked for.
template <class Words>
class MadeUpStream final : public ZtFsStream {
 public:
  explicit MadeUpStream(const Words& words) : m_words(words) {}

  void write(const void*, std::int32_t) override { FAIL(); }
  void read(void* buffer, std::int32_t* size) override {
    if (*size != 4 || at_end()) {
      *size = 0;
      return;
    }
    const std::uint32_t word = m_words[m_position++];
    std::memcpy(buffer, &word, 4);
  }
  [[nodiscard]] bool at_end() const { return m_position == m_words.size(); }

 private:
  Words m_words;
  std::uint64_t m_position = 0;
};

/// Compares what is written with the words that are expected.
template <class Words>
class ComparingStream final : public ZtFsStream {
 public:
  explicit ComparingStream(const Words& words) : m_words(words) {}

  void write(const void* buffer, std::int32_t size) override {
    std::uint32_t word = 0;
    if (size == 4) std::memcpy(&word, buffer, 4);
    if (m_position >= m_words.size() || word != m_words[m_position]) ++m_differences;
    ++m_position;
  }
  void read(void*, std::int32_t* size) override { *size = 0; }
  [[nodiscard]] bool is_equal() const { return m_differences == 0 && m_position == m_words.size(); }

 private:
  Words m_words;
  std::uint64_t m_position = 0;
  std::uint64_t m_differences = 0;
};

std::uint64_t count_drawables(DL::DisplayList& list) {
  std::uint64_t count = 0;
  DL::DisplayListIterator at(&list);
  for (DL::Drawable* d = at.current(); d != nullptr; d = at.next()) ++count;
  return count;
}

LM_Rendition* the_rendition(void* rendition, int) {
  return static_cast<LM_Rendition*>(rendition);
}

int the_index(void*, LM_Rendition*) {
  return 9;
}

/// Reads, walks, writes and destroys on a small stack.
template <class Words>
void pass_through(Words words, std::uint64_t drawables) {
  MadeUpStream<Words> input(words);
  words.color_tag = kIndex;  // the colours come back as indices
  ComparingStream<Words> output(words);
  LM_Rendition rendition;
  std::uint64_t walked = 0;
  run_with_stack(kStackSize, [&] {
    DL::DisplayList list;
    list.serialize_in(&input, &the_rendition, &rendition, nullptr, nullptr, nullptr);
    walked = count_drawables(list);
    list.serialize_out(&output, &the_index, nullptr);
  });
  EXPECT_TRUE(input.at_end());
  EXPECT_EQ(walked, drawables);
  EXPECT_TRUE(output.is_equal());
}

TEST(LongChain, OfDotsPassesThroughASmallStack) {
  pass_through(ChainWords{kDots, kColor}, kDots);
}

TEST(LongChain, OfSiblingGroupsPassesThroughASmallStack) {
  pass_through(RowWords{kGroups, kColor}, kGroups);
}

}  // namespace
