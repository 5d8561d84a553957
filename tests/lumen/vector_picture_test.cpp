// Every action, drawn by the vector device, shown by other programs, and
// compared with the pixels of the raster device.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <tuple>
#include <vector>

#include "lumen/picture_image.h"
#include "lumen/raster_device.h"
#include "tests/lumen/picture_comparison.h"
#include "tests/lumen/vector_file.h"

using lumen::Picture;
using lumen::VectorFormat;
using vector_file::Drawing;

namespace {

using Points = std::vector<LM_DCI_Point>;

constexpr std::int32_t side = 120;

Picture rastered(const Drawing& drawing) {
  Picture picture(side, side);
  lumen::RasterDevice device(picture);
  device.set_antialiased(true);
  LM_Rendition rendition;
  drawing(device.actions, rendition);
  return picture;
}

class VectorPicture : public testing::TestWithParam<VectorFormat> {
 protected:
  /// `strangest`: see strangeness(); `difference`: how much of the ink may be
  /// elsewhere.
  void expect_like_raster(const Drawing& drawing, int strangest = 50, double difference = 0.1) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a");
    ASSERT_EQ(vector_file::write(GetParam(), side, side, path, drawing), "");
    const Picture expected = rastered(drawing);
    const Picture actual = vector_file::shown(GetParam(), path);
    ASSERT_EQ(actual.width(), side);
    ASSERT_EQ(actual.height(), side);
    const picture_comparison::Comparison comparison = picture_comparison::compare(expected, actual);
    EXPECT_GT(comparison.ink, 0.5) << "nothing was drawn";
    EXPECT_LE(comparison.strangest, strangest);
    EXPECT_LE(comparison.difference / comparison.ink, difference);
    leave(expected, "expected");
    leave(actual, "actual");
  }

 private:
  /// Pictures to look at, where somebody wants to.
  static void leave(const Picture& picture, const std::string& what) {
    const char* folder = std::getenv("VECTOR_PICTURES");
    if (folder == nullptr) return;
    std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::replace(name.begin(), name.end(), '/', '-');
    EXPECT_EQ(write_png(picture, folder + ("/" + name) + "-" + what + ".png"), "");
  }
};

INSTANTIATE_TEST_SUITE_P(Formats, VectorPicture,
                         testing::Values(VectorFormat::pdf, VectorFormat::svg),
                         [](const auto& format) {
                           return format.param == VectorFormat::pdf ? "Pdf" : "Svg";
                         });

constexpr LM_RGB32 red{0x00D03020};
constexpr LM_RGB32 half_blue{0x802040C0};

const Points zigzag{{10, 20, 0}, {60, 100, 0}, {80, 15, 0}, {105, 95, 0}};
const Points fan{{10, 15, 0}, {20, 100, 0}, {60, 10, 0}, {70, 105, 0}, {110, 20, 0}, {105, 90, 0}};
const std::vector<LM_RGB32> rainbow{{0x00FF2020}, {0x0020E020}, {0x002040FF},
                                    {0x00F0E000}, {0x00E020E0}, {0x00208080}};

std::int32_t count_of(const Points& points) {
  return static_cast<std::int32_t>(points.size());
}

/// The rainbow, each colour as transparent as `transparency` tells.
template <class Transparency>
std::vector<LM_RGB32> veiled_rainbow(Transparency transparency) {
  std::vector<LM_RGB32> colors = rainbow;
  for (std::size_t i = 0; i < colors.size(); ++i) {
    colors[i].word |= static_cast<std::uint32_t>(transparency(i)) << 24;
  }
  return colors;
}

LM_Handle<LM_Image> checkered(std::int32_t width, std::int32_t height, std::int32_t square) {
  Picture picture(width, height);
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      const bool dark = (x / square + y / square) % 2 == 0;
      picture.row(y)[x] = dark ? 0x00803020 : x < width / 2 ? 0x8020A0E0 : 0x0020A0E0;
    }
  }
  return LM_Create<lumen::PictureImage>(std::move(picture));
}

