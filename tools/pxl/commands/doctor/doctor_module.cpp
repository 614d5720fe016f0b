// Examines versions, processor, settings and translation.
#include "tools/pxl/commands/doctor/doctor_module.h"

#include <algorithm>
#include <array>

#include "K_host.h"
#include "PXL.h"
#include "Q_host.h"
#include "TXT_host.h"
#include "simd/processor_caches.h"
#include "simd/processor_level.h"
#include "tools/pxl/module/language.h"
#include "tools/pxl/module/module.h"
#include "tools/pxl/module/module_settings.h"
#include "tools/pxl/system/failure.h"
#include "vetrix_host.h"

namespace pxl {
namespace {

using Flag = bool simd::Features::*;

// An instruction set, and the lowest level that needs it.
struct Feature {
  const char* name;
  Flag present;
  simd::Level level;
};

constexpr std::array kFeatures = {
    Feature{"SSSE3", &simd::Features::ssse3, simd::Level::Sse41},
    Feature{"SSE4.1", &simd::Features::sse41, simd::Level::Sse41},
    Feature{"AVX2", &simd::Features::avx2, simd::Level::Avx2},
    Feature{"FMA", &simd::Features::fma, simd::Level::Avx2},
    Feature{"AVX-512 F, BW, DQ, VL", &simd::Features::avx512, simd::Level::Avx512}};

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : "; ") + name;
  return text.empty() ? "none" : text;
}

void AddFeatures(DoctorReport& report, const std::string& key, bool present) {
  std::vector<std::string> names;
  for (const Feature& feature : kFeatures) {
    if (simd::ProcessorFeatures().*feature.present == present) names.emplace_back(feature.name);
  }
  report.Add(key, names, Joined(names));
}

// The features that the next level needs.
std::string ReasonForLevel() {
  const simd::Level level = simd::ProcessorLevel();
  if (level == simd::kAllLevels.back()) return "the highest level";
  const auto next = static_cast<simd::Level>(static_cast<int>(level) + 1);
  std::vector<std::string> lacking;
  for (const Feature& feature : kFeatures) {
    const bool present = simd::ProcessorFeatures().*feature.present;
    if (feature.level == next && !present) lacking.emplace_back(feature.name);
  }
  return std::string(simd::NameOf(next)) + " needs " + Joined(lacking);
}

struct KnownSetting {
  const char* key;
  Json value;
};

const vetrix::host::Setting* Find(const std::vector<vetrix::host::Setting>& settings,
                                  const std::string& key) {
  const auto found = std::ranges::find(settings, key, &vetrix::host::Setting::key);
  return found == settings.end() ? nullptr : &*found;
}

// The value as the module reads it, and its origin.
void AddSetting(DoctorReport& report, const KnownSetting& known,
                const vetrix::host::Setting* stored) {
  const std::string value = known.value.dump();
  if (stored == nullptr) {
    report.Add(known.key, {{"value", known.value}, {"origin", "default"}}, value + " (default)");
    return;
  }
  report.Add(known.key, {{"value", known.value}, {"origin", "file"}, {"text", stored->text}},
             value + " (from the file)");
  if (stored->text != value) {
    report.AddNote(std::string(known.key) + " = " + stored->text + " is read as " + value);
  }
}

void AddSettingsFile(DoctorReport& report) {
  const std::string file = vetrix::host::SettingsPath();
  report.Add("file", file, file.empty() ? "none; VETRIX_SETTINGS is not set" : file);
  for (const std::string& complaint : vetrix::host::SettingsComplaints()) {
    report.AddNote(complaint);
  }
}

}  // namespace

void ExamineVersions(DoctorReport& report) {
  report.BeginSection("versions");
  const std::uint32_t version = PXL_PkgObjectVersion();
  report.Add("package", PackageVersion());
  report.Add("interface", version >> 16, std::to_string(version >> 16));
  report.Add("revision", version & 0xFFFFU, std::to_string(version & 0xFFFFU));
  report.Add("tool built for", PXL_InterfaceVersion, std::to_string(PXL_InterfaceVersion));
  report.Add("K", K_HeaderVersion(), std::to_string(K_HeaderVersion()));
  report.Add("Q", Q_HeaderVersion(), std::to_string(Q_HeaderVersion()));
  report.Add("TXT", TXT_HeaderVersion(), std::to_string(TXT_HeaderVersion()));
  for (const char* library : {"QDE", "vetrix", "TRC"})
    report.Add(library, nullptr, "has no version");
  try {
    const Module module;
    report.Add("module", "starts");
  } catch (const Failure& failure) {
    report.Add("module", failure.what());
    report.AddProblem(std::string("the module does not start: ") + failure.what());
  }
}

void ExamineProcessor(DoctorReport& report) {
  report.BeginSection("processor");
  report.Add("level", simd::NameOf(simd::ProcessorLevel()));
  report.Add("reason", ReasonForLevel());
  AddFeatures(report, "there", true);
  AddFeatures(report, "missing", false);
  const simd::Caches& caches = simd::ProcessorCaches();
  report.AddBytes("cache of a core", caches.own);
  report.AddBytes("share of the last cache", caches.shared);
}

void ExamineSettings(DoctorReport& report) {
  report.BeginSection("settings");
  AddSettingsFile(report);
  const auto stored = vetrix::host::Settings();
  const std::array known = {KnownSetting{kPoolKey, PoolEnabled()},
                            KnownSetting{kThresholdKey, PoolThreshold()}};
  for (const KnownSetting& setting : known) AddSetting(report, setting, Find(stored, setting.key));
  for (const vetrix::host::Setting& setting : stored) {
    if (std::ranges::find(known, setting.key, &KnownSetting::key) != known.end()) continue;
    report.Add(setting.key, {{"value", setting.text}, {"origin", "file"}, {"used", false}},
               setting.text + " (from the file; not used by PXL)");
  }
}

void ExamineLanguage(DoctorReport& report, const std::optional<std::string>& file) {
  report.BeginSection("language");
  report.Add("file", file.value_or(""), file.value_or("none; --language is not given"));
  if (!file) {
    report.Add("texts", "the module's own");
    return;
  }
  try {
    UseLanguage(*file);
    report.Add("texts", "from the file");
  } catch (const UsageError&) {
    throw;
  } catch (const Failure& failure) {
    report.Add("texts", "the module's own");
    report.AddProblem("the translation " + *file + ": " + failure.what());
  }
}

}  // namespace pxl
