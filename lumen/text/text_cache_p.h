#pragma once

#include <cstddef>
#include <unordered_map>

#include "lumen/text/font_set_p.h"
#include "lumen/text/text_characters_p.h"
#include "lumen/text/text_run_p.h"

namespace lumen {

/// The texts that were set last, so that the same labels are not shaped for
/// each picture anew. Kept per thread, some 6 MB at most: two generations, of
/// which the older one is dropped when the younger one is full. What is used
/// stays.
class TextCache {
 public:
  /// A text that is longer than that is not kept.
  static constexpr std::size_t longest = 4096;

  /// The run, or null for one that is not here. Valid until the next `put`.
  [[nodiscard]] const TextRun* find(const FontSet& fonts, const TextCharacters& text);
  /// Keeps a run that is not here yet.
  const TextRun& put(const FontSet& fonts, const TextCharacters& text, TextRun&& run);

 private:
  struct Key {
    const FontSet* fonts;
    TextCharacters text;
  };
  /// The same without a text of its own.
  struct Question {
    const FontSet* fonts;
    const TextCharacters& text;
  };
  struct Hash {
    using is_transparent = void;
    template <class T>
    std::size_t operator()(const T& key) const {
      return hash(key.fonts, key.text);
    }
    static std::size_t hash(const FontSet* fonts, const TextCharacters& text);
  };
  struct Equal {
    using is_transparent = void;
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
      return a.fonts == b.fonts && a.text == b.text;
    }
  };
  using Runs = std::unordered_map<Key, TextRun, Hash, Equal>;

  /// Makes room for a text in the younger generation.
  void take_room_for(const TextCharacters& text);

  Runs m_young;
  Runs m_old;
  std::size_t m_room_taken = 0;  ///< in the younger generation
};

}  // namespace lumen
