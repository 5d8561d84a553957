#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "displaylist/platform/memory.h"
#include "displaylist/text/encoded_text.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/temporary_locale.h"
#include "tests/text/piece_stream.h"

// The bytes of a string in a stream, and what reading makes of them.

namespace {

using DL::EncodedText;

template <class Text>
std::vector<Bytes> pieces_of(Text&& text) {
  PieceStream stream;
  text.serialize_out(&stream);
  return stream.pieces;
}

std::unique_ptr<EncodedText> read(const Bytes& bytes) {
  PieceStream stream(bytes);
  auto text = std::make_unique<EncodedText>();
  text->serialize_in(&stream);
  return text;
}

/// The first `length` elements, which are all that there is of a text that was
/// read.
std::wstring elements_of(const EncodedText& text) {
  std::wstring elements;
  for (std::int32_t i = 0; i < text.length(); ++i) {
    elements += text.isUnicode() ? text.unicodeString()[i] : text.multiByteString()[i];
  }
  return elements;
}

/// The record of the letters a, b, c, a, b and so on.
Bytes record_of_letters(std::int32_t length, bool unicode) {
  Bytes bytes{std::uint8_t{unicode}};
  for (const std::uint8_t byte : bytes_of(length)) bytes.push_back(byte);
  for (std::int32_t i = 0; i < length; ++i) {
    bytes.push_back(static_cast<std::uint8_t>('a' + i % 3));
    if (unicode) bytes.push_back(0);
  }
  return bytes;
}

std::wstring letters(std::int32_t length) {
  std::wstring text;
  for (std::int32_t i = 0; i < length; ++i) text += static_cast<wchar_t>('a' + i % 3);
  return text;
}

TEST(EncodedTextRecord, OfAWideStringIsItsCodeUnits) {
  EXPECT_EQ(pieces_of(EncodedText(L"A\u3042\xFFFE", 3, true)),
            (std::vector<Bytes>{{1}, {3, 0, 0, 0}, {'A', 0}, {0x42, 0x30}, {0xFE, 0xFF}}));
}

TEST(EncodedTextRecord, OfAMultibyteStringIsItsBytes) {
  EXPECT_EQ(pieces_of(EncodedText("Az", 2, false)),
            (std::vector<Bytes>{{0}, {2, 0, 0, 0}, {'A'}, {'z'}}));
}

TEST(EncodedTextRecord, WithoutCharactersEndsWithTheLength) {
  EXPECT_EQ(pieces_of(EncodedText("", 1, true)), (std::vector<Bytes>{{1}, {0, 0, 0, 0}}));
  EXPECT_EQ(pieces_of(EncodedText("", 1, false)), (std::vector<Bytes>{{0}, {0, 0, 0, 0}}));
  EXPECT_EQ(pieces_of(EncodedText()), (std::vector<Bytes>{{0}, {0, 0, 0, 0}}));
}

TEST(EncodedTextRecord, HoldsAsManyElementsAsTheLengthSays) {
  const SelectedLocale locale("C");
  EXPECT_EQ(pieces_of(EncodedText("a\0b", 3, false)),
            (std::vector<Bytes>{{0}, {3, 0, 0, 0}, {'a'}, {0}, {0}}));
  EXPECT_EQ(pieces_of(EncodedText(L"a\0b", 3, true)),
            (std::vector<Bytes>{{1}, {3, 0, 0, 0}, {'a', 0}, {0, 0}, {0, 0}}));
  EXPECT_EQ(pieces_of(EncodedText("\xC3\xBC", 2, true)),
            (std::vector<Bytes>{{1}, {2, 0, 0, 0}, {0, 0}, {0, 0}}))
      << "nothing came of the conversion";
}

TEST(EncodedTextRecord, CutsStringsOfLongCharactersInUtf8) {
  const SelectedLocale locale("C.UTF-8");
  ASSERT_TRUE(locale.is_selected());
  EXPECT_EQ(pieces_of(EncodedText("\u3042z", 2, false)),
            (std::vector<Bytes>{{0}, {2, 0, 0, 0}, {0xE3}, {0x81}}));
  EXPECT_EQ(pieces_of(EncodedText("\U0001F600z", 2, true)),
            (std::vector<Bytes>{{1}, {2, 0, 0, 0}, {0x3D, 0xD8}, {0x00, 0xDE}}));
}

TEST(EncodedTextRecord, IsReadAsItWasWritten) {
  for (const bool unicode : {false, true}) {
    for (const std::int32_t length : {1, 2, 254, 255, 256, 257, 511, 512, 513, 5000}) {
      const Bytes record = record_of_letters(length, unicode);
      const auto text = read(record);
      EXPECT_EQ(text->isUnicode(), unicode);
      EXPECT_EQ(text->length(), length);
      EXPECT_EQ(elements_of(*text), letters(length));
      EXPECT_EQ(joined(pieces_of(*text)), record);
    }
  }
}

TEST(EncodedTextRecord, IsReadElementByElement) {
  PieceStream wide(record_of_letters(3, true));
  EncodedText().serialize_in(&wide);
  EXPECT_EQ(wide.asked, (std::vector<std::int32_t>{1, 4, 2, 2, 2}));
  PieceStream multibyte(record_of_letters(3, false));
  EncodedText().serialize_in(&multibyte);
  EXPECT_EQ(multibyte.asked, (std::vector<std::int32_t>{1, 4, 1, 1, 1}));
}

TEST(EncodedTextRecord, IsReadUpToItsEnd) {
  Bytes bytes = record_of_letters(3, true);
  const std::size_t size = bytes.size();
  bytes.resize(size + 9, 0xEE);
  PieceStream stream(bytes);
  EncodedText text;
  text.serialize_in(&stream);
  EXPECT_EQ(stream.position(), size);
}

TEST(EncodedTextRecord, ThatWasReadIsEqualToTheTextThatWasWritten) {
  for (const bool unicode : {false, true}) {
    EncodedText written("abca", 4, unicode);
    EXPECT_EQ(written == *read(joined(pieces_of(written))), 1);
    EXPECT_EQ(written == *read(record_of_letters(3, unicode)), 0);
  }
}

TEST(EncodedTextRecord, WhatWasReadBehindATerminatorIsNotCompared) {
  const auto multibyte = read({0, 3, 0, 0, 0, 'a', 0, 'b'});
  EXPECT_EQ(*multibyte == *read({0, 3, 0, 0, 0, 'a', 0, 'c'}), 1);
  EXPECT_EQ(*multibyte == *read({0, 3, 0, 0, 0, 'a', 'b', 'b'}), 0);
  const auto wide = read({1, 3, 0, 0, 0, 'a', 0, 0, 0, 'b', 0});
  EXPECT_EQ(*wide == *read({1, 3, 0, 0, 0, 'a', 0, 0, 0, 'c', 0}), 1);
  EXPECT_EQ(*wide == *read({1, 3, 0, 0, 0, 'a', 0, 'b', 0, 'b', 0}), 0);
}

TEST(EncodedTextRecord, ThatWasReadCanBeCopied) {
  for (const bool unicode : {false, true}) {
    const auto text = read(record_of_letters(300, unicode));
    EncodedText copy(*text);
    EXPECT_EQ(elements_of(copy), letters(300));
    EXPECT_EQ(*text == copy, 1);
  }
}

TEST(EncodedTextRecord, OfAnyFlagButZeroIsWide) {
  for (const std::uint8_t flag : {std::uint8_t{2}, std::uint8_t{0x80}, std::uint8_t{0xFF}}) {
    const auto text = read({flag, 1, 0, 0, 0, 'a', 0});
    EXPECT_TRUE(text->isUnicode());
    EXPECT_EQ(elements_of(*text), L"a");
    EXPECT_EQ(pieces_of(*text)[0], Bytes{1});
  }
}

TEST(EncodedTextRecord, WithALengthBelowOneHasNoCharacters) {
  for (const std::int32_t length : {0, -1, INT32_MIN}) {
    for (const std::uint8_t flag : {std::uint8_t{0}, std::uint8_t{1}}) {
      Bytes bytes{flag};
      for (const std::uint8_t byte : bytes_of(length)) bytes.push_back(byte);
      bytes.resize(bytes.size() + 8, 'a');
      PieceStream stream(bytes);
      EncodedText text;
      text.serialize_in(&stream);
      EXPECT_EQ(stream.position(), 5U);
      EXPECT_EQ(text.unicodeString(), nullptr);
      EXPECT_LE(text.length(), 0);
      EncodedText copy(text);
      EXPECT_EQ(copy.unicodeString(), nullptr);
      EXPECT_EQ(text == copy, 1);
      EXPECT_EQ(pieces_of(text).size(), 2U) << "no characters are written";
    }
  }
}

TEST(EncodedTextRecord, CutOffAtAnyByteHasTheCharactersThatThereAre) {
  for (const bool unicode : {false, true}) {
    const Bytes whole = record_of_letters(5, unicode);
    const std::size_t width = unicode ? 2 : 1;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
      const auto text = read(first(whole, size));
      const auto expected = static_cast<std::int32_t>(size < 5 ? 0 : (size - 5) / width);
      EXPECT_EQ(text->length(), expected) << size;
      EXPECT_EQ(elements_of(*text), letters(expected));
      EXPECT_EQ(text->isUnicode(), unicode && size > 0);
      EncodedText copy(*text);
      EXPECT_EQ(elements_of(copy), letters(expected));
      EXPECT_EQ(joined(pieces_of(copy)).size(), 5 + width * static_cast<std::size_t>(expected));
    }
  }
}

