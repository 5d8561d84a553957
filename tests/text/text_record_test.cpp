#include <gtest/gtest.h>

#include <bit>

#include "tests/support/client_drawables.h"
#include "tests/support/failing_default_heap.h"
#include "tests/text/text_records.h"

// The bytes of a text in a stream, and what reading makes of them.

namespace {

using namespace text_records;

// --- Writing ------------------------------------------------------------------

TEST_F(TextRecord, IsWrittenPieceByPiece) {
  EXPECT_EQ(written(*wide_text(L"h\u3042", setting())), whole_record());
}

TEST_F(TextRecord, FontNameFollowsTheTag) {
  const Bytes record = joined(written(*wide_text(L"a")));
  EXPECT_EQ(first(record, 13), (Bytes{0, 0x20, 0, 0x80, 3, 0, 0, 0, 'A', 'b', 'c', 0, 0}));
}

TEST_F(TextRecord, OfAMultibyteTextHoldsItsBytes) {
  const auto pieces = written(*multibyte_text("hi", setting()));
  EXPECT_EQ(pieces, together({{{0, 0x20, 0, 0x80}},
                              kFontPieces,
                              {{0}, {2, 0, 0, 0}, {'h'}, {'i'}},
                              kPlacePieces,
                              kEndPieces}));
}

TEST_F(TextRecord, OfAPalettizedTextHoldsItsIndex) {
  const auto pieces = written(*palettized_text(palette.at(77), L"h\u3042", setting()));
  EXPECT_EQ(pieces, together({{{0, 0x20, 0, 0x80}},
                              kFontPieces,
                              kStringPieces,
                              kPlacePieces,
                              {{1, 0, 0, 0x20}, {77, 0, 0, 0}, {2, 0, 0, 0x10}}}));
  EXPECT_EQ(palette.asked_renditions, (std::vector<LM_Rendition*>{palette.at(77)}));
}

TEST_F(TextRecord, IsTheSameWhileTheTextIsHidden) {
  const auto text = wide_text(L"h\u3042", setting());
  text->hide();
  EXPECT_EQ(written(*text), whole_record());
}

TEST_F(TextRecord, OfTheLastDrawableEndsWithTheEndMarker) {
  const Bytes record = joined(written(*wide_text(L"a")));
  EXPECT_EQ(Bytes(record.end() - 4, record.end()), (Bytes{2, 0, 0, 0x10}));
}

TEST_F(TextRecord, IsContinuedByTheNextDrawablesRecord) {
  const DrawableChain chain{wide_text(L"h\u3042", setting()).release(), new DL::DLDot({9}, {7, 8}),
                            wide_text(L"h\u3042", setting()).release()};
  Pieces expected = whole_record();
  expected.pop_back();
  expected =
      together({expected,
                {bytes_of(0x80000010), bytes_of(7), bytes_of(8), bytes_of(kDirect), bytes_of(9)},
                whole_record()});
  EXPECT_EQ(written(*chain.first()), expected);
}

TEST_F(TextRecord, HoldsTheLowBytesOfTheFontName) {
  const auto pieces = written(*wide_text(L"a", {.font = font_named(L"\u00E9\u3042\u0141")}));
  EXPECT_EQ(pieces[1], (Bytes{3, 0, 0, 0}));
  EXPECT_EQ(pieces[2], Bytes{0xE9});
  EXPECT_EQ(pieces[3], Bytes{0x42});
  EXPECT_EQ(pieces[4], Bytes{0x41});
}

TEST_F(TextRecord, HoldsTheFontNameUpToItsTerminator) {
  const std::wstring name{'A', 0, 'b'};
  const auto pieces = written(*wide_text(L"a", {.font = font_named(name)}));
  EXPECT_EQ(pieces[1], (Bytes{1, 0, 0, 0}));
  EXPECT_EQ(pieces[2], Bytes{'A'});
  EXPECT_EQ(pieces[3], Bytes{0}) << "the first flag";
}

TEST_F(TextRecord, OfATextOfNothingHasNoNameAndNoString) {
  DL::DLText bare(kColor);
  const Bytes zeros(8, 0);
  const Pieces expected = {{0, 0x20, 0, 0x80},
                           {0, 0, 0, 0},
                           {0},
                           {0},
                           {0, 0, 0, 0},
                           {0, 0, 0, 0},
                           {0, 0, 0, 0},
                           {0},
                           {0, 0, 0, 0},
                           zeros,
                           zeros,
                           zeros,
                           zeros,
                           bytes_of(INT32_MAX),
                           bytes_of(INT32_MAX),
                           bytes_of(INT32_MIN),
                           bytes_of(INT32_MIN)};
  EXPECT_EQ(written(bare), together({expected, kEndPieces}));
  EXPECT_EQ(written(*wide_text(L"", {.font = LM_Font()}))[1], (Bytes{0, 0, 0, 0}));
}

// --- Reading ------------------------------------------------------------------

TEST_F(TextRecord, IsReadAsItWasWritten) {
  const Bytes record = joined(whole_record());
  const DrawableChain chain(read(record));
  expect_whole_text(chain.first());
  EXPECT_EQ(bytes_read, record.size());
  EXPECT_EQ(chain.first()->m_pNext, nullptr);
  EXPECT_EQ(chain.first()->drawable_info(), nullptr);
}

TEST_F(TextRecord, IsReadInThePiecesThatItIsWrittenIn) {
  PieceStream stream(joined(whole_record()));
  const DrawableChain chain(read(stream));
  std::vector<std::int32_t> sizes;
  for (const Bytes& piece : whole_record())
    sizes.push_back(static_cast<std::int32_t>(piece.size()));
  EXPECT_EQ(stream.asked, sizes);
}

TEST_F(TextRecord, OfADirectColorIsReadThroughThePalette) {
  const DrawableChain chain(read(joined(whole_record())));
  EXPECT_EQ(palette.asked_indices, std::vector<int>{0x00123456});
  EXPECT_TRUE(chain.first()->is_palettized());
  EXPECT_FALSE(chain.first()->is_hidden());
  EXPECT_EQ(chain.first()->rendition(list), palette.at(0x00123456));
  EXPECT_TRUE(Palette::unsupported.empty());
  Pieces expected = whole_record();
  expected[expected.size() - 3] = bytes_of(kIndex);
  EXPECT_EQ(written(*chain.first()), expected);
}

TEST_F(TextRecord, OfAPaletteIndexIsReadAndWrittenAsItWas) {
  const Bytes record = joined(written(*palettized_text(palette.at(77), L"h\u3042", setting())));
  const DrawableChain chain(read(record));
  expect_whole_text(chain.first());
  EXPECT_EQ(chain.first()->rendition(list), palette.at(77));
  EXPECT_EQ(joined(written(*chain.first())), record);
}

TEST_F(TextRecord, OfAColorTagWithoutThePaletteBitsIsReadPlain) {
  for (const std::uint32_t tag : {0U, 2U, 0x10000002U, 0xDFFFFFFEU}) {
    Pieces pieces = whole_record();
    pieces[pieces.size() - 3] = bytes_of(tag);
    const DrawableChain chain(read(joined(pieces)));
    EXPECT_FALSE(chain.first()->is_palettized());
    EXPECT_EQ(chain.first()->m_colorData.m_color, kColor);
  }
  EXPECT_TRUE(palette.asked_indices.empty());
}

TEST_F(TextRecord, OfAColorTagWithEitherPaletteBitIsReadThroughThePalette) {
  for (const std::uint32_t tag : {1U, 0x20000000U, 0xFFFFFFFFU}) {
    Pieces pieces = whole_record();
    pieces[pieces.size() - 3] = bytes_of(tag);
    const DrawableChain chain(read(joined(pieces)));
    EXPECT_TRUE(chain.first()->is_palettized()) << std::hex << tag;
  }
}

TEST_F(TextRecord, IsReadPlainByAListWithoutAPalette) {
  list.m_pfnIndexToRendition = nullptr;
  const DrawableChain chain(read(joined(whole_record())));
  expect_whole_text(chain.first());
  EXPECT_FALSE(chain.first()->is_palettized());
  EXPECT_EQ(written(*chain.first()), whole_record());
}

TEST_F(TextRecord, AsksTheRendererForTheFontWithEveryItem) {
  renderer->found_font = font_named(L"found");
  const DrawableChain chain(read(joined(whole_record())));
  LM_Font_Description expected = abc().description();
  expected.given = LM_Font_Description::EVERY_ITEM;
  ASSERT_EQ(renderer->asked_fonts.size(), 1U);
  EXPECT_EQ(renderer->asked_fonts[0], expected);
  EXPECT_EQ(*static_cast<DL::DLText*>(chain.first())->get_font(), renderer->found_font);
}

TEST_F(TextRecord, IsReadWithoutARenderer) {
  list.m_pRenderer = nullptr;
  const DrawableChain chain(read(joined(whole_record())));
  expect_whole_text(chain.first());
}

TEST_F(TextRecord, NamesBytesAreReadIntoWideCharacters) {
  const DrawableChain chain(
      read(joined(written(*wide_text(L"a", {.font = font_named(L"\u00E9\u3042\u0141")})))));
  EXPECT_EQ(renderer->asked_fonts.at(0).name, L"\u00E9\u0042\u0041");
}

TEST_F(TextRecord, BelongsToTheListThatReads) {
  renderer->widths = {1.0F, 1.0F};
  FakeList writer;
  const auto source = wide_text(L"h\u3042", {.list = &writer.list});
  const DrawableChain chain(read(joined(written(*source))));
  renderer->take_calls();
  float widths[2];
  static_cast<DL::DLText*>(chain.first())->accumulated_normalized_widths(widths);
  EXPECT_EQ(renderer->take_operations(), std::vector<std::string>{"extent"});
  EXPECT_TRUE(writer.renderer->calls.empty());
}

TEST_F(TextRecord, IsDrawnAsTheTextThatWasWritten) {
  const DrawableChain chain(read(joined(whole_record())));
  renderer->take_calls();
  chain.first()->draw_clipped(list);
  const auto calls = renderer->take_calls();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[1].wide_text, L"h\u3042");
  EXPECT_EQ(calls[1].points, (std::vector<LM_DCI_Point>{{1, -2, 0}}));
  EXPECT_EQ(calls[1].attributes.size, 12.0F);
  EXPECT_EQ(calls[1].attributes.rotation, 0.5F);
  EXPECT_EQ(calls[1].rendition, palette.at(0x00123456));
}

