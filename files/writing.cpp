#include "files/writing_p.h"

#include <langinfo.h>

#include <cstring>

#include "displaylist/core/tags.h"
#include "files/layout_p.h"

namespace files {

std::uint32_t Writing::font_number(const LM_Font* font) {
  if (font == nullptr || font->data() == nullptr) return layout::kNone;
  return m_fonts.number_of(font->data());
}

std::uint32_t Writing::image_number(const LM_Image* image) {
  return image == nullptr ? layout::kNone : m_images.number_of(image);
}

std::uint32_t Writing::list_number(const DL::DisplayList* list) const {
  const auto found = m_list_numbers.find(list);
  return found == m_list_numbers.end() ? layout::kNone : found->second;
}

void Writing::add_list(const DL::DisplayList& list) {
  m_list_numbers.emplace(&list, static_cast<std::uint32_t>(m_list_numbers.size()));
}

std::string Writing::character_set() const {
  return m_has_character_set ? nl_langinfo(CODESET) : "";
}

int Writing::index_of(const LM_Rendition* rendition) {
  if (rendition == nullptr) return -1;
  const std::uint32_t number = m_renditions.number_of(rendition);
  return number < m_indices.size() ? m_indices[number] : -1;
}

void Writing::choose_indices(const std::unordered_set<std::uint32_t>& taken_words) {
  std::uint32_t index = 0;
  for (std::size_t i = 0; i < renditions().size(); ++i) {
    while (taken_words.contains(index)) ++index;
    m_indices.push_back(static_cast<std::int32_t>(index++));
  }
}

void ScanStream::write(const void* buffer, std::int32_t size) {
  std::uint32_t word = 0;
  if (size == static_cast<std::int32_t>(sizeof word)) std::memcpy(&word, buffer, sizeof word);
  if (m_follows_tag) m_words.insert(word);
  m_follows_tag = word == DL::tag::kColor;
}

void ScanStream::read(void*, std::int32_t* size) {
  *size = 0;
}

}  // namespace files
