// What there is to be read, searched and copied in the files of a vector device.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

#include "tests/lumen/vector_text.h"
#include "tests/support/temporary_locale.h"

using lumen::VectorFormat;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using vector_file::count_of;
using vector_text::draw;
using vector_text::svg_of;
using vector_text::told_of_pdf;

namespace {

constexpr VectorFormat formats[] = {VectorFormat::pdf, VectorFormat::svg};

/// Two ends of text: ligatures, signs, two directions, an outline face.
void draw_samples(LM_Renderer& renderer, LM_Rendition& rendition) {
  draw(renderer, rendition, 10, 30, L"My office: <AV> & \"more\"");
  draw(renderer, rendition, 10, 60, L"abc \u05E9\u05DC\u05D5\u05DD 123 def");
  rendition.set_shared_font(vector_text::font_of(L"DejaVu Serif", true));
  draw(renderer, rendition, 10, 90, L"Serif");
}

/// The bytes that four digits of base 64 stand for, all the way.
std::string decoded(const std::string& text) {
  const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  std::uint32_t word = 0;
  int bits = 0;
  for (const char digit : text) {
    const std::size_t value = digits.find(digit);
    if (value == std::string::npos) break;
    word = word << 6 | static_cast<std::uint32_t>(value);
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    bytes += static_cast<char>(word >> bits & 0xFF);
  }
  return bytes;
}

std::uint32_t big_endian(const std::string& bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

/// How many glyphs a font file has by its `maxp` table; 0 when it has none.
std::uint32_t glyph_count(const std::string& font) {
  const std::uint32_t tables = big_endian(font, 4, 2);
  for (std::size_t i = 0; i < tables; ++i) {
    const std::size_t entry = 12 + 16 * i;
    if (font.compare(entry, 4, "maxp") == 0) {
      return big_endian(font, big_endian(font, entry + 8, 4) + 4, 2);
    }
  }
  return 0;
}

/// What lies between two texts, from every place on; empty where there is none.
std::vector<std::string> all_between(const std::string& text, const std::string& before,
                                     const std::string& after) {
  std::vector<std::string> result;
  for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at)) {
    at += before.size();
    result.push_back(text.substr(at, text.find(after, at) - at));
  }
  return result;
}

// PDF.

TEST(VectorPdfText, IsFoundByOtherPrograms) {
  const std::string text = told_of_pdf("pdftotext", draw_samples);
  EXPECT_THAT(text, HasSubstr("My office: <AV> & \"more\""));
  EXPECT_THAT(text, AllOf(HasSubstr("abc"), HasSubstr("123"), HasSubstr("def")));
  EXPECT_THAT(text, HasSubstr("\u05E9\u05DC\u05D5\u05DD")) << "in reading order";
  EXPECT_THAT(text, HasSubstr("Serif"));
}

TEST(VectorPdfText, IsFoundHoweverItIsSet) {
  const std::string text =
      told_of_pdf("pdftotext", [](LM_Renderer& renderer, LM_Rendition& rendition) {
        rendition.set_text_size(2);
        draw(renderer, rendition, 10, 20, L"microscopic");
        rendition.set_text_size(-20);
        rendition.set_text_width_scale(0.5F);
        rendition.set_text_rotation(1.5707964F);
        draw(renderer, rendition, 60, 110, L"climbing");
        rendition.set_text_rotation(0);
        rendition.set_color({0x80FF0000}, true);
        rendition.set_shared_font(vector_text::font_of(L"DejaVu Math TeX Gyre", true, true));
        draw(renderer, rendition, 100, 60, L"office");
      });
  EXPECT_THAT(text, AllOf(HasSubstr("microscopic"), HasSubstr("climbing"), HasSubstr("office")));
}

TEST(VectorPdfText, OfMultibyteCharactersIsFound) {
  const SelectedLocale locale("C.UTF-8");
  ASSERT_TRUE(locale.is_selected());
  const std::string text =
      told_of_pdf("pdftotext", [](LM_Renderer& renderer, LM_Rendition& rendition) {
        const auto* bytes = reinterpret_cast<const unsigned char*>("na\u00EFve caf\u00E9s");
        renderer.draw_text(&rendition, {10, 40, 0}, bytes, 10);
      });
  EXPECT_THAT(text, AllOf(HasSubstr("na\u00EFve caf\u00E9"), Not(HasSubstr("s"))));
}

TEST(VectorPdfText, EmbedsTheFontsInPart) {
  const std::string fonts = told_of_pdf("pdffonts", draw_samples);
  std::size_t rows = 0;
  for (const std::string& row : all_between(fonts, "\n", "\n")) {
    if (row.find("+DejaVu") == std::string::npos) continue;
    ++rows;
    EXPECT_THAT(row, HasSubstr("yes yes yes")) << "embedded, a subset, with Unicode";
  }
  EXPECT_GE(rows, 2U) << fonts;
}

// SVG.

