#pragma once

#include <optional>
#include <string>
#include <vector>

#include "displaylist/platform/export.h"
#include "displaylist/platform/rendition.h"
#include "lumen/text_renderer.h"

namespace lumen {

/// One device action, or text, as it was called. What the arguments point to is
/// copied; fields that the action has no argument for keep their defaults.
struct RecordedCall {
  /// The name of the entry, "polyline_clipped"; "wide_text" or "multibyte_text"
  /// of texts.
  std::string action;

  const LM_Rendition* rendition = nullptr;  ///< compared by address only
  LM_RGB32 color;                           ///< this and the next: the rendition's, at the call
  LM_Clip_Rectangle clip_rectangle;
  LM_Line_Style line_style;
  std::uint32_t edge_mode = 0;
  LM_Marker marker;
  bool has_complex_clip = false;
  const void* selection_key = nullptr;
  std::int32_t selection_index = 0;

  /// The points of the action; of an arc or an area the centre and the radii; of
  /// a text its start.
  std::vector<LM_DCI_Point> points;
  std::vector<LM_RGB32> vertex_colors;
  /// Of a textured strip, in the order of its arguments.
  std::vector<LM_Vertex_Triple> vertex_triples;
  std::vector<std::uint32_t> vertex_values;
  std::vector<LM_Vertex_Triple> vertex_triples_2;
  std::vector<double> angles;           ///< start, end, rotation
  std::optional<LM_RGB32> own_color;    ///< of a dot, or the fill of an ellipse
  std::optional<std::int32_t> integer;  ///< a polygon's last, a textured strip's argument
  LM_Image* const* image_cell = nullptr;

  // Of texts only.
  std::wstring wide_text;
  std::string multibyte_text;
  LM_Text_Attributes text_attributes;  ///< the rendition's, at the call
};

/// One line for people and for comparisons: the action, the colour, what
/// differs from a default line style, then the arguments, as in
/// "polyline_clipped color=00FF0000 (1,2) (3,4)" or
/// "wide_text color=00000000 (1,2) \"caf\u00E9\" size=12". Addresses are left out.
LUMEN_API std::string to_string(const RecordedCall& call);

/// A renderer that draws nothing and writes every action and text down in order.
/// Calls from several threads at once are not allowed.
class LUMEN_API Recorder final : public TextRenderer {
 public:
  Recorder();

  [[nodiscard]] const std::vector<RecordedCall>& calls() const { return m_calls; }
  /// Every call as `to_string` tells it.
  [[nodiscard]] std::vector<std::string> lines() const;
  void clear() { m_calls.clear(); }

  /// Text up to the count or a zero; null is no text.
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                 std::int32_t count) override;
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                 const unsigned char* characters, std::int32_t count) override;

  // The actions, called through the table.
  void dot_clipped(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color);
  void dot_unclipped(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color);
  void polyline_clipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void polyline_unclipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void gouraud_polyline_clipped(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points, const LM_RGB32* colors);
  void gouraud_polyline_unclipped(LM_Rendition* rendition, std::int32_t count,
                                  const LM_DCI_Point* points, const LM_RGB32* colors);
  void polygon_clipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                       std::int32_t integer);
  void polygon_unclipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                         std::int32_t integer);
  void triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                              const LM_DCI_Point* points);
  void triangle_strip_unclipped(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points);
  void gouraud_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                      const LM_DCI_Point* points, const LM_RGB32* colors);
  void textured_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                       const LM_DCI_Point* points, const LM_RGB32* colors,
                                       const LM_Vertex_Triple* triples, std::int32_t integer,
                                       const std::uint32_t* values,
                                       const LM_Vertex_Triple* triples_2);
  void textured_triangle_strip_unclipped(LM_Rendition* rendition, std::int32_t count,
                                         const LM_DCI_Point* points, const LM_RGB32* colors,
                                         const LM_Vertex_Triple* triples, std::int32_t integer,
                                         const std::uint32_t* values,
                                         const LM_Vertex_Triple* triples_2);
  void marker_clipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void marker_unclipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void image_clipped(LM_Rendition* rendition, const LM_DCI_Point* corner, LM_Image* const* cell);
  void image_unclipped(LM_Rendition* rendition, const LM_DCI_Point* corner, LM_Image* const* cell);
  void elliptical_arc(LM_Rendition* rendition, const LM_DCI_Point* center,
                      const LM_DCI_Point* radii, float start, float end, float rotation,
                      const LM_RGB32* fill);
  void elliptical_arc_colored(LM_Rendition* rendition, const LM_DCI_Point* center,
                              const LM_DCI_Point* radii, float start, float end, float rotation,
                              const LM_RGB32* fill);
  void elliptical_area(LM_Rendition* rendition, const LM_DCI_Point* center,
                       const LM_DCI_Point* radii, double start, double end, double rotation,
                       const LM_RGB32* fill);

 private:
  RecordedCall& add(const char* action, const LM_Rendition* rendition);
  RecordedCall& add(const char* action, const LM_Rendition* rendition, std::int32_t count,
                    const LM_DCI_Point* points);
  void add_colored(const char* action, const LM_Rendition* rendition, std::int32_t count,
                   const LM_DCI_Point* points, const LM_RGB32* colors);
  void add_dot(const char* action, const LM_Rendition* rendition, const LM_DCI_Point* point,
               const LM_RGB32* color);
  void add_polygon(const char* action, const LM_Rendition* rendition, std::int32_t count,
                   const LM_DCI_Point* points, std::int32_t integer);
  void add_textured(const char* action, const LM_Rendition* rendition, std::int32_t count,
                    const LM_DCI_Point* points, const LM_RGB32* colors,
                    const LM_Vertex_Triple* triples, std::int32_t integer,
                    const std::uint32_t* values, const LM_Vertex_Triple* triples_2);
  void add_image(const char* action, const LM_Rendition* rendition, const LM_DCI_Point* corner,
                 LM_Image* const* cell);
  void add_ellipse(const char* action, const LM_Rendition* rendition, const LM_DCI_Point* center,
                   const LM_DCI_Point* radii, double start, double end, double rotation,
                   const LM_RGB32* fill);
  RecordedCall& add_text(const char* action, const LM_Rendition* rendition,
                         const LM_DCI_Point& start);

  std::vector<RecordedCall> m_calls;
};

}  // namespace lumen
