#include "apps/dlview/standard_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace dlview {

StandardOutput::int_type StandardOutput::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
  return std::fputc(character, stdout);
}

std::streamsize StandardOutput::xsputn(const char* text, std::streamsize size) {
  return static_cast<std::streamsize>(std::fwrite(text, 1, static_cast<std::size_t>(size), stdout));
}

std::string finish_output() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return {};
  return std::string("standard output cannot be written to (") + std::strerror(errno) +
         "); write to another file or make room";
}

}  // namespace dlview