TEST(VectorSvgText, IsTextInTheFile) {
  const std::string svg = svg_of([](LM_Renderer& renderer, LM_Rendition& rendition) {
    rendition.set_color({0x00102030}, true);
    draw(renderer, rendition, 10, 30, L"My office: <AV> & \"more\"");
  });
  EXPECT_EQ(count_of(svg, "<text "), 1);
  EXPECT_THAT(svg, HasSubstr(">My office: &lt;AV&gt; &amp; &quot;more&quot;</text>"));
  EXPECT_THAT(svg, AllOf(HasSubstr("transform=\"matrix(1,0,0,1,10.5,31)\""),
                         HasSubstr("font-family=\"dl0, 'DejaVu Sans', sans-serif\""),
                         HasSubstr("font-size=\"20\""), HasSubstr("fill=\"#102030\""),
                         HasSubstr("xml:space=\"preserve\"")));
  EXPECT_THAT(svg,
              AllOf(Not(HasSubstr("<path")), Not(HasSubstr("<symbol")), Not(HasSubstr("opacity"))))
      << "no shapes and no marks";
}

TEST(VectorSvgText, IsTurnedAndStretchedByItsMatrix) {
  const std::string svg = svg_of([](LM_Renderer& renderer, LM_Rendition& rendition) {
    rendition.set_text_width_scale(2);
    draw(renderer, rendition, 10, 30, L"wide");
    rendition.set_text_width_scale(1);
    rendition.set_text_size(-20);
    rendition.set_text_rotation(0.5F);
    draw(renderer, rendition, 40, 100, L"up");
  });
  EXPECT_THAT(
      svg,
      AllOf(HasSubstr("matrix(2,0,0,1,10.5,31)"),
            HasSubstr("matrix(0.87758256,-0.47942554,0.47942554,0.87758256,40.739713,100.93879)")));
}

TEST(VectorSvgText, HasAnElementForEachDirectionAndFace) {
  const std::string svg = svg_of(draw_samples);
  EXPECT_THAT(svg, AllOf(HasSubstr(">abc "), HasSubstr("123"), HasSubstr(" def</text>")));
  EXPECT_THAT(svg, HasSubstr("<tspan direction=\"rtl\" unicode-bidi=\"bidi-override\">"));
  EXPECT_THAT(svg, HasSubstr("\u05E9\u05DC\u05D5\u05DD")) << "in reading order";
  EXPECT_THAT(svg, HasSubstr("'DejaVu Serif', sans-serif\" font-weight=\"700\""));
}

TEST(VectorSvgText, EmbedsTheGlyphsThatItNeeds) {
  const std::string svg = svg_of([](LM_Renderer& renderer, LM_Rendition& rendition) {
    draw(renderer, rendition, 10, 30, L"aaab");
    draw(renderer, rendition, 10, 60, L"cba");
    rendition.set_shared_font(vector_text::font_of(L"DejaVu Serif", true));
    draw(renderer, rendition, 10, 90, L"S");
  });
  const auto rules = all_between(svg, "@font-face{", "}");
  ASSERT_EQ(rules.size(), 2U);
  EXPECT_EQ(count_of(svg, "font-weight:700;src:"), 1);
  for (const std::string& rule : rules) {
    const auto urls = all_between(rule, "url(data:font/ttf;base64,", ")");
    ASSERT_EQ(urls.size(), 1U);
    const std::uint32_t letters = rule.find("700") == std::string::npos ? 3 : 1;
    EXPECT_EQ(glyph_count(decoded(urls[0])), letters + 1) << "and the one for missing ones";
  }
}

TEST(VectorSvgText, LeavesOutWhatXmlCannotHold) {
  const std::string svg = svg_of([](LM_Renderer& renderer, LM_Rendition& rendition) {
    std::wstring text = L"a";
    for (wchar_t control = 1; control < 0x20; ++control) text += control;
    draw(renderer, rendition, 10, 30,
         text +
             L"\x7F\x9F"
             L"b");
    draw(renderer, rendition, 10, 60,
         {L'c', 0xDC00, 0xD800, L'd', 0xFFFE, 0xFFFF, 0x3FFFFFF, L'e'});
    draw(renderer, rendition, 10, 90, {L'f', 0xD83D, 0xDE00, L'g'});
  });
  EXPECT_THAT(svg, AllOf(HasSubstr(">a b</text>"), HasSubstr("\U0001F600")));
  EXPECT_FALSE(std::any_of(svg.begin(), svg.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\n';
  }));
  EXPECT_THAT(svg, AllOf(Not(HasSubstr("\xED\xA0")), Not(HasSubstr("\xED\xB0")),
                         Not(HasSubstr("\xEF\xBF\xBE")), Not(HasSubstr("\xEF\xBF\xBF"))));
}

TEST(VectorSvgText, IsAsTransparentAsItsInk) {
  const std::string svg = svg_of([](LM_Renderer& renderer, LM_Rendition& rendition) {
    rendition.set_color({0x33FF0000}, true);
    draw(renderer, rendition, 10, 30, L"clear");
  });
  EXPECT_THAT(svg, HasSubstr("fill=\"#ff0000\" opacity=\"0.8\""));
}

