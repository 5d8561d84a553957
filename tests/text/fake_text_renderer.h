#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "displaylist/platform/renderer.h"
#include "displaylist/platform/rendition.h"

/// What a renderer was asked, with the rendition as it was at the call.
struct TextCall {
  /// "resolve", "find", "draw", "extent", "outline"; of the polygon actions
  /// their names.
  std::string operation;
  const LM_Rendition* rendition = nullptr;  ///< compared by address only
  LM_RGB32 color{};
  LM_Text_Attributes attributes;
  std::vector<LM_DCI_Point> points;
  bool wide = false;
  std::wstring wide_text;
  std::string multibyte_text;
  std::int32_t count = 0;
  bool with_widths = false;
  std::uint32_t character = 0;
  std::wstring font_name;
  std::int32_t integer = -1;  ///< a polygon's last argument
};

/// A renderer that measures by what a test tells it, and writes down what it was
/// asked.
class FakeTextRenderer final : public LM_Renderer {
 public:
  FakeTextRenderer() {
    actions.polygon_clipped = {this, &polygon<0>};
    actions.polygon_unclipped = {this, &polygon<1>};
  }

  LM_Font resolve_font(const LM_Font& font) override {
    add("resolve").font_name = font.description().name;
    return font;
  }
  LM_Font find_or_create_font(const LM_Font_Description& description) override {
    add("find").font_name = description.name;
    asked_fonts.push_back(description);
    return found_font.data() != nullptr ? found_font : LM_Font(description);
  }
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                 std::int32_t count) override {
    add_text("draw", rendition, start, characters, count);
    if (on_draw) on_draw();
  }
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                 const unsigned char* characters, std::int32_t count) override {
    add_text("draw", rendition, start, characters, count);
    if (on_draw) on_draw();
  }
  void text_extent(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                   std::int32_t count, LM_Point box[4], bool with_widths,
                   LM_Text_Extent& extent) override {
    add_text("extent", rendition, start, characters, count).with_widths = with_widths;
    answer(box, with_widths, extent);
  }
  void text_extent(LM_Rendition* rendition, const LM_DCI_Point& start,
                   const unsigned char* characters, std::int32_t count, LM_Point box[4],
                   bool with_widths, LM_Text_Extent& extent) override {
    add_text("extent", rendition, start, characters, count).with_widths = with_widths;
    answer(box, with_widths, extent);
  }
  [[nodiscard]] float measuring_text_size() const override { return measuring_size; }
  void glyph_outline(std::uint32_t character, LM_Rendition* rendition, LM_Contour_Set& outline,
                     float& advance) override {
    add("outline", rendition).character = character;
    outline = outlines.contains(character) ? outlines[character] : nullptr;
    advance = advances.contains(character) ? advances[character] : 0.0F;
  }

  std::vector<TextCall> take_calls() { return std::exchange(calls, {}); }
  /// The operations since the last call.
  std::vector<std::string> take_operations() {
    std::vector<std::string> names;
    for (const TextCall& call : take_calls()) names.push_back(call.operation);
    return names;
  }

  // What it answers.
  std::vector<float> widths;
  std::array<LM_Point, 4> corners{};
  float measuring_size = 100.0F;
  std::map<std::uint32_t, LM_Contour_Set> outlines;
  std::map<std::uint32_t, float> advances;
  LM_Font found_font;             ///< for every description; none: a new one
  std::function<void()> on_draw;  ///< called at the end of every draw

  std::vector<TextCall> calls;
  std::vector<LM_Font_Description> asked_fonts;

 private:
  template <int Unclipped>
  static void polygon(void* self, LM_Rendition* rendition, std::int32_t count,
                      const LM_DCI_Point* points, std::int32_t integer) {
    TextCall& call = static_cast<FakeTextRenderer*>(self)->add(
        Unclipped != 0 ? "polygon_unclipped" : "polygon_clipped", rendition);
    call.points.assign(points, points + count);
    call.integer = integer;
  }

  TextCall& add(const char* operation, const LM_Rendition* rendition = nullptr) {
    TextCall& call = calls.emplace_back();
    call.operation = operation;
    call.rendition = rendition;
    if (rendition == nullptr) return call;
    call.color = rendition->color();
    call.attributes = rendition->text_attributes();
    return call;
  }
  TextCall& add_text(const char* operation, const LM_Rendition* rendition,
                     const LM_DCI_Point& start, const wchar_t* characters, std::int32_t count) {
    TextCall& call = add_text(operation, rendition, start, count);
    call.wide = true;
    call.wide_text.assign(characters, characters + count);
    return call;
  }
  TextCall& add_text(const char* operation, const LM_Rendition* rendition,
                     const LM_DCI_Point& start, const unsigned char* characters,
                     std::int32_t count) {
    TextCall& call = add_text(operation, rendition, start, count);
    call.multibyte_text = reinterpret_cast<const char*>(characters);
    return call;
  }
  TextCall& add_text(const char* operation, const LM_Rendition* rendition,
                     const LM_DCI_Point& start, std::int32_t count) {
    TextCall& call = add(operation, rendition);
    call.points = {start};
    call.count = count;
    return call;
  }
  void answer(LM_Point box[4], bool with_widths, const LM_Text_Extent& extent) const {
    std::copy(corners.begin(), corners.end(), box);
    if (with_widths) std::copy(widths.begin(), widths.end(), extent.widths);
  }
};
