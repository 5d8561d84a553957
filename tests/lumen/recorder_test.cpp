#include "lumen/recorder.h"

#include <gtest/gtest.h>

using lumen::Recorder;

namespace {

const LM_DCI_Point two_points[] = {{1, 2, 0}, {3, 4, 0}};
const LM_RGB32 two_colors[] = {{0x10}, {0x20}};

TEST(Recorder, WritesEveryActionDownByName) {
  Recorder recorder;
  LM_Rendition rendition;
  const LM_Device_Actions& actions = recorder.actions;
  const LM_Vertex_Triple triples[] = {{{1, 2, 3}}, {{4, 5, 6}}};
  const std::uint32_t values[] = {77, 78};
  LM_Image* image = nullptr;
  actions.dot_clipped(&rendition, two_points, nullptr);
  actions.dot_unclipped(&rendition, two_points, two_colors);
  actions.polyline_clipped(&rendition, 2, two_points);
  actions.polyline_unclipped(&rendition, 2, two_points);
  actions.gouraud_polyline_clipped(&rendition, 2, two_points, two_colors);
  actions.gouraud_polyline_unclipped(&rendition, 2, two_points, two_colors);
  actions.polygon_clipped(&rendition, 2, two_points, 0);
  actions.polygon_unclipped(&rendition, 2, two_points, 5);
  actions.triangle_strip_clipped(&rendition, 2, two_points);
  actions.triangle_strip_unclipped(&rendition, 2, two_points);
  actions.gouraud_triangle_strip_clipped(&rendition, 2, two_points, two_colors);
  actions.textured_triangle_strip_clipped(&rendition, 2, two_points, two_colors, triples, 9, values,
                                          triples);
  actions.textured_triangle_strip_unclipped(&rendition, 2, two_points, nullptr, nullptr, 9, nullptr,
                                            nullptr);
  actions.marker_clipped(&rendition, 2, two_points);
  actions.marker_unclipped(&rendition, 2, two_points);
  actions.image_clipped(&rendition, two_points, &image);
  actions.image_unclipped(&rendition, two_points, &image);
  actions.elliptical_arc(&rendition, two_points, two_points + 1, 0.5F, 1.5F, 0.25F, nullptr);
  actions.elliptical_arc_colored(&rendition, two_points, two_points + 1, 0, 1, 2, two_colors);
  actions.elliptical_area(&rendition, two_points, two_points + 1, 0.1, 1e10, -1, two_colors);

  const std::vector<std::string> expected = {
      "dot_clipped color=00000000 (1,2)",
      "dot_unclipped color=00000000 (1,2) own_color=00000010",
      "polyline_clipped color=00000000 (1,2) (3,4)",
      "polyline_unclipped color=00000000 (1,2) (3,4)",
      "gouraud_polyline_clipped color=00000000 (1,2) (3,4) #00000010 #00000020",
      "gouraud_polyline_unclipped color=00000000 (1,2) (3,4) #00000010 #00000020",
      "polygon_clipped color=00000000 (1,2) (3,4) integer=0",
      "polygon_unclipped color=00000000 (1,2) (3,4) integer=5",
      "triangle_strip_clipped color=00000000 (1,2) (3,4)",
      "triangle_strip_unclipped color=00000000 (1,2) (3,4)",
      "gouraud_triangle_strip_clipped color=00000000 (1,2) (3,4) #00000010 #00000020",
      "textured_triangle_strip_clipped color=00000000 (1,2) (3,4) #00000010 #00000020 [1,2,3] "
      "[4,5,6] integer=9 value=77 value=78 second=[1,2,3] second=[4,5,6]",
      "textured_triangle_strip_unclipped color=00000000 (1,2) (3,4) integer=9",
      "marker_clipped color=00000000 (1,2) (3,4)",
      "marker_unclipped color=00000000 (1,2) (3,4)",
      "image_clipped color=00000000 (1,2)",
      "image_unclipped color=00000000 (1,2)",
      "elliptical_arc color=00000000 (1,2) (3,4) 0.5 1.5 0.25",
      "elliptical_arc_colored color=00000000 (1,2) (3,4) 0 1 2 own_color=00000010",
      "elliptical_area color=00000000 (1,2) (3,4) 0.1 1e+10 -1 own_color=00000010",
  };
  EXPECT_EQ(recorder.lines(), expected);
  EXPECT_EQ(recorder.calls()[15].image_cell, &image);
}

TEST(Recorder, KeepsTheRenditionOfTheCall) {
  Recorder recorder;
  LM_Rendition rendition;
  rendition.set_color({0x00FF0000}, true);
  rendition.set_line_weight(3);
  rendition.set_line_pattern(LM_PATTERN_DASH);
  rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  rendition.set_complex_clip(LM_Create<LM_Contour_Set_Data>(), true);
  const auto selector = LM_Create<LM_Selector_Data>();
  int drawable = 0;
  selector->set_selection_key(&drawable, 4);
  rendition.set_selector_data(selector);
  recorder.actions.polyline_clipped(&rendition, 2, two_points);
  rendition.set_color({0}, true);
  selector->set_selection_key(nullptr, 0);

  ASSERT_EQ(recorder.calls().size(), 1U);
  const lumen::RecordedCall& call = recorder.calls()[0];
  EXPECT_EQ(call.rendition, &rendition);
  EXPECT_EQ(call.selection_key, &drawable);
  EXPECT_EQ(call.selection_index, 4);
  EXPECT_EQ(to_string(call),
            "polyline_clipped color=00FF0000 weight=3 pattern=1 ends=1,2 complex_clip (1,2) (3,4)");
}

LM_Font font_named(const wchar_t* name) {
  LM_Font_Description description;
  description.name = name;
  description.given = LM_Font_Description::NAME;
  return LM_Font(description);
}

TEST(Recorder, WritesTextsDown) {
  Recorder recorder;
  LM_Renderer& renderer = recorder;
  LM_Rendition rendition;
  rendition.set_text_size(-12.5F);
  const wchar_t wide[] = L"a\"\\\u00E9b\0c";
  renderer.draw_text(&rendition, {1, 2, 0}, wide, 100);
  renderer.draw_text(&rendition, {1, 2, 0}, wide, 2);
  rendition.set_text_rotation(0.5F);
  rendition.set_text_width_scale(2);
  rendition.set_shared_font(font_named(L"DejaVu Sans"));
  const auto* bytes = reinterpret_cast<const unsigned char*>("x\ty\xE9\0z");
  renderer.draw_text(&rendition, {-3, 4, 0}, bytes, 100);
  renderer.draw_text(&rendition, {-3, 4, 0}, bytes, 1);
  rendition.set_shared_text_size(7);

  const std::vector<std::string> expected = {
      R"(wide_text color=00000000 (1,2) "a\u0022\u005C\u00E9b" size=-12.5)",
      R"(wide_text color=00000000 (1,2) "a\u0022" size=-12.5)",
      R"(multibyte_text color=00000000 (-3,4) "x\x09y\xE9" size=-12.5 rotation=0.5 width_scale=2)"
      R"( font="DejaVu Sans")",
      R"(multibyte_text color=00000000 (-3,4) "x" size=-12.5 rotation=0.5 width_scale=2)"
      R"( font="DejaVu Sans")",
  };
  EXPECT_EQ(recorder.lines(), expected);
  EXPECT_EQ(recorder.calls()[0].wide_text, L"a\"\\\u00E9b");
  EXPECT_EQ(recorder.calls()[2].multibyte_text, "x\ty\xE9");
  EXPECT_EQ(recorder.calls()[2].points.size(), 1U);
}

TEST(Recorder, TakesNoTextForAnEmptyOne) {
  Recorder recorder;
  LM_Renderer& renderer = recorder;
  LM_Rendition rendition;
  renderer.draw_text(&rendition, {}, static_cast<const wchar_t*>(nullptr), 3);
  renderer.draw_text(&rendition, {}, static_cast<const unsigned char*>(nullptr), 3);
  renderer.draw_text(&rendition, {}, L"abc", -3);
  for (const std::string& line : recorder.lines()) {
    EXPECT_NE(line.find("\"\" size=0"), std::string::npos) << line;
  }
}

TEST(Recorder, ClearForgetsTheCalls) {
  Recorder recorder;
  LM_Rendition rendition;
  recorder.actions.dot_clipped(&rendition, two_points, nullptr);
  recorder.clear();
  EXPECT_TRUE(recorder.calls().empty());
}

TEST(Renderer, AsItStandsDrawsNothing) {
  const LM_Renderer renderer;
  LM_Rendition rendition;
  const std::uint64_t serial = rendition.change_serial();
  renderer.actions.polyline_clipped(&rendition, 2, two_points);
  renderer.actions.dot_unclipped(&rendition, two_points, nullptr);
  EXPECT_EQ(rendition.change_serial(), serial);
  EXPECT_FALSE(renderer.options.supports_complex_clip);
}

}  // namespace
