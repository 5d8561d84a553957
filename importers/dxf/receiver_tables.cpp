// What entities refer to by name: layers, line types, text styles, blocks.

#include "importers/dxf/colors.h"
#include "importers/dxf/fonts.h"
#include "importers/dxf/receiver.h"

namespace importers::dxf {

std::string Receiver::key(const std::string& name) const {
  return upper_case(trimmed(m_decoder.name(name)));
}

std::size_t Receiver::layer_index(const std::string& name) {
  const std::size_t index = m_model.layers.index(key(name));
  Layer& layer = m_model.layers[index];
  if (layer.name.empty()) layer.name = trimmed(m_decoder.name(name));
  return index;
}

std::size_t Receiver::line_type_index(const std::string& name) {
  const std::size_t index = m_model.line_types.index(key(name));
  m_model.line_types[index].name = key(name);
  return index;
}

void Receiver::addLayer(const DL_LayerData& data) {
  constexpr int frozen = 1;
  Layer& layer = m_model.layers[layer_index(data.name)];
  layer.color = entity_color(m_record.integer(62, 7), m_record.integer(420, -1));
  layer.line_type = line_type_index(attributes.getLinetype());
  layer.is_frozen = (data.flags & frozen) != 0;
  layer.is_off = data.off || m_record.integer(62, 7) < 0;
}

void Receiver::addLinetypeDash(double length) {
  m_dashes.push_back(length);
}

void Receiver::addLinetype(const DL_LinetypeData& data) {
  m_model.line_types[line_type_index(data.name)].dashes = m_dashes;
}

void Receiver::addTextStyle(const DL_StyleData& data) {
  TextStyle& style = m_model.styles[m_model.styles.index(key(data.name))];
  style.font = font_of_file(m_decoder.wide(data.primaryFontFile));
  if (data.widthFactor > 0) style.width_factor = data.widthFactor;
  style.height = data.fixedTextHeight;
}

void Receiver::addBlock(const DL_BlockData& data) {
  m_block = m_model.blocks.index(key(data.name));
  m_model.blocks[*m_block] = {m_decoder.name(data.name), {data.bpx, data.bpy}, {}};
}

void Receiver::endBlock() {
  end_block();
}

}  // namespace importers::dxf