TEST_P(VectorPicture, Dots) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        for (std::int32_t i = 0; i < 40; ++i) {
          const LM_DCI_Point point{3 * i, (7 * i) % 120, 0};
          actions.dot_unclipped(&rendition, &point, i % 2 == 0 ? nullptr : &red);
        }
      },
      2, 0.01);
}

TEST_P(VectorPicture, LinesOfManyWeightsPatternsAndEnds) {
  for (const std::int32_t weight : {1, 3, 4, 9}) {
    for (const std::int32_t pattern : {LM_PATTERN_SOLID, LM_PATTERN_DASH, LM_PATTERN_DASH_DOT}) {
      for (const std::int32_t end : {LM_END_FLAT, LM_END_ROUND, LM_END_SQUARE}) {
        SCOPED_TRACE(testing::Message() << weight << ' ' << pattern << ' ' << end);
        // The raster device puts even weights half a pixel aside, and draws
        // thin lines in a way of its own.
        const double difference = weight == 1 ? 0.6 : weight == 4 ? 0.3 : 0.1;
        expect_like_raster(
            [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
              rendition.set_line_weight(weight);
              rendition.set_line_pattern(pattern);
              rendition.set_end_styles(end);
              actions.polyline_clipped(&rendition, count_of(zigzag), zigzag.data());
            },
            weight % 2 == 0 ? 140 : 100, difference);
      }
    }
  }
}

TEST_P(VectorPicture, LinesWithTwoDifferentEnds) {
  for (const auto& [start, end] : {std::pair{LM_END_FLAT, LM_END_ROUND},
                                   {LM_END_ROUND, LM_END_SQUARE},
                                   {LM_END_SQUARE, LM_END_FLAT}}) {
    for (const LM_RGB32 color : {red, half_blue}) {
      expect_like_raster([=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_color(color, true);
        rendition.set_line_weight(15);
        rendition.set_end_styles(start, end);
        actions.polyline_clipped(&rendition, count_of(zigzag), zigzag.data());
      });
    }
  }
}

TEST_P(VectorPicture, ClosedTransparentLines) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    rendition.set_color(half_blue, true);
    rendition.set_line_weight(11);
    const Points frame{{20, 20, 0}, {100, 30, 0}, {90, 100, 0}, {30, 90, 0}, {20, 20, 0}};
    actions.polyline_unclipped(&rendition, count_of(frame), frame.data());
  });
}

TEST_P(VectorPicture, LinesWithoutLengthAndSinglePoints) {
  for (const std::int32_t end : {LM_END_FLAT, LM_END_ROUND, LM_END_SQUARE}) {
    expect_like_raster([=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
      rendition.set_line_weight(31);
      rendition.set_end_styles(end);
      const Points same{{30, 30, 0}, {30, 30, 0}, {30, 30, 0}, {30, 30, 0}};
      actions.polyline_clipped(&rendition, 4, same.data());
      const LM_DCI_Point one{80, 70, 0};
      actions.polyline_clipped(&rendition, 1, &one);
    });
  }
}

TEST_P(VectorPicture, GouraudLines) {
  for (const std::int32_t weight : {3, 13}) {
    for (const std::int32_t end : {LM_END_FLAT, LM_END_ROUND, LM_END_SQUARE}) {
      SCOPED_TRACE(testing::Message() << weight << ' ' << end);
      expect_like_raster(
          [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
            rendition.set_line_weight(weight);
            rendition.set_end_styles(end);
            actions.gouraud_polyline_clipped(&rendition, count_of(zigzag), zigzag.data(),
                                             rainbow.data());
          },
          60);
    }
  }
}

