#include "lumen/recorder.h"

#include <algorithm>

#include "displaylist/platform/multibyte.h"

namespace lumen {
namespace {

template <class T>
std::vector<T> copy_of(const T* values, std::int32_t count) {
  if (values == nullptr) return {};
  return {values, values + std::max(count, 0)};
}

template <class T>
std::optional<T> value_behind(const T* pointer) {
  return pointer == nullptr ? std::nullopt : std::optional<T>(*pointer);
}

}  // namespace

Recorder::Recorder() {
  actions = LM_Actions_Of(this);
  options.supports_complex_clip = true;
}

std::vector<std::string> Recorder::lines() const {
  std::vector<std::string> result;
  for (const RecordedCall& call : m_calls) result.push_back(to_string(call));
  return result;
}

RecordedCall& Recorder::add(const char* action, const LM_Rendition* rendition) {
  RecordedCall& call = m_calls.emplace_back();
  call.action = action;
  call.rendition = rendition;
  if (rendition == nullptr) return call;
  call.color = rendition->color();
  call.clip_rectangle = rendition->clip_rectangle();
  call.line_style = rendition->line_style();
  call.edge_mode = rendition->edge_mode();
  call.marker = rendition->marker();
  call.has_complex_clip = static_cast<bool>(rendition->complex_clip());
  if (const auto selector = rendition->selector_data()) {
    call.selection_key = selector->key();
    call.selection_index = selector->index();
  }
  return call;
}

RecordedCall& Recorder::add(const char* action, const LM_Rendition* rendition, std::int32_t count,
                            const LM_DCI_Point* points) {
  RecordedCall& call = add(action, rendition);
  call.points = copy_of(points, count);
  return call;
}

void Recorder::add_colored(const char* action, const LM_Rendition* rendition, std::int32_t count,
                           const LM_DCI_Point* points, const LM_RGB32* colors) {
  add(action, rendition, count, points).vertex_colors = copy_of(colors, count);
}

void Recorder::add_dot(const char* action, const LM_Rendition* rendition, const LM_DCI_Point* point,
                       const LM_RGB32* color) {
  add(action, rendition, 1, point).own_color = value_behind(color);
}

void Recorder::add_polygon(const char* action, const LM_Rendition* rendition, std::int32_t count,
                           const LM_DCI_Point* points, std::int32_t integer) {
  add(action, rendition, count, points).integer = integer;
}

void Recorder::add_textured(const char* action, const LM_Rendition* rendition, std::int32_t count,
                            const LM_DCI_Point* points, const LM_RGB32* colors,
                            const LM_Vertex_Triple* triples, std::int32_t integer,
                            const std::uint32_t* values, const LM_Vertex_Triple* triples_2) {
  RecordedCall& call = add(action, rendition, count, points);
  call.vertex_colors = copy_of(colors, count);
  call.vertex_triples = copy_of(triples, count);
  call.integer = integer;
  call.vertex_values = copy_of(values, count);
  call.vertex_triples_2 = copy_of(triples_2, count);
}

void Recorder::add_image(const char* action, const LM_Rendition* rendition,
                         const LM_DCI_Point* corner, LM_Image* const* cell) {
  add(action, rendition, 1, corner).image_cell = cell;
}

void Recorder::add_ellipse(const char* action, const LM_Rendition* rendition,
                           const LM_DCI_Point* center, const LM_DCI_Point* radii, double start,
                           double end, double rotation, const LM_RGB32* fill) {
  RecordedCall& call = add(action, rendition);
  if (center != nullptr) call.points.push_back(*center);
  if (radii != nullptr) call.points.push_back(*radii);
  call.angles = {start, end, rotation};
  call.own_color = value_behind(fill);
}

RecordedCall& Recorder::add_text(const char* action, const LM_Rendition* rendition,
                                 const LM_DCI_Point& start) {
  RecordedCall& call = add(action, rendition, 1, &start);
  if (rendition != nullptr) call.text_attributes = rendition->text_attributes();
  return call;
}

void Recorder::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                         const wchar_t* characters, std::int32_t count) {
  RecordedCall& call = add_text("wide_text", rendition, start);
  for (std::int32_t i = 0; characters != nullptr && i < count && characters[i] != 0; ++i) {
    call.wide_text += characters[i];
  }
}

void Recorder::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                         const unsigned char* characters, std::int32_t count) {
  RecordedCall& call = add_text("multibyte_text", rendition, start);
  if (characters == nullptr) return;
  call.multibyte_text.assign(characters, LM_Multibyte::advanced(characters, count));
}

