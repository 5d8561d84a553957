#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/lumen/picking.h"

using picking::Draw;
using picking::Picker;
using text_art::Points;

namespace {

constexpr std::int32_t side = 24;
constexpr LM_RGB32 inks[] = {{0x00000000}, {0x80102030}, {0x000000FF}};

/// Random styles, and random geometry around the picture that is moved as a
/// whole by the offset.
class Chance {
 public:
  explicit Chance(std::uint32_t seed) : m_engine(seed) {}

  std::int32_t number(std::int32_t min, std::int32_t max) {
    return std::uniform_int_distribution<std::int32_t>(min, max)(m_engine);
  }
  bool once_in(std::int32_t times) { return number(1, times) == 1; }

  LM_DCI_Point point() {
    // A few far ones: lines that come from outside.
    const std::int32_t reach = once_in(12) ? 2'000'000 : 10;
    return {offset.x + number(-reach, side + reach), offset.y + number(-reach, side + reach), 0};
  }
  Points path(std::int32_t min, std::int32_t max) {
    Points result(static_cast<std::size_t>(number(min, max)));
    for (LM_DCI_Point& each : result) each = point();
    if (result.size() > 2 && once_in(3)) result.back() = result.front();
    return result;
  }
  std::vector<LM_RGB32> colors(std::size_t count) {
    std::vector<LM_RGB32> result(count);
    for (LM_RGB32& color : result) color = inks[number(0, 2)];
    return result;
  }
  picking::Arc arc() {
    const LM_DCI_Point radii{number(0, 14), once_in(4) ? 0 : number(0, 14), 0};
    const auto angle = [this] { return static_cast<float>(number(-700, 700)) / 100; };
    const float start = angle();
    return {point(), once_in(8) ? LM_DCI_Point{1000, 700, 0} : radii, start,
            start + static_cast<float>(number(0, 700)) / 100, angle()};
  }
  LM_Handle<lumen::PictureImage> image() {
    lumen::Picture picture(number(1, 9), number(1, 9));
    for (std::int32_t y = 0; y < picture.height(); ++y) {
      for (std::int32_t x = 0; x < picture.width(); ++x) {
        picture.row(y)[x] = once_in(3) ? inks[number(0, 2)].word : 0xFF000000;
      }
    }
    return LM_Create<lumen::PictureImage>(std::move(picture));
  }
  LM_Rendition rendition() {
    LM_Rendition result;
    result.set_color(inks[number(0, 2)], true);
    if (!once_in(3)) result.set_line_weight(number(1, 9));
    result.set_line_pattern(once_in(2) ? LM_PATTERN_SOLID : number(0, 4));
    result.set_end_styles(number(0, 2), number(0, 2));
    result.set_marker({number(-1, 8), once_in(8) ? number(0, 300) : number(0, 12)});
    if (once_in(3)) {
      result.set_clip_rectangle({offset.x + number(-2, 12), offset.x + number(9, side + 2),
                                 offset.y + number(-2, 12), offset.y + number(9, side + 2)});
    }
    return result;
  }
  /// Vertices at fractions, so that no edge passes the centre of a pixel.
  LM_Contour_Set contours() {
    const auto result = LM_Create<LM_Contour_Set_Data>(once_in(2) ? LM_Fill_Rule::even_odd
                                                                  : LM_Fill_Rule::non_zero);
    for (std::int32_t i = number(1, 2); i > 0; --i) {
      std::vector<LM_Point> contour(static_cast<std::size_t>(number(3, 6)));
      const auto place = [this] { return static_cast<float>(number(-500, side * 256)) / 256; };
      for (LM_Point& each : contour) each = {place(), place(), 0};
      result->add_contour(contour.data(), static_cast<std::int32_t>(contour.size()));
    }
    return result;
  }
  LM_Clip_Rectangle box() {
    const std::int32_t x = number(0, side - 1);
    const std::int32_t y = number(0, side - 1);
    return {x, std::min(x + number(0, 6), side - 1), y, std::min(y + number(0, 6), side - 1)};
  }

  LM_DCI_Point offset{0, 0, 0};

