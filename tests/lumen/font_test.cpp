#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "lumen/fonts.h"
#include "tests/lumen/raster_checks.h"
#include "tests/lumen/reference_text.h"
#include "tests/lumen/text_art.h"
#include "tests/support/temporary_folder.h"

using raster_checks::ink_of;
using reference_text::Extent;
using reference_text::Face;
using reference_text::named;
using reference_text::utf16;
using testing::ElementsAre;
using testing::HasSubstr;
using text_art::Canvas;

namespace {

constexpr float close = 1e-6F;

std::vector<std::string>& told() {
  static std::vector<std::string> messages;
  return messages;
}

/// Collects what is told of missing fonts.
struct Listening {
  Listening() {
    told().clear();
    lumen::set_missing_font_handler([](const char* message) { told().emplace_back(message); });
  }
  ~Listening() {
    lumen::set_missing_font_handler([](const char*) {});
  }
};

float width_of(const LM_Font& font, const std::u32string& text) {
  const std::wstring units = utf16(text);
  return lumen::measure_text(font, units.data(), reference_text::length(units)).advance;
}

/// The picture of a text in a font.
lumen::Picture picture_of(const LM_Font_Description& description, const std::wstring& text) {
  Canvas canvas(120, 60);
  canvas.rendition.set_text_size(40);
  canvas.rendition.set_shared_font(LM_Font(description));
  canvas.device.draw_text(&canvas.rendition, {10, 45, 0}, text.data(),
                          reference_text::length(text));
  return canvas.picture;
}

TEST(Font, OfOneDescriptionIsOneFont) {
  lumen::TextRenderer one;
  lumen::TextRenderer other;
  const LM_Font serif = one.find_or_create_font(named(L"DejaVu Serif"));
  ASSERT_NE(serif.data(), nullptr);
  EXPECT_EQ(serif.description(), named(L"DejaVu Serif"));
  EXPECT_EQ(other.find_or_create_font(named(L"DejaVu Serif")), serif);
  EXPECT_NE(one.find_or_create_font(named(L"DejaVu Sans")), serif);
  EXPECT_NE(one.find_or_create_font({}).data(), nullptr);
  EXPECT_EQ(one.resolve_font(serif), serif);
}

TEST(Font, IsTheFaceOfItsName) {
  for (const auto& [name, file] : {std::pair{L"DejaVu Sans", "DejaVuSans"},
                                   {L"DejaVu Serif", "DejaVuSerif"},
                                   {L"DejaVu Sans Mono", "DejaVuSansMono"},
                                   {L"serif", "DejaVuSerif"},
                                   {L"monospace", "DejaVuSansMono"},
                                   {L"sans-serif", "DejaVuSans"},
                                   {L"", "DejaVuSans"}}) {
    Face face(file);
    EXPECT_NEAR(width_of(LM_Font(named(name)), U"W"), face.advance('W'), close) << file;
  }
  Face sans;
  EXPECT_NEAR(width_of({}, U"W"), sans.advance('W'), close);
}

TEST(Font, OfAWeightIsTheNearestFace) {
  Face bold("DejaVuSans-Bold");
  Face regular;
  LM_Font_Description description = named(L"DejaVu Sans");
  description.bold = 1;
  EXPECT_NEAR(width_of(LM_Font(description), U"W"), regular.advance('W'), close) << "not given";
  description.given |= LM_Font_Description::BOLD;
  EXPECT_NEAR(width_of(LM_Font(description), U"W"), bold.advance('W'), close);
  description.given |= LM_Font_Description::WEIGHT;
  EXPECT_NEAR(width_of(LM_Font(description), U"W"), bold.advance('W'), close) << "weight 0";
  for (const auto& [weight, face] :
       {std::pair{400, &regular}, {700, &bold}, {900, &bold}, {INT32_MAX, &bold}, {-5, &bold}}) {
    description.weight = weight;
    EXPECT_NEAR(width_of(LM_Font(description), U"W"), face->advance('W'), close) << weight;
  }
}

TEST(Font, ThatIsNotItalicIsSlanted) {
  LM_Font_Description italic = named(L"DejaVu Sans");
  italic.italic = 1;
  italic.given |= LM_Font_Description::ITALIC;
  const lumen::Picture upright = picture_of(named(L"DejaVu Sans"), L"l");
  const lumen::Picture slanted = picture_of(italic, L"l");
  // The stem is the same at its foot and a fifth of its height further at its head.
  const auto stem = [](const lumen::Picture& picture, std::int32_t y) {
    double sum = 0;
    double ink = 0;
    for (std::int32_t x = 0; x < picture.width(); ++x) {
      sum += x * raster_checks::darkness(picture, x, y);
      ink += raster_checks::darkness(picture, x, y);
    }
    return sum / ink;
  };
  EXPECT_NEAR(stem(slanted, 45) - stem(upright, 45), 0, 0.2);
  EXPECT_NEAR(stem(slanted, 20) - stem(upright, 20), 5, 0.2);
}

TEST(Font, WithoutACharacterBorrowsIt) {
  Face sans;
  Face mono("DejaVuSansMono");
  const LM_Font font(named(L"DejaVu Sans Mono"));
  ASSERT_EQ(mono.shape(U"\u05D0")[0].number, 0U);
  const Extent extent(utf16(U"a\u05D0b"), font);
  EXPECT_NEAR(extent.widths[0], mono.advance('a'), close);
  EXPECT_NEAR(extent.widths[1], sans.advance(0x5D0), close);
  EXPECT_NEAR(extent.widths[2], mono.advance('b'), close);
}

TEST(Font, ShowsItsOwnMarkForWhatNoFontHas) {
  Face mono("DejaVuSansMono");
  const LM_Font font(named(L"DejaVu Sans Mono"));
  EXPECT_NEAR(width_of(font, U"\u4E2D"), mono.advance(0x4E2D), close);
  EXPECT_GT(ink_of(picture_of(named(L"DejaVu Sans Mono"), L"\u4E2D")), 10);
}

TEST(Font, WithACharacterAskedForIsAFaceThatHasIt) {
  Face sans;
  LM_Font_Description description = named(L"DejaVu Serif");
  description.character = 0x05D0;
  description.given |= LM_Font_Description::CHARACTER;
  EXPECT_NEAR(width_of(LM_Font(description), U"W"), sans.advance('W'), close);
}

TEST(Font, ThatIsMissingIsToldOfOnce) {
  const Listening listening;
  LM_Font_Description missing = named(L"No Such Font \u00C4");
  Face sans;
  EXPECT_NEAR(width_of(LM_Font(missing), U"W"), sans.advance('W'), close);
  missing.italic = 1;
  missing.given |= LM_Font_Description::ITALIC;
  lumen::TextRenderer().resolve_font(LM_Font(missing));
  lumen::TextRenderer().find_or_create_font(named(L"No Such Font \u00C4"));
  EXPECT_THAT(told(), ElementsAre(HasSubstr("\"No Such Font \xC3\x84\"")));
  EXPECT_THAT(told().at(0), HasSubstr("\"DejaVu Sans\""));
  lumen::TextRenderer().resolve_font(LM_Font(named(L"Another Missing Font")));
  EXPECT_EQ(told().size(), 2U);
}

TEST(Font, OfAKindOrOfNoNameIsNeverMissing) {
  const Listening listening;
  for (const wchar_t* name :
       {L"", L"Sans-Serif", L"serif", L"Monospace", L"DejaVu Sans", L"dejavu sans"}) {
    lumen::TextRenderer().resolve_font(LM_Font(named(name)));
  }
  lumen::TextRenderer().resolve_font({});
  EXPECT_TRUE(told().empty());
}

TEST(FontDeathTest, MissingIsPrintedUnlessSwitchedOff) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        lumen::TextRenderer().resolve_font(LM_Font(named(L"Nowhere")));
        lumen::set_missing_font_handler(nullptr);
        lumen::TextRenderer().resolve_font(LM_Font(named(L"Unheard")));
        _exit(0);
      },
      testing::ExitedWithCode(0),
      testing::AllOf(HasSubstr("Nowhere"), testing::Not(HasSubstr("Unheard"))));
}

