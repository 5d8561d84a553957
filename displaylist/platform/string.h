#pragma once

#include <string>
#include <string_view>

/// A string of the rendering library: the name of an option.
class LM_String {
 public:
  LM_String(std::string_view text) : m_text(text) {}

  [[nodiscard]] std::string_view text() const { return m_text; }
  friend bool operator==(const LM_String&, const LM_String&) = default;

 private:
  std::string m_text;
};