TEST(VectorPdfText, OfCharactersThatAreSetAsideIsWrittenAllTheSame) {
  for (const wchar_t value : {0xFDD0, 0xFDEF, 0xFFFE, 0xFFFF}) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a.pdf");
    const std::wstring text{L'A', value, L'B'};
    EXPECT_EQ(vector_text::write(lumen::VectorFormat::pdf, path,
                                 [&](LM_Renderer& renderer, LM_Rendition& rendition) {
                                   draw(renderer, rendition, 10, 40, text);
                                 }),
              "");
  }
}

TEST(VectorSvgText, KeepsManyTextsApart) {
  constexpr std::int32_t count = 6000;
  const std::string svg = svg_of([](LM_Renderer& renderer, LM_Rendition& rendition) {
    rendition.set_text_size(1);
    for (std::int32_t i = 0; i < count; ++i) {
      draw(renderer, rendition, i % 250, i / 250, std::to_wstring(i));
    }
  });
  EXPECT_THAT(svg, Not(HasSubstr("<path")));
  const auto elements = all_between(svg, "<text ", "</text>");
  ASSERT_EQ(elements.size(), std::size_t{count});
  for (std::int32_t i = 0; i < count; ++i) {
    const std::string place = std::to_string(i % 250) + ".5," + std::to_string(i / 250 + 1) + ")";
    ASSERT_THAT(
        elements[static_cast<std::size_t>(i)],
        AllOf(HasSubstr("matrix(1,0,0,1," + place), testing::EndsWith(">" + std::to_string(i))));
  }
}

// Both.

TEST(VectorText, ThatCannotBeSeenIsNotInTheFile) {
  const auto drawing = [](LM_Renderer& renderer, LM_Rendition& rendition) {
    draw(renderer, rendition, -500, 50, L"left");
    draw(renderer, rendition, 301, 50, L"right");
    draw(renderer, rendition, 50, -20, L"above");
    draw(renderer, rendition, 50, 160, L"below");
    draw(renderer, rendition, INT32_MIN, INT32_MAX, L"far");
    draw(renderer, rendition, 50, 50, L"   ");
    draw(renderer, rendition, 50, 50, L"");
    renderer.draw_text(&rendition, {50, 50, 0}, L"none", 0);
    renderer.draw_text(&rendition, {50, 50, 0}, L"none", INT32_MIN);
    renderer.draw_text(&rendition, {50, 50, 0}, static_cast<const wchar_t*>(nullptr), 5);
    renderer.draw_text(&rendition, {50, 50, 0}, static_cast<const unsigned char*>(nullptr), 5);
    rendition.set_clip_rectangle({100, 120, 0, 119});
    draw(renderer, rendition, 5, 50, L"clip");
    rendition.set_clip_rectangle({0, 299, 0, 119});
    rendition.set_color({0xFF000000}, true);
    draw(renderer, rendition, 50, 50, L"invisible");
  };
  EXPECT_THAT(svg_of(drawing), AllOf(HasSubstr("<svg"), Not(HasSubstr("<text")),
                                     Not(HasSubstr("<style")), Not(HasSubstr("<path"))));
  EXPECT_THAT(told_of_pdf("pdffonts", drawing), Not(HasSubstr("DejaVu")));
}

TEST(VectorText, OfAnySizeAngleAndPlaceMakesAFileThatCanBeShown) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  for (const VectorFormat format : formats) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a");
    const auto drawing = [](LM_Renderer& renderer, LM_Rendition& rendition) {
      for (const float size : {0.0F, 1e-30F, 1e-3F, 0.01F, 8192.0F, 1e9F, -3e38F, infinity, NAN}) {
        for (const float scale : {1.0F, 0.0F, -1.0F, 1e-6F, 1e6F, infinity, NAN}) {
          rendition.set_shared_text_size(size);
          rendition.set_text_width_scale(scale);
          draw(renderer, rendition, 100, 60, L"a\u05E9");
          draw(renderer, rendition, INT32_MAX, INT32_MIN, L"a\u05E9");
        }
      }
    };
    ASSERT_EQ(vector_text::write(format, path, drawing), "");
    EXPECT_EQ(vector_file::shown(format, path).width(), vector_text::width);
  }
}

TEST(VectorText, IsWrittenByManyThreadsAtOnce) {
  const TemporaryFolder folder;
  std::array<std::string, 4> problems;
  std::array<std::vector<std::string>, 4> contents;
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < problems.size(); ++i) {
    threads.emplace_back([&, i] {
      for (int round = 0; round < 5; ++round) {
        const std::string path = folder.path(std::to_string(i));
        problems[i] += vector_text::write(VectorFormat::pdf, path, draw_samples);
        problems[i] += vector_text::write(VectorFormat::svg, path, draw_samples);
        contents[i] = all_between(vector_file::content_of(path), "<text ", "</text>");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < problems.size(); ++i) {
    EXPECT_EQ(problems[i], "");
    EXPECT_GE(contents[i].size(), 5U);
    EXPECT_EQ(contents[i], contents[0]);
  }
}

}  // namespace
