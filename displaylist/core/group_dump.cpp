// The debug dump of groups; drawables write their own lines.

#include <ostream>
#include <string_view>

#include "displaylist/core/group.h"
#include "displaylist/drawables/debug.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/dump_p.h"

namespace DL {

namespace {

void write_line(const Group& group, std::string_view label, int level, std::ostream& os) {
  dump_line::indent(os, level);
  os << label << ": level  ";
  if (group.is_open()) os << std::dec;
  os << group.level() << ", this = " << std::hex << static_cast<const void*>(&group)
     << ", sibling = " << std::hex << static_cast<const void*>(group.m_pNext) << std::dec
     << std::endl;
}

void count(DisplayListDebug& statistics) {
  constexpr std::uint32_t group_bytes = 72;
  statistics.m_cGroups += 1;
  statistics.m_cGroupBytes += group_bytes;
}

}  // namespace

void Group::dump_subtree(std::ostream& os, int level, DisplayListDebug& statistics) const {
  write_line(*this, "Group", level, os);
  for (const Group* child = m_pFirst.group; child != nullptr; child = child->m_pNext) {
    count(statistics);
    child->dump_subtree(os, level + 1, statistics);
  }
}

void BottomGroup::dump_subtree(std::ostream& os, int level, DisplayListDebug& statistics) const {
  write_line(*this, is_open() ? "*OpenBottomGroup*" : "BottomGroup", level, os);
  count(statistics);
  for (const Drawable* d = m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
    statistics.m_cDrawables += 1;
    d->dump(os, level + 1, statistics);
  }
}

}  // namespace DL
