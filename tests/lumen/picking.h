#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "lumen/picture_image.h"
#include "lumen/selector_device.h"
#include "tests/lumen/text_art.h"

/// A selector and what it is asked, for tests.
namespace picking {

using text_art::Points;
using text_art::points;

/// Calls some action of a table.
using Draw = std::function<void(const LM_Device_Actions& actions, LM_Rendition& rendition)>;

inline std::int32_t count_of(const Points& path) {
  return static_cast<std::int32_t>(path.size());
}

inline Draw dot(LM_DCI_Point point) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.dot_clipped(&rendition, &point, nullptr);
  };
}
inline Draw polyline(const Points& path) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.polyline_clipped(&rendition, count_of(path), path.data());
  };
}
inline Draw gouraud_polyline(const Points& path, const std::vector<LM_RGB32>& colors) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.gouraud_polyline_clipped(&rendition, count_of(path), path.data(), colors.data());
  };
}
inline Draw polygon(const Points& path) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.polygon_clipped(&rendition, count_of(path), path.data(), 0);
  };
}
inline Draw strip(const Points& path) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.triangle_strip_clipped(&rendition, count_of(path), path.data());
  };
}
inline Draw gouraud_strip(const Points& path, const std::vector<LM_RGB32>& colors) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.gouraud_triangle_strip_clipped(&rendition, count_of(path), path.data(), colors.data());
  };
}
/// The first texture may be empty for none.
inline Draw textured_strip(const Points& path, const std::vector<LM_RGB32>& colors,
                           const std::vector<LM_Vertex_Triple>& first = {}) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.textured_triangle_strip_clipped(&rendition, count_of(path), path.data(), colors.data(),
                                            first.empty() ? nullptr : first.data(),
                                            LM_TEXTURE_CLAMP, nullptr, nullptr);
  };
}
inline Draw markers(const Points& path) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.marker_clipped(&rendition, count_of(path), path.data());
  };
}
inline Draw image(LM_DCI_Point corner, const LM_Handle<lumen::PictureImage>& shown) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    LM_Image* const cell = shown.get();
    actions.image_clipped(&rendition, &corner, &cell);
  };
}

/// The arguments of the elliptical actions.
struct Arc {
  LM_DCI_Point center;
  LM_DCI_Point radii;
  float start = 0;
  float end = 6.5F;
  float rotation = 0;
};

inline Draw arc_line(const Arc& arc) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.elliptical_arc(&rendition, &arc.center, &arc.radii, arc.start, arc.end, arc.rotation,
                           nullptr);
  };
}
inline Draw filled_arc(const Arc& arc, LM_RGB32 fill) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.elliptical_arc(&rendition, &arc.center, &arc.radii, arc.start, arc.end, arc.rotation,
                           &fill);
  };
}
inline Draw pie(const Arc& arc) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.elliptical_arc_colored(&rendition, &arc.center, &arc.radii, arc.start, arc.end,
                                   arc.rotation, nullptr);
  };
}
inline Draw area(const Arc& arc, LM_RGB32 fill) {
  return [=](const LM_Device_Actions& actions, LM_Rendition& rendition) {
    actions.elliptical_area(&rendition, &arc.center, &arc.radii, arc.start, arc.end, arc.rotation,
                            &fill);
  };
}

inline LM_Handle<lumen::PictureImage> image_of(const lumen::Picture& picture) {
  return LM_Create<lumen::PictureImage>(picture);
}

/// A selector, and a rendition to draw with.
struct Picker {
  bool touches(const LM_Clip_Rectangle& box, const Draw& draw) {
    device.set_pick_box(box);
    draw(device.actions, rendition);
    return device.touched();
  }
  bool touches(std::int32_t x, std::int32_t y, const Draw& draw) {
    return touches({x, x, y, y}, draw);
  }
  /// Which pixels of a picture would be picked one by one.
  text_art::Rows picked(std::int32_t width, std::int32_t height, const Draw& draw) {
    text_art::Rows rows;
    for (std::int32_t y = 0; y < height; ++y) {
      std::string& row = rows.emplace_back();
      for (std::int32_t x = 0; x < width; ++x) row += touches(x, y, draw) ? '#' : '.';
    }
    return rows;
  }

  lumen::SelectorDevice device;
  LM_Rendition rendition;
};

}  // namespace picking