TEST_F(TextRecord, ReplacesTheStringAndNotTheFontThatTheTextHad) {
  const LM_Font font = font_named(L"old");
  const auto text = wide_text(L"old", {.font = font});
  LM_Font* old_cell = text->get_font();
  const Pieces pieces = whole_record();
  PieceStream stream(joined({pieces.begin() + 1, pieces.end()}));
  text->serialize_in(&stream, list);
  expect_whole_text(text.get());
  EXPECT_NE(text->get_font(), old_cell);
  EXPECT_EQ(*old_cell, font) << "it was not released";
  old_cell->~LM_Font();
  LD_ReleaseMemory(old_cell);
}

TEST_F(TextRecord, FillsATextThatWasMadeOfARendition) {
  LM_Rendition own;
  const std::unique_ptr<DL::DLText> text(new DL::DLText(&own));
  const Pieces pieces = whole_record();
  PieceStream stream(joined({pieces.begin() + 1, pieces.end()}));
  text->serialize_in(&stream, list);
  expect_whole_text(text.get());
  EXPECT_TRUE(text->is_palettized());
  EXPECT_EQ(text->rendition(list), palette.at(0x00123456));
}

TEST_F(TextRecord, KeepsTheBitsOfItsNumbers) {
  Pieces pieces = whole_record();
  const std::size_t place = 1 + kFontPieces.size() + kStringPieces.size();
  for (const std::uint64_t bits :
       {0x7FF8000000001234ULL, 0xFFF0000000000000ULL, 0x8000000000000000ULL, 1ULL}) {
    for (std::size_t i = 0; i < 4; ++i) pieces[place + i] = bytes_of(bits);
    const DrawableChain chain(read(joined(pieces)));
    Pieces expected = pieces;
    expected[expected.size() - 3] = bytes_of(kIndex);
    EXPECT_EQ(written(*chain.first()), expected);
    use(*chain.first());
  }
}

