// The one exception that passes out of the module: what the core library throws
// while the settings are read, at the first frame of the process. Prints what
// became of it.
#include <cstdio>
#include <exception>

#include "PXL.h"

namespace {

// Reads the settings where a failure is no surprise, before any World is made.
const char* ReadSettings() {
  try {
    void* frame = nullptr;
    PXL_AllocateFrameQuiet(1, 0, &frame);
    PXL_FreeFrame(frame, 1);
    return "settings read";
  } catch (const std::exception&) {
    return "settings not read; the defaults hold";  // it is not tried again
  }
}

}  // namespace

int main() {
  PXL_Birth(0);
  std::puts(ReadSettings());
  return PXL_Death();
}
