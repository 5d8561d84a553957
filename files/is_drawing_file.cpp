#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "files/drawing_file.h"
#include "files/layout_p.h"

namespace files {

bool is_drawing_file(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  std::array<char, sizeof layout::kMagic> start{};
  stream.read(start.data(), start.size());
  return stream && std::equal(start.begin(), start.end(), std::begin(layout::kMagic),
                              [](char byte, unsigned char magic) {
                                return static_cast<unsigned char>(byte) == magic;
                              });
}

}  // namespace files
