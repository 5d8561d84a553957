#include "displaylist/text/encoded_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/failing_default_heap.h"
#include "tests/support/temporary_locale.h"

// Strings as callers hand them in, in the locale that has nothing but ASCII.

namespace {

using DL::EncodedText;

std::string bytes_of(const EncodedText& text) {
  return reinterpret_cast<const char*>(text.multiByteString());
}

std::wstring units_of(const EncodedText& text) {
  return text.unicodeString();
}

class EncodedTextInC : public testing::Test {
 protected:
  SelectedLocale locale{"C"};
};

TEST_F(EncodedTextInC, WithoutAStringIsEmptyAndMultibyte) {
  const EncodedText text{};
  EXPECT_EQ(text.length(), 0);
  EXPECT_FALSE(text.isUnicode());
  EXPECT_EQ(text.unicodeString(), nullptr);
}

TEST_F(EncodedTextInC, KeepsWideStringsWide) {
  const wchar_t source[] = L"Hello";
  const EncodedText text(source, 5, true);
  EXPECT_TRUE(text.isUnicode());
  EXPECT_EQ(text.length(), 5);
  EXPECT_EQ(units_of(text), L"Hello");
  EXPECT_NE(text.unicodeString(), source);
}

TEST_F(EncodedTextInC, KeepsMultibyteStringsMultibyte) {
  const char source[] = "Hello";
  const EncodedText text(source, 5, false);
  EXPECT_FALSE(text.isUnicode());
  EXPECT_EQ(text.length(), 5);
  EXPECT_EQ(bytes_of(text), "Hello");
  EXPECT_NE(static_cast<const void*>(text.multiByteString()), source);
}

TEST_F(EncodedTextInC, ConvertsToWhatTheCallerAsksToKeep) {
  const EncodedText narrow(L"Hello", 5, false);
  EXPECT_FALSE(narrow.isUnicode());
  EXPECT_EQ(narrow.length(), 5);
  EXPECT_EQ(bytes_of(narrow), "Hello");
  const EncodedText wide("Hello", 5, true);
  EXPECT_TRUE(wide.isUnicode());
  EXPECT_EQ(wide.length(), 5);
  EXPECT_EQ(units_of(wide), L"Hello");
}

TEST_F(EncodedTextInC, GivesOnePointerForBothEncodings) {
  for (const bool unicode : {false, true}) {
    const EncodedText text("ab", 2, unicode);
    EXPECT_EQ(static_cast<const void*>(text.unicodeString()),
              static_cast<const void*>(text.multiByteString()));
  }
}

TEST_F(EncodedTextInC, CountThatIncludesTheTerminatorIsOneLess) {
  for (const bool unicode : {false, true}) {
    EXPECT_EQ(EncodedText(L"Hello", 6, unicode).length(), 5);
    EXPECT_EQ(EncodedText("Hello", 6, unicode).length(), 5);
  }
  EXPECT_EQ(units_of(EncodedText(L"Hello", 6, true)), L"Hello");
  EXPECT_EQ(bytes_of(EncodedText(L"Hello", 6, false)), "Hello");
  EXPECT_EQ(units_of(EncodedText("Hello", 6, true)), L"Hello");
  EXPECT_EQ(bytes_of(EncodedText("Hello", 6, false)), "Hello");
}

TEST_F(EncodedTextInC, OnlyOneTerminatorIsTakenOff) {
  EXPECT_EQ(EncodedText(L"ab\0", 4, true).length(), 3);
  EXPECT_EQ(EncodedText("ab\0", 4, false).length(), 3);
}

TEST_F(EncodedTextInC, OfATerminatorAloneHasNoCharactersAndANullPointer) {
  for (const bool unicode : {false, true}) {
    const EncodedText from_wide(L"", 1, unicode);
    EXPECT_EQ(from_wide.length(), 0);
    EXPECT_EQ(from_wide.unicodeString(), nullptr);
    EXPECT_EQ(from_wide.isUnicode(), unicode);
    const EncodedText from_multibyte("", 1, unicode);
    EXPECT_EQ(from_multibyte.length(), 0);
    EXPECT_EQ(from_multibyte.unicodeString(), nullptr);
    EXPECT_EQ(from_multibyte.isUnicode(), unicode);
  }
}

TEST_F(EncodedTextInC, OfALengthBelowOneHasNoCharacters) {
  for (const std::int32_t length : {0, -1, INT32_MIN}) {
    for (const bool unicode : {false, true}) {
      const EncodedText from_wide(L"abc", length, unicode);
      EXPECT_EQ(from_wide.length(), 0);
      EXPECT_EQ(from_wide.unicodeString(), nullptr);
      const EncodedText from_multibyte("abc", length, unicode);
      EXPECT_EQ(from_multibyte.length(), 0);
      EXPECT_EQ(from_multibyte.unicodeString(), nullptr);
    }
  }
}

TEST_F(EncodedTextInC, OfANullTextHasNoCharacters) {
  for (const std::int32_t length : {-1, 0, 1, 5, INT32_MAX}) {
    for (const bool unicode : {false, true}) {
      const EncodedText from_wide(static_cast<const wchar_t*>(nullptr), length, unicode);
      EXPECT_EQ(from_wide.length(), 0);
      EXPECT_EQ(from_wide.unicodeString(), nullptr);
      const EncodedText from_multibyte(static_cast<const char*>(nullptr), length, unicode);
      EXPECT_EQ(from_multibyte.length(), 0);
      EXPECT_EQ(from_multibyte.unicodeString(), nullptr);
    }
  }
}

TEST_F(EncodedTextInC, TakesNoMoreThanTheCountAndTerminatesIt) {
  EXPECT_EQ(units_of(EncodedText(L"Hello", 2, true)), L"He");
  EXPECT_EQ(bytes_of(EncodedText(L"Hello", 2, false)), "He");
  EXPECT_EQ(units_of(EncodedText("Hello", 2, true)), L"He");
  EXPECT_EQ(bytes_of(EncodedText("Hello", 2, false)), "He");
}

TEST_F(EncodedTextInC, ReadsNothingBehindTheCount) {
  // Arrays of their own, so that the sanitizer knows where they end.
  const std::unique_ptr<wchar_t[]> wide(new wchar_t[2]{'a', 'b'});
  const std::unique_ptr<char[]> multibyte(new char[2]{'a', 'b'});
  for (const bool unicode : {false, true}) {
    EXPECT_EQ(EncodedText(wide.get(), 2, unicode).length(), 2);
    EXPECT_EQ(EncodedText(multibyte.get(), 2, unicode).length(), 2);
  }
}

TEST_F(EncodedTextInC, StringThatEndsBeforeItsCountKeepsTheCount) {
  for (const bool unicode : {false, true}) {
    const EncodedText from_wide(L"ab\0cd", 5, unicode);
    EXPECT_EQ(from_wide.length(), 5);
    const EncodedText from_multibyte("ab\0cd", 5, unicode);
    EXPECT_EQ(from_multibyte.length(), 5);
    if (unicode) {
      EXPECT_EQ(units_of(from_wide), L"ab");
      EXPECT_EQ(units_of(from_multibyte), L"ab");
    } else {
      EXPECT_EQ(bytes_of(from_wide), "ab");
      EXPECT_EQ(bytes_of(from_multibyte), "ab");
    }
  }
}

TEST_F(EncodedTextInC, CharacterThatTheLocaleDoesNotHaveIsAQuestionMark) {
  const EncodedText text(L"a\u3042b\u00E9c", 5, false);
  EXPECT_EQ(text.length(), 5);
  EXPECT_EQ(bytes_of(text), "a?b?c");
  EXPECT_EQ(bytes_of(EncodedText(L"\u3042", 1, false)), "?");
  EXPECT_EQ(units_of(EncodedText(L"a\u3042b", 3, true)), L"a\u3042b");
}

TEST_F(EncodedTextInC, UnpairedSurrogatesAreKeptWideAndAreQuestionMarksElse) {
  for (const wchar_t half : {wchar_t{0xD83D}, wchar_t{0xDE00}, wchar_t{0xDFFF}}) {
    const wchar_t units[] = {'a', half, 'b'};
    EXPECT_EQ(units_of(EncodedText(units, 3, true)), std::wstring(units, 3));
    EXPECT_EQ(bytes_of(EncodedText(units, 3, false)), "a?b");
  }
  const wchar_t wrong_way_round[] = {0xDE00, 0xD83D};
  EXPECT_EQ(bytes_of(EncodedText(wrong_way_round, 2, false)), "??");
}

TEST_F(EncodedTextInC, ConversionThatYieldsNothingGivesANullStringOfTheSameLength) {
  const EncodedText no_characters("\xC3\xBC", 2, true);
  EXPECT_EQ(no_characters.unicodeString(), nullptr);
  EXPECT_EQ(no_characters.length(), 2);
  EXPECT_TRUE(no_characters.isUnicode());
  const EncodedText ends_at_once(L"\0b", 2, false);
  EXPECT_EQ(ends_at_once.multiByteString(), nullptr);
  EXPECT_EQ(ends_at_once.length(), 2);
  const EncodedText bytes_end_at_once("\0b", 2, true);
  EXPECT_EQ(bytes_end_at_once.unicodeString(), nullptr);
  EXPECT_EQ(bytes_end_at_once.length(), 2);
}

TEST_F(EncodedTextInC, BytesThatAreNoCharactersAreKeptAsTheyAre) {
  const EncodedText text("a\xFF\x80", 3, false);
  EXPECT_EQ(bytes_of(text), "a\xFF\x80");
  EXPECT_EQ(text.multiByteCharacter(1), 0xFF);
}

// --- Memory -----------------------------------------------------------------

TEST_F(EncodedTextInC, IsNullWhereMemoryRunsOut) {
  const FailingDefaultHeap failing;
  EXPECT_EQ(new EncodedText("abc", 3, true), nullptr);
}

TEST_F(EncodedTextInC, IsWithoutCharactersWhereMemoryRunsOutForThem) {
  for (const bool unicode : {false, true}) {
    const FailingDefaultHeap failing;
    EncodedText from_wide(L"abc", 3, unicode);
    EXPECT_EQ(from_wide.unicodeString(), nullptr);
    EncodedText from_multibyte("abc", 3, unicode);
    EXPECT_EQ(from_multibyte.unicodeString(), nullptr);
    EXPECT_EQ(from_wide == from_multibyte, 1);
  }
}

TEST_F(EncodedTextInC, CopyIsWithoutCharactersWhereMemoryRunsOut) {
  for (const bool unicode : {false, true}) {
    const EncodedText source("abc", 3, unicode);
    const FailingDefaultHeap failing;
    const EncodedText copy(source);
    EXPECT_EQ(copy.unicodeString(), nullptr);
    EXPECT_EQ(copy.isUnicode(), unicode);
  }
}

}  // namespace
