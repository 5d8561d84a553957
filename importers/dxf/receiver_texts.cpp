// What has text in it: texts, attributes, dimensions, leaders.

#include <algorithm>
#include <utility>

#include "importers/dxf/dimensions.h"
#include "importers/dxf/receiver.h"

namespace importers::dxf {

namespace {

/// The crossing of the lines through two pairs of points; the middle of the
/// second points where they are parallel.
Vertex crossing(const Vertex& a, const Vertex& b, const Vertex& c, const Vertex& d) {
  const Vertex u = b - a;
  const Vertex v = d - c;
  const double area = u.x * v.y - u.y * v.x;
  if (area == 0) return 0.5 * (b + d);
  const Vertex w = c - a;
  return a + (w.x * v.y - w.y * v.x) / area * u;
}

}  // namespace

std::wstring Receiver::words() const {
  const std::string* value = m_record.find(1);
  return value == nullptr ? std::wstring() : m_decoder.wide(*value);
}

Text Receiver::text_of(const DL_TextData& data) {
  Text text;
  text.at = {data.ipx, data.ipy};
  const bool has_second = m_record.find(11) != nullptr;
  text.second = has_second ? Vertex{data.apx, data.apy} : text.at;
  text.style = m_model.styles.index(key(data.style));
  const TextStyle& style = m_model.styles[text.style];
  text.height = data.height > 0 ? data.height : style.height;
  text.width_factor = m_record.real(41, style.width_factor);
  text.rotation = radians(m_record.real(50, 0));
  text.horizontal = has_second ? data.hJustification : 0;
  // Attributes have another code for it, since theirs is taken.
  text.vertical = has_second ? m_record.integer(m_record.name == "ATTRIB" ? 74 : 73, 0) : 0;
  text.text = with_percent_codes(words());
  return text;
}

void Receiver::addText(const DL_TextData& data) {
  add(text_of(data), true);
}

void Receiver::addAttribute(const DL_AttributeData& data) {
  constexpr int invisible = 1;
  Entity attribute = entity(text_of(data), true);
  const bool is_hidden = (m_record.integer(70, 0) & invisible) != 0;
  attribute.is_invisible = attribute.is_invisible || is_hidden;
  entities().push_back(std::move(attribute));
}

void Receiver::addMTextChunk(const std::string& text) {
  m_chunks += text;
}

void Receiver::addMText(const DL_MTextData& data) {
  Paragraphs text;
  text.at = {data.ipx, data.ipy};
  text.height = data.height;
  // Of the angle and the direction, the one that comes last counts.
  for (const Pair& pair : m_record.pairs) {
    if (pair.code == 50) text.rotation = radians(to_real(pair.value).value_or(0));
    if (pair.code == 21) text.rotation = std::atan2(data.diry, data.dirx);
  }
  text.width = data.width;
  text.spacing = data.lineSpacingFactor;
  text.attachment = data.attachmentPoint;
  text.style = m_model.styles.index(key(data.style));
  text.text = m_decoder.wide(m_chunks + data.text);
  add(text, false);
}

bool Receiver::has_own_block() const {
  const std::string* name = m_record.find(2);
  return name != nullptr && m_model.blocks.contains(key(*name));
}

void Receiver::add_dimension(const std::vector<Geometry>& parts) {
  if (!has_own_block()) {
    for (const Geometry& part : parts) add(part, false);
    return;
  }
  Insert insert;
  insert.block = m_model.blocks.index(key(*m_record.find(2)));
  // The block is drawn where it is, not moved to its base.
  insert.at = m_model.blocks[insert.block].base;
  add(insert, false);
}

DimensionStyle Receiver::style_of(const DL_DimensionData& data) const {
  const DimensionSizes& sizes = m_model.dimensions;
  const double scale = sizes.scale * (data.dimScale > 0 ? data.dimScale : 1.0);
  return {
      words(), {data.mpx, data.mpy}, sizes.text * scale, sizes.arrow * scale, data.linearFactor};
}

void Receiver::addDimAlign(const DL_DimensionData& data, const DL_DimAlignedData& own) {
  const Vertex first{own.epx1, own.epy1};
  const Vertex second{own.epx2, own.epy2};
  add_dimension(
      linear_dimension(first, second, {data.dpx, data.dpy}, angle(second - first), style_of(data)));
}

void Receiver::addDimLinear(const DL_DimensionData& data, const DL_DimLinearData& own) {
  add_dimension(linear_dimension({own.dpx1, own.dpy1}, {own.dpx2, own.dpy2}, {data.dpx, data.dpy},
                                 radians(own.angle), style_of(data)));
}

void Receiver::addDimRadial(const DL_DimensionData& data, const DL_DimRadialData& own) {
  add_dimension(round_dimension({data.dpx, data.dpy}, {own.dpx, own.dpy}, false, style_of(data)));
}

void Receiver::addDimDiametric(const DL_DimensionData& data, const DL_DimDiametricData& own) {
  add_dimension(round_dimension({data.dpx, data.dpy}, {own.dpx, own.dpy}, true, style_of(data)));
}

void Receiver::addDimAngular(const DL_DimensionData& data, const DL_DimAngular2LData& own) {
  const Vertex first{own.dpx2, own.dpy2};
  const Vertex second{data.dpx, data.dpy};
  const Vertex center = crossing({own.dpx1, own.dpy1}, first, {own.dpx3, own.dpy3}, second);
  add_dimension(angular_dimension(center, first, second, {own.dpx4, own.dpy4}, style_of(data)));
}

void Receiver::addDimAngular3P(const DL_DimensionData& data, const DL_DimAngular3PData& own) {
  add_dimension(angular_dimension({own.dpx3, own.dpy3}, {own.dpx1, own.dpy1}, {own.dpx2, own.dpy2},
                                  {data.dpx, data.dpy}, style_of(data)));
}

void Receiver::addDimOrdinate(const DL_DimensionData& data, const DL_DimOrdinateData& own) {
  const double value = own.xtype ? own.dpx1 - data.dpx : own.dpy1 - data.dpy;
  add_dimension(
      ordinate_dimension({own.dpx1, own.dpy1}, {own.dpx2, own.dpy2}, value, style_of(data)));
}

void Receiver::addLeader(const DL_LeaderData& data) {
  m_leader_has_arrow = data.arrowHeadFlag != 0;
  add(Polyline(), false);
  m_leader = &std::get<Polyline>(entities().back().geometry);
}

void Receiver::addLeaderVertex(const DL_LeaderVertexData& data) {
  if (m_leader == nullptr) return;
  m_leader->corners.push_back({{data.x, data.y}});
  if (m_leader->corners.size() != 2 || !m_leader_has_arrow) return;
  const Vertex tip = m_leader->corners[0].at;
  const Vertex next = m_leader->corners[1].at;
  Entity head = entities().back();
  const double size = m_model.dimensions.arrow * m_model.dimensions.scale;
  head.geometry = arrow(tip, tip - next, std::min(size, length(tip - next)));
  // Below its line, which stays the last one.
  entities().insert(entities().end() - 1, std::move(head));
  m_leader = &std::get<Polyline>(entities().back().geometry);
}

}  // namespace importers::dxf
