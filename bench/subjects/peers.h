// Other libraries. Each registers its operations from its file in bench/peers/;
// libraries that are not installed are not compiled.
#ifndef BENCH_SUBJECTS_PEERS_H
#define BENCH_SUBJECTS_PEERS_H

#include <functional>
#include <string>
#include <vector>

#include "bench/subjects/contender.h"
#include "bench/subjects/operations.h"

namespace bench {

// Prepares the work for two pictures that outlive it. Throws std::runtime_error
// when the library fails.
using Prepare = std::function<Work(const Picture& source, const Picture& destination)>;

// The value only lets a file register its peers while it is loaded.
bool AddPeer(const std::string& name, Operation operation, const Prepare& prepare);

// All peers at an operation, checked against the plain loops for all inputs.
std::vector<Contender> PeersAt(Operation operation, const Picture& source,
                               const Picture& destination);

// The names of all installed peers, in one line.
std::string NamesOfPeers();

// Peers at making and disposing of a frame of so many bytes in a steady state.
bool AddFramePeer(const std::string& name, const std::function<Work(int width, int height)>& make);
std::vector<Contender> FramePeers(int width, int height);

}  // namespace bench

#endif
