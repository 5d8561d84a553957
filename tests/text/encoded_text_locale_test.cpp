#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "displaylist/text/encoded_text.h"
#include "tests/support/temporary_locale.h"
#include "tests/text/piece_stream.h"

// Strings in locales of three kinds: single bytes, double bytes and UTF-8.

namespace {

using DL::EncodedText;

std::string bytes_of(const EncodedText& text) {
  return reinterpret_cast<const char*>(text.multiByteString());
}

std::wstring units_of(const EncodedText& text) {
  return text.unicodeString();
}

/// What getMultiByteCharacter writes into room for three bytes.
std::string character_of(const EncodedText& text, std::int32_t position) {
  char out[] = "xyz";
  text.getMultiByteCharacter(position, out);
  return {out, 3};
}

// UTF-8: a, e with acute, a Japanese letter, a smiley of two code units, z.
constexpr const char* kMixed = "a\u00E9\u3042\U0001F600z";
const std::wstring kMixedUnits = {'a', 0xE9, 0x3042, 0xD83D, 0xDE00, 'z'};

class EncodedTextInUtf8 : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(locale.is_selected()); }
  SelectedLocale locale{"C.UTF-8"};
};

TEST_F(EncodedTextInUtf8, LengthCountsCharactersNotBytes) {
  const EncodedText whole(kMixed, 5, false);
  EXPECT_EQ(whole.length(), 5);
  EXPECT_EQ(bytes_of(whole), kMixed);
  EXPECT_EQ(bytes_of(EncodedText(kMixed, 3, false)), "a\u00E9\u3042");
  EXPECT_EQ(bytes_of(EncodedText(kMixed, 4, false)), "a\u00E9\u3042\U0001F600");
}

TEST_F(EncodedTextInUtf8, ConversionNeverChangesTheLength) {
  const EncodedText wide(kMixed, 5, true);
  EXPECT_EQ(units_of(wide), kMixedUnits);
  EXPECT_EQ(wide.length(), 5) << "characters as the caller counted them";
  const EncodedText multibyte(kMixedUnits.c_str(), 6, false);
  EXPECT_EQ(bytes_of(multibyte), kMixed);
  EXPECT_EQ(multibyte.length(), 6) << "code units as the caller counted them";
}

TEST_F(EncodedTextInUtf8, ConvertsNoMoreCharactersThanTheCount) {
  EXPECT_EQ(units_of(EncodedText(kMixed, 2, true)), L"a\u00E9");
  EXPECT_EQ(units_of(EncodedText(kMixed, 4, true)), kMixedUnits.substr(0, 5));
  EXPECT_EQ(bytes_of(EncodedText(kMixedUnits.c_str(), 3, false)), "a\u00E9\u3042");
}

TEST_F(EncodedTextInUtf8, PairOfSurrogatesThatTheCountCutsIsNoCharacter) {
  EXPECT_EQ(bytes_of(EncodedText(kMixedUnits.c_str(), 4, false)), "a\u00E9\u3042?");
}

TEST_F(EncodedTextInUtf8, UnpairedSurrogateIsAQuestionMarkAmongItsNeighbours) {
  const wchar_t units[] = {0xDE00, 0xE9, 0xD83D, 'b', 0xD83D};
  EXPECT_EQ(bytes_of(EncodedText(units, 5, false)), "?\u00E9?b?");
}

TEST_F(EncodedTextInUtf8, TellsCodePointsInTheLow16Bits) {
  const EncodedText text(kMixed, 5, false);
  EXPECT_EQ(text.multiByteCharacter(0), 'a');
  EXPECT_EQ(text.multiByteCharacter(1), 0xE9);
  EXPECT_EQ(text.multiByteCharacter(2), 0x3042);
  EXPECT_EQ(text.multiByteCharacter(3), 0xF600);
  EXPECT_EQ(text.multiByteCharacter(4), 'z');
  EXPECT_EQ(text.multiByteCharacter(5), 0);
}

TEST_F(EncodedTextInUtf8, CopiesTheLowByteOfACharacterAlone) {
  const EncodedText text(kMixed, 5, false);
  EXPECT_EQ(character_of(text, 1), std::string("\xE9\0z", 3));
  EXPECT_EQ(character_of(text, 2), std::string("\x42\0z", 3));
}