TEST(EncodedTextRecord, WhoseLengthLiesHasTheCharactersThatThereAre) {
  for (const bool unicode : {false, true}) {
    for (const std::int32_t there : {0, 3, 255, 256, 257, 3000}) {
      for (const std::int32_t told : {there + 1, 100'000, INT32_MAX}) {
        Bytes bytes = record_of_letters(there, unicode);
        std::copy_n(bytes_of(told).begin(), 4, bytes.begin() + 1);
        const auto text = read(bytes);
        EXPECT_EQ(text->length(), there);
        EXPECT_EQ(elements_of(*text), letters(there));
      }
    }
  }
}

TEST(EncodedTextRecord, HasATerminatorBehindCharactersThatAreCut) {
  const SelectedLocale locale("C.UTF-8");
  ASSERT_TRUE(locale.is_selected());
  const auto text = read({0, 2, 0, 0, 0, 'a', 0xE3});
  EXPECT_EQ(text->multiByteCharacter(1), 0xE3);
  EXPECT_EQ(text->multiByteCharacter(2), 0);
  const EncodedText copy(*text);
  EXPECT_STREQ(reinterpret_cast<const char*>(copy.multiByteString()), "a\xE3");
}

TEST(EncodedTextRecord, DoesNotReleaseTheStringThatTheTextHadBefore) {
  EncodedText text(L"abc", 3, true);
  const auto* before = text.unicodeString();
  PieceStream stream(record_of_letters(2, false));
  text.serialize_in(&stream);
  EXPECT_EQ(elements_of(text), L"ab");
  EXPECT_STREQ(before, L"abc");
  LD_ReleaseMemory(const_cast<wchar_t*>(before));
}

TEST(EncodedTextRecord, IsReadToItsEndWhereverMemoryRunsOut) {
  for (const bool unicode : {false, true}) {
    const Bytes record = record_of_letters(3000, unicode);
    int refusals = 0;
    for (std::int64_t good_requests = 0; good_requests < 10; ++good_requests) {
      PieceStream stream(record);
      EncodedText text;
      {
        const FailingDefaultHeap failing(good_requests);
        text.serialize_in(&stream);
      }
      EXPECT_TRUE(stream.at_end());
      if (text.unicodeString() != nullptr) {
        EXPECT_EQ(elements_of(text), letters(3000));
        break;
      }
      ++refusals;
      const EncodedText copy(text);
      EXPECT_EQ(copy.unicodeString(), nullptr);
      EXPECT_EQ(joined(pieces_of(text)).size(), record.size()) << "zeros";
    }
    EXPECT_GT(refusals, 1);
    EXPECT_LT(refusals, 10);
  }
}

}  // namespace
