#include "displaylist/platform/multibyte.h"

#include <gtest/gtest.h>
#include <iconv.h>
#include <langinfo.h>

#include <string>
#include <vector>

#include "tests/support/temporary_locale.h"

using LM_Multibyte::kFailed;

namespace {

const unsigned char* bytes(const char* text) {
  return reinterpret_cast<const unsigned char*>(text);
}

/// All of a text as UTF-16, or nothing.
std::optional<std::u16string> wide(const std::string& text) {
  wchar_t units[64];
  const std::size_t count = LM_Multibyte::to_wide(units, 64, bytes(text.c_str()), INT32_MAX);
  if (count == kFailed) return std::nullopt;
  return std::u16string(units, units + count);
}

std::optional<std::string> narrow(const std::u16string& text) {
  const std::vector<wchar_t> units(text.begin(), text.end());
  unsigned char out[64];
  const std::size_t count = LM_Multibyte::from_wide(out, sizeof out, units.data(), units.size());
  if (count == kFailed) return std::nullopt;
  return std::string(out, out + count);
}

/// What the C library's other converter makes of it.
class Iconv {
 public:
  Iconv(const char* to, const char* from) : m_handle(iconv_open(to, from)) {}
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;
  ~Iconv() { iconv_close(m_handle); }

  std::optional<std::string> operator()(std::string text) {
    char out[64];
    char* in = text.data();
    char* end = out;
    std::size_t left = text.size();
    std::size_t room = sizeof out;
    iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
    if (iconv(m_handle, &in, &left, &end, &room) == kFailed || left > 0) return std::nullopt;
    return std::string(out, end);
  }

