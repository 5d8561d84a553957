#pragma once

#include <initializer_list>
#include <string>

/// GeoJSON as text.
namespace geojson {

inline std::string geometry(const std::string& type, const std::string& coordinates) {
  return R"({"type":")" + type + R"(","coordinates":)" + coordinates + "}";
}

inline std::string feature(const std::string& geometry) {
  return R"({"type":"Feature","properties":{},"geometry":)" + geometry + "}";
}

inline std::string collection(std::initializer_list<std::string> geometries) {
  std::string features;
  for (const std::string& each : geometries) {
    if (!features.empty()) features += ",";
    features += feature(each);
  }
  return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

}  // namespace geojson
