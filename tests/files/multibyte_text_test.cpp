// Texts in the character set of the locale, kept and read in the same and in
// another one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

#include "files/drawing_file.h"
#include "files/stretched_text.h"
#include "fuzz/packing.h"
#include "tests/files/file_checks.h"
#include "tests/support/temporary_locale.h"

namespace {

using file_checks::Bytes;
using testing::HasSubstr;

constexpr const char* kSharp =
    "\xC3\x9C"
    "berma\xC3\x9F";  // 7 characters in 9 bytes

DL::DLText* new_text(const char* bytes, std::int32_t length) {
  return new DL::DLText(LM_RGB32{5}, LM_Font(), {1, 2}, bytes, length, 10, 0.5, {1, 2, 3, 4},
                        nullptr, false);
}

const DL::EncodedText& string_of(DL::DisplayList& list, std::size_t n = 0) {
  return *static_cast<DL::DLText&>(*drawables_of(list).at(n)).text();
}

std::string bytes_of(const DL::EncodedText& text) {
  return reinterpret_cast<const char*>(text.multiByteString());
}

/// A file with one text, written in UTF-8.
Bytes file_in_utf_8(const char* bytes = kSharp, std::int32_t length = 7) {
  const SelectedLocale locale("C.UTF-8");
  EXPECT_TRUE(locale.is_selected());
  DL::DisplayList list;
  list.add(new_text(bytes, length));
  return file_checks::written(list);
}

TEST(MultibyteText, ComesBackWhole) {
  const SelectedLocale locale("C.UTF-8");
  ASSERT_TRUE(locale.is_selected());
  DL::DisplayList list;
  list.add(new_text(kSharp, 7));
  list.add(new_text("plain", 5));
  list.add(new_text(kSharp, 4));
  list.add(new_text("", 0));
  const files::Contents contents = file_checks::read_back(file_checks::written(list));
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(string_of(*contents.list, i).length(), string_of(list, i).length());
    EXPECT_EQ(bytes_of(string_of(*contents.list, i)), bytes_of(string_of(list, i)));
  }
  EXPECT_EQ(string_of(*contents.list, 3).length(), 0);
}

TEST(MultibyteText, KeepsAllBytesInALocaleOfBytes) {
  const Bytes original = file_in_utf_8();
  Bytes between;
  {
    const SelectedLocale locale("C");
    const files::Contents contents = file_checks::read_back(original);
    EXPECT_EQ(bytes_of(string_of(*contents.list)), kSharp);
    EXPECT_EQ(string_of(*contents.list).length(), 9) << "each byte is a character there";
    between = file_checks::written(*contents.list);
    EXPECT_EQ(bytes_of(string_of(*file_checks::read_back(between).list)), kSharp);
  }
  const SelectedLocale locale("C.UTF-8");
  const files::Contents contents = file_checks::read_back(between);
  EXPECT_EQ(bytes_of(string_of(*contents.list)), kSharp);
  EXPECT_EQ(string_of(*contents.list).length(), 7);
  EXPECT_TRUE(file_checks::written(*contents.list) == original);
}

TEST(MultibyteText, KeepsAllBytesInALocaleOfDoubleBytes) {
  const Bytes original = file_in_utf_8();
  Bytes between;
  {
    const auto locale = std::make_unique<TemporaryLocale>("ja_JP", "SHIFT_JIS");
    ASSERT_TRUE(locale->is_selected());
    const files::Contents contents = file_checks::read_back(original);
    EXPECT_EQ(bytes_of(string_of(*contents.list)), kSharp);
    between = file_checks::written(*contents.list);
    EXPECT_EQ(bytes_of(string_of(*file_checks::read_back(between).list)), kSharp);
  }
  const SelectedLocale locale("C.UTF-8");
  const files::Contents contents = file_checks::read_back(between);
  EXPECT_TRUE(file_checks::written(*contents.list) == original);
}

TEST(MultibyteText, ThatIsStretchedKeepsAllBytes) {
  Bytes original;
  LM_Rendition rendition;
  {
    const SelectedLocale locale("C.UTF-8");
    DL::DisplayList list;
    auto* text = new files::StretchedText(&rendition, 0.5, LM_Font(), {3, 4}, L"wide", 9.0, 0.5,
                                          {1, 2, 30, 40}, nullptr);
    text->set_text_string(kSharp, 7, false);
    list.add(text);
    original = file_checks::written(list);
  }
  const SelectedLocale locale("C");
  const files::Contents contents = file_checks::read_back(original);
  EXPECT_EQ(bytes_of(string_of(*contents.list)), kSharp);
}

TEST(MultibyteText, InAsciiGivesTheSameBytesInEveryLocale) {
  const Bytes in_utf_8 = file_in_utf_8("plain", 5);
  const SelectedLocale locale("C");
  DL::DisplayList list;
  list.add(new_text("plain", 5));
  EXPECT_TRUE(file_checks::written(list) == in_utf_8);
}

/// The file with its text's record changed: the length and the bytes that it is
/// longer by are those given, at the same place.
Bytes damaged(const std::string& bytes, std::int32_t length, unsigned char wide) {
  const Bytes file = file_in_utf_8();
  Bytes payload = packing::payload_of(file);
  const std::string sharp = kSharp;
  const auto* first = reinterpret_cast<const std::byte*>(sharp.data());
  auto at = std::search(payload.begin(), payload.end(), first, first + sharp.size());
  EXPECT_NE(at, payload.end());
  at = payload.erase(at, at + 9);
  const auto* text = reinterpret_cast<const std::byte*>(bytes.data());
  at = payload.insert(at, text, text + bytes.size());
  const std::uint64_t size = bytes.size();
  std::memcpy(&*at - sizeof size, &size, sizeof size);
  // The second time it is in the text's own record, without its last bytes.
  first = reinterpret_cast<const std::byte*>(sharp.data());
  at = std::search(at + static_cast<std::ptrdiff_t>(size), payload.end(), first, first + 7);
  EXPECT_NE(at, payload.end());
  std::memcpy(&*at - sizeof length, &length, sizeof length);
  *(at - 5) = std::byte{wide};
  at = payload.erase(at, at + 7);
  const std::size_t own = static_cast<std::size_t>(length) * (wide != 0 ? 2 : 1);
  payload.insert(at, own, std::byte{'x'});
  return packing::packed(payload, file);
}

std::string reason_of(const Bytes& bytes) {
  files::Contents contents;
  return files::read_bytes(bytes, {}, contents);
}

TEST(MultibyteText, WithBytesThatItsRecordDoesNotCutIsDamaged) {
  for (const char* name : {"C", "C.UTF-8"}) {
    const SelectedLocale locale(name);
    EXPECT_EQ(reason_of(damaged(kSharp, 7, 0)), "") << "as it was";
    EXPECT_THAT(reason_of(damaged("abc", 1000, 0)), HasSubstr("damaged"));
    EXPECT_THAT(reason_of(damaged("abc", 3, 0)), HasSubstr("damaged"));
    EXPECT_THAT(reason_of(damaged("abcd", 3, 1)), HasSubstr("damaged")) << "wide";
    EXPECT_THAT(reason_of(damaged(std::string("a\0cde", 5), 3, 0)), HasSubstr("damaged"));
    EXPECT_THAT(reason_of(damaged("abc", 0, 0)), HasSubstr("damaged"));
    EXPECT_EQ(reason_of(damaged("abcd", 3, 0)), "") << "more characters than are told";
  }
}

}  // namespace
