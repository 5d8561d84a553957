#include "lumen/text/missing_fonts_p.h"

#include <atomic>
#include <cstdio>

namespace lumen {
namespace {

void print(const char* message) {
  std::fprintf(stderr, "%s\n", message);
}

std::atomic<MissingFontHandler> current_handler{&print};

}  // namespace

void replace_missing_font_handler(MissingFontHandler handler) {
  current_handler.store(handler);
}

void tell_missing_font(const std::string& name, const std::string& stand_in) {
  const MissingFontHandler handler = current_handler.load();
  if (handler == nullptr) return;
  const std::string instead =
      stand_in.empty() ? "text in it is not shown" : "\"" + stand_in + "\" stands in for it";
  handler(("There is no font \"" + name + "\": " + instead + ".").c_str());
}

}  // namespace lumen
