// What the figures were taken on.
#ifndef BENCH_HARNESS_MACHINE_H
#define BENCH_HARNESS_MACHINE_H

#include <cstdint>
#include <string>

namespace bench {

// Lines of Markdown: processor, caches, system, compiler, peers.
std::string MachineText();

// What the system could give without taking it from others, in bytes;
// the largest number when it does not tell.
std::uint64_t FreeMemory();

}  // namespace bench

#endif