 private:
  std::mt19937 m_engine;
};

struct Action {
  const char* name;
  Draw (*make)(Chance& chance);
};

const Action all_actions[] = {
    {"dot", [](Chance& chance) { return picking::dot(chance.point()); }},
    {"polyline", [](Chance& chance) { return picking::polyline(chance.path(1, 6)); }},
    {"gouraud polyline",
     [](Chance& chance) {
       const Points path = chance.path(1, 6);
       return picking::gouraud_polyline(path, chance.colors(path.size()));
     }},
    {"polygon", [](Chance& chance) { return picking::polygon(chance.path(1, 8)); }},
    {"strip", [](Chance& chance) { return picking::strip(chance.path(1, 8)); }},
    {"gouraud strip",
     [](Chance& chance) {
       const Points path = chance.path(1, 8);
       return picking::gouraud_strip(path, chance.colors(path.size()));
     }},
    {"textured strip",
     [](Chance& chance) {
       const Points path = chance.path(1, 8);
       return picking::textured_strip(path, chance.colors(path.size()));
     }},
    {"markers", [](Chance& chance) { return picking::markers(chance.path(1, 4)); }},
    {"image", [](Chance& chance) { return picking::image(chance.point(), chance.image()); }},
    {"arc", [](Chance& chance) { return picking::arc_line(chance.arc()); }},
    {"filled arc", [](Chance& chance) { return picking::filled_arc(chance.arc(), inks[1]); }},
    {"pie", [](Chance& chance) { return picking::pie(chance.arc()); }},
    {"area", [](Chance& chance) { return picking::area(chance.arc(), inks[2]); }},
};

bool has_ink(const lumen::Picture& picture, const LM_Clip_Rectangle& box) {
  for (std::int32_t y = box.min_y; y <= box.max_y; ++y) {
    for (std::int32_t x = box.min_x; x <= box.max_x; ++x) {
      if (picture.pixel(x, y) != text_art::white) return true;
    }
  }
  return false;
}

/// That every pixel, and some boxes, are picked if and only if the raster
/// device draws there.
void expect_picked_as_drawn(Chance& chance, const Draw& draw, const LM_Rendition& rendition) {
  text_art::Canvas canvas(side, side);
  canvas.rendition = rendition;
  draw(canvas.device.actions, canvas.rendition);
  Picker picker;
  picker.rendition = rendition;
  ASSERT_EQ(picker.picked(side, side, draw), [&] {
    text_art::Rows rows = canvas.rows();
    for (std::string& row : rows) {
      std::replace_if(
          row.begin(), row.end(), [](char c) { return c != '.'; }, '#');
    }
    return rows;
  }());
  for (int i = 0; i < 30; ++i) {
    const LM_Clip_Rectangle box = chance.box();
    ASSERT_EQ(picker.touches(box, draw), has_ink(canvas.picture, box))
        << box.min_x << ".." << box.max_x << ", " << box.min_y << ".." << box.max_y;
  }
}

TEST(SelectorByBruteForce, PicksExactlyWhatTheRasterDeviceDraws) {
  Chance chance(1);
  for (const Action& action : all_actions) {
    for (int round = 0; round < 150; ++round) {
      SCOPED_TRACE(action.name + (" " + std::to_string(round)));
      LM_Rendition rendition = chance.rendition();
      if (chance.once_in(4)) rendition.set_complex_clip(chance.contours(), true);
      expect_picked_as_drawn(chance, action.make(chance), rendition);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(SelectorByBruteForce, PicksWhateverIsDrawnOfMixedColors) {
  Chance chance(3);
  int drawn = 0;
  for (int round = 0; round < 300; ++round) {
    const Points path = chance.path(1, 6);
    std::vector<LM_RGB32> colors = chance.colors(path.size());
    for (LM_RGB32& color : colors) {
      if (!chance.once_in(3)) color = {0xFF000000};
    }
    Picker picker;
    picker.rendition = chance.rendition();
    for (const Draw& draw :
         {picking::gouraud_polyline(path, colors), picking::gouraud_strip(path, colors),
          picking::textured_strip(path, colors)}) {
      text_art::Canvas canvas(side, side);
      canvas.rendition = picker.rendition;
      draw(canvas.device.actions, canvas.rendition);
      const LM_Clip_Rectangle box = chance.box();
      if (!has_ink(canvas.picture, box)) continue;
      ++drawn;
      ASSERT_TRUE(picker.touches(box, draw)) << round;
    }
  }
  EXPECT_GT(drawn, 50);
}

TEST(SelectorByBruteForce, PicksTheSameWhereverTheDrawingLies) {
  constexpr LM_DCI_Point offsets[] = {{INT32_MAX - side - 3'000'000, INT32_MIN + 3'000'000, 0},
                                      {-2'000'000'000, 5'000'000, 0},
                                      {1 << 20, -(1 << 21), 0},
                                      {-1'600'000, 1'500'000, 0}};
  int touched = 0;
  for (const Action& action : all_actions) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
      SCOPED_TRACE(action.name + (" " + std::to_string(seed)));
      Chance here(seed);
      Picker picker;
      picker.rendition = here.rendition();
      const Draw draw = action.make(here);
      for (const LM_DCI_Point& offset : offsets) {
        Chance there(seed);
        there.offset = offset;
        Picker far_picker;
        far_picker.rendition = there.rendition();
        const Draw far_draw = action.make(there);
        for (int i = 0; i < 20; ++i) {
          const LM_Clip_Rectangle box = here.box();
          const LM_Clip_Rectangle far_box{box.min_x + offset.x, box.max_x + offset.x,
                                          box.min_y + offset.y, box.max_y + offset.y};
          const bool answer = picker.touches(box, draw);
          touched += answer ? 1 : 0;
          ASSERT_EQ(far_picker.touches(far_box, far_draw), answer) << offset.x << "," << offset.y;
        }
      }
    }
  }
  EXPECT_GT(touched, 10000);
}

}  // namespace
