// Writes the result files.
#include "bench/report/files.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "bench/harness/machine.h"
#include "bench/report/plots.h"
#include "bench/report/table.h"

namespace bench {
namespace {

using Json = nlohmann::ordered_json;

Json ObjectOf(const Result& result) {
  const Measured* limit = result.Fastest(Role::Limit);
  const Measured* peer = result.Fastest(Role::Peer);
  Json object = {
      {"work", result.name.work},  {"size", result.name.size}, {"ms", result.Ours().ms},
      {"spread", result.Spread()}, {"limit_ms", nullptr},      {"peer", nullptr},
      {"peer_ms", nullptr},        {"peer_exact", nullptr},    {"peer_max_error", nullptr}};
  if (limit != nullptr) object["limit_ms"] = limit->ms;
  if (peer == nullptr) return object;
  object["peer"] = peer->name;
  object["peer_ms"] = peer->ms;
  if (!peer->exactness.known) return object;
  object["peer_exact"] = peer->exactness.exact;
  object["peer_max_error"] = peer->exactness.largestError;
  return object;
}

std::string JsonOf(const Session& session) {
  Json rows = Json::array();
  for (const Result& result : session.results) rows.push_back(ObjectOf(result));
  return rows.dump(1) + "\n";
}

}  // namespace

void WriteFile(const std::filesystem::path& path, const std::string& text) {
  const std::filesystem::path beside = path.string() + ".part";
  std::ofstream file(beside, std::ios::binary);
  file << text;
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(beside, path, error);
  if (!file || error) throw std::runtime_error(path.string() + ": cannot be written");
}

void WriteFiles(const Session& session, const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw std::runtime_error(folder.string() + ": " + error.message());
  WriteFile(folder / "summary.json", JsonOf(session));
  WriteFile(folder / "summary.md", MachineText() + "\n" + Markdown(session));
  WritePlots(session, folder);
}

}  // namespace bench
