#include "lumen/text/text_cache_p.h"

#include <functional>

namespace lumen {
namespace {

/// What one generation holds: characters, and a few more for each text.
constexpr std::size_t room = 1 << 16;
constexpr std::size_t room_of_any_text = 16;

}  // namespace

std::size_t TextCache::Hash::hash(const FontSet* fonts, const TextCharacters& text) {
  std::size_t hash = std::hash<const FontSet*>()(fonts);
  for (const std::uint32_t value : text.values()) {
    hash = (hash ^ value) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 29;
  }
  return hash;
}

const TextRun* TextCache::find(const FontSet& fonts, const TextCharacters& text) {
  const Question question{&fonts, text};
  if (const auto found = m_young.find(question); found != m_young.end()) return &found->second;
  const auto found = m_old.find(question);
  if (found == m_old.end()) return nullptr;
  auto node = m_old.extract(found);
  take_room_for(text);
  return &m_young.insert(std::move(node)).position->second;
}

const TextRun& TextCache::put(const FontSet& fonts, const TextCharacters& text, TextRun&& run) {
  take_room_for(text);
  return m_young.try_emplace({&fonts, text}, std::move(run)).first->second;
}

void TextCache::take_room_for(const TextCharacters& text) {
  const std::size_t needed = text.size() + room_of_any_text;
  if (m_room_taken + needed > room) {
    m_old.swap(m_young);
    m_young.clear();
    m_room_taken = 0;
  }
  m_room_taken += needed;
}

}  // namespace lumen
