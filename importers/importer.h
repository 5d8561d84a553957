#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "displaylist/platform/points.h"
#include "importers/drawing.h"

/// Reading drawing files into display lists.
///
/// Each format lives in a loadable module of its own, so that only those who
/// read a format load the libraries it stands on. A new format is a new folder
/// with a class derived from Importer and the two lines of
/// DISPLAYLIST_IMPORTER_MODULE; the loader finds it by itself.
namespace importers {

/// How far reading has come.
struct Progress {
  std::size_t features = 0;
  std::optional<double> fraction;  ///< 0 to 1, where it can be told
};

struct ReadOptions {
  std::string importer;  ///< the name of the one to read with; empty: the one that fits best
  /// Read these layers only, drawn in this order. None: all layers, areas of
  /// coarse layers below those of fine ones, lines above areas, points on top.
  /// Formats that have a drawing order of their own keep it in either case.
  std::vector<std::string> layers;
  bool fill = true;                    ///< areas are filled, not outlined only
  std::optional<LM_RGB32> line_color;  ///< of all lines and outlines
  std::int32_t point_size = 5;         ///< side of a point symbol in device units
  /// The areas of a layer, their outlines, its lines and its points are each
  /// ordered so that parts of the drawing are drawn fast. Formats that have a
  /// drawing order of their own keep it.
  bool reorder = false;
  /// Asked now and then while reading; false cancels. May be empty.
  std::function<bool(const Progress&)> progress;
};

/// Whether an importer reads a file, by a look at its name and its first bytes.
enum class Match : std::uint8_t {
  none,
  general,  ///< one of the many formats that it reads
  exact,    ///< made for this format
};

/// A reader of one format or a family. One thread at a time calls it.
class Importer {
 public:
  Importer() = default;
  Importer(const Importer&) = delete;
  Importer& operator=(const Importer&) = delete;
  virtual ~Importer() = default;

  [[nodiscard]] virtual const char* name() const = 0;
  /// The formats, in half a sentence.
  [[nodiscard]] virtual const char* description() const = 0;
  [[nodiscard]] virtual Match can_read(const std::string& path) const = 0;
  /// Reads the file, which exists, into an empty drawing. Empty on success;
  /// else one sentence that names the file, and the drawing is of no use.
  [[nodiscard]] virtual std::string read(const std::string& path, const ReadOptions& options,
                                         Drawing& drawing) const = 0;
};

/// The function that a module exports, and its name.
using ModuleEntry = const Importer* (*)();
inline constexpr const char* module_entry_name = "displaylist_importer";

}  // namespace importers

/// Makes a module of the class, which is constructed when the module is asked
/// for it and never destroyed before the program ends.
#define DISPLAYLIST_IMPORTER_MODULE(Class)                                         \
  extern "C" DISPLAYLIST_EXPORT const importers::Importer* displaylist_importer(); \
  const importers::Importer* displaylist_importer() {                              \
    static const Class instance;                                                   \
    return &instance;                                                              \
  }
