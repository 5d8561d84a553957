#pragma once

#include <locale.h>
#include <stdlib.h>

#include <optional>
#include <string>

#include "tests/support/temporary_folder.h"

/// Sets LC_CTYPE of the process to a locale of the system, "C.UTF-8", and back
/// to the one before at the end.
class SelectedLocale {
 public:
  explicit SelectedLocale(const std::string& name) : m_old(setlocale(LC_CTYPE, nullptr)) {
    m_is_selected = setlocale(LC_CTYPE, name.c_str()) != nullptr;
  }
  SelectedLocale(const SelectedLocale&) = delete;
  SelectedLocale& operator=(const SelectedLocale&) = delete;
  ~SelectedLocale() { setlocale(LC_CTYPE, m_old.c_str()); }

  /// Whether there is such a locale.
  [[nodiscard]] bool is_selected() const { return m_is_selected; }

 private:
  std::string m_old;
  bool m_is_selected = false;
};

/// The same with a locale that is made for the test, of any character map that
/// the system has a source of: ("ja_JP", "SHIFT_JIS"). Takes half a second.
class TemporaryLocale {
 public:
  TemporaryLocale(const std::string& language, const std::string& charmap) {
    const std::string name = language + "." + charmap;
    const std::string command = "localedef -c --quiet --no-archive -i " + language + " -f " +
                                charmap + " '" + m_folder.path(name) + "' >/dev/null 2>&1";
    // Its status is also other than 0 for warnings.
    static_cast<void>(std::system(command.c_str()) == 0);
    if (const char* old = getenv("LOCPATH")) m_old_path = old;
    setenv("LOCPATH", m_folder.path("").c_str(), 1);
    m_selected.emplace(name);
  }
  TemporaryLocale(const TemporaryLocale&) = delete;
  TemporaryLocale& operator=(const TemporaryLocale&) = delete;
  ~TemporaryLocale() {
    if (m_old_path) {
      setenv("LOCPATH", m_old_path->c_str(), 1);
    } else {
      unsetenv("LOCPATH");
    }
    m_selected.reset();
  }

  /// Whether it could be made.
  [[nodiscard]] bool is_selected() const { return m_selected->is_selected(); }

 private:
  TemporaryFolder m_folder;
  std::optional<std::string> m_old_path;
  std::optional<SelectedLocale> m_selected;
};