TEST_F(EncodedTextInUtf8, BytesThatAreNoCharactersConvertToNothing) {
  for (const char* bad : {"\xFFz", "a\xE3\x81", "\xED\xA0\xBD", "\x80z"}) {
    const EncodedText text(bad, 2, true);
    EXPECT_EQ(text.unicodeString(), nullptr);
    EXPECT_EQ(text.length(), 2);
  }
}

TEST_F(EncodedTextInUtf8, BytesThatAreNoCharactersCountOneEach) {
  const EncodedText text("\xE3\x81q\u3042", 4, false);
  EXPECT_EQ(bytes_of(text), "\xE3\x81q\u3042");
  EXPECT_EQ(text.multiByteCharacter(1), 0x81);
  EXPECT_EQ(text.multiByteCharacter(3), 0x3042);
}

TEST_F(EncodedTextInUtf8, CopyHoldsAllBytes) {
  EncodedText source(kMixed, 5, false);
  EncodedText copy(source);
  EXPECT_EQ(bytes_of(copy), kMixed);
  EXPECT_EQ(copy.length(), 5);
  EXPECT_EQ(source == copy, 1);
}

TEST_F(EncodedTextInUtf8, EqualMultibyteTextsAreComparedToTheirEnds) {
  EncodedText smiley("\U0001F600b", 2, false);
  EncodedText other("\U0001F600c", 2, false);
  EXPECT_EQ(smiley == other, 0);
}

TEST_F(EncodedTextInUtf8, LongStringsOfLongCharactersFit) {
  constexpr std::int32_t count = 1000;
  std::wstring units;
  std::string bytes;
  for (std::int32_t i = 0; i < count; ++i) {
    units += static_cast<wchar_t>(0x3042);
    bytes += "\u3042";
  }
  EXPECT_EQ(bytes_of(EncodedText(units.c_str(), count, false)), bytes);
  EXPECT_EQ(units_of(EncodedText(bytes.c_str(), count, true)), units);
}

// Double bytes: a, a Japanese letter whose second byte would be a backslash
// alone, a half-width one, z.
constexpr const char* kJapanese = "a\x83\x5C\xB1z";

class EncodedTextInShiftJis : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(locale.is_selected()); }
  TemporaryLocale locale{"ja_JP", "SHIFT_JIS"};
};

TEST_F(EncodedTextInShiftJis, LengthCountsDoubleByteCharactersOnce) {
  const EncodedText text(kJapanese, 4, false);
  EXPECT_EQ(text.length(), 4);
  EXPECT_EQ(bytes_of(text), kJapanese);
  EXPECT_EQ(bytes_of(EncodedText(kJapanese, 2, false)), "a\x83\x5C");
}

TEST_F(EncodedTextInShiftJis, TerminatorIsLookedForAtTheByteOfTheCount) {
  // Three characters and the terminator: the byte before the count is no zero.
  const EncodedText text("a\x83\x5Cz", 4, false);
  EXPECT_EQ(text.length(), 4);
  EXPECT_EQ(bytes_of(text), "a\x83\x5Cz");
  EXPECT_EQ(EncodedText("a\x83\x5Cz", 5, false).length(), 4);
}

TEST_F(EncodedTextInShiftJis, ConvertsBothWays) {
  EXPECT_EQ(units_of(EncodedText(kJapanese, 4, true)), L"a\u30BD\uFF71z");
  const EncodedText multibyte(L"a\u30BD\uFF71z", 4, false);
  EXPECT_EQ(bytes_of(multibyte), kJapanese);
  EXPECT_EQ(multibyte.length(), 4);
}

TEST_F(EncodedTextInShiftJis, OtherCharactersKeepTheirConversionBesideAQuestionMark) {
  const EncodedText text(L"\u30BD\u05D0\uFF71\u00E9z", 5, false);
  EXPECT_EQ(bytes_of(text), "\x83\x5C?\xB1?z");
  EXPECT_EQ(text.length(), 5);
}