/// Makes Fontconfig see the fonts in the folder only, before it looks at any.
void use_fonts_in(const TemporaryFolder& folder) {
  const std::string path = folder.path("");
  const std::string configuration =
      folder.write("fonts.conf", "<fontconfig><dir>" + path + "</dir><cachedir>" + path +
                                     "</cachedir></fontconfig>");
  setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
}

bool is_nothing_drawn_without_fonts() {
  const TemporaryFolder folder;
  use_fonts_in(folder);
  const Extent extent(L"text");
  return extent.corners[2] == LM_Point{0, 0, 0} && extent.widths[3] == 0 &&
         ink_of(picture_of(named(L"DejaVu Sans"), L"text")) == 0;
}

TEST(FontDeathTest, WithoutAnyFontNothingIsDrawn) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(_exit(is_nothing_drawn_without_fonts() ? 0 : 1), testing::ExitedWithCode(0), "");
}

/// Draws most letters of a font file that is broken all over, but for its start.
void draw_damaged_letters() {
  const TemporaryFolder folder;
  std::ifstream whole("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(whole), {});
  for (std::size_t i = 20'000; i < bytes.size(); i += 97) bytes[i] = static_cast<char>(i);
  static_cast<void>(folder.write("damaged.ttf", bytes));
  static_cast<void>(folder.write("short.ttf", bytes.substr(0, 300'000)));
  use_fonts_in(folder);
  for (int first = 0x20; first < 0x800; first += 4) {
    std::wstring text;
    for (int i = 0; i < 4; ++i) text += static_cast<wchar_t>(first + i);
    picture_of(named(L"DejaVu Sans"), text);
  }
}

TEST(FontDeathTest, DamagedFilesAreNoHarm) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        draw_damaged_letters();
        _exit(0);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
