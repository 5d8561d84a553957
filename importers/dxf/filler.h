#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "displaylist/displaylist.h"
#include "importers/drawing.h"
#include "importers/dxf/plan.h"

namespace importers::dxf {

/// Makes the display list of a plan.
class Filler {
 public:
  /// Of drawables in nested lists, which count `list_cost` themselves.
  static constexpr std::size_t most_nested = 2500000;
  static constexpr std::size_t list_cost = 16;

  /// The drawing outlives the filler. `point_size`: of dots, in device units.
  Filler(Drawing& drawing, std::int32_t point_size)
      : m_drawing(drawing), m_point_size(point_size) {}

  /// Fills in the list, its mapping, its extent and the count of its drawables.
  void fill(const Plan& plan);
  [[nodiscard]] bool is_out_of_memory() const { return m_out_of_memory; }
  /// How many nested lists were left out or cut short for being too many.
  [[nodiscard]] std::size_t too_many() const { return m_too_many; }

 private:
  using LogicalPoint = DL::PointTemplate<long>;
  /// A list and how its plan is mapped to it.
  struct Target {
    DL::DisplayList& list;
    Mapping mapping;
    bool is_nested;
  };
  struct PenOrder {
    bool operator()(const std::pair<Pen, std::int32_t>& a,
                    const std::pair<Pen, std::int32_t>& b) const;
  };

  void fill(const Plan& plan, const Target& target);
  /// Sets the limit of what is nested for the copies of a plan that follow each
  /// other.
  void begin_nests(const Shape& shape);
  void add(const Shape& shape, const Target& target);
  [[nodiscard]] DL::Drawable* make(const Stroke& stroke, const Shape& shape, const Target& target);
  [[nodiscard]] DL::Drawable* make(const Segments& segments, const Shape& shape,
                                   const Target& target);
  [[nodiscard]] DL::Drawable* make(const Arc& arc, const Shape& shape, const Target& target);
  [[nodiscard]] DL::Drawable* make(const Dot& dot, const Shape& shape, const Target& target);
  [[nodiscard]] DL::Drawable* make(const Area& area, const Shape& shape, const Target& target);
  [[nodiscard]] DL::Drawable* make(const Label& label, const Shape& shape, const Target& target);
  [[nodiscard]] DL::Drawable* make(const Beam& beam, const Shape& shape, const Target& target);
  [[nodiscard]] DL::Drawable* make(const Nest& nest, const Shape& shape, const Target& target);
  void load(const std::vector<Vertex>& points, const Mapping& mapping);
  [[nodiscard]] LM_Rendition* rendition(const Pen& pen, std::int32_t weight);
  [[nodiscard]] DL::DisplayList* make_list(const Plan& plan, const Mapping& mapping);

  Drawing& m_drawing;
  std::int32_t m_point_size;
  std::map<std::pair<Pen, std::int32_t>, LM_Rendition*, PenOrder> m_renditions;
  std::vector<LogicalPoint> m_points;  ///< of the drawable being made
  std::size_t m_nested = 0;
  std::size_t m_limit = 0;              ///< of what is nested, for now
  const Plan* m_last_nested = nullptr;  ///< in the drawing itself
  std::size_t m_too_many = 0;
  bool m_out_of_memory = false;
};

}  // namespace importers::dxf
