#include "displaylist/polythings/textured_polytriangle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/polythings/allocation_counter.h"
#include "tests/polythings/strips.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/test_heap.h"

namespace {

using answers::clipped;
using answers::Lines;
using answers::unclipped;
using DL::DLTexturedPolytriangle;
using Vertices = DLTexturedPolytriangle::Vertices;

constexpr LM_RGB32 kColors[] = {{0xA}, {0xB}, {0xC}};
constexpr LM_Vertex_Triple kTriples[] = {{{1, 2, 3}}, {{4, 5, 6}}, {{7, 8, 9}}};
constexpr std::uint32_t kValues[] = {21, 22, 23};
constexpr LM_Vertex_Triple kSecond[] = {{{31, 32, 33}}, {{34, 35, 36}}, {{37, 38, 39}}};

const std::string kAlways =
    " color=00000010 (1,2) (3,4) (5,6) #0000000A #0000000B #0000000C [1,2,3] [4,5,6] [7,8,9] "
    "integer=1";
const std::string kValuesText = " value=21 value=22 value=23";
const std::string kSecondText = " second=[31,32,33] second=[34,35,36] second=[37,38,39]";

bool same(const LM_Vertex_Triple& a, const LM_Vertex_Triple& b) {
  return std::equal(a.values, a.values + 3, b.values);
}

struct TexturedPolytriangle : testing::Test {
  static std::unique_ptr<DLTexturedPolytriangle> make(bool values, bool second,
                                                      LumenHeap* heap = nullptr) {
    const Vertices vertices{kColors, kTriples, values ? kValues : nullptr,
                            second ? kSecond : nullptr};
    return std::make_unique<DLTexturedPolytriangle>(LM_RGB32{0x10}, 3, strips::kPoints, vertices,
                                                    heap);
  }

  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
};

TEST_F(TexturedPolytriangle, HandsOverTheArraysItHas) {
  for (const bool values : {false, true}) {
    for (const bool second : {false, true}) {
      const auto strip = make(values, second);
      EXPECT_EQ(strip->vertex_values != nullptr, values);
      EXPECT_EQ(strip->vertex_triples_2 != nullptr, second);
      const std::string arguments =
          kAlways + (values ? kValuesText : "") + (second ? kSecondText : "");
      EXPECT_EQ(clipped(recorded, *strip), Lines{"textured_triangle_strip_clipped" + arguments});
      EXPECT_EQ(unclipped(recorded, *strip),
                Lines{"textured_triangle_strip_unclipped" + arguments});
    }
  }
}

TEST_F(TexturedPolytriangle, HandsOverNullForAnArrayItHasNot) {
  static bool values_are_null = false;
  static bool second_are_null = false;
  list.m_pRenderer->actions.textured_triangle_strip_clipped.function =
      [](void*, LM_Rendition*, std::int32_t, const LM_DCI_Point*, const LM_RGB32*,
         const LM_Vertex_Triple*, std::int32_t, const std::uint32_t* values,
         const LM_Vertex_Triple* second) {
        values_are_null = values == nullptr;
        second_are_null = second == nullptr;
      };
  for (const bool values : {false, true}) {
    for (const bool second : {false, true}) {
      make(values, second)->draw_clipped(list);
      EXPECT_EQ(values_are_null, !values);
      EXPECT_EQ(second_are_null, !second);
    }
  }
}

TEST_F(TexturedPolytriangle, HandsOverTheSameArgumentsOutsideTheClipRectangle) {
  list.m_rendition.set_clip_rectangle({0, 4, 0, 100});
  EXPECT_EQ(unclipped(recorded, *make(true, true)),
            Lines{"textured_triangle_strip_clipped" + kAlways + kValuesText + kSecondText});
}

TEST_F(TexturedPolytriangle, HasNoOutline) {
  list.m_rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  EXPECT_EQ(clipped(recorded, *make(true, true)).size(), 1U);
  EXPECT_EQ(unclipped(recorded, *make(true, true)).size(), 1U);
}

TEST_F(TexturedPolytriangle, CopiesTheArraysItIsGiven) {
  LM_RGB32 colors[] = {{0xA}, {0xB}, {0xC}};
  LM_Vertex_Triple triples[] = {kTriples[0], kTriples[1], kTriples[2]};
  std::uint32_t values[] = {21, 22, 23};
  LM_Vertex_Triple second[] = {kSecond[0], kSecond[1], kSecond[2]};
  DLTexturedPolytriangle strip({0x10}, 3, strips::kPoints, {colors, triples, values, second});
  colors[0] = {};
  triples[1] = {};
  values[2] = 0;
  second[0] = {};
  EXPECT_EQ(clipped(recorded, strip),
            Lines{"textured_triangle_strip_clipped" + kAlways + kValuesText + kSecondText});
}

TEST_F(TexturedPolytriangle, TakesPointsAndColorsFromTheHeapAndTheRestFromTheGeneralAllocator) {
  TestHeap heap;
  const Vertices vertices{kColors, kTriples, kValues, kSecond};
  AllocationCounter counter;
  const DLTexturedPolytriangle strip({0x10}, 3, strips::kPoints, vertices, &heap);
  const std::vector<std::size_t> sizes = counter.sizes();
  EXPECT_EQ(sizes,
            (std::vector<std::size_t>{3 * sizeof(LM_Vertex_Triple), 3 * sizeof(std::uint32_t),
                                      3 * sizeof(LM_Vertex_Triple)}));
  EXPECT_EQ(heap.requests(), 2);
  EXPECT_EQ(heap.bytes(), 3 * sizeof(LogicalPoint) + 3 * sizeof(LM_RGB32));
}

TEST_F(TexturedPolytriangle, WithoutColorsOrFirstPlacesDrawsNothing) {
  DLTexturedPolytriangle no_colors({}, 3, strips::kPoints, {nullptr, kTriples, kValues, kSecond});
  DLTexturedPolytriangle no_places({}, 3, strips::kPoints, {kColors, nullptr, kValues, kSecond});
  EXPECT_TRUE(answers::all_ways(recorded, no_colors).empty());
  EXPECT_TRUE(answers::all_ways(recorded, no_places).empty());
}

TEST_F(TexturedPolytriangle, CloneHasArraysOfItsOwn) {
  const auto strip = make(true, true);
  const std::unique_ptr<DL::Drawable> copy(strip->clone());
  const auto* textured = static_cast<DLTexturedPolytriangle*>(copy.get());
  EXPECT_NE(textured->colors, strip->colors);
  EXPECT_NE(textured->vertex_triples, strip->vertex_triples);
  EXPECT_NE(textured->vertex_values, strip->vertex_values);
  EXPECT_NE(textured->vertex_triples_2, strip->vertex_triples_2);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(textured->colors[i], kColors[i]);
    EXPECT_TRUE(same(textured->vertex_triples[i], kTriples[i]));
    EXPECT_EQ(textured->vertex_values[i], kValues[i]);
    EXPECT_TRUE(same(textured->vertex_triples_2[i], kSecond[i]));
  }
}

