// Threads that convert all floats, a block at a time.
#include "tools/proof/floats.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "tools/proof/difference.h"

namespace proof {
namespace {

constexpr std::uint32_t kBlock = 1U << 16;

struct Block {
  std::array<float, kBlock> floats;
  std::array<unsigned char, kBlock> expected;
  std::array<unsigned char, kBlock> result;
};

class Sweep {
 public:
  Sweep(const std::vector<Subject>& conversions, FloatBlocks blocks)
      : conversions_(conversions), blocks_(blocks), findings_(conversions.size()) {}

  std::vector<Finding> Run(const std::function<void(std::uint32_t)>& progress) {
    std::vector<std::thread> workers;
    const unsigned threads = std::max(1U, std::thread::hardware_concurrency());
    for (unsigned i = 0; i < threads; ++i) workers.emplace_back([this] { Work(); });
    Watch(progress);
    for (std::thread& worker : workers) worker.join();
    return findings_;
  }

 private:
  void Watch(const std::function<void(std::uint32_t)>& progress) {
    std::unique_lock<std::mutex> lock(mutex_);
    while (done_ < blocks_.count) {
      progress(done_);
      allDone_.wait_for(lock, std::chrono::milliseconds(100));
    }
  }

  void Work() {
    const auto block = std::make_unique<Block>();
    for (std::uint32_t next = next_++; next < blocks_.count; next = next_++) {
      CompareBlock(*block, (blocks_.first + next) * kBlock);
      const std::lock_guard<std::mutex> lock(mutex_);
      if (++done_ == blocks_.count) allDone_.notify_one();
    }
  }

  void CompareBlock(Block& block, std::uint32_t first) {
    for (std::uint32_t i = 0; i < kBlock; ++i) block.floats[i] = std::bit_cast<float>(first + i);
    conversions_.front().plain(block.floats.data(), block.expected.data(), kBlock);
    for (std::size_t i = 0; i < conversions_.size(); ++i) {
      block.result.fill(static_cast<unsigned char>(~block.expected[0]));
      conversions_[i].run(block.floats.data(), block.result.data(), kBlock);
      const auto difference = FirstDifference(block.result.data(), block.expected.data(), kBlock);
      if (difference) Note(i, first, *difference);
    }
  }

  void Note(std::size_t conversion, std::uint32_t first, const Difference& difference) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (findings_[conversion]) return;
    const std::uint32_t bits = first + static_cast<std::uint32_t>(difference.place);
    findings_[conversion] =
        conversions_[conversion].name + ": the float " + Hex(bits, 8) + " " + TextOf(difference);
  }

  const std::vector<Subject>& conversions_;
  const FloatBlocks blocks_;
  std::atomic<std::uint32_t> next_{0};
  std::mutex mutex_;  // protects the members below
  std::condition_variable allDone_;
  std::uint32_t done_ = 0;
  std::vector<Finding> findings_;
};

}  // namespace

std::vector<Finding> CheckFloats(const std::vector<Subject>& conversions, FloatBlocks blocks,
                                 const std::function<void(std::uint32_t)>& progress) {
  if (conversions.empty()) return {};
  return Sweep(conversions, blocks).Run(progress);
}

}  // namespace proof
