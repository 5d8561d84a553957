#pragma once

#include <cstdlib>

/// Stops the program where what must hold does not.
inline void require(bool holds) {
  if (!holds) std::abort();
}