TEST_F(TexturedPolytriangle, CloneHasNoArrayThatTheOriginalHasNot) {
  for (const bool values : {false, true}) {
    const std::unique_ptr<DL::Drawable> copy(make(values, !values)->clone());
    const auto* textured = static_cast<DLTexturedPolytriangle*>(copy.get());
    EXPECT_EQ(textured->vertex_values != nullptr, values);
    EXPECT_EQ(textured->vertex_triples_2 != nullptr, !values);
  }
}

TEST_F(TexturedPolytriangle, IsFoundWhateverCoversIt) {
  const auto strip = make(true, true);
  EXPECT_TRUE(answers::finds(*make(false, false), *strip));
  const LM_RGB32 other_colors[3] = {};
  const LM_Vertex_Triple other_triples[3] = {};
  DLTexturedPolytriangle other({0x99}, 3, strips::kPoints,
                               {other_colors, other_triples, nullptr, nullptr});
  EXPECT_TRUE(answers::finds(other, *strip));
}

TEST_F(TexturedPolytriangle, IsNotStoredAndLeftOutOfAChain) {
  answers::expect_not_stored(*make(true, true));
  const DrawableChain chain{make(true, true).release(), new DL::DLDot({2}, {2, 2})};
  const DrawableChain behind_a_dot{new DL::DLDot({1}, {1, 1}), make(true, false).release()};
  EXPECT_TRUE(answers::record_of(*chain.first(), list).empty());
  EXPECT_EQ(answers::record_of(*behind_a_dot.first(), list),
            (answers::Words{0x80000010, 1, 1, 0x20000002, 1, 0x10000002}));
}

TEST_F(TexturedPolytriangle, DumpLineTellsLevelAndCountAndItsMemoryTheArraysItHas) {
  const std::string line = "    TexturedPolytriange: level  1, points = 3";
  answers::expect_dump(*make(false, false), 1, line, 3 * 24 + 80);
  answers::expect_dump(*make(true, false), 1, line, 3 * 24 + 3 * 4 + 80);
  answers::expect_dump(*make(false, true), 1, line, 3 * 24 + 3 * 12 + 80);
  answers::expect_dump(*make(true, true), 1, line, 3 * 24 + 3 * 4 + 3 * 12 + 80);
}

}  // namespace
