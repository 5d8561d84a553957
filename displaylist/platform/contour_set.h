#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "displaylist/platform/counted.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/points.h"

/// One closed contour: the last point joins the first. `points` belongs to the
/// contour set and is null for a contour without a point array.
struct LM_Contour {
  std::int32_t count = 0;
  const LM_Point* points = nullptr;
};

/// Which points a set of contours encloses.
enum class LM_Fill_Rule : std::uint8_t { even_odd, non_zero };

/// Closed contours in device units, shared by count. Filled by one thread
/// before it is shared; reading is safe from any thread afterwards.
class LUMEN_API LM_Contour_Set_Data : public LM_Counted {
 public:
  explicit LM_Contour_Set_Data(LM_Fill_Rule rule = LM_Fill_Rule::even_odd) : m_rule(rule) {}
  LM_Contour_Set_Data(const LM_Contour_Set_Data&) = delete;
  LM_Contour_Set_Data& operator=(const LM_Contour_Set_Data&) = delete;

  /// Appends a contour with a copy of the points.
  void add_contour(const LM_Point* points, std::int32_t count);

  [[nodiscard]] std::int32_t contour_count() const {
    return static_cast<std::int32_t>(m_contours.size());
  }
  [[nodiscard]] LM_Contour contour(std::int32_t index) const {
    const Contour& contour = m_contours[static_cast<std::size_t>(index)];
    return {contour.count, contour.points.get()};
  }
  [[nodiscard]] LM_Fill_Rule fill_rule() const { return m_rule; }

  /// Whether the fill rule puts the device point inside. A point on an edge
  /// may be told either way.
  [[nodiscard]] bool point_inside(double x, double y) const;

 private:
  struct Contour {
    std::int32_t count;
    std::unique_ptr<LM_Point[]> points;
  };
  std::vector<Contour> m_contours;
  LM_Fill_Rule m_rule;
};

/// A shared contour set; null is no contours at all.
using LM_Contour_Set = LM_Handle<LM_Contour_Set_Data>;
