#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <vector>

#include "displaylist/text/encoded_text.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/palette.h"
#include "tests/text/piece_stream.h"
#include "tests/text/texts.h"

/// The record of a text, and a list to write it from and read it into.
namespace text_records {

using namespace texts;

inline constexpr std::uint32_t kIndex = 0x20000001;
inline constexpr std::uint32_t kDirect = 0x20000002;

inline LM_Font abc() {
  return LM_Font(LM_Font_Description{.name = L"Abc",
                                     .bold = 1,
                                     .italic = 2,
                                     .weight = 700,
                                     .width = -3,
                                     .character = 0x5D0,
                                     .given = LM_Font_Description::NAME});
}

inline const std::vector<Bytes> kFontPieces = {
    {3, 0, 0, 0},   {'A'}, {'b'}, {'c'}, {1}, {2}, {0xBC, 2, 0, 0}, {0xFD, 0xFF, 0xFF, 0xFF},
    {0xD0, 5, 0, 0}};
inline const std::vector<Bytes> kStringPieces = {{1}, {2, 0, 0, 0}, {'h', 0}, {0x42, 0x30}};
inline const std::vector<Bytes> kPlacePieces = {{0, 0, 0, 0, 0, 0, 0xF8, 0x3F},  // 1.5
                                                {0, 0, 0, 0, 0, 0, 0, 0xC0},     // -2
                                                {0, 0, 0, 0, 0, 0, 0x28, 0x40},  // 12
                                                {0, 0, 0, 0, 0, 0, 0xE0, 0x3F},  // 0.5
                                                {10, 0, 0, 0},                   // the bounds
                                                {0xEC, 0xFF, 0xFF, 0xFF},        // -20
                                                {60, 0, 0, 0},
                                                {40, 0, 0, 0}};
inline const std::vector<Bytes> kEndPieces = {
    {2, 0, 0, 0x20}, {0x56, 0x34, 0x12, 0}, {2, 0, 0, 0x10}};

using Pieces = std::vector<Bytes>;

inline Pieces together(const std::vector<Pieces>& parts) {
  Pieces all;
  for (const Pieces& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

inline Pieces whole_record() {
  return together({{{0, 0x20, 0, 0x80}}, kFontPieces, kStringPieces, kPlacePieces, kEndPieces});
}

struct TextRecord : testing::Test, FakeList {
  TextRecord() { list.m_pfnCreateDrawable = &DL::standard_factory; }

  [[nodiscard]] Setting setting() const {
    return {.font = abc(), .position = {1.5, -2.0}, .rotation = 0.5, .bounds = {10, -20, 60, 40}};
  }
  Pieces written(DL::Drawable& first) {
    PieceStream stream;
    first.serialize_out(&stream, list);
    return stream.pieces;
  }
  /// Reads a class tag and what follows it.
  DL::Drawable* read(PieceStream& stream) { return read_drawables(stream, list); }
  DL::Drawable* read(const Bytes& bytes) {
    PieceStream stream(bytes);
    DL::Drawable* first = read(stream);
    bytes_read = stream.position();
    return first;
  }
  /// Uses a drawable, however little of it there may be, in every way.
  void use(DL::Drawable& drawable) {
    drawable.draw_clipped(list);
    drawable.draw_unclipped(list);
    drawable.draw_unclipped_selection(list);
    bounds_of(drawable);
    std::ostringstream os;
    DL::DisplayListDebug statistics;
    drawable.dump(os, 0, statistics);
    EXPECT_FALSE(os.str().empty());
    for (const bool flag : {false, true}) {
      const std::unique_ptr<DL::DrawableVectorIterator> iterator(
          drawable.create_vector_iterator(flag));
      for (int steps = 0; steps < 20 && iterator->next() != nullptr; ++steps) {
      }
    }
    const std::unique_ptr<DL::Drawable> copy(drawable.clone());
    EXPECT_EQ(copy->type(), drawable.type());
    drawable.hide();
    drawable.unhide();
    EXPECT_FALSE(written(drawable).empty());
    renderer->take_calls();
  }

  Palette palette{list};
  std::size_t bytes_read = 0;
};

inline const DL::DLText& as_text(const DL::Drawable* drawable) {
  return *static_cast<const DL::DLText*>(drawable);
}

/// What there is of the record above when it was read.
inline void expect_whole_text(DL::Drawable* drawable) {
  ASSERT_NE(drawable, nullptr);
  ASSERT_EQ(drawable->type(), DL::DLText::my_type());
  auto& text = *static_cast<DL::DLText*>(drawable);
  EXPECT_EQ(text.get_position(), (Position{1.5, -2.0}));
  DL::DisplayList plain;
  EXPECT_EQ(text.height(plain), 12);
  EXPECT_EQ(text.rotation(), 0.5);
  EXPECT_EQ(text.bounds(), (LogicalBounds{10, -20, 60, 40}));
  ASSERT_NE(text.get_font(), nullptr);
  EXPECT_EQ(text.get_font()->description().name, L"Abc");
  ASSERT_NE(text.text(), nullptr);
  EXPECT_TRUE(text.text()->isUnicode());
  ASSERT_EQ(text.text()->length(), 2);
  EXPECT_EQ(text.text()->unicodeCharacter(0), L'h');
  EXPECT_EQ(text.text()->unicodeCharacter(1), L'\u3042');
}

}  // namespace text_records
