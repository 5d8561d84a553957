#include "apps/dlview/progress_line.h"

#include <cstdio>
#include <utility>

namespace dlview {

namespace {

using namespace std::chrono_literals;
constexpr auto patience = 500ms;
constexpr auto between_updates = 100ms;

constexpr const char* wipe = "\r\033[K";

}  // namespace

ProgressLine::ProgressLine(std::string what, bool watched)
    : m_what(std::move(what)), m_watched(watched), m_next(Clock::now() + patience) {}

ProgressLine::~ProgressLine() {
  if (m_shown) std::fputs(wipe, stderr);
}

void ProgressLine::show(const importers::Progress& progress) {
  if (!m_watched || Clock::now() < m_next) return;
  if (progress.fraction) {
    std::fprintf(stderr, "%s%s: %.0f %%", wipe, m_what.c_str(), *progress.fraction * 100.0);
  } else {
    std::fprintf(stderr, "%s%s: %zu features", wipe, m_what.c_str(), progress.features);
  }
  m_shown = true;
  m_next = Clock::now() + between_updates;
}

}  // namespace dlview
