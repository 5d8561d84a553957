#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "displaylist/text/encoded_text.h"
#include "tests/support/temporary_locale.h"

// What strings answer: whether two are equal, what their copies hold, and their
// characters one by one.

namespace {

using DL::EncodedText;

std::string bytes_of(const EncodedText& text) {
  return reinterpret_cast<const char*>(text.multiByteString());
}

std::wstring units_of(const EncodedText& text) {
  return text.unicodeString();
}

std::wstring widened(const std::string& ascii) {
  return {ascii.begin(), ascii.end()};
}

class EncodedTextAnswers : public testing::Test {
 protected:
  SelectedLocale locale{"C"};
};

// --- Equality ---------------------------------------------------------------

TEST_F(EncodedTextAnswers, TextsOfEqualCharactersAreEqual) {
  EXPECT_EQ(EncodedText(L"abc", 3, true) == EncodedText("abc", 4, true), 1);
  EXPECT_EQ(EncodedText(L"abc", 3, false) == EncodedText("abc", 4, false), 1);
}

TEST_F(EncodedTextAnswers, TextsThatDifferInACharacterAreUnequal) {
  for (const bool unicode : {false, true}) {
    EXPECT_EQ(EncodedText("abc", 3, unicode) == EncodedText("abd", 3, unicode), 0);
    EXPECT_EQ(EncodedText("abc", 3, unicode) == EncodedText("bbc", 3, unicode), 0);
  }
}

TEST_F(EncodedTextAnswers, TextsOfDifferentEncodingsAreUnequal) {
  // Of one character, so that the bytes up to a zero are the same.
  EXPECT_EQ(EncodedText("a", 1, false) == EncodedText("a", 1, true), 0);
  EXPECT_EQ(EncodedText("", 1, false) == EncodedText("", 1, true), 0);
  EXPECT_EQ(EncodedText("abc", 3, true) == EncodedText("abc", 3, false), 0);
  EXPECT_EQ(EncodedText("abc", 3, false) == EncodedText("abc", 3, true), 0);
}

TEST_F(EncodedTextAnswers, TextsOfDifferentLengthsAreUnequalEvenIfTheirStringsAgree) {
  for (const bool unicode : {false, true}) {
    EXPECT_EQ(EncodedText("ab\0c", 4, unicode) == EncodedText("ab", 2, unicode), 0);
    EXPECT_EQ(EncodedText("ab", 2, unicode) == EncodedText("ab\0c", 4, unicode), 0);
    EXPECT_EQ(EncodedText("abc", 3, unicode) == EncodedText("abc", 2, unicode), 0);
  }
}

TEST_F(EncodedTextAnswers, WhatIsBehindATerminatorIsNotCompared) {
  for (const bool unicode : {false, true}) {
    EXPECT_EQ(EncodedText("ab\0c", 4, unicode) == EncodedText("ab\0d", 4, unicode), 1);
    EXPECT_EQ(EncodedText("ab\0c", 4, unicode) == EncodedText("abcd", 4, unicode), 0);
    EXPECT_EQ(EncodedText("abcd", 4, unicode) == EncodedText("ab\0c", 4, unicode), 0);
  }
}

TEST_F(EncodedTextAnswers, TextIsUnequalToOneThatAConversionLeftEmpty) {
  EXPECT_EQ(EncodedText("ab", 2, true) == EncodedText("\xC3\xBC", 2, true), 0);
  EXPECT_EQ(EncodedText("\xC3\xBC", 2, true) == EncodedText("ab", 2, true), 0);
}

TEST_F(EncodedTextAnswers, TextIsEqualToItself) {
  for (const bool unicode : {false, true}) {
    EncodedText text("abc", 3, unicode);
    EXPECT_EQ(text == text, 1);
  }
}

// --- Copies -----------------------------------------------------------------

TEST_F(EncodedTextAnswers, CopyHasAStringOfItsOwnInTheSameEncoding) {
  for (const bool unicode : {false, true}) {
    auto source = std::make_unique<EncodedText>("abc", 3, unicode);
    EncodedText copy(*source);
    EXPECT_EQ(copy.isUnicode(), unicode);
    EXPECT_EQ(copy.length(), 3);
    EXPECT_NE(copy.unicodeString(), source->unicodeString());
    EXPECT_EQ(*source == copy, 1);
    source.reset();
    const std::wstring characters = unicode ? units_of(copy) : widened(bytes_of(copy));
    EXPECT_EQ(characters, L"abc");
  }
}

TEST_F(EncodedTextAnswers, CopyOfATextWithoutCharactersHasNone) {
  for (const bool unicode : {false, true}) {
    const EncodedText empty("", 1, unicode);
    const EncodedText copy(empty);
    EXPECT_EQ(copy.length(), 0);
    EXPECT_EQ(copy.isUnicode(), unicode);
  }
}

TEST_F(EncodedTextAnswers, CopyOfATextThatAConversionLeftEmptyIsEmpty) {
  const EncodedText source("\xC3\xBC", 2, true);
  const EncodedText copy(source);
  EXPECT_EQ(copy.length(), 2);
  EXPECT_EQ(copy.unicodeString(), nullptr);
}

// --- Characters -------------------------------------------------------------

TEST_F(EncodedTextAnswers, TellsWideCharactersByIndex) {
  const EncodedText text(L"a\u3042\uFFFF", 3, true);
  EXPECT_EQ(text.unicodeCharacter(0), L'a');
  EXPECT_EQ(text.unicodeCharacter(1), L'\u3042');
  EXPECT_EQ(text.unicodeCharacter(2), 0xFFFF);
  EXPECT_EQ(text.unicodeCharacter(3), 0) << "the terminator";
}

TEST_F(EncodedTextAnswers, TellsMultibyteCharactersByPosition) {
  const EncodedText text("abc", 3, false);
  EXPECT_EQ(text.multiByteCharacter(0), 'a');
  EXPECT_EQ(text.multiByteCharacter(1), 'b');
  EXPECT_EQ(text.multiByteCharacter(2), 'c');
}

TEST_F(EncodedTextAnswers, PositionBelowOneIsTheFirstCharacterAndOneBehindTheEndNone) {
  const EncodedText text("abc", 3, false);
  EXPECT_EQ(text.multiByteCharacter(-1), 'a');
  EXPECT_EQ(text.multiByteCharacter(INT32_MIN), 'a');
  EXPECT_EQ(text.multiByteCharacter(3), 0);
  EXPECT_EQ(text.multiByteCharacter(INT32_MAX), 0);
}

TEST_F(EncodedTextAnswers, CopiesACharacterAsATerminatedString) {
  const EncodedText text("ab\xFE", 3, false);
  for (const auto& [position, low_byte] : {std::pair{-7, 'a'}, {0, 'a'}, {1, 'b'}, {2, '\xFE'}}) {
    char out[] = "xyz";
    text.getMultiByteCharacter(position, out);
    EXPECT_EQ(out[0], low_byte);
    EXPECT_EQ(out[1], 0);
    EXPECT_EQ(out[2], 'z') << "not written";
  }
}

}  // namespace
