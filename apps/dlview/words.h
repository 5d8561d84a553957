#pragma once

#include <string>
#include <vector>

namespace dlview {

/// "a, b or c"
inline std::string alternatives(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    if (!text.empty()) text += &word == &words.back() ? " or " : ", ";
    text += word;
  }
  return text;
}

}  // namespace dlview
