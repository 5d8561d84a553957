#pragma once

#include <vector>

#include "displaylist/core/iterators.h"
#include "tests/support/probe_drawable.h"

/// Every drawable that an iterator goes to, from where it stands to the end.
inline std::vector<DL::Drawable*> walked(DL::DisplayListIterator& at) {
  std::vector<DL::Drawable*> drawables;
  DL::Drawable* drawable = at.is_at_drawable() ? at.m_pCurrent : at.next();
  for (; drawable != nullptr; drawable = at.next()) drawables.push_back(drawable);
  return drawables;
}

/// The numbers of drawables that are probes.
inline std::vector<int> ids_of(const std::vector<DL::Drawable*>& probes) {
  std::vector<int> ids;
  for (const DL::Drawable* each : probes) {
    ids.push_back(static_cast<const ProbeDrawable*>(each)->id());
  }
  return ids;
}

/// The numbers of the probes that an iterator goes to.
inline std::vector<int> ids_walked(DL::DisplayListIterator& at) {
  return ids_of(walked(at));
}
inline std::vector<int> ids_walked(DL::DisplayListIterator&& at) {
  return ids_of(walked(at));
}
