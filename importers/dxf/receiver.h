#pragma once

#include <dxflib/dl_creationadapter.h>

#include <optional>
#include <string>
#include <vector>

#include "importers/dxf/dimensions.h"
#include "importers/dxf/model.h"
#include "importers/dxf/pairs.h"
#include "importers/dxf/strings.h"

namespace importers::dxf {

/// Makes the model of what dxflib calls. dxflib tells of a record when it meets
/// the next one; what it keeps to itself is taken from the record.
class Receiver final : public DL_CreationAdapter {
 public:
  explicit Receiver(Model& model);

  [[nodiscard]] StringDecoder& decoder() { return m_decoder; }
  /// The record that dxflib tells of next.
  void open(const Record& record);
  /// What follows is in the section of blocks, or that of entities.
  void begin_entities(bool in_blocks) { m_in_blocks = in_blocks; }
  void end_block();
  void note_unusable(const Record& record);
  void note_unknown(const Record& record);

  void addLayer(const DL_LayerData& data) override;
  void addLinetype(const DL_LinetypeData& data) override;
  void addLinetypeDash(double length) override;
  void addTextStyle(const DL_StyleData& data) override;
  void addBlock(const DL_BlockData& data) override;
  void endBlock() override;

  void addPoint(const DL_PointData& data) override;
  void addLine(const DL_LineData& data) override;
  void addXLine(const DL_XLineData& data) override;
  void addRay(const DL_RayData& data) override;
  void addArc(const DL_ArcData& data) override;
  void addCircle(const DL_CircleData& data) override;
  void addEllipse(const DL_EllipseData& data) override;
  void addPolyline(const DL_PolylineData& data) override;
  void addVertex(const DL_VertexData& data) override;
  void endSequence() override;
  void endEntity() override;
  void addSpline(const DL_SplineData& data) override;
  void addControlPoint(const DL_ControlPointData& data) override;
  void addFitPoint(const DL_FitPointData& data) override;
  void addKnot(const DL_KnotData& data) override;
  void addInsert(const DL_InsertData& data) override;
  void addTrace(const DL_TraceData& data) override;
  void addSolid(const DL_SolidData& data) override;
  void add3dFace(const DL_3dFaceData& data) override;
  void addMText(const DL_MTextData& data) override;
  void addMTextChunk(const std::string& text) override;
  void addText(const DL_TextData& data) override;
  void addAttribute(const DL_AttributeData& data) override;
  void addDimAlign(const DL_DimensionData& data, const DL_DimAlignedData& own) override;
  void addDimLinear(const DL_DimensionData& data, const DL_DimLinearData& own) override;
  void addDimRadial(const DL_DimensionData& data, const DL_DimRadialData& own) override;
  void addDimDiametric(const DL_DimensionData& data, const DL_DimDiametricData& own) override;
  void addDimAngular(const DL_DimensionData& data, const DL_DimAngular2LData& own) override;
  void addDimAngular3P(const DL_DimensionData& data, const DL_DimAngular3PData& own) override;
  void addDimOrdinate(const DL_DimensionData& data, const DL_DimOrdinateData& own) override;
  void addLeader(const DL_LeaderData& data) override;
  void addLeaderVertex(const DL_LeaderVertexData& data) override;
  void addHatch(const DL_HatchData& data) override;

 private:
  /// What is being put together of several calls.
  struct Sequence {
    Entity entity;
    int flags = 0;
    std::size_t rows = 0;     ///< of a mesh
    std::size_t columns = 0;  ///< of a mesh
    bool of_records = false;  ///< each corner is a record of its own
  };

  /// Counts the record as unknown if dxflib did not tell of it.
  void note_silence();
  [[nodiscard]] std::vector<Entity>& entities();
  [[nodiscard]] Look look();
  /// An entity as the attributes of the record tell; `in_plane`: the
  /// coordinates are those of its own plane.
  [[nodiscard]] Entity entity(Geometry geometry, bool in_plane);
  void add(Geometry geometry, bool in_plane);
  void add_filled(const DL_TraceData& data);
  void end_polyline();
  void add_mesh(const Sequence& mesh);
  /// Adds what the dimension's own block draws or, where there is none, the parts.
  void add_dimension(const std::vector<Geometry>& parts);
  [[nodiscard]] bool has_own_block() const;
  [[nodiscard]] DimensionStyle style_of(const DL_DimensionData& data) const;
  [[nodiscard]] Text text_of(const DL_TextData& data);
  /// The text of the record, however long it is; dxflib cuts it.
  [[nodiscard]] std::wstring words() const;
  [[nodiscard]] std::string key(const std::string& name) const;
  [[nodiscard]] std::size_t layer_index(const std::string& name);
  [[nodiscard]] std::size_t line_type_index(const std::string& name);

  Model& m_model;
  StringDecoder m_decoder;
  Record m_record;          ///< that dxflib tells of
  bool m_is_taken = false;  ///< dxflib told of it
  bool m_in_blocks = false;
  std::optional<std::size_t> m_block;
  std::vector<double> m_dashes;
  std::string m_chunks;  ///< of an MTEXT
  std::optional<Sequence> m_polyline;
  Spline* m_spline = nullptr;    ///< takes knots and points; lies in the last entity
  Polyline* m_leader = nullptr;  ///< takes corners; lies in the last entity
  bool m_leader_has_arrow = false;
};

}  // namespace importers::dxf
