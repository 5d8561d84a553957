#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "displaylist/platform/string.h"

/// The named options of a renderer, each a string of bytes. Filled before the
/// renderer is used, then read from any thread.
class LM_Option_Table {
 public:
  using Value = std::vector<std::uint8_t>;

  /// Sets an option, in place of the value that it had.
  void set(const LM_String& name, Value value) {
    for (auto& [key, old] : m_options) {
      if (key == name) {
        old = std::move(value);
        return;
      }
    }
    m_options.emplace_back(name, std::move(value));
  }

  /// The bytes of an option, or null when there is none of that name. Valid
  /// until the table changes.
  [[nodiscard]] const Value* find(const LM_String& name) const {
    for (const auto& [key, value] : m_options) {
      if (key == name) return &value;
    }
    return nullptr;
  }

 private:
  std::vector<std::pair<LM_String, Value>> m_options;
};

/// The option whose first byte is 1 in renderers that look for what is drawn
/// instead of drawing it.
inline constexpr std::string_view LM_IS_SELECTOR = "Is Selector";
