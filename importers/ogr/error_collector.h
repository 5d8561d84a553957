#pragma once

#include <cpl_error.h>

#include <string>

namespace importers::ogr {

/// While one exists, what GDAL complains about is kept here instead of being
/// printed. For the thread that made it, which destroys it too.
class ErrorCollector {
 public:
  ErrorCollector() { CPLPushErrorHandlerEx(&keep, this); }
  ErrorCollector(const ErrorCollector&) = delete;
  ErrorCollector& operator=(const ErrorCollector&) = delete;
  ~ErrorCollector() { CPLPopErrorHandler(); }

  /// The first error, on one line; empty when there was none.
  [[nodiscard]] const std::string& first_error() const { return m_first_error; }

 private:
  static void CPL_STDCALL keep(CPLErr severity, CPLErrorNum number, const char* message);

  std::string m_first_error;
};

}  // namespace importers::ogr
