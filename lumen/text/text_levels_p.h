#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumen {

/// In which direction each character of a text runs: the embedding levels of
/// the Unicode bidirectional algorithm, odd ones from right to left. Kept per
/// thread.
class TextLevels {
 public:
  /// Takes a text of one paragraph, whose direction is that of its first letter.
  void assign(const std::vector<std::uint32_t>& text);
  [[nodiscard]] std::uint8_t operator[](std::size_t i) const { return m_levels[i]; }

 private:
  void find_levels(const std::vector<std::uint32_t>& text);

  std::vector<std::uint8_t> m_levels;
  std::vector<std::uint32_t> m_types;
  std::vector<std::uint32_t> m_brackets;
  std::vector<signed char> m_found;
};

}  // namespace lumen
