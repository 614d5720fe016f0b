// The list of registered peers.
#include "bench/subjects/peers.h"

#include <map>
#include <set>

#include "bench/subjects/exactness.h"

namespace bench {
namespace {

struct Peer {
  std::string name;
  Operation operation;
  Prepare prepare;
  std::map<int, Exactness> exactness = {};  // by bytes of a pixel, once it was asked for
};

// Filled while the program is loaded.
std::vector<Peer>& Peers() {
  static std::vector<Peer> peers;
  return peers;
}

struct FramePeer {
  std::string name;
  std::function<Work(int width, int height)> make;
};

std::vector<FramePeer>& PeersWithFrames() {
  static std::vector<FramePeer> peers;
  return peers;
}

const Exactness& ExactnessOf(Peer& peer, int pixelBytes) {
  const auto known = peer.exactness.find(pixelBytes);
  if (known != peer.exactness.end()) return known->second;
  return peer.exactness[pixelBytes] = CheckExactness(peer.operation, peer.prepare, pixelBytes);
}

}  // namespace

bool AddPeer(const std::string& name, Operation operation, const Prepare& prepare) {
  Peers().push_back({name, operation, prepare});
  return true;
}

std::vector<Contender> PeersAt(Operation operation, const Picture& source,
                               const Picture& destination) {
  std::vector<Contender> contenders;
  for (Peer& peer : Peers()) {
    if (peer.operation != operation) continue;
    contenders.push_back({Role::Peer, peer.name, peer.prepare(source, destination),
                          ExactnessOf(peer, source.pixelBytes)});
  }
  return contenders;
}

std::string NamesOfPeers() {
  std::set<std::string> names;
  for (const Peer& peer : Peers()) names.insert(peer.name);
  for (const FramePeer& peer : PeersWithFrames()) names.insert(peer.name);
  std::string text;
  for (const std::string& name : names) {
    if (!text.empty()) text += ", ";
    text += name;
  }
  return text.empty() ? "none" : text;
}

bool AddFramePeer(const std::string& name, const std::function<Work(int width, int height)>& make) {
  PeersWithFrames().push_back({name, make});
  return true;
}

std::vector<Contender> FramePeers(int width, int height) {
  std::vector<Contender> contenders;
  for (const FramePeer& peer : PeersWithFrames()) {
    contenders.push_back({Role::Peer, peer.name, peer.make(width, height)});
  }
  return contenders;
}

}  // namespace bench
