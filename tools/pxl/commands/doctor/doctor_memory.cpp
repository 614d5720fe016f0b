// Examines pool, budget, frames and mapped files.
#include "tools/pxl/commands/doctor/doctor_memory.h"

#include <exception>
#include <filesystem>
#include <system_error>

#include "K_host.h"
#include "PXL.h"
#include "host/utf8_path.h"
#include "vetrix_host.h"

namespace pxl {
namespace {

// 1920 by 1080 pixels of 128 bits, and the extra bytes of a frame.
constexpr std::uint64_t kFrameBytes = std::uint64_t{1920} * 1080 * 16 + 20;

// Large enough to test the folder, small enough to fit on any volume.
constexpr std::uint64_t kMappedBytes = 1 << 20;

// The largest possible frame.
constexpr std::uint64_t kLargestFrame = 0x7FFFFFFF;

std::string NameOfLimit(std::int32_t limit) {
  switch (limit) {
    case K_MemoryLimit_BUDGET:
      return "the application";
    case K_MemoryLimit_GROUP:
      return "the process group";
    case K_MemoryLimit_SYSTEM:
      return "the system";
    default:
      return "none";
  }
}

void AddLimit(DoctorReport& report, const std::string& key, const K_MemoryBudget& budget) {
  if (budget.setBy == K_MemoryLimit_NONE) {
    report.Add(key, nullptr, "none");
  } else {
    report.AddBytes(key, budget.bytes);
  }
}

// The budget in force without that of the application.
K_MemoryBudget GroupBudget() {
  const std::uint64_t own = K_GetMemoryBudget();
  K_ReadMemoryGroup(nullptr);
  K_SetMemoryBudget(0);
  K_MemoryBudget group{};
  K_GetMemoryBudgetInForce(&group);
  K_SetMemoryBudget(own);
  return group;
}

void AddBudget(DoctorReport& report) {
  AddLimit(report, "left by process group", GroupBudget());
  K_MemoryBudget budget{};
  K_GetMemoryBudgetInForce(&budget);
  AddLimit(report, "budget", budget);
  report.Add("budget set by", NameOfLimit(budget.setBy));
  report.AddBytes("used of it", budget.used);
}

void AddPool(DoctorReport& report) {
  K_PoolStatistics pool{};
  K_GetPoolStatistics(&pool);
  report.Add("live blocks", pool.liveBlocks, std::to_string(pool.liveBlocks));
  report.AddBytes("live in the pool", pool.liveBytes);
  report.AddBytes("kept by the pool", pool.keptBytes);
  report.AddBytes("most that it keeps", K_GetPoolLimit());
}

// The limit that refused the attempt.
std::string Refuser(const K_MemoryRefusals& before) {
  K_MemoryRefusals now{};
  K_GetMemoryRefusals(&now);
  if (now.byBudget > before.byBudget) return NameOfLimit(K_MemoryLimit_BUDGET);
  if (now.byGroup > before.byGroup) return NameOfLimit(K_MemoryLimit_GROUP);
  return NameOfLimit(K_MemoryLimit_SYSTEM);
}

void TryFrame(DoctorReport& report) {
  K_MemoryRefusals before{};
  K_GetMemoryRefusals(&before);
  void* frame = nullptr;
  const std::int32_t status = PXL_AllocateFrameQuiet(kFrameBytes, 0, &frame);
  PXL_FreeFrame(frame, kFrameBytes);
  const std::string name = "a frame of " + BytesText(kFrameBytes);
  if (status == PXL_Err_NONE) {
    report.Add("frame", true, name + " is available");
    return;
  }
  report.Add("frame", false, name + " is not available");
  report.AddProblem(name + " is not available: refused by " + Refuser(before));
}

void AddVolume(DoctorReport& report, const std::string& folder) {
  std::error_code error;
  // Some systems return the space of the drive for a folder that does not exist.
  const auto path = std::filesystem::canonical(PathOfUtf8(folder), error);
  const auto space = error ? std::filesystem::space_info{} : std::filesystem::space(path, error);
  if (error) {
    report.Add("free space", nullptr, "unknown: " + error.message());
    return;
  }
  report.AddBytes("free space", space.available);
  if (space.available < kLargestFrame) {
    report.AddNote("the free space in " + folder + " is less than the largest mapped World needs");
  }
}

void TryMappedFile(DoctorReport& report, const std::string& folder) {
  try {
    vetrix::MemoryMappedFile file;
    file.Init("doctor", kMappedBytes, 0);
    *static_cast<char*>(file.GetAddress()) = 1;
    report.Add("reservation", true, BytesText(kMappedBytes) + " is available");
  } catch (const std::exception& problem) {
    report.Add("reservation", false, "is not available");
    report.AddProblem("mapped files in " + folder + ": " + problem.what());
  }
}

}  // namespace

void ExamineMemory(DoctorReport& report) {
  report.BeginSection("memory");
  AddPool(report);
  AddBudget(report);
  try {
    TryFrame(report);
  } catch (const std::exception& problem) {
    report.AddProblem(std::string("the settings cannot be read: ") + problem.what());
  }
}

void ExamineMappedFiles(DoctorReport& report) {
  report.BeginSection("mapped files");
  try {
    const vetrix::host::MappedFolder folder = vetrix::host::FindMappedFolder();
    report.Add("folder", folder.path);
    report.Add("named by", folder.variable,
               folder.variable.empty() ? "the system; no variable is set" : folder.variable);
    AddVolume(report, folder.path);
    TryMappedFile(report, folder.path);
  } catch (const std::system_error& problem) {
    report.AddProblem(std::string("there is no folder for mapped files: ") + problem.what());
  }
}

}  // namespace pxl
