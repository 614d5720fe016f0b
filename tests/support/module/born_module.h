// The module in its working life, for tests that begin with a World.
#ifndef TESTS_SUPPORT_MODULE_BORN_MODULE_H
#define TESTS_SUPPORT_MODULE_BORN_MODULE_H

#include "platform/QDE.h"
#include "tests/support/module/contract.h"

class BornModule : public Contract {
 protected:
  BornModule() { BeBorn(); }

  // A World, with nothing of its making left in the log.
  PXL_WorldHandle NewWorld(std::int32_t depth, const Rect& rect, std::uint32_t flags = 0) {
    PXL_WorldHandle worldH = Make(depth, rect, flags);
    ForgetLog();
    return worldH;
  }
  // The address of the surface's first pixel, with no trace in the log.
  void* SurfacePixels(PXL_WorldHandle worldH) {
    void* base = GetPixBaseAddr(GetPortPixMap(Record(worldH).gworld));
    ForgetLog();
    return base;
  }
  // Every call from now on moves the records: harder than K would.
  void MoveInEveryCall() {
    recorder_.OnCall([this](const std::string&) { recorder_.MoveBlocks(); });
  }
};

#endif
