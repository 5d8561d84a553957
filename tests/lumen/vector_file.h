#pragma once

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "displaylist/platform/renderer.h"
#include "displaylist/platform/rendition.h"
#include "lumen/png_file.h"
#include "lumen/vector_device.h"
#include "tests/support/temporary_folder.h"

/// Files that a vector device writes, for tests.
namespace vector_file {

inline std::string content_of(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// What a test draws, through the table of any renderer.
using Drawing = std::function<void(const LM_Device_Actions&, LM_Rendition&)>;

/// Draws in black; returns what finish() says.
inline std::string write(lumen::VectorFormat format, std::int32_t width, std::int32_t height,
                         const std::string& path, const Drawing& drawing) {
  lumen::VectorDevice device(format, width, height, path);
  LM_Rendition rendition;
  drawing(device.actions, rendition);
  return device.finish();
}

/// The text of an SVG; empty when it could not be written.
inline std::string svg_of(std::int32_t width, std::int32_t height, const Drawing& drawing) {
  const TemporaryFolder folder;
  const std::string path = folder.path("a.svg");
  const std::string problem = write(lumen::VectorFormat::svg, width, height, path, drawing);
  return problem.empty() ? content_of(path) : std::string();
}

/// How often one text is in another.
inline int count_of(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

/// The file as other people's programs show it, a pixel per unit, on white.
inline lumen::Picture shown(lumen::VectorFormat format, const std::string& path) {
  const std::string root = path + "-shown";
  const std::string command =
      format == lumen::VectorFormat::svg
          ? "rsvg-convert --background-color=white -o '" + root + ".png' '" + path + "'"
          : "pdftocairo -r 96 -png -singlefile '" + path + "' '" + root + "'";
  if (std::system(command.c_str()) != 0) return {};
  return lumen::read_png(root + ".png");
}

}  // namespace vector_file
