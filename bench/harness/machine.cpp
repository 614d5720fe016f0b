// Reads the description of the machine from the system.
#include "bench/harness/machine.h"

#include <fmt/format.h>
#include <sys/utsname.h>

#include <fstream>
#include <limits>
#include <thread>

#include "bench/subjects/peers.h"
#include "simd/processor_caches.h"
#include "simd/processor_level.h"

namespace bench {
namespace {

// The text after the colon of the first line that starts with this text.
std::string ValueIn(const char* path, const std::string& key) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(':');
    if (!line.starts_with(key) || colon == std::string::npos) continue;
    const std::size_t start = line.find_first_not_of(" \t", colon + 1);
    return start == std::string::npos ? "" : line.substr(start);
  }
  return "unknown";
}

std::string CompilerText() {
#ifdef __clang__
  return __VERSION__;
#else
  return "GCC " __VERSION__;
#endif
}

std::string SystemText() {
  utsname names{};
  uname(&names);
  return fmt::format("{} {}", static_cast<const char*>(names.sysname),
                     static_cast<const char*>(names.release));
}

}  // namespace

std::string MachineText() {
  const simd::Caches& caches = simd::ProcessorCaches();
  return fmt::format(
      "- processor: {}, {} at work, vectors: {}\n"
      "- caches: {} KiB of a core's own, {} KiB its share of the last level\n"
      "- system: {}; compiler: {}\n"
      "- peers: {}\n",
      ValueIn("/proc/cpuinfo", "model name"), std::thread::hardware_concurrency(),
      simd::NameOf(simd::ProcessorLevel()), caches.own / 1024, caches.shared / 1024, SystemText(),
      CompilerText(), NamesOfPeers());
}

std::uint64_t FreeMemory() {
  const std::string text = ValueIn("/proc/meminfo", "MemAvailable");
  if (text == "unknown") return std::numeric_limits<std::uint64_t>::max();
  return std::stoull(text) * 1024;
}

}  // namespace bench