void Recorder::dot_clipped(LM_Rendition* rendition, const LM_DCI_Point* point,
                           const LM_RGB32* color) {
  add_dot("dot_clipped", rendition, point, color);
}

void Recorder::dot_unclipped(LM_Rendition* rendition, const LM_DCI_Point* point,
                             const LM_RGB32* color) {
  add_dot("dot_unclipped", rendition, point, color);
}

void Recorder::polyline_clipped(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points) {
  add("polyline_clipped", rendition, count, points);
}

void Recorder::polyline_unclipped(LM_Rendition* rendition, std::int32_t count,
                                  const LM_DCI_Point* points) {
  add("polyline_unclipped", rendition, count, points);
}

void Recorder::gouraud_polyline_clipped(LM_Rendition* rendition, std::int32_t count,
                                        const LM_DCI_Point* points, const LM_RGB32* colors) {
  add_colored("gouraud_polyline_clipped", rendition, count, points, colors);
}

void Recorder::gouraud_polyline_unclipped(LM_Rendition* rendition, std::int32_t count,
                                          const LM_DCI_Point* points, const LM_RGB32* colors) {
  add_colored("gouraud_polyline_unclipped", rendition, count, points, colors);
}

void Recorder::polygon_clipped(LM_Rendition* rendition, std::int32_t count,
                               const LM_DCI_Point* points, std::int32_t integer) {
  add_polygon("polygon_clipped", rendition, count, points, integer);
}

void Recorder::polygon_unclipped(LM_Rendition* rendition, std::int32_t count,
                                 const LM_DCI_Point* points, std::int32_t integer) {
  add_polygon("polygon_unclipped", rendition, count, points, integer);
}

void Recorder::triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                      const LM_DCI_Point* points) {
  add("triangle_strip_clipped", rendition, count, points);
}

void Recorder::triangle_strip_unclipped(LM_Rendition* rendition, std::int32_t count,
                                        const LM_DCI_Point* points) {
  add("triangle_strip_unclipped", rendition, count, points);
}

void Recorder::gouraud_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                              const LM_DCI_Point* points, const LM_RGB32* colors) {
  add_colored("gouraud_triangle_strip_clipped", rendition, count, points, colors);
}

void Recorder::textured_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                               const LM_DCI_Point* points, const LM_RGB32* colors,
                                               const LM_Vertex_Triple* triples,
                                               std::int32_t integer, const std::uint32_t* values,
                                               const LM_Vertex_Triple* triples_2) {
  add_textured("textured_triangle_strip_clipped", rendition, count, points, colors, triples,
               integer, values, triples_2);
}

void Recorder::textured_triangle_strip_unclipped(LM_Rendition* rendition, std::int32_t count,
                                                 const LM_DCI_Point* points, const LM_RGB32* colors,
                                                 const LM_Vertex_Triple* triples,
                                                 std::int32_t integer, const std::uint32_t* values,
                                                 const LM_Vertex_Triple* triples_2) {
  add_textured("textured_triangle_strip_unclipped", rendition, count, points, colors, triples,
               integer, values, triples_2);
}

void Recorder::marker_clipped(LM_Rendition* rendition, std::int32_t count,
                              const LM_DCI_Point* points) {
  add("marker_clipped", rendition, count, points);
}

void Recorder::marker_unclipped(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points) {
  add("marker_unclipped", rendition, count, points);
}

void Recorder::image_clipped(LM_Rendition* rendition, const LM_DCI_Point* corner,
                             LM_Image* const* cell) {
  add_image("image_clipped", rendition, corner, cell);
}

void Recorder::image_unclipped(LM_Rendition* rendition, const LM_DCI_Point* corner,
                               LM_Image* const* cell) {
  add_image("image_unclipped", rendition, corner, cell);
}

void Recorder::elliptical_arc(LM_Rendition* rendition, const LM_DCI_Point* center,
                              const LM_DCI_Point* radii, float start, float end, float rotation,
                              const LM_RGB32* fill) {
  add_ellipse("elliptical_arc", rendition, center, radii, start, end, rotation, fill);
}

void Recorder::elliptical_arc_colored(LM_Rendition* rendition, const LM_DCI_Point* center,
                                      const LM_DCI_Point* radii, float start, float end,
                                      float rotation, const LM_RGB32* fill) {
  add_ellipse("elliptical_arc_colored", rendition, center, radii, start, end, rotation, fill);
}

void Recorder::elliptical_area(LM_Rendition* rendition, const LM_DCI_Point* center,
                               const LM_DCI_Point* radii, double start, double end, double rotation,
                               const LM_RGB32* fill) {
  add_ellipse("elliptical_area", rendition, center, radii, start, end, rotation, fill);
}

}  // namespace lumen
