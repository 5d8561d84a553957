#include "files/word_renditions_p.h"

#include <algorithm>
#include <functional>
#include <type_traits>

namespace files {
namespace {

/// What all of them share. Nobody changes it: a handle that is changed gets a
/// state of its own.
const LM_Rendition& shared_state() {
  static const LM_Rendition state;
  return state;
}

}  // namespace

LM_Rendition* WordRenditions::add(LM_RGB32 color) {
  constexpr std::size_t first_block = 16;
  if (m_blocks.empty() || m_blocks.back().size() == m_blocks.back().capacity()) {
    const std::size_t size = m_blocks.empty() ? first_block : 2 * m_blocks.back().capacity();
    m_blocks.emplace_back().reserve(size);
  }
  return &m_blocks.back().emplace_back(Entry{shared_state(), color}).rendition;
}

bool WordRenditions::hold(const LM_Rendition* rendition) const {
  const void* address = rendition;
  const std::less<> before;
  return std::any_of(m_blocks.begin(), m_blocks.end(), [&](const std::vector<Entry>& block) {
    return !before(address, static_cast<const void*>(block.data())) &&
           before(address, static_cast<const void*>(block.data() + block.size()));
  });
}

LM_RGB32 WordRenditions::color_of(const LM_Rendition& rendition) {
  static_assert(std::is_standard_layout_v<Entry>);
  if (!rendition.shares_data_with(shared_state())) return rendition.color();
  return reinterpret_cast<const Entry&>(rendition).color;
}

}  // namespace files
