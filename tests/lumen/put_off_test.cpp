// What a raster device promises those who put off what they draw until its bands are
// drawn.

#include <gtest/gtest.h>

#include <vector>

#include "displaylist/platform/ordered_drawing.h"
#include "lumen/raster_device.h"

namespace {

constexpr LM_RGB32 kPaper{0x00FFFFFF};
constexpr std::uint64_t kNoLimit = UINT64_MAX;
constexpr std::int32_t kWidth = 60;
/// For two threads as many bands of this height as there may be.
constexpr std::int32_t kBand = 64;
constexpr std::int32_t kHeight = 10 * kBand;

using Points = std::vector<LM_DCI_Point>;

/// Pieces that a client puts off: polylines.
struct Client {
  struct Piece {
    std::uint64_t number;
    LM_RGB32 color;
    Points points;
  };

  void draw(std::int32_t thread, std::uint64_t number, const LM_Handle<LM_Renderer>& renderer) {
    drawn.push_back({thread, number});
    for (const Piece& piece : pieces) {
      if (piece.number != number) continue;
      rendition.set_color(piece.color, true);
      const auto count = static_cast<std::int32_t>(piece.points.size());
      if (count == 1) {
        renderer->actions.dot_clipped(&rendition, piece.points.data(), nullptr);
      } else {
        renderer->actions.polyline_clipped(&rendition, count, piece.points.data());
      }
    }
  }
  static void draw_piece(void* context, std::int32_t thread, std::uint64_t number,
                         const LM_Handle<LM_Renderer>& renderer) {
    static_cast<Client*>(context)->draw(thread, number, renderer);
  }

  struct Drawn {
    std::int32_t thread;
    std::uint64_t number;
    bool operator==(const Drawn&) const = default;
  };
  std::vector<Piece> pieces;
  std::vector<Drawn> drawn;
  LM_Rendition rendition;
};

/// A device that is drawn on in order by two threads, one after the other.
struct Ordered {
  explicit Ordered(std::int32_t height = kHeight) : picture(kWidth, height, kPaper) {
    begin();
    client.rendition.set_clip_rectangle({0, kWidth - 1, 0, height - 1});
  }
  void begin() { EXPECT_TRUE(drawing.begin(2, {&client, &Client::draw_piece})); }

  /// Through the collector, in a group of its own.
  void draw(std::int32_t thread, std::uint64_t number, LM_RGB32 color, const Points& points) {
    drawing.begin_group(thread, number);
    client.rendition.set_color(color, true);
    drawing.collector(thread)->actions.polyline_clipped(
        &client.rendition, static_cast<std::int32_t>(points.size()), points.data());
  }
  void draw_bands(std::uint64_t limit, std::int32_t thread = 0) {
    drawing.start_bands(limit);
    drawing.draw_bands(thread);
    drawing.finish_bands();
  }
  void end() {
    draw_bands(kNoLimit);
    drawing.end();
  }
  [[nodiscard]] LM_RGB32 at(std::int32_t x, std::int32_t y) const { return picture.pixel(x, y); }

