#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumen {

/// A string as Unicode characters. Kept per thread: it allocates only while it
/// grows.
class TextCharacters {
 public:
  /// Stands for characters that control: it has neither ink nor room, and joins
  /// no letters.
  static constexpr char32_t no_room = 0x200B;

  /// Takes `count` UTF-16 code units, or up to a zero, each of them a character
  /// of the string that widths are told for.
  void assign(const wchar_t* text, std::int32_t count);
  /// The same with multibyte characters of the locale.
  void assign(const unsigned char* text, std::int32_t count);

  [[nodiscard]] std::size_t size() const { return m_values.size(); }
  /// What is to be shown: characters that control take no ink and no room, but
  /// a tab is a blank.
  [[nodiscard]] const std::vector<std::uint32_t>& values() const { return m_values; }
  /// Which character of the string the i-th one starts at, and that the string
  /// ends at for i = size().
  [[nodiscard]] std::int32_t place(std::size_t i) const { return m_places[i]; }
  /// How many characters the string has.
  [[nodiscard]] std::int32_t string_length() const { return m_places.back(); }

  friend bool operator==(const TextCharacters&, const TextCharacters&) = default;

 private:
  void clear();
  void add(char32_t value, std::int32_t place);

  std::vector<std::uint32_t> m_values;
  std::vector<std::int32_t> m_places{0};
};

}  // namespace lumen
