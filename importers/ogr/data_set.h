#pragma once

#include <gdal_priv.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "importers/importer.h"

namespace importers::ogr {

struct DataSetCloser {
  void operator()(GDALDataset* data_set) const { GDALClose(GDALDataset::ToHandle(data_set)); }
};
using DataSet = std::unique_ptr<GDALDataset, DataSetCloser>;

/// The vector data of the file; null when it cannot be opened.
DataSet open(const std::string& path);

/// Adds the layers that the options name, each once, in their order, or all of
/// them when none is named. Returns a name that no layer has, if there is one.
[[nodiscard]] std::optional<std::string> choose_layers(GDALDataset& data_set,
                                                       const ReadOptions& options,
                                                       std::vector<OGRLayer*>& layers);

/// The names of all layers, for people: "'roads', 'rivers'".
std::string layer_names(GDALDataset& data_set);

/// Whether the edges of its geometries take the shortest way around the globe:
/// so it is with TopoJSON, whose arcs need not be cut at the antimeridian.
bool is_spherical(GDALDataset& data_set);

/// Whether the layer's coordinates are longitudes and latitudes.
bool is_geographic(GDALDataset& data_set, OGRLayer& layer);

}  // namespace importers::ogr
