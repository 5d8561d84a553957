#include "lumen/vector_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstring>
#include <limits>
#include <vector>

#include "displaylist/platform/texture_pages.h"
#include "lumen/picture_image.h"
#include "tests/lumen/vector_file.h"

using lumen::VectorDevice;
using lumen::VectorFormat;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using vector_file::count_of;
using vector_file::Drawing;
using vector_file::svg_of;

namespace {

using Points = std::vector<LM_DCI_Point>;

constexpr VectorFormat formats[] = {VectorFormat::pdf, VectorFormat::svg};

void polyline(const LM_Device_Actions& actions, LM_Rendition& rendition, const Points& points) {
  actions.polyline_clipped(&rendition, static_cast<std::int32_t>(points.size()), points.data());
}

void triangle(const LM_Device_Actions& actions, LM_Rendition& rendition) {
  const Points points{{10, 10, 0}, {40, 12, 0}, {20, 40, 0}};
  actions.polygon_clipped(&rendition, 3, points.data(), 0);
}

// Structure.

TEST(VectorSvg, HasTheSizeOfThePage) {
  EXPECT_THAT(svg_of(640, 480, triangle),
              HasSubstr("width=\"640px\" height=\"480px\" viewBox=\"0 0 640 480\""));
}

TEST(VectorPdf, HasTheSizeOfThePageInPoints) {
  const TemporaryFolder folder;
  ASSERT_EQ(vector_file::write(VectorFormat::pdf, 640, 480, folder.path("a.pdf"), triangle), "");
  EXPECT_THAT(vector_file::content_of(folder.path("a.pdf")),
              AllOf(StartsWith("%PDF-"), HasSubstr("/MediaBox [ 0 0 480 360 ]")));
}

TEST(VectorSvg, HasOnePathForAPolyline) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_color({0x80FF0000}, true);
        rendition.set_line_weight(4);
        rendition.set_end_styles(LM_END_ROUND);
        polyline(actions, rendition, {{10, 10, 0}, {50, 90, 0}, {90, 10, 0}, {95, 95, 0}});
      });
  EXPECT_EQ(count_of(svg, "<path"), 1);
  EXPECT_THAT(svg, AllOf(HasSubstr("stroke-width:4;"), HasSubstr("stroke-linecap:round;"),
                         HasSubstr("stroke-linejoin:round;"), HasSubstr("stroke:rgb(100%,0%,0%)"),
                         HasSubstr("stroke-opacity:0.498039"),
                         HasSubstr("d=\"M 10.5 10.5 L 50.5 90.5 L 90.5 10.5 L 95.5 95.5 \"")));
  EXPECT_THAT(svg, AllOf(Not(HasSubstr("<image")), Not(HasSubstr("dasharray"))));
}

TEST(VectorSvg, ClosesAPolylineThatReturns) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        polyline(actions, rendition, {{10, 10, 0}, {50, 90, 0}, {90, 10, 0}, {10, 10, 0}});
      });
  EXPECT_EQ(count_of(svg, " Z "), 1);
}

TEST(VectorSvg, ScalesDashesWithTheWeight) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        rendition.set_line_weight(3);
        rendition.set_line_pattern(LM_PATTERN_DASH_DOT);
        polyline(actions, rendition, {{10, 10, 0}, {90, 10, 0}});
      });
  EXPECT_EQ(count_of(svg, "<path"), 1);
  EXPECT_THAT(svg, HasSubstr("stroke-dasharray:24,12,6,12;"));
}

TEST(VectorSvg, FillsAStripAsOnePath) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        const Points strip{{5, 5, 0}, {5, 90, 0}, {50, 5, 0}, {50, 90, 0}, {95, 5, 0}};
        actions.triangle_strip_unclipped(&rendition, 5, strip.data());
      });
  EXPECT_EQ(count_of(svg, "<path"), 1);
  EXPECT_THAT(svg, HasSubstr("fill-rule:nonzero;"));
}

TEST(VectorSvg, HasCurvesForEllipsesAndRoundMarkers) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        const LM_DCI_Point center{50, 50, 0};
        const LM_DCI_Point radii{40, 20, 0};
        actions.elliptical_arc(&rendition, &center, &radii, 0.0F, 7.0F, 0.5F, nullptr);
        rendition.set_marker({LM_MARKER_CIRCLE, 9});
        actions.marker_clipped(&rendition, 1, &center);
      });
  EXPECT_EQ(count_of(svg, "<path"), 2);
  EXPECT_GE(count_of(svg, " C "), 6);
  EXPECT_LE(count_of(svg, " C "), 20);
  EXPECT_LE(count_of(svg, " L "), 0);
}

