#include <gtest/gtest.h>

#include <bit>
#include <memory>
#include <sstream>

#include "tests/polythings/ellipses.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/memory_stream.h"
#include "tests/support/palette.h"
#include "tests/support/point_printing.h"

// The words of the three classes that are stored, and what reading makes of
// them.

namespace {

using namespace ellipses;
using Words = std::vector<std::uint32_t>;

constexpr std::uint32_t kEllipse = 0x80000020;
constexpr std::uint32_t kArc = 0x80000040;
constexpr std::uint32_t kPie = 0x80000080;
constexpr std::uint32_t kIndex = 0x20000001;
constexpr std::uint32_t kColor = 0x20000002;
constexpr std::uint32_t kEnd = 0x10000002;
constexpr std::uint32_t kHalf = 0x3F000000;   // 0.5
constexpr std::uint32_t kOne = 0x3F800000;    // 1.0
constexpr std::uint32_t kMinus = 0xC0200000;  // -2.5

const Geometry kGeometry{
    .center = {7, -2}, .major = 300, .minor = -1, .rotation = 0.5F, .start = 1.0F, .end = -2.5F};

const Words kEllipseWords = {kEllipse, 7, 0xFFFFFFFE, 300,        0xFFFFFFFF,
                             kHalf,    9, kColor,     0x00FF0000, kEnd};
const Words kArcWords = {kArc,       kOne,  kMinus, kEllipse, 7,          0xFFFFFFFE, 300,
                         0xFFFFFFFF, kHalf, 9,      kColor,   0x00FF0000, kEnd};
const Words kPieWords = {kPie, kArc,       kOne,  kMinus, kEllipse, 7,          0xFFFFFFFE,
                         300,  0xFFFFFFFF, kHalf, 9,      kColor,   0x00FF0000, kEnd};

class EllipseRecord : public testing::Test {
 protected:
  template <class Class>
  Words words_of(Class drawable) {
    drawable.reserved = 9;
    MemoryStream stream;
    drawable.serialize_out(&stream, recorded.list);
    EXPECT_EQ(stream.writes(), stream.words().size());
    return stream.words();
  }
  Words words_of_chain(const DrawableChain& chain) {
    MemoryStream stream;
    chain.first()->serialize_out(&stream, recorded.list);
    return stream.words();
  }
  DL::Drawable* read(const Words& words) {
    MemoryStream stream(words);
    DL::Drawable* first = read_drawables(stream, recorded.list);
    words_read = stream.position() / sizeof(std::uint32_t);
    return first;
  }

  RecordedList recorded;
  Palette palette{recorded.list};
  std::size_t words_read = 0;
};

void expect_ellipse(const DL::Drawable& drawable, const DL::DisplayList* list) {
  const auto& read = static_cast<const DL::DLEllipse&>(drawable);
  EXPECT_EQ(read.center, (LogicalPoint{7, -2}));
  EXPECT_EQ(read.major, 300);
  EXPECT_EQ(read.minor, -1);
  EXPECT_EQ(read.rotation, 0.5F);
  EXPECT_EQ(read.reserved, 9U);
  EXPECT_EQ(read.display_list, list);
  EXPECT_EQ(read.m_pNext, nullptr);
}

void expect_arc(const DL::Drawable& drawable, const DL::DisplayList* list) {
  expect_ellipse(drawable, list);
  const auto& read = static_cast<const DL::DLEllipticalArc&>(drawable);
  EXPECT_EQ(read.start, 1.0F);
  EXPECT_EQ(read.end, -2.5F);
}

TEST_F(EllipseRecord, OfAnEllipseIsItsGeometryWordByWord) {
  EXPECT_EQ(words_of(ellipse(kGeometry)), kEllipseWords);
}

TEST_F(EllipseRecord, OfAnArcIsItsAnglesAndTheWholeEllipseWithItsTag) {
  EXPECT_EQ(words_of(arc(kGeometry)), kArcWords);
}

TEST_F(EllipseRecord, OfAPieHasTheTagOfTheArcInside) {
  EXPECT_EQ(words_of(pie(kGeometry)), kPieWords);
}

TEST_F(EllipseRecord, IsReadAsItWasWritten) {
  const DrawableChain whole(read(kEllipseWords));
  EXPECT_EQ(words_read, kEllipseWords.size());
  EXPECT_EQ(whole.first()->type(), DL::DLEllipse::my_type());
  expect_ellipse(*whole.first(), &recorded.list);
  const DrawableChain part(read(kArcWords));
  EXPECT_EQ(words_read, kArcWords.size());
  EXPECT_EQ(part.first()->type(), DL::DLEllipticalArc::my_type());
  expect_arc(*part.first(), &recorded.list);
  const DrawableChain sector(read(kPieWords));
  EXPECT_EQ(words_read, kPieWords.size());
  EXPECT_EQ(sector.first()->type(), DL::DLEllipticalPie::my_type());
  expect_arc(*sector.first(), &recorded.list);
}

TEST_F(EllipseRecord, IsReadIntoThePalettizedClass) {
  for (const Words& words : {kEllipseWords, kArcWords, kPieWords}) {
    const DrawableChain chain(read(words));
    EXPECT_TRUE(chain.first()->is_palettized());
    EXPECT_FALSE(chain.first()->is_hidden());
    EXPECT_EQ(chain.first()->rendition(recorded.list), palette.at(0x00FF0000));
    Words expected = words;
    expected[words.size() - 3] = kIndex;
    EXPECT_EQ(words_of_chain(chain), expected);
  }
  EXPECT_TRUE(Palette::unsupported.empty());
}

TEST_F(EllipseRecord, IsReadPlainBehindATagOfNoPalette) {
  for (Words words : {kEllipseWords, kArcWords, kPieWords}) {
    words[words.size() - 3] = 0;
    const DrawableChain chain(read(words));
    EXPECT_FALSE(chain.first()->is_palettized());
    EXPECT_EQ(chain.first()->m_colorData.m_color, kRed);
    words[words.size() - 3] = kColor;
    EXPECT_EQ(words_of_chain(chain), words);
  }
}

TEST_F(EllipseRecord, InnerTagsAreReadWhateverTheyAre) {
  for (const std::uint32_t odd : {0U, 1U, kEnd, kPie, 0xFFFFFFFFU}) {
    Words words = kArcWords;
    words[3] = odd;
    const DrawableChain part(read(words));
    EXPECT_EQ(words_read, words.size());
    EXPECT_EQ(part.first()->type(), DL::DLEllipticalArc::my_type());
    expect_arc(*part.first(), &recorded.list);
    words = kPieWords;
    words[1] = odd;
    words[4] = ~odd;
    const DrawableChain sector(read(words));
    EXPECT_EQ(words_read, words.size());
    EXPECT_EQ(sector.first()->type(), DL::DLEllipticalPie::my_type());
    expect_arc(*sector.first(), &recorded.list);
  }
}

TEST_F(EllipseRecord, TellsTheScaleOfTheOutlineByTheListThatReads) {
  recorded.list.m_deviceScale = {4.0, 4.0};
  const DrawableChain chain(read({kEllipse, 7, 8, 100, 25, 0, 0, kColor, 1, kEnd}));
  EXPECT_EQ(chain.first()->get_vector_count(), 81);
}

TEST_F(EllipseRecord, KeepsTheBitsOfItsFloats) {
  for (const std::uint32_t bits : {0x7FC01234U, 0x80000000U, 0x00000001U, 0xFF800000U}) {
    const Words words = {kPie, kArc, bits, bits, kEllipse, 1, 2, 3, 4, bits, 0, kIndex, 6, kEnd};
    const DrawableChain chain(read(words));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(static_cast<DL::DLEllipse*>(chain.first())->rotation),
              bits);
    EXPECT_EQ(words_of_chain(chain), words);
  }
}

