#include "lumen/text/font_set_p.h"

#include <functional>
#include <mutex>
#include <unordered_map>
#include <unordered_set>

#include "lumen/text/missing_fonts_p.h"

namespace lumen {
namespace {

struct DescriptionHash {
  std::size_t operator()(const LM_Font_Description& description) const {
    std::size_t hash = std::hash<std::wstring>()(description.name);
    for (const std::int64_t value :
         {std::int64_t{description.bold}, std::int64_t{description.italic},
          std::int64_t{description.weight}, std::int64_t{description.width},
          std::int64_t{description.character}, std::int64_t{description.given}}) {
      hash = hash * 31 + std::hash<std::int64_t>()(value);
    }
    return hash;
  }
};

/// All fonts that were ever asked for. Fontconfig is called under its lock only.
struct Registry {
  std::mutex mutex;
  std::unordered_map<LM_Font_Description, const FontSet*, DescriptionHash> sets;
  std::vector<std::pair<FaceSource, const FontFace*>> faces;
  std::unordered_set<std::string> missing_names;
};

/// Not deleted at the end of the process, when other threads may still draw.
Registry& registry() {
  static Registry& instance = *new Registry;
  return instance;
}

/// The face, opened once for all sets. Called under the lock.
const FontFace* shared_face(const FaceSource& source) {
  auto& faces = registry().faces;
  for (const auto& [known, face] : faces) {
    if (known == source) return face;
  }
  return faces.emplace_back(source, new FontFace(source)).second;
}

}  // namespace

FontSet::FontSet(const LM_Font_Description& description)
    : m_font(description), m_search(description) {
  const auto found = m_search.best();
  if (!found) return;
  m_family = found->family;
  m_face = shared_face(found->source);
}

std::string FontSet::missing_name() const {
  return m_search.is_name_missing() ? m_search.name() : std::string();
}

const FontFace* FontSet::face_with(char32_t character) const {
  if (m_face == nullptr || m_face->glyph_of(character) != 0) return m_face;
  const std::lock_guard lock(registry().mutex);
  const auto number = m_search.substitute_with(character);
  if (!number) return nullptr;
  if (*number >= m_substitutes.size()) m_substitutes.resize(*number + 1);
  const FontFace*& face = m_substitutes[*number];
  if (face == nullptr) face = shared_face(m_search.substitute(*number));
  return face->glyph_of(character) != 0 ? face : nullptr;
}

const FontSet& font_set(const LM_Font_Description& description) {
  std::string missing;
  const FontSet* set = nullptr;
  {
    const std::lock_guard lock(registry().mutex);
    const FontSet*& place = registry().sets[description];
    if (place == nullptr) {
      place = new FontSet(description);
      missing = place->missing_name();
      if (!missing.empty() && !registry().missing_names.insert(missing).second) missing.clear();
    }
    set = place;
  }
  // Without the lock: who is told may draw text.
  if (!missing.empty()) tell_missing_font(missing, set->family());
  return *set;
}

const FontSet& font_set(const LM_Font& font) {
  static const LM_Font_Description usual;
  return font_set(font.data() != nullptr ? font.data()->description() : usual);
}

}  // namespace lumen