TEST_F(EncodedTextInShiftJis, TellsBothBytesOfACharacterTheFirstOneHighest) {
  const EncodedText text(kJapanese, 4, false);
  EXPECT_EQ(text.multiByteCharacter(0), 'a');
  EXPECT_EQ(text.multiByteCharacter(1), 0x835C);
  EXPECT_EQ(text.multiByteCharacter(2), 0xB1);
  EXPECT_EQ(text.multiByteCharacter(3), 'z');
}

TEST_F(EncodedTextInShiftJis, DropsTheLeadByteOfACopiedCharacter) {
  const EncodedText text(kJapanese, 4, false);
  EXPECT_EQ(character_of(text, 0), std::string("a\0z", 3));
  EXPECT_EQ(character_of(text, 1), std::string("\x5C\0z", 3));
  EXPECT_EQ(character_of(text, 2), std::string("\xB1\0z", 3));
}

TEST_F(EncodedTextInShiftJis, HalfACharacterAtTheEndIsKeptAsAByte) {
  const EncodedText text("a\x83", 2, false);
  EXPECT_EQ(bytes_of(text), "a\x83");
  EXPECT_EQ(text.multiByteCharacter(1), 0x83);
  EXPECT_EQ(EncodedText("a\x83", 2, true).unicodeString(), nullptr);
}

TEST_F(EncodedTextInShiftJis, RecordHoldsAsManyBytesAsThereAreCharacters) {
  PieceStream stream;
  EncodedText(kJapanese, 4, false).serialize_out(&stream);
  EXPECT_EQ(stream.pieces, (std::vector<Bytes>{{0}, {4, 0, 0, 0}, {'a'}, {0x83}, {0x5C}, {0xB1}}));
}

TEST_F(EncodedTextInShiftJis, CopiesAreEqual) {
  EncodedText source(kJapanese, 4, false);
  EncodedText copy(source);
  EXPECT_EQ(bytes_of(copy), kJapanese);
  EXPECT_EQ(source == copy, 1);
}

class EncodedTextInLatin1 : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(locale.is_selected()); }
  TemporaryLocale locale{"de_DE", "ISO-8859-1"};
};

TEST_F(EncodedTextInLatin1, ConvertsBothWays) {
  EXPECT_EQ(units_of(EncodedText("caf\xE9", 4, true)), L"caf\u00E9");
  EXPECT_EQ(bytes_of(EncodedText(L"caf\u00E9", 4, false)), "caf\xE9");
}

TEST_F(EncodedTextInLatin1, OtherCharactersKeepTheirConversionBesideAQuestionMark) {
  EXPECT_EQ(bytes_of(EncodedText(L"caf\u00E9 \u3042\u00FC", 7, false)), "caf\xE9 ?\xFC");
}

TEST_F(EncodedTextInLatin1, TellsAndCopiesBytes) {
  const EncodedText text("\xE9\xC3\xA9", 3, false);
  EXPECT_EQ(text.multiByteCharacter(0), 0xE9);
  EXPECT_EQ(text.multiByteCharacter(1), 0xC3);
  EXPECT_EQ(character_of(text, 2), std::string("\xA9\0z", 3));
}

}  // namespace

TEST(EncodedTextLocale, WideStringsLongerThanTheirLengthAreComparedToTheirEnds) {
  const SelectedLocale locale("C.UTF-8");
  const EncodedText text("\U0001F600b", 2, true);
  EXPECT_EQ(text == EncodedText("\U0001F600c", 2, true), 0);
  EXPECT_EQ(text == EncodedText("\U0001F600b", 2, true), 1);
}

TEST(EncodedTextLocale, ZerosWithinTheStringStayWhenOthersCannotBeConverted) {
  const SelectedLocale locale("C");
  const wchar_t units[] = {'a', 0x3042, 0, 'b'};
  EncodedText text(units, 4, false);
  PieceStream stream;
  text.serialize_out(&stream);
  const std::vector<Bytes> expected{{0}, {4, 0, 0, 0}, {'a'}, {'?'}, {0}, {'b'}};
  EXPECT_EQ(stream.pieces, expected);
}

TEST(EncodedTextLocale, EachHalfOfAPairThatTheLocaleLacksIsAQuestionMark) {
  const SelectedLocale locale("C");
  const wchar_t units[] = {0xD83D, 0xDE00};
  EXPECT_EQ(bytes_of(EncodedText(units, 2, false)), "??");
}
