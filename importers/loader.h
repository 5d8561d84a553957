#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "importers/importer.h"

namespace importers {

/// The folders in which modules are looked for: the one that the environment
/// variable DISPLAYLIST_IMPORTERS names, else those that belong to the running
/// program, in its build tree and where it is installed.
std::vector<std::filesystem::path> module_folders();

/// The importers of all modules in the first of the folders that has any, by
/// file name. Modules stay loaded until the program ends. What cannot be
/// loaded is told in `*problems`, which may be null.
std::vector<const Importer*> load_importers(const std::vector<std::filesystem::path>& folders,
                                            std::vector<std::string>* problems = nullptr);

/// The names of the importers that there are, in the same order.
std::vector<std::string> importer_names();

/// Reads a file with the importer that the options name or, where they name
/// none, the one that fits it best. Empty on success, else one sentence that
/// names the file and the mend.
[[nodiscard]] std::string read_drawing(const std::string& path, const ReadOptions& options,
                                       Drawing& drawing);

}  // namespace importers
