#include "importers/ogr/error_collector.h"

#include <algorithm>

namespace importers::ogr {

void ErrorCollector::keep(CPLErr severity, CPLErrorNum, const char* message) {
  auto* collector = static_cast<ErrorCollector*>(CPLGetErrorHandlerUserData());
  if (severity < CE_Failure || !collector->m_first_error.empty()) return;
  std::string& kept = collector->m_first_error;
  kept = message;
  std::replace(kept.begin(), kept.end(), '\n', ' ');
  while (!kept.empty() && (kept.back() == '.' || kept.back() == ' ')) kept.pop_back();
}

}  // namespace importers::ogr
