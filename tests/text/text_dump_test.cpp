#include <gtest/gtest.h>

#include <sstream>

#include "tests/text/texts.h"

// What the debug dump tells of texts.

namespace {

using namespace texts;

std::string line_of(const DL::Drawable& drawable, int level) {
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  drawable.dump(os, level, statistics);
  EXPECT_EQ(statistics.m_cDrawableBytes, 104U);
  EXPECT_EQ(statistics.m_cEntryBytes, 32U);
  EXPECT_EQ(statistics.m_cDrawables + statistics.m_cGroups + statistics.m_cGroupBytes, 0U);
  return os.str();
}

/// The hexadecimal digits between one "0x" and the next.
std::vector<std::string> split_at_addresses(const std::string& line) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t at = line.find("0x"); at != std::string::npos; at = line.find("0x", start)) {
    parts.push_back(line.substr(start, at - start));
    start = at + 2;
  }
  parts.push_back(line.substr(start));
  return parts;
}

std::wstring label_at(const std::string& digits) {
  return reinterpret_cast<const wchar_t*>(std::stoull(digits, nullptr, 16));
}

TEST(TextDump, LineHasTheAddressesOfItsWideLabels) {
  LM_Rendition own;
  const auto plain = wide_text(L"ab");
  const auto hidden = wide_text(L"ab");
  hidden->hide();
  const auto palettized = palettized_text(&own, L"ab");
  for (const DL::Drawable* text : {plain.get(), hidden.get(), palettized.get()}) {
    for (const int level : {0, 3}) {
      const auto parts = split_at_addresses(line_of(*text, level));
      ASSERT_EQ(parts.size(), 4U);
      EXPECT_EQ(parts[0], std::string(static_cast<std::size_t>(4 * level), ' '));
      ASSERT_GT(parts[1].size(), 1U);
      EXPECT_EQ(parts[1].back(), '0' + level);
      EXPECT_EQ(label_at(parts[1].substr(0, parts[1].size() - 1)), L"DLText: level  ");
      EXPECT_EQ(label_at(parts[2]), L", this = ");
      std::ostringstream address;
      address << static_cast<const void*>(text);
      EXPECT_EQ("0x" + parts[3], address.str() + "\n");
    }
  }
}

TEST(TextDump, LineOfABareTextIsThereToo) {
  const DL::DLText bare(kColor);
  EXPECT_EQ(split_at_addresses(line_of(bare, 1)).size(), 4U);
}

}  // namespace