  Client client;
  lumen::Picture picture;
  LM_Handle<lumen::RasterDevice> device = LM_Create<lumen::RasterDevice>(picture);
  LM_Ordered_Drawing& drawing = *device->ordered_drawing();
};

TEST(PutOff, IsForThinLinesWithoutAntialiasing) {
  Ordered ordered;
  LM_Rendition rendition;
  for (const std::int32_t weight : {0, 1, 2, 9}) {
    rendition.set_line_weight(weight);
    EXPECT_EQ(ordered.drawing.can_put_off(rendition), weight <= 1) << weight;
  }
  ordered.end();
  ordered.device->set_antialiased(true);
  ordered.begin();
  rendition.set_line_weight(1);
  EXPECT_FALSE(ordered.drawing.can_put_off(rendition));
  ordered.end();
}

TEST(PutOff, DrawsAPieceForEachBandOfItsRows) {
  const struct {
    std::int32_t first, last;
    std::size_t bands;
  } all[] = {{0, 0, 1},
             {kBand - 1, kBand - 1, 1},
             {kBand - 1, kBand, 2},
             {kBand, 2 * kBand - 1, 1},
             {0, 2 * kBand - 1, 2},
             {-1000, 5, 1},
             {INT32_MIN, kBand, 2},
             {kHeight - 1, INT32_MAX, 1},
             {INT32_MIN, -1, 0},
             {kHeight, INT32_MAX, 0}};
  for (const auto& [first, last, bands] : all) {
    SCOPED_TRACE(testing::Message() << "rows " << first << " to " << last);
    Ordered ordered;
    EXPECT_TRUE(ordered.drawing.put_off(1, 3, 77, first, last));
    EXPECT_TRUE(ordered.client.drawn.empty());
    ordered.draw_bands(3, 1);
    EXPECT_TRUE(ordered.client.drawn.empty());
    ordered.draw_bands(4, 1);
    EXPECT_EQ(ordered.client.drawn, std::vector<Client::Drawn>(bands, {1, 77}));
    ordered.end();
    EXPECT_EQ(ordered.client.drawn.size(), bands);
  }
}

TEST(PutOff, DoesNothingForPiecesInManyBands) {
  Ordered ordered;
  EXPECT_FALSE(ordered.drawing.put_off(0, 1, 1, kBand - 1, 2 * kBand));
  EXPECT_FALSE(ordered.drawing.put_off(0, 1, 1, INT32_MIN, INT32_MAX));
  ordered.draw(0, 1, {0x00000001}, {{5, 0, 0}, {5, kHeight, 0}});
  ordered.end();
  EXPECT_TRUE(ordered.client.drawn.empty());
  EXPECT_EQ(ordered.at(5, kHeight / 2), LM_RGB32{1});
}

TEST(PutOff, TellsTheWholeNumberOfAPiece) {
  constexpr std::uint64_t piece = 0xFEDCBA9876543210;
  Ordered ordered;
  EXPECT_TRUE(ordered.drawing.put_off(0, 1, piece, 5, 6));
  ordered.end();
  EXPECT_EQ(ordered.client.drawn, (std::vector<Client::Drawn>{{0, piece}}));
}

TEST(PutOff, ShowsPiecesInTheirTurnAmongWhatIsCollected) {
  Ordered ordered;
  const Points flat{{0, kBand, 0}, {kWidth - 1, kBand, 0}};
  ordered.client.pieces = {{20, {0x00000020}, flat}, {30, {0x80000030}, {{7, kBand, 0}}}};
  ordered.draw(1, 1, {0x00000010}, flat);
  EXPECT_TRUE(ordered.drawing.put_off(0, 2, 20, kBand - 1, kBand + 1));
  ordered.draw(0, 3, {0x00000099}, {{3, kBand, 0}, {5, kBand, 0}});
  EXPECT_TRUE(ordered.drawing.put_off(1, 4, 30, kBand, kBand));
  ordered.draw(2, 5, {0x00000055}, {{9, kBand, 0}, {11, kBand, 0}});
  ordered.end();
  EXPECT_EQ(ordered.at(0, kBand), LM_RGB32{0x20});
  EXPECT_EQ(ordered.at(4, kBand), LM_RGB32{0x99});
  EXPECT_EQ(ordered.at(7, kBand), LM_RGB32{0x28});
  EXPECT_EQ(ordered.at(10, kBand), LM_RGB32{0x55});
}

TEST(PutOff, ForgetsAtTheEndWhatWasNotDrawn) {
  Ordered ordered;
  EXPECT_TRUE(ordered.drawing.put_off(0, 1, 1, 0, 9));
  ordered.drawing.end();
  ordered.begin();
  ordered.end();
  EXPECT_TRUE(ordered.client.drawn.empty());
}

TEST(PutOff, IsFullOfManyPiecesToo) {
  Ordered ordered;
  std::uint64_t groups = 0;
  while (!ordered.drawing.is_full(0)) {
    ASSERT_TRUE(ordered.drawing.put_off(0, ++groups, 1, 0, 0));
    ASSERT_LT(groups, 10'000'000U);
  }
  ordered.draw_bands(groups + 1);
  EXPECT_FALSE(ordered.drawing.is_full(0));
  EXPECT_EQ(ordered.client.drawn.size(), groups);
  ordered.end();
}

}  // namespace
