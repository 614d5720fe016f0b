// The description of the machine that the figures belong to.
#ifndef BENCH_HARNESS_MACHINE_H
#define BENCH_HARNESS_MACHINE_H

#include <cstdint>
#include <string>

namespace bench {

// Lines of Markdown: processor, caches, system, compiler, peers.
std::string MachineText();

// The available memory in bytes, as the system reports it; without a report, the
// largest number.
std::uint64_t FreeMemory();

}  // namespace bench

#endif
