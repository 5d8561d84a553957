#include "importers/loader.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include "importers/input_file.h"

namespace importers {

namespace fs = std::filesystem;

namespace {

/// The modules of a folder, by file name.
std::vector<fs::path> modules_in(const fs::path& folder) {
  std::vector<fs::path> modules;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".so") modules.push_back(entry.path());
  }
  std::sort(modules.begin(), modules.end());
  return modules;
}

const Importer* load(const fs::path& module, std::vector<std::string>* problems) {
  void* library = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* entry = library == nullptr ? nullptr : dlsym(library, module_entry_name);
  if (entry != nullptr) return reinterpret_cast<ModuleEntry>(entry)();
  if (problems != nullptr) problems->emplace_back(dlerror());
  return nullptr;
}

const Importer* best_match(const std::vector<const Importer*>& importers, const std::string& path) {
  const Importer* best = nullptr;
  Match best_match = Match::none;
  for (const Importer* importer : importers) {
    const Match match = importer->can_read(path);
    if (match <= best_match) continue;
    best = importer;
    best_match = match;
  }
  return best;
}

const Importer* named(const std::vector<const Importer*>& importers, const std::string& name) {
  const auto found = std::find_if(importers.begin(), importers.end(),
                                  [&](const Importer* i) { return i->name() == name; });
  return found == importers.end() ? nullptr : *found;
}

std::string unknown_importer(const std::vector<const Importer*>& importers, const std::string& path,
                             const std::string& name) {
  std::string names;
  for (const Importer* importer : importers) {
    names += (names.empty() ? "'" : ", '") + std::string(importer->name()) + "'";
  }
  return "cannot read '" + path + "': there is no importer '" + name + "'; choose from " + names;
}

std::string no_importer(const std::string& path, const std::vector<std::string>& problems) {
  const std::string problem = problems.empty() ? "there is none" : problems.front();
  return "cannot read '" + path + "': no importer could be loaded (" + problem +
         "); install the importers or name their folder in DISPLAYLIST_IMPORTERS";
}

}  // namespace

std::vector<fs::path> module_folders() {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here changes the environment
  if (const char* named = std::getenv("DISPLAYLIST_IMPORTERS")) return {named};
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const fs::path folder = program.parent_path();
  return {folder / IMPORTERS_FROM_BINDIR, folder / "../lib/displaylist/importers"};
}

std::vector<const Importer*> load_importers(const std::vector<fs::path>& folders,
                                            std::vector<std::string>* problems) {
  std::vector<const Importer*> importers;
  for (const fs::path& folder : folders) {
    for (const fs::path& module : modules_in(folder)) {
      const Importer* importer = load(module, problems);
      if (importer != nullptr) importers.push_back(importer);
    }
    if (!importers.empty()) break;
  }
  return importers;
}

std::vector<std::string> importer_names() {
  std::vector<std::string> names;
  for (const Importer* importer : load_importers(module_folders())) {
    names.emplace_back(importer->name());
  }
  return names;
}

std::string read_drawing(const std::string& path, const ReadOptions& options, Drawing& drawing) {
  std::string problem = check_input(path);
  if (!problem.empty()) return problem;
  std::vector<std::string> problems;
  const std::vector<const Importer*> importers = load_importers(module_folders(), &problems);
  if (importers.empty()) return no_importer(path, problems);
  const bool is_named = !options.importer.empty();
  const Importer* importer =
      is_named ? named(importers, options.importer) : best_match(importers, path);
  if (importer == nullptr && is_named) return unknown_importer(importers, path, options.importer);
  if (importer == nullptr) {
    return "cannot read '" + path +
           "': no importer knows this kind of file; convert it to GeoJSON, GeoPackage or DXF";
  }
  return importer->read(path, options, drawing);
}

}  // namespace importers
