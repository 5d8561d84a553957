#include "bench/machine.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <thread>

namespace bench {

namespace {

std::string processor() {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(':');
    if (line.starts_with("model name") && colon != std::string::npos) return line.substr(colon + 2);
  }
  return "unknown";
}

std::string load_average() {
  std::ifstream file("/proc/loadavg");
  std::string one;
  std::string five;
  file >> one >> five;
  return one + " over a minute and " + five + " over five";
}

std::string today() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d", std::gmtime(&now));
  return text;
}

/// Of the sources, or what the build was told where they are not in git.
std::string commit() {
  const std::string told = output_of("git -C '" DISPLAYLIST_SOURCE_DIR
                                     "' describe --always --dirty --exclude='*' 2>/dev/null");
  return told.empty() ? DISPLAYLIST_COMMIT : told;
}

}  // namespace

std::string output_of(const std::string& command) {
  std::string output;
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return output;
  char buffer[256];
  while (std::fgets(buffer, sizeof buffer, pipe) != nullptr) output += buffer;
  if (pclose(pipe) != 0) return "";
  while (output.ends_with('\n')) output.pop_back();
  return output;
}

std::size_t resident_bytes() {
  std::ifstream file("/proc/self/statm");
  std::size_t total = 0;
  std::size_t resident = 0;
  file >> total >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::vector<std::pair<std::string, std::string>> machine() {
  return {{"processor", processor() + ", " + std::to_string(std::thread::hardware_concurrency()) +
                            " processors"},
          {"compiler", DISPLAYLIST_COMPILER},
          {"commit", commit()},
          {"date", today()},
          {"load average", load_average()}};
}

}  // namespace bench
