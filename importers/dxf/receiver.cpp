#include "importers/dxf/receiver.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "importers/dxf/colors.h"

namespace importers::dxf {

namespace {

constexpr int by_block_index = 0;
constexpr int by_layer_index = 256;

/// From the plane that stands on the direction, at a height above the origin,
/// to the drawing seen from above.
Affine plane_to_drawing(const double* direction, double elevation) {
  const double size = std::hypot(direction[0], direction[1], direction[2]);
  if (!(size > 0) || !std::isfinite(size)) return {};
  const double nx = direction[0] / size;
  const double ny = direction[1] / size;
  const double nz = direction[2] / size;
  // The x axis is level, but for planes that are nearly so themselves.
  constexpr double nearly = 1.0 / 64;
  const bool is_level = std::fabs(nx) < nearly && std::fabs(ny) < nearly;
  const double across = is_level ? std::hypot(nz, nx) : std::hypot(nx, ny);
  const Vertex x = is_level ? Vertex{nz / across, 0} : Vertex{-ny / across, nx / across};
  const double x_up = is_level ? -nx / across : 0.0;
  const Vertex y{ny * x_up - nz * x.y, nz * x.x - nx * x_up};
  return {x.x, y.x, x.y, y.y, elevation * nx, elevation * ny};
}

}  // namespace

Receiver::Receiver(Model& model) : m_model(model) {
  m_model.layers[layer_index("0")].line_type = line_type_index("CONTINUOUS");
}

void Receiver::open(const Record& record) {
  note_silence();
  m_record = record;
  m_dashes.clear();
  m_chunks.clear();
  m_spline = nullptr;
  m_leader = nullptr;
  const bool goes_on = record.name == "VERTEX" || record.name == "SEQEND";
  if (m_polyline && m_polyline->of_records && !goes_on) end_polyline();
}

void Receiver::note_silence() {
  constexpr std::string_view no_entities[] = {"",       "VERTEX", "SEQEND", "BLOCK",
                                              "ENDBLK", "LAYER",  "LTYPE",  "STYLE"};
  const bool is_entity = std::find(std::begin(no_entities), std::end(no_entities), m_record.name) ==
                         std::end(no_entities);
  if (is_entity && !m_is_taken) note_unknown(m_record);
  m_is_taken = false;
}

void Receiver::end_block() {
  end_polyline();
  m_block.reset();
}

void Receiver::note_unusable(const Record& record) {
  ++m_model.records;
  if (m_model.unusable++ > 0) return;
  const std::string* layer = record.find(8);
  m_model.first_unusable = "a " + record.name + " of layer '" +
                           (layer == nullptr ? "0" : in_one_line(m_decoder.name(*layer))) + "'";
}

void Receiver::note_unknown(const Record& record) {
  ++m_model.records;
  // As many as there may be in a damaged file.
  constexpr std::size_t most_kinds = 50;
  if (m_model.kinds.size() < most_kinds || m_model.kinds.contains(record.name)) {
    ++m_model.kinds[record.name];
  }
}

std::vector<Entity>& Receiver::entities() {
  if (!m_in_blocks) return m_model.entities;
  // What stands between blocks belongs to none.
  return m_model.blocks[m_block ? *m_block : m_model.blocks.index("")].entities;
}

Look Receiver::look() {
  Look look;
  look.layer = layer_index(attributes.getLayer());
  const int color = attributes.getColor();
  const bool has_index =
      color != by_block_index && color > -by_layer_index && color < by_layer_index;
  if (attributes.getColor24() >= 0 || has_index) {
    look.color = {Source::own, entity_color(color, attributes.getColor24())};
  } else if (color == by_block_index) {
    look.color.source = Source::block;
  }
  const std::string line_type = upper_case(attributes.getLinetype());
  if (line_type == "BYBLOCK") {
    look.line_type_source = Source::block;
  } else if (line_type != "BYLAYER") {
    look.line_type_source = Source::own;
    look.line_type = line_type_index(line_type);
  }
  return look;
}

Entity Receiver::entity(Geometry geometry, bool in_plane) {
  Entity entity;
  entity.look = look();
  if (in_plane) {
    entity.placement = plane_to_drawing(extrusion->getDirection(), extrusion->getElevation());
  }
  entity.in_paper_space = attributes.isInPaperSpace();
  entity.is_invisible = m_record.integer(60, 0) != 0;
  entity.geometry = std::move(geometry);
  ++m_model.records;
  m_is_taken = true;
  return entity;
}

void Receiver::add(Geometry geometry, bool in_plane) {
  entities().push_back(entity(std::move(geometry), in_plane));
}

void Receiver::addPoint(const DL_PointData& data) {
  add(Spot{{data.x, data.y}}, false);
}

void Receiver::addLine(const DL_LineData& data) {
  add(Polyline{{{{data.x1, data.y1}}, {{data.x2, data.y2}}}, false}, false);
}

void Receiver::addXLine(const DL_XLineData& data) {
  add(Ray{{data.bx, data.by}, {data.dx, data.dy}, true}, false);
}

void Receiver::addRay(const DL_RayData& data) {
  add(Ray{{data.bx, data.by}, {data.dx, data.dy}, false}, false);
}

void Receiver::addArc(const DL_ArcData& data) {
  Arc arc{{data.cx, data.cy},
          {data.radius, 0},
          {0, data.radius},
          radians(data.angle1),
          radians(data.angle2)};
  put_in_order(arc.start, arc.end);
  add(arc, true);
}

void Receiver::addCircle(const DL_CircleData& data) {
  add(Arc{{data.cx, data.cy}, {data.radius, 0}, {0, data.radius}}, true);
}

void Receiver::addEllipse(const DL_EllipseData& data) {
  const double* normal = extrusion->getDirection();
  const double size = std::hypot(normal[0], normal[1], normal[2]);
  const double ratio = size > 0 ? data.ratio / size : 0.0;
  const Vertex q{ratio * (normal[1] * data.mz - normal[2] * data.my),
                 ratio * (normal[2] * data.mx - normal[0] * data.mz)};
  Arc arc{{data.cx, data.cy}, {data.mx, data.my}, q, data.angle1, data.angle2};
  put_in_order(arc.start, arc.end);
  add(arc, false);
}

void Receiver::addPolyline(const DL_PolylineData& data) {
  constexpr int closed = 1;
  constexpr int in_space = 8;
  constexpr int mesh = 16;
  constexpr int faces = 64;
  end_polyline();
  if ((data.flags & faces) != 0) {
    m_is_taken = true;
    return note_unknown({"POLYLINE of faces", {}});
  }
  Sequence sequence;
  sequence.of_records = m_record.name == "POLYLINE";
  const bool in_plane = (data.flags & (in_space | mesh)) == 0;
  sequence.entity = entity(Polyline{{}, (data.flags & closed) != 0}, in_plane);
  sequence.flags = data.flags;
  if ((data.flags & mesh) != 0) {
    sequence.rows = static_cast<std::size_t>(std::max(0, m_record.integer(71, 0)));
    sequence.columns = static_cast<std::size_t>(std::max(0, m_record.integer(72, 0)));
  }
  m_polyline = std::move(sequence);
}

void Receiver::addVertex(const DL_VertexData& data) {
  constexpr int frame_of_spline = 16;
  if (!m_polyline) return;
  if (m_polyline->of_records && (m_record.integer(70, 0) & frame_of_spline) != 0) return;
  std::get<Polyline>(m_polyline->entity.geometry).corners.push_back({{data.x, data.y}, data.bulge});
}

void Receiver::endSequence() {
  end_polyline();
}

void Receiver::endEntity() {
  if (m_polyline && !m_polyline->of_records) end_polyline();
}

void Receiver::end_polyline() {
  if (!m_polyline) return;
  const Sequence sequence = *std::exchange(m_polyline, std::nullopt);
  if (sequence.rows > 0) return add_mesh(sequence);
  entities().push_back(sequence.entity);
}

void Receiver::add_mesh(const Sequence& mesh) {
  const std::vector<Corner>& corners = std::get<Polyline>(mesh.entity.geometry).corners;
  const bool closed_rows = (mesh.flags & 32) != 0;
  const bool closed_columns = (mesh.flags & 1) != 0;
  if (mesh.columns == 0 || corners.size() / mesh.rows < mesh.columns) return;
  const auto add_line = [&](std::size_t first, std::size_t step, std::size_t count, bool closed) {
    Polyline line{{}, closed};
    for (std::size_t i = 0; i < count; ++i) line.corners.push_back(corners[first + i * step]);
    Entity entity = mesh.entity;
    entity.geometry = std::move(line);
    entities().push_back(std::move(entity));
  };
  for (std::size_t row = 0; row < mesh.rows; ++row) {
    add_line(row * mesh.columns, 1, mesh.columns, closed_rows);
  }
  for (std::size_t column = 0; column < mesh.columns; ++column) {
    add_line(column, mesh.columns, mesh.rows, closed_columns);
  }
}

void Receiver::addSpline(const DL_SplineData& data) {
  constexpr int closed = 1;
  Spline spline;
  spline.degree = static_cast<int>(data.degree);
  spline.is_closed = (data.flags & closed) != 0;
  add(spline, false);
  m_spline = &std::get<Spline>(entities().back().geometry);
}

void Receiver::addControlPoint(const DL_ControlPointData& data) {
  if (m_spline == nullptr) return;
  m_spline->control.push_back({data.x, data.y});
  m_spline->weights.push_back(data.w);
}

void Receiver::addFitPoint(const DL_FitPointData& data) {
  if (m_spline != nullptr) m_spline->fit.push_back({data.x, data.y});
}

void Receiver::addKnot(const DL_KnotData& data) {
  if (m_spline != nullptr) m_spline->knots.push_back(data.k);
}

void Receiver::addInsert(const DL_InsertData& data) {
  add(Insert{m_model.blocks.index(key(data.name)),
             {data.ipx, data.ipy},
             {data.sx, data.sy},
             radians(data.angle),
             data.cols,
             data.rows,
             {data.colSp, data.rowSp}},
      true);
}

}  // namespace importers::dxf