TEST_P(VectorPicture, EvenlyTransparentGouraudLines) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_line_weight(13);
        rendition.set_end_styles(LM_END_ROUND, LM_END_FLAT);
        const auto colors = veiled_rainbow([](std::size_t) { return 0x80; });
        actions.gouraud_polyline_unclipped(&rendition, count_of(zigzag), zigzag.data(),
                                           colors.data());
      },
      60);
}

TEST_P(VectorPicture, GouraudLinesThatFadeAway) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_line_weight(13);
        const Points straight{{10, 30, 0}, {60, 60, 0}, {110, 90, 0}};
        const auto colors = veiled_rainbow([](std::size_t i) { return 100 * i; });
        actions.gouraud_polyline_unclipped(&rendition, 3, straight.data(), colors.data());
      },
      60, 0.15);
}

TEST_P(VectorPicture, DashedGouraudLines) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_line_weight(5);
        rendition.set_line_pattern(LM_PATTERN_DASH_DOT_DOT);
        actions.gouraud_polyline_unclipped(&rendition, count_of(zigzag), zigzag.data(),
                                           rainbow.data());
      },
      120, 0.15);
}

TEST_P(VectorPicture, PolygonsByTheEvenOddRule) {
  for (const LM_RGB32 color : {red, half_blue}) {
    expect_like_raster([=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
      rendition.set_color(color, true);
      const Points star{{60, 5, 0}, {95, 110, 0}, {5, 45, 0}, {115, 45, 0}, {25, 110, 0}};
      actions.polygon_clipped(&rendition, count_of(star), star.data(), 0);
    });
  }
}

TEST_P(VectorPicture, StripsWithoutSeams) {
  for (const LM_RGB32 color : {red, half_blue}) {
    expect_like_raster([=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
      rendition.set_color(color, true);
      actions.triangle_strip_clipped(&rendition, count_of(fan), fan.data());
    });
  }
}

TEST_P(VectorPicture, StripsThatFoldBack) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    rendition.set_color(half_blue, true);
    const Points folded{{10, 10, 0}, {20, 100, 0}, {100, 20, 0}, {40, 15, 0}, {110, 110, 0}};
    actions.triangle_strip_unclipped(&rendition, count_of(folded), folded.data());
  });
}

TEST_P(VectorPicture, GouraudStrips) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.gouraud_triangle_strip_clipped(&rendition, count_of(fan), fan.data(), rainbow.data());
  });
}

TEST_P(VectorPicture, TransparentGouraudStrips) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    const auto colors = veiled_rainbow([](std::size_t) { return 0x60; });
    actions.gouraud_triangle_strip_clipped(&rendition, count_of(fan), fan.data(), colors.data());
  });
}

TEST_P(VectorPicture, GouraudStripsThatFadeAway) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        const auto colors = veiled_rainbow([](std::size_t i) { return 50 * i; });
        actions.gouraud_triangle_strip_clipped(&rendition, count_of(fan), fan.data(),
                                               colors.data());
      },
      60, 0.15);
}

TEST_P(VectorPicture, TexturedStrips) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    const std::vector<LM_Handle<const LM_Image>> pages{checkered(32, 32, 8)};
    rendition.set_texture_pages(LM_Create<const LM_Texture_Pages>(pages));
    std::vector<LM_Vertex_Triple> places;
    for (const LM_DCI_Point& point : fan) {
      places.push_back(LM_Vertex_Triple::at(static_cast<float>(point.x) / 50.0F,
                                            static_cast<float>(point.y) / 50.0F, 0));
    }
    const std::vector<LM_RGB32> ground(fan.size(), LM_RGB32{0x80FFFF00});
    actions.textured_triangle_strip_clipped(&rendition, count_of(fan), fan.data(), ground.data(),
                                            places.data(), LM_TEXTURE_REPEAT, nullptr, nullptr);
  });
}

