// Lets the recorder fail as the model expects.
#include "tests/model/troubles.h"

#include <algorithm>
#include <vector>

#include "tests/support/module/ways.h"
#include "tests/support/recorder/recorder.h"

namespace {

enum class When { First, Always };

struct Effect {
  Trouble trouble;
  std::string call;
  When when;
  Way way;
};

const std::vector<Effect>& Effects() {
  static const std::vector<Effect> effects = {
      {Trouble::NoHandle, "K_AllocateHandleClear", When::First, Way::Fails},
      {Trouble::NoMemory, "malloc", When::Always, Way::Fails},
      {Trouble::NoMemory, "K_AllocateRecycledPtr", When::Always, Way::Fails},
      {Trouble::FirstTryFails, "malloc", When::First, Way::Fails},
      {Trouble::FirstTryFails, "K_AllocateRecycledPtr", When::First, Way::Fails},
      {Trouble::FirstFrameFails, "K_PurgeLoop", When::First, Way::GivesUp},
      {Trouble::FrameWithCode, "K_PurgeLoop", When::First, Way::GivesCode},
      {Trouble::SurfaceFails, "NewGWorld", When::First, Way::Fails},
      {Trouble::SurfaceFails, "UpdateGWorld", When::First, Way::Fails},
      {Trouble::SurfaceNoMemory, "NewGWorld", When::First, Way::MemoryFull},
      {Trouble::SurfaceNoMemory, "UpdateGWorld", When::First, Way::MemoryFull},
      {Trouble::NoFile, "Init", When::First, Way::ThrowsException},
      {Trouble::NoViewAtFirst, "GetAddress", When::First, Way::Fails},
      {Trouble::ViewThrowsAtFirst, "GetAddress", When::First, Way::ThrowsText},
      {Trouble::NoView, "GetAddress", When::Always, Way::Fails},
      {Trouble::UnmapThrows, "UnmapMemory", When::First, Way::ThrowsException},
      {Trouble::ResetThrows, "Reset", When::First, Way::ThrowsException},
  };
  return effects;
}

}  // namespace

void Troubles::Begin(Trouble trouble) {
  trouble_ = trouble;
  calls_.clear();
  recorder::Current().script.purgeLoop = nullptr;
}

bool Troubles::Strikes(const std::string& name) {
  const int nth = ++calls_[name];
  const auto strikes = [&](const Effect& effect) {
    return effect.trouble == trouble_ && effect.call == name &&
           (effect.when == When::Always || nth == 1);
  };
  const auto found = std::find_if(Effects().begin(), Effects().end(), strikes);
  if (found == Effects().end()) return false;
  met_.insert(trouble_);
  FailCurrentCall(name, found->way);
  return true;
}

void Troubles::Observe(const std::string& name) {
  const bool struck = Strikes(name);
  if (name == "NewGWorld") purged_ = false;
  if (name == "UpdateGWorld" && !struck) {
    purged_ = trouble_ == Trouble::PurgedOnceMore;
    if (purged_) met_.insert(trouble_);
  }
  if (name == "LockPixels" && purged_) FailCurrentCall(name, Way::Fails);
}
