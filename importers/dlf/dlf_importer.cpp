// Files that keep a display list.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <utility>

#include "files/drawing_file.h"
#include "importers/drawing_file.h"
#include "importers/importer.h"

namespace importers::dlf {

namespace {

/// Whether the name ends in .dlf, in letters of any case.
bool has_its_ending(const std::string& path) {
  std::string ending = std::filesystem::path(path).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending == ".dlf";
}

class DlfImporter final : public Importer {
 public:
  [[nodiscard]] const char* name() const override { return "dlf"; }
  [[nodiscard]] const char* description() const override {
    return "display lists as `dlview convert` writes them";
  }
  [[nodiscard]] Match can_read(const std::string& path) const override {
    return files::is_drawing_file(path) || has_its_ending(path) ? Match::exact : Match::none;
  }
  [[nodiscard]] std::string read(const std::string& path, const ReadOptions& options,
                                 Drawing& drawing) const override;
};

std::string DlfImporter::read(const std::string& path, const ReadOptions& options,
                              Drawing& drawing) const {
  if (!options.layers.empty()) {
    return "cannot read '" + path +
           "': a .dlf keeps its layers in one picture; convert the layers wanted alone";
  }
  files::Contents contents;
  std::string problem = files::read_file(path, {}, contents);
  if (!problem.empty()) return problem;
  problem = take_over(std::move(contents), drawing);
  return problem.empty() ? problem : "the drawing '" + path + "' " + problem;
}

}  // namespace

}  // namespace importers::dlf

DISPLAYLIST_IMPORTER_MODULE(importers::dlf::DlfImporter)
