// Compares every conversion from float with exact integer arithmetic, for all
// 2^32 floats there are, and that of rows at every level of processor with the
// plain loop. The range is shared out to threads in blocks.
#include <unistd.h>

#include <array>
#include <atomic>
#include <bit>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "PXL.h"
#include "tests/support/oracle/channel_oracle.h"
#include "tools/proof/floats.h"
#include "tools/proof/values.h"
#include "transfer/kernels/plain_rows.h"

namespace {

constexpr std::uint32_t kBlock = 1U << 16;
constexpr std::uint32_t kBlocks = 1U << 16;
constexpr int kMaxMessages = 10;
constexpr unsigned kThreads = 2;

using Floats = std::array<float, kBlock>;
using Row = std::array<std::uint8_t, kBlock>;

// The state that the threads share.
struct Sweep {
  std::atomic<std::uint32_t> nextBlock{0};
  std::atomic<std::uint32_t> blocksDone{0};
  std::atomic<std::uint64_t> differences{0};
  std::mutex printing;
};

// Notes a difference; the first few are printed.
void Differs(Sweep& sweep, const char* conversion, std::uint32_t bits, std::uint32_t is,
             std::uint32_t shouldBe) {
  if (++sweep.differences > kMaxMessages) return;
  const std::lock_guard<std::mutex> lock(sweep.printing);
  std::printf("%s of the float 0x%08X gives 0x%X and should give 0x%X\n", conversion, bits, is,
              shouldBe);
}

void Compare(Sweep& sweep, const char* conversion, std::uint32_t bits, std::uint32_t is,
             std::uint32_t shouldBe) {
  if (is != shouldBe) Differs(sweep, conversion, bits, is, shouldBe);
}

void ComparePixel(Sweep& sweep, std::uint32_t first, const float* channels) {
  PXL_PixelF pixel = {{channels[0], channels[1], channels[2], channels[3]}};
  PXL_Pixel16 sixteen;
  PXL_Pixel8 eight;
  PXL_PixelFto16(&pixel, &sixteen);
  PXL_PixelFto8(&pixel, &eight);
  PXL_ClipPixelF(&pixel);
  for (std::uint32_t k = 0; k < 4; ++k) {
    const std::uint32_t bits = first + k;
    Compare(sweep, "PXL_PixelFto16", bits, sixteen.channel[k], oracle::Fto16(bits));
    Compare(sweep, "PXL_PixelFto8", bits, eight.channel[k], oracle::Fto8(bits));
    Compare(sweep, "PXL_ClipPixelF", bits, std::bit_cast<std::uint32_t>(pixel.channel[k]),
            oracle::Clipped(bits));
  }
}

void CompareBlock(Sweep& sweep, std::uint32_t first, Floats& floats, Row& row) {
  for (std::uint32_t i = 0; i < kBlock; ++i) floats[i] = std::bit_cast<float>(first + i);
  PXLp_ConvertRowFto8(floats.data(), row.data(), kBlock);
  for (std::uint32_t i = 0; i < kBlock; ++i) {
    Compare(sweep, "the row of a blit", first + i, row[i], oracle::RowFto8(first + i));
  }
  for (std::uint32_t i = 0; i < kBlock; i += 4) ComparePixel(sweep, first + i, &floats[i]);
}

void Work(Sweep& sweep) {
  const auto floats = std::make_unique<Floats>();
  const auto row = std::make_unique<Row>();
  for (;;) {
    const std::uint32_t block = sweep.nextBlock++;
    if (block >= kBlocks) return;
    CompareBlock(sweep, block * kBlock, *floats, *row);
    ++sweep.blocksDone;
  }
}

void ShowPercent(std::uint32_t blocksDone) {
  std::printf("\r%3u %%", static_cast<unsigned>(blocksDone * 100ULL / kBlocks));
  std::fflush(stdout);
}

void HidePercent() {
  std::printf("\r     \r");
}

void ShowProgress(Sweep& sweep) {
  while (sweep.blocksDone < kBlocks) {
    {
      const std::lock_guard<std::mutex> lock(sweep.printing);
      ShowPercent(sweep.blocksDone);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
  }
  HidePercent();
}

// Whether the row of a blit is the same at every level that this processor has.
bool LevelsAgree(bool onTerminal) {
  std::vector<proof::Subject> conversions;
  for (const simd::Level level : proof::LevelsHere()) {
    for (const proof::Subject& subject : proof::ConversionSubjects(level)) {
      if (subject.source.elementBytes == sizeof(float)) conversions.push_back(subject);
    }
  }
  const auto findings = proof::CheckFloats(conversions, proof::kAllFloats, [&](std::uint32_t done) {
    if (onTerminal) ShowPercent(done);
  });
  if (onTerminal) HidePercent();
  bool agree = true;
  for (std::size_t i = 0; i < findings.size(); ++i) {
    agree = agree && !findings[i];
    std::printf("%s\n",
                findings[i] ? findings[i]->c_str() : (conversions[i].name + ": ok").c_str());
  }
  return agree;
}

}  // namespace

int main() {
  Sweep sweep;
  std::vector<std::thread> workers;
  for (unsigned i = 0; i < kThreads; ++i) workers.emplace_back([&sweep] { Work(sweep); });
  const bool onTerminal = isatty(STDOUT_FILENO) != 0;
  if (onTerminal) ShowProgress(sweep);
  for (std::thread& worker : workers) worker.join();

  const auto differences = static_cast<unsigned long long>(sweep.differences);
  if (differences != 0) {
    std::printf("FAILED: %llu differences among all 4294967296 floats\n", differences);
    return 1;
  }
  if (!LevelsAgree(onTerminal)) {
    std::printf("FAILED: the levels do not agree on all 4294967296 floats\n");
    return 1;
  }
  std::printf(
      "PASSED: all 4294967296 floats, four conversions each, and the rows at every level\n");
  return 0;
}
