#pragma once

namespace importers {

/// The drawable, or null when it or its points did not get their memory.
template <class T>
T* complete_or_null(T* drawable) {
  if (drawable == nullptr) return nullptr;
  if constexpr (requires { drawable->points; }) {
    if (drawable->points == nullptr) {
      delete drawable;
      return nullptr;
    }
  }
  return drawable;
}

}  // namespace importers