 private:
  iconv_t m_handle;
};

std::string memory_of(const std::u16string& text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

std::u16string units_of(char32_t code_point) {
  if (code_point < 0x10000) return {static_cast<char16_t>(code_point)};
  return {static_cast<char16_t>(0xD7C0 + (code_point >> 10)),
          static_cast<char16_t>(0xDC00 + (code_point & 0x3FF))};
}

/// Converts every character from and to UTF-16, and compares with iconv.
void expect_as_iconv(char32_t end) {
  Iconv from_utf_16(nl_langinfo(CODESET), "UTF-16LE");
  int characters = 0;
  for (char32_t code_point = 1; code_point < end; ++code_point) {
    const std::u16string units = units_of(code_point);
    const std::optional<std::string> text = narrow(units);
    ASSERT_EQ(text, from_utf_16(memory_of(units))) << std::hex << std::uint32_t{code_point};
    if (!text) continue;
    ++characters;
    ASSERT_EQ(LM_Multibyte::byte_count(bytes(text->c_str()), 1), text->size());
  }
  EXPECT_GT(characters, 250);
}

/// Converts every text of two bytes, and compares with iconv.
void expect_bytes_as_iconv() {
  Iconv to_utf_16("UTF-16LE", nl_langinfo(CODESET));
  for (int first = 1; first < 256; ++first) {
    for (int second = 1; second < 256; ++second) {
      const std::string text{static_cast<char>(first), static_cast<char>(second)};
      const std::optional<std::u16string> units = wide(text);
      const std::optional<std::string> expected = to_utf_16(text);
      ASSERT_EQ(units.has_value(), expected.has_value()) << first << ' ' << second;
      if (units) {
        ASSERT_EQ(memory_of(*units), *expected) << first << ' ' << second;
      }
    }
  }
}

// UTF-8.

TEST(MultibyteInUtf8, CountsCharacters) {
  const SelectedLocale locale("C.UTF-8");
  ASSERT_TRUE(locale.is_selected());
  const unsigned char* text = bytes("a\u00E9\u3042\U0001F600z");
  EXPECT_GE(LM_Multibyte::longest_character(), 4U);
  const std::size_t ends[] = {0, 1, 3, 6, 10, 11, 11};
  for (std::int32_t i = 0; i < 7; ++i) {
    EXPECT_EQ(LM_Multibyte::byte_count(text, i), ends[i]);
    EXPECT_EQ(LM_Multibyte::advanced(text, i), text + ends[i]);
  }
  EXPECT_EQ(LM_Multibyte::byte_count(text, -5), 0U);
  EXPECT_EQ(LM_Multibyte::byte_count(text, INT32_MAX), 11U);
}

TEST(MultibyteInUtf8, TellsCodePoints) {
  const SelectedLocale locale("C.UTF-8");
  EXPECT_EQ(LM_Multibyte::character_value(bytes("")), 0U);
  EXPECT_EQ(LM_Multibyte::character_value(bytes("ab")), 0x61U);
  EXPECT_EQ(LM_Multibyte::character_value(bytes("\u3042")), 0x3042U);
  EXPECT_EQ(LM_Multibyte::character_value(bytes("\U0001F600")), 0x1F600U);
  EXPECT_EQ(LM_Multibyte::character_value(bytes("\xE3\x81")), 0xE3U) << "no character";
}

TEST(MultibyteInUtf8, HasNoLeadBytes) {
  const SelectedLocale locale("C.UTF-8");
  for (std::uint32_t byte = 0; byte < 300; ++byte) EXPECT_FALSE(LM_Multibyte::is_lead_byte(byte));
}

TEST(MultibyteInUtf8, JoinsAndSplitsSurrogates) {
  const SelectedLocale locale("C.UTF-8");
  EXPECT_EQ(wide("\U0001F600b"),
            u"\xD83D\xDE00"
            u"b");
  EXPECT_EQ(narrow(u"\xD83D\xDE00"
                   u"b"),
            "\U0001F600b");
  EXPECT_EQ(narrow(u"a\xD83D"), std::nullopt);
  EXPECT_EQ(narrow(u"\xDE00\xD83D"), std::nullopt);
  EXPECT_EQ(wide("\xED\xA0\xBD"), std::nullopt) << "a surrogate in UTF-8";
  const wchar_t beyond[] = {0x1F600, 0};
  unsigned char out[8];
  EXPECT_EQ(LM_Multibyte::from_wide(out, 8, beyond, 1), kFailed) << "no code unit";
}

TEST(MultibyteInUtf8, MeasuresUnits) {
  const wchar_t pair[] = {0xD83D, 0xDE00, 0xD83D};
  EXPECT_EQ(LM_Multibyte::unit_count(pair, 3), 2U);
  EXPECT_EQ(LM_Multibyte::unit_count(pair, 1), 1U);
  EXPECT_EQ(LM_Multibyte::unit_count(pair + 1, 2), 1U);
  EXPECT_EQ(LM_Multibyte::unit_count(pair + 2, 1), 1U);
}

TEST(MultibyteInUtf8, WritesWholeCharactersInTheRoomThereIs) {
  const SelectedLocale locale("C.UTF-8");
  const unsigned char* text = bytes("a\u3042\U0001F600");
  wchar_t units[] = {7, 7, 7, 7};
  EXPECT_EQ(LM_Multibyte::to_wide(nullptr, 0, text, 9), 4U);
  EXPECT_EQ(LM_Multibyte::to_wide(units, 3, text, 9), 4U);
  EXPECT_EQ(std::wstring(units, 4), std::wstring({'a', 0x3042, 7, 7}));
  EXPECT_EQ(LM_Multibyte::to_wide(units, 3, text, 1), 1U);

  const wchar_t pair[] = {'a', 0x3042, 0xD83D, 0xDE00, 0, 'x'};
  unsigned char out[] = "?????????";
  EXPECT_EQ(LM_Multibyte::from_wide(out, 3, pair, 4), 1U);
  EXPECT_STREQ(reinterpret_cast<char*>(out), "a????????");
  EXPECT_EQ(LM_Multibyte::from_wide(out, 7, pair, 4), 4U);
  EXPECT_EQ(LM_Multibyte::from_wide(out, 8, pair, 6), 8U) << "up to the zero";
  EXPECT_STREQ(reinterpret_cast<char*>(out), "a\u3042\U0001F600?");
}

TEST(MultibyteInUtf8, CopiesWholeCharactersAndAZero) {
  const SelectedLocale locale("C.UTF-8");
  const unsigned char* text = bytes("a\u3042z");
  unsigned char out[] = "???????";
  const auto copied = [&](std::size_t size, std::int32_t characters) {
    LM_Multibyte::copy(out, size, text, characters);
    return std::string(reinterpret_cast<char*>(out));
  };
  EXPECT_EQ(copied(7, 9), "a\u3042z");
  EXPECT_EQ(copied(5, 9), "a\u3042");
  EXPECT_EQ(copied(4, 9), "a");
  EXPECT_EQ(copied(7, 1), "a");
  EXPECT_EQ(copied(7, -1), "");
  EXPECT_EQ(copied(1, 9), "");
}

TEST(MultibyteInUtf8, NeverLooksPastTheEnd) {
  const SelectedLocale locale("C.UTF-8");
  // The first byte asks for two more, which are behind the zero.
  const unsigned char text[] = {0xE3, 0, 0x81, 0x82, 0};
  EXPECT_EQ(LM_Multibyte::byte_count(text, 5), 1U);
  EXPECT_EQ(LM_Multibyte::to_wide(nullptr, 0, text, 5), kFailed);
}

TEST(MultibyteInUtf8, ConvertsEveryCharacterAsIconvDoes) {
  const SelectedLocale locale("C.UTF-8");
  expect_as_iconv(0x110000);
  expect_bytes_as_iconv();
}

TEST(Multibyte, ComparesUnsignedBytes) {
  EXPECT_EQ(LM_Multibyte::compare(bytes("ab"), bytes("ab")), 0);
  EXPECT_LT(LM_Multibyte::compare(bytes("a"), bytes("ab")), 0);
  EXPECT_GT(LM_Multibyte::compare(bytes("\xE9"), bytes("e")), 0);
}

// Double bytes.

TEST(MultibyteInShiftJis, CountsCharactersOfOneAndTwoBytes) {
  const TemporaryLocale locale("ja_JP", "SHIFT_JIS");
  ASSERT_TRUE(locale.is_selected());
  // The second byte of the second character would be a backslash alone.
  const unsigned char* text = bytes("a\x83\x5C\xB1z");
  EXPECT_EQ(LM_Multibyte::longest_character(), 2U);
  EXPECT_EQ(LM_Multibyte::byte_count(text, 2), 3U);
  EXPECT_EQ(LM_Multibyte::byte_count(text, 3), 4U);
  EXPECT_EQ(LM_Multibyte::character_value(text), 0x61U);
  EXPECT_EQ(LM_Multibyte::character_value(text + 1), 0x835CU);
  EXPECT_EQ(LM_Multibyte::character_value(text + 3), 0xB1U);
  EXPECT_EQ(wide("a\x83\x5C\xB1"), u"a\u30BD\uFF71");
  unsigned char out[8];
  LM_Multibyte::copy(out, 3, text, 9);
  EXPECT_STREQ(reinterpret_cast<char*>(out), "a") << "no half characters";
}

TEST(MultibyteInShiftJis, KnowsLeadBytes) {
  const TemporaryLocale locale("ja_JP", "SHIFT_JIS");
  ASSERT_TRUE(locale.is_selected());
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    const bool expected = (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xEA);
    EXPECT_EQ(LM_Multibyte::is_lead_byte(byte), expected) << byte;
  }
  EXPECT_FALSE(LM_Multibyte::is_lead_byte(0x183));
}

TEST(MultibyteInShiftJis, ConvertsAsIconvDoes) {
  const TemporaryLocale locale("ja_JP", "SHIFT_JIS");
  ASSERT_TRUE(locale.is_selected());
  expect_as_iconv(0x20000);
  expect_bytes_as_iconv();
}

// Single bytes.

TEST(MultibyteInLatin1, TakesEachByteForACharacter) {
  const TemporaryLocale locale("de_DE", "ISO-8859-1");
  ASSERT_TRUE(locale.is_selected());
  const unsigned char* text = bytes("\xFC\xC3\xBC");
  EXPECT_EQ(LM_Multibyte::longest_character(), 1U);
  EXPECT_EQ(LM_Multibyte::byte_count(text, 2), 2U);
  EXPECT_EQ(LM_Multibyte::character_value(text), 0xFCU);
  EXPECT_FALSE(LM_Multibyte::is_lead_byte(0xC3));
  EXPECT_EQ(narrow(u"\u3042"), std::nullopt);
  expect_as_iconv(0x3000);
  expect_bytes_as_iconv();
}

TEST(MultibyteInC, HasNoCharactersAbove127) {
  const SelectedLocale locale("C");
  ASSERT_TRUE(locale.is_selected());
  const unsigned char* text = bytes("a\xC3\xBC");
  EXPECT_EQ(LM_Multibyte::byte_count(text, 2), 2U);
  EXPECT_EQ(LM_Multibyte::character_value(text + 1), 0xC3U);
  EXPECT_FALSE(LM_Multibyte::is_lead_byte(0xC3));
  EXPECT_EQ(wide("ab"), u"ab");
  EXPECT_EQ(wide("\xC3\xBC"), std::nullopt);
  EXPECT_EQ(narrow(u"ab"), "ab");
  EXPECT_EQ(narrow(u"\u00FC"), std::nullopt);
}

}  // namespace
