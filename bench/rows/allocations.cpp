// Making and disposing of a large frame.
#include "bench/rows/allocations.h"

#include <fmt/format.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>

#include "K_host.h"
#include "bench/harness/keep.h"
#include "bench/rows/rows.h"
#include "bench/subjects/peers.h"
#include "bench/subjects/world.h"
#include "tests/support/system_use/system_use.h"

namespace bench {
namespace {

constexpr Size kSize = {1920, 1080};
constexpr std::size_t kFrameBytes = std::size_t{1920} * 1080 * 16;
constexpr std::size_t kSmallBlock = 64;
constexpr int kPairs = 20;  // of a small block, that the goal grants

PXL_WorldHandle Make(std::uint32_t flags) {
  return MakeWorld(Kind::Frame, PXL_Depth_128, kSize.width, kSize.height, flags);
}

void MakeAndDispose(std::uint32_t flags) {
  PXL_DisposeWorld(Make(flags));
}

void MallocAndFree(std::size_t bytes) {
  void* block = std::malloc(bytes);
  Keep(block);
  std::free(block);
}

bool MakeOften() {
  for (int i = 0; i < 1000; ++i) MakeAndDispose(0);
  return true;
}

// A freed handle is used again only after some hundreds of others were freed; until
// then the store grows.
void ReportSystemUse() {
  MakeOften();
  const long before = PageFaults();
  MakeOften();
  const long faults = PageFaults() - before;
  const QuietRun run = RunWithoutSystemCalls(MakeOften, MakeOften);
  const char* calls = run.quiet == Quiet::Yes           ? "no system call"
                      : run.quiet == Quiet::Unavailable ? "system calls not counted"
                                                        : "system calls";
  AddRemark(fmt::format("1000 times make, dispose: {} page faults, {}", faults, calls));
}

std::vector<Contender> SetUpMake() {
  ReportSystemUse();
  std::vector<Contender> contenders = FramePeers(kSize.width, kSize.height);
  contenders.push_back({Role::Ours, "PXL", Repeat([] { MakeAndDispose(0); })});
  contenders.push_back(
      {Role::Reference, "malloc and free", Repeat([] { MallocAndFree(kSmallBlock); })});
  contenders.push_back({Role::Peer, "malloc", Repeat([] { MallocAndFree(kFrameBytes); })});
  return contenders;
}

std::vector<Contender> SetUpMakeCleared() {
  const SharedWorld world = ShareWorld(Kind::Frame, PXL_Depth_128, kSize.width, kSize.height);
  void* pixels = world->View().pixels;
  return {{Role::Ours, "PXL", Repeat([] { MakeAndDispose(PXL_Flag_CLEAR); })},
          {Role::Limit, "memset", Repeat([world, pixels] { std::memset(pixels, 0, kFrameBytes); })},
          {Role::Reference, "memset and 20 mallocs", Repeat([world, pixels] {
             std::memset(pixels, 0, kFrameBytes);
             for (int i = 0; i < kPairs; ++i) MallocAndFree(kSmallBlock);
           })}};
}

// During its life K keeps no freed blocks, so that every frame is a new allocation.
class NoKeptBlocks {
 public:
  NoKeptBlocks() { K_SetPoolLimit(0); }
  ~NoKeptBlocks() { K_SetPoolLimit(K_DefaultPoolLimit); }
  NoKeptBlocks(const NoKeptBlocks&) = delete;
  NoKeptBlocks& operator=(const NoKeptBlocks&) = delete;
};

void TouchPages(void* frame) {
  constexpr std::size_t kPage = 4096;
  auto* bytes = static_cast<volatile std::uint8_t*>(frame);
  for (std::size_t i = 0; i < kFrameBytes; i += kPage) bytes[i] = 1;
}

void MakeTouchAndDispose() {
  const PXL_WorldHandle worldH = Make(0);
  PXL_LockPixels(0, worldH, nullptr);
  TouchPages(PXLp_GetPixBaseAddr(worldH));
  PXL_UnlockPixels(worldH);
  PXL_DisposeWorld(worldH);
}

// Starts on the boundary of a huge page.
void MapTouchAndUnmap(int advice) {
  constexpr std::size_t kHugePage = std::size_t{2} << 20;
  constexpr std::size_t kBytes = kFrameBytes + kHugePage;
  void* map = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (map == MAP_FAILED) throw std::runtime_error("no memory to be mapped");
  const std::uintptr_t start = (reinterpret_cast<std::uintptr_t>(map) + kHugePage - 1) & -kHugePage;
  void* frame = reinterpret_cast<void*>(start);
  madvise(frame, kFrameBytes, advice);
  TouchPages(frame);
  munmap(map, kBytes);
}

std::vector<Contender> SetUpTouch() {
  const auto noKeptBlocks = std::make_shared<NoKeptBlocks>();
  return {{Role::Ours, "PXL", Repeat([noKeptBlocks] { MakeTouchAndDispose(); })},
          {Role::Limit, "huge pages", Repeat([] { MapTouchAndUnmap(MADV_HUGEPAGE); })},
          {Role::Peer, "small pages", Repeat([] { MapTouchAndUnmap(MADV_NOHUGEPAGE); })}};
}

}  // namespace

void AddAllocations() {
  AddRow(NameFor("make, dispose", kSize), SetUpMake);
  AddRow(NameFor("make cleared, dispose", kSize), SetUpMakeCleared);
  AddRow(NameFor("make, touch, dispose", kSize), SetUpTouch);
}

}  // namespace bench