TEST(VectorSvg, HasNoImagesForGouraudShapes) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        const Points strip{{5, 5, 0}, {5, 90, 0}, {50, 5, 0}, {50, 90, 0}};
        // Colours that differ along a line only: one gradient a triangle.
        const LM_RGB32 colors[] = {{0x00000000}, {0x00000000}, {0x00FFFFFF}, {0x00FFFFFF}};
        actions.gouraud_triangle_strip_clipped(&rendition, 4, strip.data(), colors);
        actions.gouraud_polyline_clipped(&rendition, 4, strip.data(), colors);
      });
  EXPECT_EQ(count_of(svg, "<linearGradient"), 3);
  EXPECT_THAT(svg, Not(HasSubstr("<image")));
}

LM_Handle<LM_Image> image(std::int32_t width, std::int32_t height) {
  lumen::Picture picture(width, height);
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      picture.row(y)[x] = static_cast<std::uint32_t>(x * 7919 + y * 104729) & 0x00FFFFFF;
    }
  }
  return LM_Create<lumen::PictureImage>(std::move(picture));
}

TEST(VectorImages, AreEmbeddedOnceHoweverOftenTheyAreDrawn) {
  const LM_Handle<LM_Image> noise = image(40, 40);
  const auto draw = [&](int times) -> Drawing {
    return [&noise, times](const LM_Device_Actions& actions, LM_Rendition& rendition) {
      LM_Image* const cell = noise.get();
      for (std::int32_t i = 0; i < times; ++i) {
        const LM_DCI_Point corner{3 * i, 2 * i, 0};
        actions.image_clipped(&rendition, &corner, &cell);
      }
    };
  };
  EXPECT_EQ(count_of(svg_of(100, 100, draw(20)), "<image"), 1);
  const TemporaryFolder folder;
  ASSERT_EQ(vector_file::write(VectorFormat::pdf, 100, 100, folder.path("1"), draw(1)), "");
  ASSERT_EQ(vector_file::write(VectorFormat::pdf, 100, 100, folder.path("20"), draw(20)), "");
  EXPECT_LT(vector_file::content_of(folder.path("20")).size(),
            vector_file::content_of(folder.path("1")).size() + 1500);
}

TEST(VectorImages, AreEmbeddedOnlyWhereTheyAreSeen) {
  const LM_Handle<LM_Image> large = image(20000, 4);
  const std::string svg =
      svg_of(100, 100, [&](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        LM_Image* const cell = large.get();
        for (const std::int32_t x : {-19950, -16400, INT32_MIN, INT32_MAX}) {
          const LM_DCI_Point corner{x, 10, 0};
          actions.image_unclipped(&rendition, &corner, &cell);
        }
      });
  EXPECT_EQ(count_of(svg, "<image"), 1);
  EXPECT_THAT(svg, HasSubstr("width=\"3616\" height=\"4\""));
}

TEST(VectorClip, IsWrittenOnceForAllThatItClips) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        const LM_Point corners[] = {{0, 0, 0}, {90, 10, 0}, {50, 90, 0}};
        LM_Contour_Set clip = LM_Create<LM_Contour_Set_Data>();
        clip->add_contour(corners, 3);
        rendition.set_complex_clip(clip, true);
        for (int i = 0; i < 50; ++i) {
          triangle(actions, rendition);
          polyline(actions, rendition, {{i, 0, 0}, {0, 2 * i, 0}});
        }
      });
  // Two more are the boxes around the clip and around what it clips.
  EXPECT_LE(count_of(svg, "<clipPath"), 3);
  EXPECT_EQ(count_of(svg, "<path clip-rule=\"evenodd\" "), 1);
}

TEST(VectorClip, IsNoneWhereThePageIsInside) {
  const std::string svg =
      svg_of(100, 100, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        triangle(actions, rendition);
        rendition.set_clip_rectangle({0, 99, 0, 99});
        triangle(actions, rendition);
        rendition.set_clip_rectangle({-5, 500, INT32_MIN, INT32_MAX});
        triangle(actions, rendition);
      });
  EXPECT_EQ(count_of(svg, "clip"), 0);
  EXPECT_EQ(count_of(svg, "<path"), 3);
}

