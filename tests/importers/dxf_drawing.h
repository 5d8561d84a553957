#pragma once

#include <string>
#include <vector>

#include "tests/importers/dxf_text.h"
#include "tests/importers/recorded_drawing.h"
#include "tests/support/temporary_folder.h"

enum class AsIs { file };
inline constexpr AsIs as_is = AsIs::file;

/// A drawing that was read from the text of a DXF file, and recorded in logical
/// coordinates.
class DxfDrawing {
  TemporaryFolder m_folder;

 public:
  explicit DxfDrawing(const dxf_text::Parts& parts, const importers::ReadOptions& options = {})
      : DxfDrawing(as_is, dxf_text::file(parts), options) {}
  /// Of a file that holds the text and nothing else.
  DxfDrawing(AsIs /*as_is*/, const std::string& text, const importers::ReadOptions& options = {})
      : recorded(m_folder.write("a.dxf", text), options), drawing(recorded.drawing) {}

  [[nodiscard]] const std::vector<lumen::RecordedCall>& calls() const {
    return recorded.recorder->calls();
  }
  [[nodiscard]] std::size_t count(const std::string& action) const {
    return recorded.points_of(action).size();
  }
  /// The coordinates in the drawing of a recorded point.
  [[nodiscard]] double x(const LM_DCI_Point& point) const {
    return point.x / drawing.mapping.scale + drawing.mapping.origin_x;
  }
  [[nodiscard]] double y(const LM_DCI_Point& point) const {
    return point.y / drawing.mapping.scale + drawing.mapping.origin_y;
  }
  [[nodiscard]] double length(double logical) const { return logical / drawing.mapping.scale; }

  RecordedDrawing recorded;
  importers::Drawing& drawing;
};
