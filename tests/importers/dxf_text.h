#pragma once

#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>

/// Small DXF files, written in tests.
namespace dxf_text {

/// A group code and its value.
struct Group {
  Group(int group_code, const char* text) : code(group_code), value(text) {}
  Group(int group_code, std::string text) : code(group_code), value(std::move(text)) {}
  Group(int group_code, int number) : code(group_code), value(std::to_string(number)) {}
  Group(int group_code, double number) : code(group_code) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", number);
    value = text;
  }

  int code;
  std::string value;
};
using Groups = std::initializer_list<Group>;

inline std::string groups(Groups list) {
  std::string text;
  for (const Group& group : list) {
    text += std::to_string(group.code) + "\n" + group.value + "\n";
  }
  return text;
}

/// An entity or a table entry of layer 0, unless the groups have another.
inline std::string entity(const char* name, Groups list) {
  return groups({{0, name}, {8, "0"}}) + groups(list);
}
inline std::string on_layer(const char* layer, const char* name, Groups list) {
  return groups({{0, name}, {8, layer}}) + groups(list);
}

inline std::string line(double x1, double y1, double x2, double y2) {
  return entity("LINE", {{10, x1}, {20, y1}, {11, x2}, {21, y2}});
}

inline std::string layer(const char* name, int color, const char* line_type = "CONTINUOUS",
                         int flags = 0) {
  return groups({{0, "LAYER"}, {2, name}, {70, flags}, {62, color}, {6, line_type}});
}

inline std::string block(const char* name, const std::string& entities, double x = 0,
                         double y = 0) {
  return groups({{0, "BLOCK"}, {8, "0"}, {2, name}, {70, 0}, {10, x}, {20, y}}) + entities +
         groups({{0, "ENDBLK"}, {8, "0"}});
}

inline std::string insert(const char* block_name, double x, double y, double scale_x = 1,
                          double scale_y = 1, double degrees = 0) {
  return entity("INSERT",
                {{2, block_name}, {10, x}, {20, y}, {41, scale_x}, {42, scale_y}, {50, degrees}});
}

/// The parts of a file.
struct Parts {
  std::string entities;
  std::string blocks{};
  std::string tables{};
  std::string header{};
};

inline std::string section(const char* name, const std::string& content) {
  return content.empty() ? ""
                         : groups({{0, "SECTION"}, {2, name}}) + content + groups({{0, "ENDSEC"}});
}

inline std::string file(const Parts& parts) {
  return section("HEADER", parts.header) + section("TABLES", parts.tables) +
         section("BLOCKS", parts.blocks) + section("ENTITIES", parts.entities) +
         groups({{0, "EOF"}});
}

}  // namespace dxf_text