// What is not to be seen.

/// How much an SVG consists of; -1 when it is none.
int part_count(const std::string& svg) {
  if (!svg.ends_with("</svg>\n")) return -1;
  return count_of(svg, "<path") + count_of(svg, "<use") + count_of(svg, "<image");
}

void draw_all(const LM_Device_Actions& actions, LM_Rendition& rendition, std::int32_t count,
              const Points& points, const std::vector<LM_RGB32>& colors) {
  actions.dot_clipped(&rendition, points.data(), colors.data());
  actions.polyline_clipped(&rendition, count, points.data());
  actions.gouraud_polyline_clipped(&rendition, count, points.data(), colors.data());
  actions.polygon_clipped(&rendition, count, points.data(), 0);
  actions.triangle_strip_clipped(&rendition, count, points.data());
  actions.gouraud_triangle_strip_clipped(&rendition, count, points.data(), colors.data());
  actions.textured_triangle_strip_clipped(&rendition, count, points.data(), colors.data(), nullptr,
                                          0, nullptr, nullptr);
  actions.marker_clipped(&rendition, count, points.data());
  actions.elliptical_arc(&rendition, points.data(), &points[1], 0.0F, 7.0F, 0.0F, colors.data());
  actions.elliptical_arc_colored(&rendition, points.data(), &points[1], 0.0F, 7.0F, 0.0F,
                                 colors.data());
  actions.elliptical_area(&rendition, points.data(), &points[1], 0.0, 7.0, 0.0, colors.data());
}

const Points square{{10, 10, 0}, {60, 10, 0}, {10, 60, 0}, {60, 60, 0}};

TEST(VectorDevice, TexturedStripsOfLargePagesComeInBands) {
  const std::string svg =
      svg_of(65535, 300, [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        const Points page{{0, 0, 0}, {65535, 0, 0}, {0, 300, 0}, {65535, 300, 0}};
        const std::vector<LM_RGB32> ground(4, LM_RGB32{0x00336699});
        actions.textured_triangle_strip_clipped(&rendition, 4, page.data(), ground.data(), nullptr,
                                                LM_TEXTURE_REPEAT, nullptr, nullptr);
      });
  EXPECT_EQ(count_of(svg, "<use"), count_of(svg, "<image"));
  EXPECT_GE(count_of(svg, "<image"), 2);
}

TEST(VectorDevice, DrawsNothingInInvisibleColors) {
  EXPECT_EQ(part_count(svg_of(100, 100,
                              [](const LM_Device_Actions& actions, LM_Rendition& rendition) {
                                rendition.set_color({0xFF123456}, true);
                                const std::vector<LM_RGB32> colors(4, LM_RGB32{0xFFABCDEF});
                                const LM_DCI_Point point{5, 5, 0};
                                actions.dot_clipped(&rendition, &point, nullptr);
                                actions.polyline_clipped(&rendition, 4, square.data());
                                actions.gouraud_polyline_clipped(&rendition, 4, square.data(),
                                                                 colors.data());
                                actions.polygon_clipped(&rendition, 4, square.data(), 0);
                                actions.triangle_strip_clipped(&rendition, 4, square.data());
                                actions.gouraud_triangle_strip_clipped(&rendition, 4, square.data(),
                                                                       colors.data());
                                actions.marker_clipped(&rendition, 4, square.data());
                                actions.elliptical_arc(&rendition, square.data(), &square[1], 0.0F,
                                                       7.0F, 0.0F, colors.data());
                              })),
            0);
}

TEST(VectorDevice, DrawsNothingInAnEmptyClip) {
  const std::vector<LM_RGB32> colors(4, LM_RGB32{0x00FF0000});
  for (const LM_Clip_Rectangle& clip : {LM_Clip_Rectangle{50, 40, 0, 99},
                                        {200, 300, 0, 99},
                                        {0, 99, INT32_MIN, -1},
                                        {INT32_MAX, INT32_MIN, INT32_MAX, INT32_MIN}}) {
    EXPECT_EQ(part_count(svg_of(100, 100,
                                [&](const LM_Device_Actions& actions, LM_Rendition& rendition) {
                                  rendition.set_clip_rectangle(clip);
                                  draw_all(actions, rendition, 4, square, colors);
                                })),
              0);
  }
}

