#include "apps/dlview/list_statistics.h"

#include <algorithm>
#include <set>

#include "displaylist/displaylist.h"

namespace dlview {

namespace {

std::string class_name(const DL::Drawable& drawable) {
  const void* type = drawable.type();
#define DLVIEW_NAME(Class) \
  if (type == DL::Class::my_type()) return #Class;
  DL_PALETTIZED_CLASSES(DLVIEW_NAME)
  DL_PLAIN_ONLY_CLASSES(DLVIEW_NAME)
#undef DLVIEW_NAME
  return "others";
}

void count(const DL::Drawable& drawable, ClassCount& counted) {
  counted.all += 1;
  counted.hidden += drawable.is_hidden() ? 1U : 0U;
  counted.palettized += drawable.is_palettized() ? 1U : 0U;
}

class Collector {
 public:
  explicit Collector(ListStatistics& statistics) : m_statistics(statistics) {}

  void collect(const DL::Group& group, std::int32_t depth) {
    m_statistics.groups += 1;
    m_statistics.hidden_groups += group.is_hidden() ? 1U : 0U;
    m_statistics.depth = std::max(m_statistics.depth, depth);
    if (!group.contains_drawables()) {
      for (const DL::Group* child = group.m_pFirst.group; child != nullptr;
           child = child->m_pNext) {
        collect(*child, depth + 1);
      }
      return;
    }
    m_statistics.leaves += 1;
    for (DL::Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      count(*d, m_statistics.drawables);
      count(*d, m_statistics.classes[class_name(*d)]);
      collect_nested(*d);
    }
  }

 private:
  void collect_nested(DL::Drawable& drawable) {
    if (drawable.type() != DL::DrawableDisplayList::my_type()) return;
    DL::DisplayList* child = static_cast<DL::DrawableDisplayList&>(drawable).display_list();
    if (child == nullptr || !m_seen.insert(child).second) return;
    m_statistics.nested_lists += 1;
    DL::DisplayListIterator at(child);
    for (DL::Drawable* d = at.current(); d != nullptr; d = at.next()) {
      m_statistics.nested_drawables += 1;
      collect_nested(*d);
    }
  }

  ListStatistics& m_statistics;
  std::set<const DL::DisplayList*> m_seen;
};

}  // namespace

ListStatistics statistics_of(DL::DisplayList& list) {
  ListStatistics statistics;
  statistics.capacity = std::max(list.m_cMaxOpenDrawables, 1);
  if (list.m_pRootGroup != nullptr) Collector(statistics).collect(*list.m_pRootGroup, 1);
  return statistics;
}

}  // namespace dlview
