#pragma once

namespace DL {

class BottomGroup;
class Group;

/// The leaf that drawing reaches first in or after `start`; null when `start`
/// is null or no leaf follows.
BottomGroup* first_bottom_group(Group* start);

/// The leaf that is drawn after `group`; null at the end.
BottomGroup* next_bottom_group(Group* group);

}  // namespace DL