TEST(VectorDevice, DrawsNothingThatIsNotThere) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(
      part_count(svg_of(
          100, 100,
          [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
            const LM_RGB32 color{0x00FF0000};
            for (const std::int32_t count : {0, -1, INT32_MIN}) {
              actions.polyline_clipped(&rendition, count, square.data());
              actions.gouraud_polyline_clipped(&rendition, count, square.data(), &color);
              actions.polygon_clipped(&rendition, count, square.data(), 0);
              actions.triangle_strip_clipped(&rendition, count, square.data());
              actions.gouraud_triangle_strip_clipped(&rendition, count, square.data(), &color);
              actions.textured_triangle_strip_clipped(&rendition, count, square.data(), &color,
                                                      nullptr, 0, nullptr, nullptr);
              actions.marker_clipped(&rendition, count, square.data());
            }
            actions.polygon_clipped(&rendition, 2, square.data(), 0);
            actions.triangle_strip_clipped(&rendition, 2, square.data());
            LM_Image* const none = nullptr;
            actions.image_clipped(&rendition, square.data(), &none);
            const LM_Handle<LM_Image> empty = image(0, 0);
            LM_Image* const cell = empty.get();
            actions.image_clipped(&rendition, square.data(), &cell);
            for (const LM_DCI_Point& radii : {LM_DCI_Point{-1, 5, 0}, {5, INT32_MIN, 0}}) {
              actions.elliptical_arc(&rendition, square.data(), &radii, 0.0F, 7.0F, 0.0F, &color);
              actions.elliptical_area(&rendition, square.data(), &radii, 0.0, 7.0, 0.0, &color);
            }
            actions.elliptical_arc(&rendition, square.data(), &square[3], nan, 7.0F, 0.0F, &color);
            actions.elliptical_arc_colored(&rendition, square.data(), &square[3], 0.0F, INFINITY,
                                           0.0F, &color);
            actions.elliptical_area(&rendition, square.data(), &square[3], 0.0, 7.0,
                                    -std::numeric_limits<double>::infinity(), &color);
          })),
      0);
}

TEST(VectorDevice, TakesCoordinatesAtTheLimits) {
  constexpr std::int32_t low = INT32_MIN;
  constexpr std::int32_t high = INT32_MAX;
  const Points points{{low, low, 0},  {high, high, 0}, {low, high, 0},
                      {high, low, 0}, {0, high, 0},    {low, low, 0}};
  const std::vector<LM_RGB32> colors{{0x00FF0000}, {0x800000FF}, {0x0000FF00},
                                     {0xFF00FF00}, {0x00000000}, {0x00FFFFFF}};
  for (const VectorFormat format : formats) {
    const TemporaryFolder folder;
    EXPECT_EQ(vector_file::write(format, 100, 100, folder.path("a"),
                                 [&](const LM_Device_Actions& actions, LM_Rendition& rendition) {
                                   for (const std::int32_t weight : {1, low, high}) {
                                     rendition.set_line_weight(weight);
                                     rendition.set_line_pattern(weight);
                                     rendition.set_end_styles(LM_END_ROUND, weight);
                                     rendition.set_marker({weight, weight});
                                     draw_all(actions, rendition, 6, points, colors);
                                     rendition.set_line_pattern(LM_PATTERN_DASH);
                                     draw_all(actions, rendition, 6, points, colors);
                                     draw_all(actions, rendition, 4, square, colors);
                                   }
                                 }),
              "");
    EXPECT_EQ(vector_file::shown(format, folder.path("a")).width(), 100);
  }
}

TEST(VectorDevice, TakesClipsOfAnyNumbers) {
  const float infinite = std::numeric_limits<float>::infinity();
  const LM_Point corners[] = {{-1e30F, -1e30F, 0}, {1e30F, 0, 0},     {infinite, 5, 0},
                              {NAN, NAN, 0},       {3e38F, 3e38F, 0}, {-3e38F, 3e38F, 0}};
  for (const VectorFormat format : formats) {
    const TemporaryFolder folder;
    EXPECT_EQ(vector_file::write(format, 100, 100, folder.path("a"),
                                 [&](const LM_Device_Actions& actions, LM_Rendition& rendition) {
                                   LM_Contour_Set clip = LM_Create<LM_Contour_Set_Data>();
                                   clip->add_contour(corners, 6);
                                   clip->add_contour(corners, 0);
                                   rendition.set_complex_clip(clip, true);
                                   triangle(actions, rendition);
                                   rendition.set_complex_clip(LM_Create<LM_Contour_Set_Data>(),
                                                              true);
                                   triangle(actions, rendition);
                                 }),
              "");
    EXPECT_EQ(vector_file::shown(format, folder.path("a")).width(), 100);
  }
}

