// Locks and unlocks of each kind of World, and birth with death.
#include "bench/rows/locks.h"

#include <sys/mman.h>

#include <cstdio>
#include <stdexcept>

#include "bench/harness/keep.h"
#include "bench/rows/empty_call.h"
#include "bench/rows/rows.h"
#include "bench/subjects/world.h"

namespace bench {
namespace {

constexpr Size kSize = {1920, 1080};

void LockAndUnlock(PXL_WorldHandle worldH) {
  PXL_LockPixels(0, worldH, nullptr);
  PXL_UnlockPixels(worldH);
}

Contender TwoEmptyCalls() {
  return {Role::Limit, "two empty calls", Repeat([] {
            BENCH_EmptyCall(nullptr, nullptr);
            BENCH_EmptyCall(nullptr, nullptr);
          })};
}

class Unlocked {
 public:
  Unlocked(Kind kind, int depth, std::uint32_t flags)
      : handle_(MakeWorld(kind, depth, kSize.width, kSize.height, flags)) {}
  ~Unlocked() { PXL_DisposeWorld(handle_); }
  Unlocked(const Unlocked&) = delete;
  Unlocked& operator=(const Unlocked&) = delete;
  PXL_WorldHandle Handle() const { return handle_; }

 private:
  PXL_WorldHandle handle_;
};

std::vector<Contender> SetUpLock(Kind kind, int depth) {
  const auto world = std::make_shared<Unlocked>(kind, depth, 0);
  return {{Role::Ours, "PXL", Repeat([world] { LockAndUnlock(world->Handle()); })},
          TwoEmptyCalls()};
}

constexpr std::uint32_t kMapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

// A file without a name, of the size of a frame.
class NamelessFile {
 public:
  NamelessFile() : file_(std::tmpfile()) {
    if (file_ == nullptr || std::fseek(file_, kBytes - 1, SEEK_SET) != 0 ||
        std::fputc(0, file_) != 0 || std::fflush(file_) != 0) {
      throw std::runtime_error("no file to be mapped");
    }
  }
  ~NamelessFile() { std::fclose(file_); }
  NamelessFile(const NamelessFile&) = delete;
  NamelessFile& operator=(const NamelessFile&) = delete;

  void MapAndUnmap() const {
    void* map = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_SHARED, fileno(file_), 0);
    Keep(map);
    munmap(map, kBytes);
  }

 private:
  static constexpr long kBytes = 1920L * 1080 * 16;
  std::FILE* file_;
};

std::vector<Contender> SetUpFirstMappedLock() {
  const auto world = std::make_shared<Unlocked>(Kind::Frame, PXL_Depth_128, kMapped);
  const auto file = std::make_shared<NamelessFile>();
  return {{Role::Ours, "PXL", Repeat([world] { LockAndUnlock(world->Handle()); })},
          {Role::Limit, "mmap and munmap", Repeat([file] { file->MapAndUnmap(); })}};
}

// Stays locked during the row.
std::vector<Contender> SetUpLaterMappedLock() {
  const std::shared_ptr<Unlocked> world(new Unlocked(Kind::Frame, PXL_Depth_128, kMapped),
                                        [](Unlocked* locked) {
                                          PXL_UnlockPixels(locked->Handle());
                                          delete locked;
                                        });
  if (PXL_LockPixels(0, world->Handle(), nullptr) != 0) {
    throw std::runtime_error("a mapped World cannot be locked");
  }
  return {{Role::Ours, "PXL", Repeat([world] { LockAndUnlock(world->Handle()); })},
          TwoEmptyCalls()};
}

// Ends the life of the module before the calls, and starts it again after them.
class Unborn {
 public:
  Unborn() { PXL_Death(); }
  ~Unborn() { PXL_Birth(0); }
  Unborn(const Unborn&) = delete;
  Unborn& operator=(const Unborn&) = delete;
};

std::vector<Contender> SetUpLife() {
  const auto unborn = std::make_shared<Unborn>();
  return {{Role::Ours, "PXL", Repeat([unborn] {
             PXL_Birth(0);
             PXL_Death();
           })}};
}

}  // namespace

void AddLocks() {
  AddRow(NameFor("lock, unlock: frame", kSize), [] { return SetUpLock(Kind::Frame, 128); });
  AddRow(NameFor("lock, unlock: surface", kSize), [] { return SetUpLock(Kind::Surface, 32); });
  AddRow(NameFor("lock, unlock: mapped, first", kSize), SetUpFirstMappedLock);
  AddRow(NameFor("lock, unlock: mapped, later", kSize), SetUpLaterMappedLock);
}

void AddLife() {
  AddRow({"birth, death", "once"}, SetUpLife);
}

}  // namespace bench