TEST_P(VectorPicture, MarkersOfEveryShape) {
  for (std::int32_t shape = LM_MARKER_POINT; shape <= LM_MARKER_TRIANGLE; ++shape) {
    for (const LM_RGB32 color : {red, half_blue}) {
      SCOPED_TRACE(shape);
      expect_like_raster(
          [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
            rendition.set_color(color, true);
            rendition.set_line_weight(3);
            rendition.set_line_pattern(LM_PATTERN_DASH);
            rendition.set_marker({shape, 25});
            const Points points{{30, 30, 0}, {90, 40, 0}, {100, 50, 0}, {0, 119, 0}};
            actions.marker_clipped(&rendition, count_of(points), points.data());
          },
          60);
    }
  }
}

TEST_P(VectorPicture, ImagesPixelByPixel) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        LM_Handle<LM_Image> image = checkered(40, 30, 5);
        LM_Image* const cell = image.get();
        for (const LM_DCI_Point& corner : {LM_DCI_Point{10, 15, 0}, {70, 60, 0}, {-20, 100, 0}}) {
          actions.image_clipped(&rendition, &corner, &cell);
        }
      },
      3, 0.01);
}

TEST_P(VectorPicture, ArcsAndTheirChords) {
  for (const auto& [start, end] :
       {std::pair{0.0F, 7.0F}, {0.5F, 4.0F}, {5.0F, 2.0F}, {1.0F, 1.2F}}) {
    for (const std::int32_t ends : {LM_END_FLAT, LM_END_ROUND}) {
      SCOPED_TRACE(testing::Message() << start << ' ' << end << ' ' << ends);
      expect_like_raster(
          [=, from = start, to = end](const LM_Device_Actions& actions, LM_Rendition& rendition) {
            rendition.set_line_weight(5);
            rendition.set_end_styles(ends);
            const LM_DCI_Point center{60, 55, 0};
            const LM_DCI_Point radii{50, 25, 0};
            actions.elliptical_arc(&rendition, &center, &radii, from, to, 0.4F, &half_blue);
          },
          60);
    }
  }
}

TEST_P(VectorPicture, DashedArcs) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_line_weight(3);
        rendition.set_line_pattern(LM_PATTERN_DASH);
        const LM_DCI_Point center{60, 55, 0};
        const LM_DCI_Point radii{50, 25, 0};
        actions.elliptical_arc(&rendition, &center, &radii, 0.3F, 5.5F, 1.0F, nullptr);
      },
      100, 0.15);
}

TEST_P(VectorPicture, SectorsOfEllipses) {
  for (const auto& [start, end] : {std::pair{0.0, 7.0}, {0.5, 4.0}, {5.0, 2.0}}) {
    expect_like_raster(
        [from = start, to = end](const LM_Device_Actions& actions, LM_Rendition& rendition) {
          const LM_DCI_Point center{40, 60, 0};
          const LM_DCI_Point radii{35, 55, 0};
          actions.elliptical_area(&rendition, &center, &radii, from, to, 0.4, &red);
          const LM_DCI_Point right{80, 60, 0};
          actions.elliptical_arc_colored(&rendition, &right, &radii, static_cast<float>(from),
                                         static_cast<float>(to), -0.4F, nullptr);
        });
  }
}

TEST_P(VectorPicture, FlatEllipses) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_line_weight(7);
        const LM_DCI_Point left{40, 60, 0};
        const LM_DCI_Point across{30, 0, 0};
        actions.elliptical_arc(&rendition, &left, &across, 0.0F, 7.0F, 0.5F, nullptr);
        const LM_DCI_Point right{95, 40, 0};
        const LM_DCI_Point nothing{0, 0, 0};
        actions.elliptical_arc(&rendition, &right, &nothing, 0.0F, 7.0F, 0.0F, nullptr);
        const LM_DCI_Point low{95, 90, 0};
        const LM_DCI_Point up{0, 20, 0};
        actions.elliptical_area(&rendition, &low, &up, 0.0, 7.0, 0.0, nullptr);
      },
      60);
}