// The file.

TEST(VectorFile, AppearsWithFinishAndReplacesWhatWasThere) {
  for (const VectorFormat format : formats) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a");
    {
      VectorDevice dropped(format, 100, 100, path);
      LM_Rendition rendition;
      triangle(dropped.actions, rendition);
    }
    EXPECT_EQ(folder.file_count(), 0U);
    std::ofstream(path) << "as it was";
    VectorDevice device(format, 100, 100, path);
    LM_Rendition rendition;
    triangle(device.actions, rendition);
    EXPECT_EQ(vector_file::content_of(path), "as it was");
    EXPECT_EQ(device.finish(), "");
    const std::string written = vector_file::content_of(path);
    EXPECT_GT(written.size(), 200U);
    triangle(device.actions, rendition);
    EXPECT_EQ(device.finish(), "");
    EXPECT_EQ(vector_file::content_of(path), written);
    EXPECT_EQ(folder.file_count(), 1U);
  }
}

TEST(VectorFile, TellsWhyItCannotBeWrittenAndLeavesNothing) {
  for (const VectorFormat format : formats) {
    const TemporaryFolder folder;
    const std::string path = folder.path("no/such/folder");
    const std::string problem = vector_file::write(format, 100, 100, path, triangle);
    EXPECT_THAT(problem, AllOf(HasSubstr("'" + path + "'"), HasSubstr(std::strerror(ENOENT))));
    EXPECT_EQ(folder.file_count(), 0U);
    std::filesystem::create_directory(folder.path("taken"));
    EXPECT_THAT(vector_file::write(format, 100, 100, folder.path("taken"), triangle),
                HasSubstr("taken"));
    EXPECT_EQ(folder.file_count(), 1U);
  }
}

TEST(VectorFile, TellsOfImpossibleSizes) {
  const TemporaryFolder folder;
  for (const auto& [width, height] :
       {std::pair{0, 5}, {5, -1}, {INT32_MIN, 5}, {VectorDevice::max_side + 1, 5}}) {
    VectorDevice device(VectorFormat::pdf, width, height, folder.path("a"));
    LM_Rendition rendition;
    triangle(device.actions, rendition);
    EXPECT_THAT(device.finish(), HasSubstr("a side of the page must have 1 to 65535 units"));
    EXPECT_THAT(device.finish(), HasSubstr("a side of the page must have 1 to 65535 units"));
  }
  EXPECT_EQ(folder.file_count(), 0U);
}

TEST(VectorFile, TakesTheLargestAndTheSmallestPage) {
  for (const VectorFormat format : formats) {
    for (const std::int32_t side : {1, VectorDevice::max_side}) {
      const TemporaryFolder folder;
      EXPECT_EQ(vector_file::write(format, side, side, folder.path("a"), triangle), "");
    }
  }
}

/// Writes under a limit on the file size, which stands for a full disk. Ends
/// the process, with 0 if the error names the file and the system's reason.
[[noreturn]] void write_beyond_limit(VectorFormat format, const std::string& path, int shapes) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{100, 100};
  setrlimit(RLIMIT_FSIZE, &limit);
  const std::string problem = vector_file::write(
      format, 100, 100, path, [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
        for (int i = 0; i < shapes; ++i) triangle(actions, rendition);
      });
  const bool told = problem.find(path) != std::string::npos &&
                    problem.find(std::strerror(EFBIG)) != std::string::npos;
  _exit(told ? 0 : 1);
}

TEST(VectorFile, AFullDiskIsToldAndLeavesNothing) {
  for (const VectorFormat format : formats) {
    const TemporaryFolder folder;
    EXPECT_EXIT(write_beyond_limit(format, folder.path("a"), 1), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(write_beyond_limit(format, folder.path("a"), 5000), testing::ExitedWithCode(0), "");
    EXPECT_EQ(folder.file_count(), 0U);
  }
}

}  // namespace
