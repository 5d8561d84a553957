// Text, drawn by the vector device, shown by other programs, and compared with
// the pixels of the raster device.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "tests/lumen/picture_comparison.h"
#include "tests/lumen/vector_text.h"

using lumen::VectorFormat;
using vector_text::draw;
using vector_text::Drawing;

namespace {

class VectorTextPicture : public testing::TestWithParam<VectorFormat> {
 protected:
  /// `strangest`: see strangeness(); `difference`: how much of the ink may be
  /// elsewhere.
  void expect_like_raster(const Drawing& drawing, int strangest = 60, double difference = 0.12) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a");
    ASSERT_EQ(vector_text::write(GetParam(), path, drawing), "");
    const lumen::Picture expected = vector_text::rastered(drawing);
    const lumen::Picture actual = vector_text::shown(GetParam(), path);
    leave(expected, "expected");
    leave(actual, "actual");
    ASSERT_EQ(actual.width(), vector_text::width);
    ASSERT_EQ(actual.height(), vector_text::height);
    const auto comparison = picture_comparison::compare(expected, actual);
    EXPECT_GT(comparison.ink, 0.5) << "nothing was drawn";
    EXPECT_LE(comparison.strangest, strangest);
    EXPECT_LE(comparison.difference / comparison.ink, difference);
  }

 private:
  /// Pictures to look at, where somebody wants to.
  static void leave(const lumen::Picture& picture, const std::string& what) {
    const char* folder = std::getenv("VECTOR_PICTURES");
    if (folder == nullptr) return;
    std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(name.begin(), name.end(), '/', '-');
    EXPECT_EQ(write_png(picture, folder + ("/text-" + name) + "-" + what + ".png"), "");
  }
};

INSTANTIATE_TEST_SUITE_P(Formats, VectorTextPicture,
                         testing::Values(VectorFormat::pdf, VectorFormat::svg),
                         [](const auto& format) {
                           return format.param == VectorFormat::pdf ? "Pdf" : "Svg";
                         });

TEST_P(VectorTextPicture, TextOfManySizes) {
  const Drawing drawing = [](LM_Renderer& renderer, LM_Rendition& rendition) {
    std::int32_t y = 0;
    for (const std::int32_t size : {7, 11, 17, 29, 40}) {
      rendition.set_text_size(static_cast<float>(size));
      draw(renderer, rendition, 10, y += size, L"Hamburgefonts AV office");
    }
  };
  // The program that shows SVG fits small letters to its pixels.
  expect_like_raster(drawing, 75);
}

TEST_P(VectorTextPicture, TurnedAndStretchedText) {
  for (const float size : {20.0F, -20.0F}) {
    for (const float rotation : {0.4F, 1.5707964F, 3.0F, 5.5F}) {
      SCOPED_TRACE(testing::Message() << size << ' ' << rotation);
      expect_like_raster([=](LM_Renderer& renderer, LM_Rendition& rendition) {
        rendition.set_text_size(size);
        rendition.set_text_rotation(rotation);
        draw(renderer, rendition, 150, 60, L"Turned (j)");
        rendition.set_text_width_scale(2.5F);
        rendition.set_text_rotation(0);
        draw(renderer, rendition, 10, 20, L"wide");
        rendition.set_text_width_scale(0.5F);
        draw(renderer, rendition, 10, 110, L"narrow text");
      });
    }
  }
}

TEST_P(VectorTextPicture, TextInBothDirections) {
  expect_like_raster([](LM_Renderer& renderer, LM_Rendition& rendition) {
    draw(renderer, rendition, 10, 30, L"abc \u05E9\u05DC\u05D5\u05DD 123! (\u05D0) def");
    draw(renderer, rendition, 10, 60, L"\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD, abc!");
    draw(renderer, rendition, 10, 100, L"e\u0301 \u0645\u0631\u062D\u0628\u0627 \u0661\u0662 z");
  });
}

