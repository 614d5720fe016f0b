// Worlds are made one after the other; then each thread works on its own.
// Prints the sums.
#include <cstdio>
#include <thread>

#include "PXL.h"

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 360;

struct Job {
  PXL_WorldHandle world = nullptr;
  double sum = 0;
};

// Touches pixels that are locked, and nothing that threads share.
void Work(Job* job, float value) {
  auto* pixels = static_cast<PXL_PixelF*>((*job->world)->pixels.baseAddr);
  for (int i = 0; i < kWidth * kHeight; ++i) {
    for (float& channel : pixels[i].channel) channel = value;
    PXL_ClipPixelF(&pixels[i]);
    job->sum += static_cast<double>(pixels[i].channel[0]);
  }
}

bool Make(Job* job) {
  const Rect bounds = {0, 0, kHeight, kWidth};
  return PXL_NewWorld(nullptr, 0, &bounds, PXL_Depth_128, 0, nullptr, &job->world) == 0 &&
         PXL_LockPixels(0, job->world, nullptr) == 0;
}

}  // namespace

int main() {
  PXL_Birth(0);
  Job first;
  Job second;
  if (!Make(&first) || !Make(&second)) return 1;
  std::thread other(Work, &second, 3.0F);
  Work(&first, 0.5F);
  other.join();
  for (const Job* job : {&first, &second}) {
    std::printf("%.0f\n", job->sum);
    PXL_UnlockPixels(job->world);
    PXL_DisposeWorld(job->world);
  }
  return PXL_Death();
}
