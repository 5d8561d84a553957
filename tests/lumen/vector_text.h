#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

#include "lumen/raster_device.h"
#include "tests/lumen/vector_file.h"

/// Texts that a vector device writes, for tests.
namespace vector_text {

/// What a test draws, on any renderer.
using Drawing = std::function<void(LM_Renderer&, LM_Rendition&)>;

constexpr std::int32_t width = 300;
constexpr std::int32_t height = 120;

/// Draws in black at size 20; returns what finish() says.
inline std::string write(lumen::VectorFormat format, const std::string& path,
                         const Drawing& drawing) {
  lumen::VectorDevice device(format, width, height, path);
  LM_Rendition rendition;
  rendition.set_text_size(20);
  drawing(device, rendition);
  return device.finish();
}

inline lumen::Picture rastered(const Drawing& drawing) {
  lumen::Picture picture(width, height);
  lumen::RasterDevice device(picture);
  device.set_antialiased(true);
  LM_Rendition rendition;
  rendition.set_text_size(20);
  drawing(device, rendition);
  return picture;
}

/// The text of an SVG; empty when it could not be written.
inline std::string svg_of(const Drawing& drawing) {
  const TemporaryFolder folder;
  const std::string path = folder.path("a.svg");
  const std::string problem = write(lumen::VectorFormat::svg, path, drawing);
  return problem.empty() ? vector_file::content_of(path) : std::string();
}

/// A picture a quarter as large.
inline lumen::Picture reduced(const lumen::Picture& picture) {
  lumen::Picture result(picture.width() / 4, picture.height() / 4);
  for (std::int32_t y = 0; y < result.height(); ++y) {
    for (std::int32_t x = 0; x < result.width(); ++x) {
      std::uint32_t sums[3] = {};
      for (std::int32_t i = 0; i < 16; ++i) {
        const std::uint32_t word = picture.pixel(4 * x + i % 4, 4 * y + i / 4).word;
        for (int channel = 0; channel < 3; ++channel) sums[channel] += word >> 8 * channel & 0xFF;
      }
      result.row(y)[x] = sums[0] / 16 | sums[1] / 16 << 8 | sums[2] / 16 << 16;
    }
  }
  return result;
}

/// The file as other people's programs show it, a pixel per unit, on white. The
/// one for PDF has letters start at whole pixels: it is asked for smaller ones.
inline lumen::Picture shown(lumen::VectorFormat format, const std::string& path) {
  if (format == lumen::VectorFormat::svg) return vector_file::shown(format, path);
  const std::string root = path + "-shown";
  const std::string command = "pdftocairo -r 384 -png -singlefile '" + path + "' '" + root + "'";
  if (std::system(command.c_str()) != 0) return {};
  return reduced(lumen::read_png(root + ".png"));
}

/// What a command prints.
inline std::string output_of(const std::string& command) {
  std::string output;
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return output;
  for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) {
    output += static_cast<char>(byte);
  }
  pclose(pipe);
  return output;
}

/// What `tool` tells about a PDF: "pdftotext", "pdffonts".
inline std::string told_of_pdf(const std::string& tool, const Drawing& drawing) {
  const TemporaryFolder folder;
  const std::string path = folder.path("a.pdf");
  if (!write(lumen::VectorFormat::pdf, path, drawing).empty()) return "not written";
  return output_of(tool + " '" + path + "'" + (tool == "pdftotext" ? " -" : ""));
}

/// All of a text.
inline void draw(LM_Renderer& renderer, LM_Rendition& rendition, std::int32_t x, std::int32_t y,
                 const std::wstring& text) {
  renderer.draw_text(&rendition, {x, y, 0}, text.c_str(), INT32_MAX);
}

inline LM_Font font_of(const std::wstring& name, bool bold = false, bool italic = false) {
  LM_Font_Description description;
  description.name = name;
  description.bold = bold ? 1 : 0;
  description.italic = italic ? 1 : 0;
  description.given =
      LM_Font_Description::NAME | LM_Font_Description::BOLD | LM_Font_Description::ITALIC;
  return LM_Font(description);
}

}  // namespace vector_text