TEST_P(VectorTextPicture, CharactersThatControlOrAreNone) {
  expect_like_raster([](LM_Renderer& renderer, LM_Rendition& rendition) {
    draw(renderer, rendition, 10, 40,
         L"a\x01\x02\x7F\x85"
         L"b\tc\nd");
    draw(renderer, rendition, 10, 80, L"lone \xD83D here");
  });
}

TEST_P(VectorTextPicture, BoldSlantedAndOtherFaces) {
  expect_like_raster(
      [](LM_Renderer& renderer, LM_Rendition& rendition) {
        std::int32_t y = 0;
        for (const wchar_t* name :
             {L"DejaVu Serif", L"DejaVu Sans Mono", L"DejaVu Math TeX Gyre"}) {
          rendition.set_shared_font(vector_text::font_of(name, true, false));
          draw(renderer, rendition, 10, y += 36, L"Bold face");
          rendition.set_shared_font(vector_text::font_of(name, true, true));
          draw(renderer, rendition, 150, y, L"Slanted too");
        }
      },
      60, 0.1);
}

TEST_P(VectorTextPicture, TransparentText) {
  expect_like_raster([](LM_Renderer& renderer, LM_Rendition& rendition) {
    rendition.set_color({0x00FFC000}, true);
    const LM_DCI_Point square[] = {{10, 10, 0}, {80, 10, 0}, {80, 100, 0}, {10, 100, 0}};
    renderer.actions.polygon_clipped(&rendition, 4, square, 0);
    rendition.set_color({0x802040C0}, true);
    rendition.set_text_size(50);
    draw(renderer, rendition, 20, 70, L"Clear");
  });
}

TEST_P(VectorTextPicture, TextInItsPlaceBetweenShapes) {
  expect_like_raster([](LM_Renderer& renderer, LM_Rendition& rendition) {
    rendition.set_text_size(40);
    for (std::int32_t i = 0; i < 5; ++i) {
      rendition.set_color({i % 2 == 0 ? 0x00D03020U : 0x002040C0U}, true);
      draw(renderer, rendition, 10 + 12 * i, 60 + 4 * i, L"Layers");
      const LM_DCI_Point line[] = {{0, 30 + 9 * i, 0}, {300, 40 + 9 * i, 0}};
      rendition.set_line_weight(5);
      renderer.actions.polyline_clipped(&rendition, 2, line);
    }
  });
}

TEST_P(VectorTextPicture, TextInsideTheClips) {
  expect_like_raster([](LM_Renderer& renderer, LM_Rendition& rendition) {
    rendition.set_text_size(60);
    rendition.set_clip_rectangle({20, 130, 25, 70});
    draw(renderer, rendition, -10, 75, L"Cut off");
    rendition.set_clip_rectangle({0, 299, 0, 119});
    const auto clip = LM_Create<LM_Contour_Set_Data>();
    const LM_Point triangle[] = {{150, 10, 0}, {290, 40, 0}, {170, 115, 0}};
    clip->add_contour(triangle, 3);
    rendition.set_complex_clip(clip, true);
    rendition.set_color({0x40208040}, true);
    draw(renderer, rendition, 140, 60, L"Triangle");
    draw(renderer, rendition, 100, 100, L"shape");
  });
}

TEST_P(VectorTextPicture, TextFromFarAway) {
  expect_like_raster([](LM_Renderer& renderer, LM_Rendition& rendition) {
    const std::wstring text(4000, L'W');
    draw(renderer, rendition, -30000, 50, text);
    rendition.set_text_rotation(0.3F);
    draw(renderer, rendition, -28657, -8800, text);
  });
}

TEST_P(VectorTextPicture, LettersFarLargerThanThePage) {
  for (const float size : {5000.0F, 9000.0F, 400000.0F}) {
    SCOPED_TRACE(size);
    expect_like_raster([=](LM_Renderer& renderer, LM_Rendition& rendition) {
      rendition.set_text_size(size);
      // The edge of the round letter's left side crosses the page.
      draw(renderer, rendition, 20 - static_cast<std::int32_t>(size * 0.0566F),
           static_cast<std::int32_t>(size * 0.36F), L"O");
    });
  }
}

}  // namespace
