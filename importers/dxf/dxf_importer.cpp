// Reads DXF drawings as drawings: colours, line types, texts, blocks.

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <optional>

#include "importers/dxf/composer.h"
#include "importers/dxf/filler.h"
#include "importers/dxf/pairs.h"
#include "importers/dxf/reader.h"
#include "importers/dxf/remarks.h"
#include "importers/dxf/strings.h"
#include "importers/importer.h"

namespace importers::dxf {

namespace {

class DxfImporter final : public Importer {
 public:
  [[nodiscard]] const char* name() const override { return "dxf"; }
  [[nodiscard]] const char* description() const override {
    return "DXF with its colours, line types, texts and blocks";
  }
  [[nodiscard]] Match can_read(const std::string& path) const override;
  [[nodiscard]] std::string read(const std::string& path, const ReadOptions& options,
                                 Drawing& drawing) const override;
};

std::string failure(const std::string& path, const std::string& reason) {
  return "cannot read '" + path + "': " + reason;
}

/// Asks the caller whether to go on, and tells how far it is.
class ProgressTeller {
 public:
  ProgressTeller(const ReadOptions& options, std::istream& stream, const std::string& path)
      : m_options(options), m_stream(stream) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    m_size = error ? 0.0 : static_cast<double>(size);
  }

  bool operator()(std::size_t records) const {
    if (!m_options.progress) return true;
    Progress progress{records, {}};
    if (m_size > 0) progress.fraction = static_cast<double>(m_stream.tellg()) / m_size;
    return m_options.progress(progress);
  }

 private:
  const ReadOptions& m_options;
  std::istream& m_stream;
  double m_size = 0.0;
};

std::string read_model(std::istream& stream, Model& model, const ProgressTeller& progress) {
  try {
    return dxf::read(stream, model, progress);
  } catch (const std::ios_base::failure&) {
    return "it cannot be read to its end; check the path";
  }
}

std::string names_of(const std::vector<Layer>& layers) {
  constexpr std::size_t most_names = 20;
  std::string names;
  for (std::size_t i = 0; i < std::min(layers.size(), most_names); ++i) {
    names += (names.empty() ? "'" : ", '") + in_one_line(layers[i].name) + "'";
  }
  if (layers.size() <= most_names) return names;
  return names + " and " + std::to_string(layers.size() - most_names) + " more";
}

/// Adds the indices of the layers that the options name. Returns a name that no
/// layer has, if there is one.
std::optional<std::string> choose_layers(Model& model, const ReadOptions& options,
                                         std::set<std::size_t>& chosen) {
  for (const std::string& name : options.layers) {
    const std::string key = upper_case(trimmed(name));
    if (!model.layers.contains(key)) return name;
    chosen.insert(model.layers.index(key));
  }
  return {};
}

Match DxfImporter::can_read(const std::string& path) const {
  std::string ending = std::filesystem::path(path).extension();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending == ".dxf" ? Match::exact : Match::none;
}

std::string nothing_drawn(const std::string& path, const Drawing& drawing) {
  std::string sentence = "the drawing '" + path + "' has nothing to draw";
  if (drawing.unusable_points > 0) {
    return sentence + " whose coordinates are finite and within 1e15; repair them";
  }
  if (!drawing.remarks.empty()) return sentence + " (" + drawing.remarks + ")";
  return sentence + "; choose a file with lines, areas or texts";
}

/// Draws the model space or, where that is empty, the paper space.
std::string draw(const std::string& path, const Model& model, const ReadOptions& options,
                 const std::set<std::size_t>& chosen, Drawing& drawing) {
  Composer composer(model, options, chosen);
  Plan plan = composer.compose(false);
  const bool is_paper = plan.shapes.empty();
  if (is_paper) plan = composer.compose(true);
  LeftOut left_out = composer.left_out();
  if (!is_paper) left_out.paper = paper_entities(model);
  Filler filler(drawing, options.point_size);
  if (!plan.shapes.empty()) filler.fill(plan);
  left_out.too_many += filler.too_many();
  drawing.remarks = remarks(model, left_out, plan.shapes.empty());
  if (plan.shapes.empty()) return nothing_drawn(path, drawing);
  for (const std::size_t layer : composer.layers()) {
    drawing.layers.push_back(model.layers[layer].name);
  }
  if (!filler.is_out_of_memory()) return {};
  return "the drawing '" + path + "' needs more memory than there is; read fewer layers";
}

std::string DxfImporter::read(const std::string& path, const ReadOptions& options,
                              Drawing& drawing) const {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return failure(path, "it cannot be opened; check the path");
  Model model;
  const std::string problem = read_model(stream, model, ProgressTeller(options, stream, path));
  if (!problem.empty()) return failure(path, problem);
  drawing.features = model.records;
  drawing.unusable_points = model.unusable;
  drawing.first_unusable = model.first_unusable;
  std::set<std::size_t> chosen;
  const std::optional<std::string> missing = choose_layers(model, options, chosen);
  if (missing) {
    return failure(
        path, "it has no layer '" + *missing + "'; choose from " + names_of(model.layers.items()));
  }
  return draw(path, model, options, chosen, drawing);
}

}  // namespace

}  // namespace importers::dxf

DISPLAYLIST_IMPORTER_MODULE(importers::dxf::DxfImporter)
