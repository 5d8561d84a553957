#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "importers/batch.h"
#include "importers/drawing.h"
#include "importers/sketch.h"

namespace importers {

/// Turns the geometry of a sketch into drawables at the end of the drawing's
/// list, in the order of the calls or, where `reorders`, in the order that fills
/// the list best, from one end_kind() to the next.
class ListFiller {
 public:
  /// A longer line becomes several, each ending where the next begins: pieces
  /// of this size draw without an allocation and are left out one by one.
  static constexpr std::size_t longest_piece = 256;

  /// Both outlive the filler; the drawing has its mapping and its empty list.
  ListFiller(const Sketch& sketch, Drawing& drawing, bool reorders)
      : m_sketch(sketch), m_drawing(drawing), m_reorders(reorders) {}

  /// One polygon: the holes are joined to the outer ring by bridges, along
  /// which the polygon runs back and forth, so that they enclose nothing.
  void add_fill(const Sketch::Layer& layer, const Sketch::Area& area, LM_RGB32 color);
  /// Of a ring that was cut, without the edges along which it was, unless it
  /// has no others.
  void add_outline(const Sketch::Ring& ring, LM_RGB32 color);
  void add_line(const Sketch::Run& line, LM_RGB32 color);

  /// The colour and the size in device units of the points that follow.
  void begin_points(LM_RGB32 color, std::int32_t size);
  void add_point(const Vertex& vertex);

  /// What follows is drawn on top of all that was made so far. To be called at the
  /// end, too.
  void end_kind();

  [[nodiscard]] bool is_out_of_memory() const { return m_out_of_memory; }

 private:
  [[nodiscard]] DL::PointTemplate<long> logical(const Vertex& vertex) const {
    return m_drawing.mapping.to_logical(vertex.x, vertex.y);
  }
  void load(const Sketch::Run& run);
  void add_pieces(LM_RGB32 color);
  void add(DL::Drawable* drawable, std::span<const DL::PointTemplate<long>> points);

  const Sketch& m_sketch;
  Drawing& m_drawing;
  bool m_reorders;
  Batch m_waiting;                                ///< of the kind that has not ended
  std::vector<DL::PointTemplate<long>> m_points;  ///< of the drawable being made
  LM_RGB32 m_point_color{};
  LM_Rendition* m_point_rendition = nullptr;  ///< null: points are single pixels
  bool m_out_of_memory = false;
};

}  // namespace importers
