// Every drawable class in every variant as PNG, SVG and PDF, and a chart of
// 100,000 polydots with markers:
//
//     gallery [FOLDER [IMAGE.png]]
//
// The files go to FOLDER; IMAGE.png is what the image drawables show.

#include <cstdio>
#include <filesystem>
#include <string>

#include "lumen/picture_image.h"
#include "lumen/png_file.h"
#include "lumen/raster_device.h"
#include "lumen/vector_device.h"
#include "scenes/chart.h"
#include "scenes/gallery.h"

namespace {

using scenes::Sheet;

/// Tells a problem; whether there was none.
bool is_fine(const std::string& problem) {
  if (!problem.empty()) std::fprintf(stderr, "gallery: %s\n", problem.c_str());
  return problem.empty();
}

bool write_raster(Sheet& sheet, std::int32_t width, std::int32_t height, const std::string& path) {
  lumen::Picture picture(width, height);
  const auto device = LM_Create<lumen::RasterDevice>(picture);
  device->set_antialiased(true);
  sheet.draw(device, width, height);
  return is_fine(lumen::write_png(picture, path));
}

bool write_vectors(Sheet& sheet, std::int32_t width, std::int32_t height, const std::string& path,
                   lumen::VectorFormat format) {
  const auto device = LM_Create<lumen::VectorDevice>(format, width, height, path);
  sheet.draw(device, width, height);
  return is_fine(device->finish());
}

bool write_gallery(const std::string& folder, const LM_Handle<LM_Image>& image) {
  const auto sheet = scenes::make_gallery(image);
  const std::string name = folder + "/gallery";
  constexpr std::int32_t width = scenes::kGalleryWidth;
  constexpr std::int32_t height = scenes::kGalleryHeight;
  return write_raster(*sheet, width, height, name + ".png") &&
         write_vectors(*sheet, width, height, name + ".svg", lumen::VectorFormat::svg) &&
         write_vectors(*sheet, width, height, name + ".pdf", lumen::VectorFormat::pdf);
}

bool write_chart(const std::string& folder) {
  const auto sheet = scenes::make_chart(100'000, 1);
  return write_raster(*sheet, scenes::kChartWidth, scenes::kChartHeight, folder + "/chart.png");
}

}  // namespace

int main(int count, char** arguments) {
  const std::string folder = count > 1 ? arguments[1] : ".";
  LM_Handle<LM_Image> image;
  if (count > 2) {
    std::string problem;
    lumen::Picture picture = lumen::read_png(arguments[2], &problem);
    if (!is_fine(problem)) return 1;
    image = LM_Create<lumen::PictureImage>(std::move(picture));
  }
  return write_gallery(folder, image) && write_chart(folder) ? 0 : 1;
}
