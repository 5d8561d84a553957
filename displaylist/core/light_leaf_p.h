#pragma once

#include <cstdint>

namespace DL {

class BottomGroup;
class DisplayList;

/// Rows of a device, both ends included.
struct DeviceRows {
  std::int32_t first;
  std::int32_t last;
};

/// Whether the group is drawn through the list as nothing but dots and polylines of
/// few points, and the rows between which all their points lie.
bool find_light_rows(const BottomGroup& group, const DisplayList& list, DeviceRows& rows);

}  // namespace DL