Words joined(std::initializer_list<Words> records) {
  Words all;
  for (const Words& words : records) {
    if (!all.empty()) all.pop_back();  // the end marker, where the chain goes on
    all.insert(all.end(), words.begin(), words.end());
  }
  return all;
}

TEST_F(EllipseRecord, IsContinuedByTheRestOfTheChain) {
  const Words words = joined({kPieWords, kEllipseWords, kArcWords, kEllipseWords});
  const DrawableChain chain(read(words));
  EXPECT_EQ(words_read, words.size());
  const auto drawables = chain.drawables();
  ASSERT_EQ(drawables.size(), 4U);
  EXPECT_EQ(drawables[0]->type(), DL::DLEllipticalPie::my_type());
  EXPECT_EQ(drawables[1]->type(), DL::DLEllipse::my_type());
  EXPECT_EQ(drawables[2]->type(), DL::DLEllipticalArc::my_type());
  expect_ellipse(*drawables[3], &recorded.list);
}

void use(DL::Drawable& drawable, RecordedList& recorded) {
  drawable.draw_clipped(recorded.list);
  drawable.draw_unclipped(recorded.list);
  finds(drawable, drawable);
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  drawable.dump(os, 0, statistics);
  EXPECT_FALSE(os.str().empty());
  const std::unique_ptr<DL::Drawable> copy(drawable.clone());
  EXPECT_EQ(copy->type(), drawable.type());
  ASSERT_GE(drawable.get_vector_count(), 2);
  if (drawable.get_vector_count() > 100'000) return;
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(drawable.create_vector_iterator(true));
  int steps = 1;
  while (iterator->next() != nullptr) ++steps;
  EXPECT_EQ(steps, drawable.get_vector_count());
}

TEST_F(EllipseRecord, CutOffAtAnyByteLeavesDrawablesThatCanBeUsed) {
  MemoryStream whole(joined({kPieWords, kEllipseWords, kArcWords}));
  std::size_t longest = 0;
  for (std::size_t size = sizeof kPie; size <= whole.size(); ++size) {
    MemoryStream stream(whole.words());
    stream.truncate(size);
    const DrawableChain chain(read_drawables(stream, recorded.list));
    ASSERT_NE(chain.first(), nullptr) << size;
    for (DL::Drawable* drawable : chain.drawables()) {
      EXPECT_EQ(static_cast<DL::DLEllipse*>(drawable)->display_list, &recorded.list);
      use(*drawable, recorded);
    }
    EXPECT_GE(chain.drawables().size(), longest);
    longest = chain.drawables().size();
  }
  EXPECT_EQ(longest, 3U);
}

TEST_F(EllipseRecord, WithAnyWordReplacedLeavesDrawablesThatCanBeUsed) {
  const Words good = joined({kPieWords, kEllipseWords, kArcWords});
  for (std::size_t at = 1; at < good.size(); ++at) {
    for (const std::uint32_t word : {0U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 0x7FC00000U,
                                     0x7F800000U, kEllipse, kArc, kPie, kEnd}) {
      Words damaged = good;
      damaged[at] = word;
      const DrawableChain chain(read(damaged));
      ASSERT_NE(chain.first(), nullptr);
      for (DL::Drawable* drawable : chain.drawables()) use(*drawable, recorded);
    }
  }
}

}  // namespace