TEST_F(TextRecord, ChainOfSeveralIsReadInOrder) {
  const Bytes record = joined(
      written(*DrawableChain{wide_text(L"h\u3042", setting()).release(), new DL::DLDot({9}, {7, 8}),
                             multibyte_text("last", setting()).release()}
                   .first()));
  const DrawableChain chain(read(record));
  EXPECT_EQ(bytes_read, record.size());
  const auto drawables = chain.drawables();
  ASSERT_EQ(drawables.size(), 3U);
  expect_whole_text(drawables[0]);
  EXPECT_EQ(drawables[1]->type(), DL::DLDot::my_type());
  ASSERT_EQ(drawables[2]->type(), DL::DLText::my_type());
  EXPECT_FALSE(as_text(drawables[2]).text()->isUnicode());
  EXPECT_EQ(as_text(drawables[2]).text()->length(), 4);
}

TEST_F(TextRecord, EndsTheReadingWithoutAFactory) {
  list.m_pfnCreateDrawable = nullptr;
  EXPECT_EQ(read(joined(whole_record())), nullptr);
  Pieces pieces = {bytes_of(0x80000010), bytes_of(7), bytes_of(8), bytes_of(kDirect), bytes_of(9)};
  const DrawableChain chain(read(joined(together({pieces, whole_record()}))));
  EXPECT_EQ(chain.drawables().size(), 1U);
}

TEST_F(TextRecord, IsReadThroughAClientsFactoryThatAsksTheStandardOne) {
  list.m_pfnCreateDrawable = [](void* context, int tag) {
    DL::Drawable* own = client::create(context, tag);
    return own != nullptr ? own : DL::standard_factory(context, tag);
  };
  const DrawableChain source{new client::StoredMark(5), wide_text(L"h\u3042", setting()).release()};
  const DrawableChain chain(read(joined(written(*source.first()))));
  ASSERT_EQ(chain.drawables().size(), 2U);
  expect_whole_text(chain.drawables()[1]);
}

TEST(StandardFactory, MakesAnEmptyPlainText) {
  const std::unique_ptr<DL::Drawable> made(
      DL::standard_factory(nullptr, std::bit_cast<int>(0x80002000U)));
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->type(), DL::DLText::my_type());
  EXPECT_FALSE(made->is_palettized());
  EXPECT_EQ(made->m_pNext, nullptr);
  EXPECT_EQ(made->drawable_info(), nullptr);
  EXPECT_EQ(as_text(made.get()).text(), nullptr);
}

TEST(StandardFactory, MakesNoTextWhereMemoryRunsOut) {
  const FailingDefaultHeap failing;
  EXPECT_EQ(DL::standard_factory(nullptr, std::bit_cast<int>(0x80002000U)), nullptr);
}

}  // namespace
