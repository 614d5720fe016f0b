// The bar plots: comparison with peers, and the transfer modes.
#include "bench/plots/bars.h"

#include <fmt/format.h>

#include <algorithm>

namespace bench {
namespace {

const char* const kSetUp =
    "set style data histograms\n"
    "set style histogram clustered gap 1\n"
    "set style fill solid 0.9 noborder\n"
    "set boxwidth 0.9\n"
    "set yrange [0:*]\n";

bool IsCompared(const Result& result) {
  return result.Fastest(Role::Limit) != nullptr && result.Fastest(Role::Peer) != nullptr;
}

std::vector<std::string> PeersOf(const std::vector<const Result*>& rows) {
  std::vector<std::string> peers;
  for (const Result* row : rows) {
    for (const Measured& measured : row->all) {
      if (measured.role != Role::Peer) continue;
      if (std::find(peers.begin(), peers.end(), measured.name) == peers.end()) {
        peers.push_back(measured.name);
      }
    }
  }
  std::sort(peers.begin(), peers.end());
  return peers;
}

std::string PartOfLimit(const Result& row, Role role, const std::string& name) {
  for (const Measured& measured : row.all) {
    if (measured.role == role && measured.name == name) {
      return fmt::format(" {:.4f}", row.Fastest(Role::Limit)->ms / measured.ms);
    }
  }
  return " -";
}

std::string Table(const std::vector<const Result*>& rows, const std::vector<std::string>& peers) {
  std::string data = "$data << END\nwork PXL";
  for (const std::string& peer : peers) data += fmt::format(" \"{}\"", peer);
  for (const Result* row : rows) {
    data += fmt::format("\n\"{}\" {:.4f}", row->name.work, row->Ratio());
    for (const std::string& peer : peers) data += PartOfLimit(*row, Role::Peer, peer);
  }
  return data + "\nEND\n";
}

void DrawSize(const Results& results, const std::string& size, std::vector<Drawing>& drawings) {
  std::vector<const Result*> rows;
  for (const Result& result : results) {
    const bool isShown =
        result.name.size == size && IsCompared(result) && !result.name.work.starts_with("make");
    if (isShown) rows.push_back(&result);
  }
  if (rows.empty()) return;
  const std::vector<std::string> peers = PeersOf(rows);
  std::string script = Preamble() + kSetUp + Table(rows, peers);
  script += fmt::format(
      "set title 'Speed at {} as a part of what the memory allows'\n"
      "set key outside right\n"
      "set xtics rotate by -25\n"
      "set arrow from graph 0, first 1 to graph 1, first 1 nohead dashtype 2\n"
      "plot for [i=2:{}] $data using i:xtic(1) title columnheader(i)\n",
      size, peers.size() + 2);
  drawings.push_back({"operations-" + size, script});
}

}  // namespace

void DrawOperations(const Results& results, std::vector<Drawing>& drawings) {
  std::vector<std::string> sizes;
  for (const Result& result : results) {
    const std::string& size = result.name.size;
    if (std::find(sizes.begin(), sizes.end(), size) == sizes.end()) sizes.push_back(size);
  }
  for (const std::string& size : sizes) DrawSize(results, size, drawings);
}

void DrawModes(const Results& results, std::vector<Drawing>& drawings) {
  const std::string start = "draw mode ";
  const std::vector<const Result*> rows = RowsOf(results, start);
  if (rows.empty()) return;
  std::string script = Preamble() + kSetUp + "$data << END\n";
  for (const Result* row : rows) {
    script += fmt::format("\"{}\" {:.4f}\n", row->name.work.substr(start.size()),
                          row->Ours().ms / row->Fastest(Role::Reference)->ms);
  }
  script += fmt::format(
      "END\n"
      "set title 'Transfer modes at {}: times as long as srcCopy'\n"
      "set xtics rotate by -25\n"
      "plot $data using 2:xtic(1) notitle\n",
      rows.front()->name.size);
  drawings.push_back({"modes", script});
}

}  // namespace bench
