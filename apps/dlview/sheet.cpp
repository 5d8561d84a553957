#include "apps/dlview/sheet.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "apps/dlview/color.h"
#include "lumen/picture.h"
#include "lumen/png_file.h"
#include "lumen/raster_device.h"
#include "lumen/vector_device.h"

namespace dlview {

namespace {

class PngSheet final : public Sheet {
 public:
  PngSheet(const std::string& path, const PictureSize& size, bool antialiased)
      : m_path(path),
        m_picture(size.width, size.height, white),
        m_device(LM_Create<lumen::RasterDevice>(m_picture)) {
    m_device->set_antialiased(antialiased);
  }

  [[nodiscard]] bool is_held() const { return !m_picture.is_empty(); }
  [[nodiscard]] LM_Handle<LM_Renderer> renderer() override { return m_device; }

 private:
  [[nodiscard]] std::string write_file() override { return lumen::write_png(m_picture, m_path); }

  std::string m_path;
  lumen::Picture m_picture;
  LM_Handle<lumen::RasterDevice> m_device;
};

class VectorSheet final : public Sheet {
 public:
  VectorSheet(lumen::VectorFormat format, const std::string& path, const PictureSize& size)
      : m_device(LM_Create<lumen::VectorDevice>(format, size.width, size.height, path)) {}

  [[nodiscard]] LM_Handle<LM_Renderer> renderer() override { return m_device; }

 private:
  [[nodiscard]] std::string write_file() override { return m_device->finish(); }

  LM_Handle<lumen::VectorDevice> m_device;
};

using Maker = std::unique_ptr<Sheet> (*)(const std::string&, const PictureSize&, bool);

std::unique_ptr<Sheet> make_png(const std::string& path, const PictureSize& size,
                                bool antialiased) {
  auto sheet = std::make_unique<PngSheet>(path, size, antialiased);
  if (!sheet->is_held()) return nullptr;
  return sheet;
}

template <lumen::VectorFormat Format>
std::unique_ptr<Sheet> make_vector(const std::string& path, const PictureSize& size,
                                   bool /*antialiased*/) {
  return std::make_unique<VectorSheet>(Format, path, size);
}

struct Format {
  std::string_view ending;
  Maker make;
};

constexpr std::array<Format, 3> formats{{{".png", &make_png},
                                         {".pdf", &make_vector<lumen::VectorFormat::pdf>},
                                         {".svg", &make_vector<lumen::VectorFormat::svg>}}};

const Format* format_of(const std::string& path) {
  const std::string ending = ending_of(path);
  const auto* format = std::find_if(formats.begin(), formats.end(),
                                    [&](const Format& f) { return f.ending == ending; });
  return format == formats.end() ? nullptr : format;
}

}  // namespace

std::string Sheet::write() {
  const std::string problem = write_file();
  return problem.empty() ? problem : problem + "; choose another name or folder";
}

FileKind picture_files() {
  FileKind kind{"pictures", {}};
  for (const Format& format : formats) kind.endings.emplace_back(format.ending);
  return kind;
}

std::unique_ptr<Sheet> make_sheet(const std::string& path, const PictureSize& size,
                                  bool antialiased) {
  return format_of(path)->make(path, size, antialiased);
}

}  // namespace dlview