/// What clips the drawings of the next tests.
LM_Contour_Set ring() {
  LM_Contour_Set clip = LM_Create<LM_Contour_Set_Data>(LM_Fill_Rule::even_odd);
  for (const float radius : {55.0F, 25.0F}) {
    std::vector<LM_Point> points;
    for (int i = 0; i < 60; ++i) {
      const double angle = std::numbers::pi * i / 30;
      points.push_back({60.0F + radius * static_cast<float>(std::cos(angle)),
                        60.0F + radius * static_cast<float>(std::sin(angle)), 0.0F});
    }
    clip->add_contour(points.data(), 60);
  }
  return clip;
}

const Points everywhere{{-500, -500, 0}, {500, -500, 0}, {500, 500, 0}, {-500, 500, 0}};

TEST_P(VectorPicture, EverythingInsideTheClips) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    rendition.set_clip_rectangle({10, 60, 20, 110});
    rendition.set_color(red, true);
    actions.polygon_unclipped(&rendition, 4, everywhere.data(), 0);
    LM_Rendition other;
    other.set_clip_rectangle({0, 119, 0, 119});
    other.set_complex_clip(ring(), true);
    other.set_color(half_blue, true);
    actions.polygon_clipped(&other, 4, everywhere.data(), 0);
    rendition.set_color({0x0020A020}, true);
    rendition.set_clip_rectangle({50, 90, 50, 60});
    actions.polygon_clipped(&rendition, 4, everywhere.data(), 0);
    other.set_clip_rectangle({60, 200, 0, 60});
    actions.polygon_clipped(&other, 4, everywhere.data(), 0);
  });
}

TEST_P(VectorPicture, ShapesThatReachToTheLimitsOfCoordinates) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    rendition.set_color(red, true);
    const Points wedge{{60, 60, 0}, {INT32_MAX, INT32_MIN, 0}, {INT32_MAX, INT32_MAX, 0}};
    actions.polygon_clipped(&rendition, 3, wedge.data(), 0);
    rendition.set_color(half_blue, true);
    const Points strip{{INT32_MIN, 10, 0}, {20, INT32_MIN, 0}, {30, INT32_MAX, 0}};
    actions.triangle_strip_clipped(&rendition, 3, strip.data());
    rendition.set_line_weight(5);
    const Points line{{INT32_MIN, INT32_MIN, 0}, {INT32_MAX, INT32_MAX, 0}, {40, INT32_MIN, 0}};
    actions.polyline_clipped(&rendition, 3, line.data());
    const LM_DCI_Point center{60, 1000000060, 0};
    const LM_DCI_Point radii{1000000000, 1000000000, 0};
    actions.elliptical_arc(&rendition, &center, &radii, 0.0F, 7.0F, 0.0F, nullptr);
  });
}

TEST_P(VectorPicture, DashesThatComeFromFarAway) {
  expect_like_raster(
      [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_line_weight(5);
        rendition.set_line_pattern(LM_PATTERN_DASH);
        const Points line{{-30000007, 30, 0}, {40000000, 30, 0}, {50, 30000001, 0}, {50, -9000, 0}};
        actions.polyline_clipped(&rendition, 4, line.data());
      },
      60);
}

TEST_P(VectorPicture, GouraudShapesFromFarAway) {
  expect_like_raster([](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    const Points strip{{-3000000, 10, 0}, {3000000, 10, 0}, {60, 3000000, 0}};
    const std::vector<LM_RGB32> colors{{0x00FF0000}, {0x000000FF}, {0x0000FF00}};
    actions.gouraud_triangle_strip_clipped(&rendition, 3, strip.data(), colors.data());
    rendition.set_line_weight(9);
    const Points line{{-4000000, 90, 0}, {4000000, 90, 0}};
    actions.gouraud_polyline_clipped(&rendition, 2, line.data(), colors.data() + 1);
  });
}

}  // namespace
