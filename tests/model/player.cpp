// Plays a sequence on the module and on the model, and compares them.
#include "tests/model/player.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/QDE.h"
#include "tests/support/module/record_fields.h"
#include "tests/support/module/ways.h"

namespace {

constexpr int kUntouched = 9;
constexpr int kWidestSurface = 1000;

std::uint32_t Flags(const Wish& wish) {
  std::uint32_t flags = wish.clear ? std::uint32_t{PXL_Flag_CLEAR} : 0U;
  if (wish.alternate) flags |= PXL_Flag_ALT_ORDER;
  if (wish.backing == Backing::Frame) flags |= PXL_Flag_NO_PLATFORM;
  if (wish.backing == Backing::Geometry) flags |= PXL_Flag_DEFERRED;
  if (wish.backing == Backing::Mapped) flags |= PXL_Flag_DEFERRED | PXL_Flag_MAPPED;
  return flags;
}

bool Starts(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

std::int64_t Argument(const std::string& call) {
  return std::strtoll(call.c_str() + call.find('(') + 1, nullptr, 10);
}

}  // namespace

std::string Player::Play(const Sequence& sequence, Memory memory) {
  Begin(memory);
  std::string difference;
  for (std::size_t i = 0; i < sequence.size() && difference.empty(); ++i) {
    if (!Applies(sequence[i])) continue;
    ++played_;
    difference = PlayStep(sequence[i]);
    if (!difference.empty()) difference.insert(0, "call " + std::to_string(i + 1) + ": ");
  }
  const std::string end = End();
  return difference.empty() ? end : difference;
}

void Player::Begin(Memory memory) {
  Unload();
  recorder_.script.settings["VirtualAllocMinSizeInK3"] = memory == Memory::Pool ? "0" : "1000";
  BeBorn();
  model_ = WorldModel{};
  troubles_ = Troubles{};
  callerH_ = CallerHandle();
  worldH_ = nullptr;
  applicationBytes_ = 0;
  systemBytes_ = 0;
  recorder_.OnCall([this](const std::string& name) { troubles_.Observe(name); });
}

// Calls that the header leaves open are not made.
bool Player::Applies(const Step& step) const {
  const bool surface = model_.backing == Backing::Surface;
  switch (step.act) {
    case Act::New:
      return !model_.live;
    case Act::Update:
      // The drawing layer has limits of its own for such rows.
      if (surface && step.hasRect && step.rect.right - step.rect.left > kWidestSurface)
        return false;
      return !model_.HasStrandedView() || model_.lockCount != 0;
    case Act::Clear:
      return model_.live && (model_.CanWrite() || (!model_.HasAddress() && step.value != 0));
    case Act::GetOrder:
    case Act::AssumeOrder:
      return model_.live;
    case Act::SetOrder:
      return model_.live && (model_.HasAddress() || model_.depth != PXL_Depth_32);
    case Act::Purge:
      return model_.live && surface && !model_.base;
    default:
      return true;
  }
}

std::string Player::PlayStep(const Step& step) {
  difference_.clear();
  ForgetLog();
  recorder_.script.blockOffset = step.blockOffset;
  troubles_.Begin(step.trouble);
  const Answer module = AskModule(step);
  troubles_.Begin(Trouble::None);
  const Answer model = AskModel(step);
  BookBytes();
  Compare(module, model);
  CompareRecord();
  CompareAddress();
  CompareSurroundings();
  if (step.act == Act::Clear && model_.CanWrite()) ComparePixels(step.value);
  if (step.act == Act::New && model_.live && step.wish.clear) ComparePixels(0);
  return difference_;
}

Answer Player::AskModel(const Step& step) {
  const Rect* rect = step.hasRect ? &step.rect : nullptr;
  switch (step.act) {
    case Act::New:
      return model_.New(step.wish, step.trouble);
    case Act::Dispose:
      return model_.Dispose(step.trouble);
    case Act::Lock:
      return model_.Lock(step.asks, step.trouble);
    case Act::LoadLock:
      return model_.LoadLock(step.asks, step.asksToo, step.trouble);
    case Act::Unlock:
      return model_.Unlock(step.trouble);
    case Act::Update:
      return model_.Update(step.depth, rect, step.trouble);
    case Act::GetOrder:
      return model_.GetOrder();
    case Act::SetOrder:
      return model_.SetOrder(step.asks ? 1 : 0);
    case Act::AssumeOrder:
      model_.AssumeOrder(step.asks ? 1 : 0);
      return {};
    case Act::Purge:
      model_.purged = true;
      return {};
    default:
      return {};
  }
}

Answer Player::AskModule(const Step& step) {
  Answer answer;
  answer.status = Call(step, answer);
  for (const std::string& call : Log()) {
    answer.reports += IsReport(call.substr(0, call.find('('))) ? 1 : 0;
  }
  answer.beeps = recorder_.Count("K_Beep");
  return answer;
}

std::int32_t Player::New(const Step& step) {
  const Wish& wish = step.wish;
  if (wish.callersHandle) {
    worldH_ = callerH_;
    return PXL_NewWorld(nullptr, Flags(wish), &wish.rect, wish.depth, 0, callerH_, nullptr);
  }
  worldH_ = callerH_;
  const std::int32_t status =
      PXL_NewWorld(nullptr, Flags(wish), &wish.rect, wish.depth, 0, nullptr, &worldH_);
  if (status != PXL_Err_NONE) Differ("the handle that was given back", worldH_ != nullptr, 0);
  return status;
}

// A provider whose pixels could not be freed is kept for the end.
std::int32_t Player::Dispose() {
  PXL_PixelProvider* provider = model_.live ? Record(worldH_).pixels.provider : nullptr;
  const std::int32_t status = PXL_DisposeWorld(Target());
  if (status != PXL_Err_NONE && provider != nullptr) lost_.push_back(provider);
  return status;
}

std::int32_t Player::Call(const Step& step, Answer& answer) {
  switch (step.act) {
    case Act::New:
      return New(step);
    case Act::Dispose:
      return Dispose();
    case Act::Update:
      return PXL_UpdateWorld(step.depth, step.hasRect ? &step.rect : nullptr, 0, nullptr, Target());
    case Act::Clear:
      return PXL_ClearWorldToLong(worldH_, step.value);
    case Act::SetOrder:
      return PXL_SetChannelOrder(worldH_, step.asks ? 1 : 0);
    case Act::AssumeOrder:
      return PXL_AssumeChannelOrder(worldH_, step.asks ? 1 : 0);
    case Act::Purge:
      troubles_.PurgePixels();
      return PXL_Err_NONE;
    case Act::Move:
      recorder_.MoveBlocks();
      return PXL_Err_NONE;
    default:
      return CallForPixels(step, answer);
  }
}

// The calls with outputs, and the unlock.
std::int32_t Player::CallForPixels(const Step& step, Answer& answer) {
  std::uint8_t first = kUntouched;
  std::uint8_t second = kUntouched;
  std::uint8_t* firstOut = step.asks ? &first : nullptr;
  std::uint32_t order = kUntouched;
  std::int32_t status = PXL_Err_NONE;
  if (step.act == Act::Lock) status = PXL_LockPixels(0, Target(), firstOut);
  if (step.act == Act::LoadLock) {
    status = PXL_LoadLockPixels(0, Target(), firstOut, step.asksToo ? &second : nullptr);
  }
  if (step.act == Act::Unlock) PXL_UnlockPixels(Target());
  if (step.act == Act::GetOrder) {
    status = PXL_GetChannelOrder(worldH_, &order);
    first = static_cast<std::uint8_t>(order);
  }
  answer.first = first;
  answer.second = second;
  return status;
}

void Player::BookBytes() {
  for (const std::string& call : Log()) {
    if (Starts(call, "K_AccountAllocation(")) applicationBytes_ += Argument(call);
    if (Starts(call, "K_AccountSystemAllocation(")) systemBytes_ += Argument(call);
  }
}

// Keeps the first difference only: the others mostly follow from it.
void Player::DifferInNumber(const std::string& what, std::int64_t module, std::int64_t model) {
  if (module == model || !difference_.empty()) return;
  difference_ = what;
  difference_.append(" is ").append(std::to_string(module));
  difference_.append(", the model says ").append(std::to_string(model));
}

std::string Player::Compare(const Answer& module, const Answer& model) {
  Differ("the status", module.status, model.status);
  Differ("the number of reports", module.reports, model.reports);
  Differ("the first output", module.first, model.first);
  Differ("the second output", module.second, model.second);
  Differ("the number of beeps", module.beeps, model.beeps);
  return difference_;
}

std::string Player::CompareRecord() {
  if (!model_.live) {
    const PXL_World& dead = Record(callerH_);
    Differ("a live mark", dead.headMark == PXL_LiveMark || dead.tailMark == PXL_LiveMark, 0);
    return difference_;
  }
  if (worldH_ == nullptr) {
    Differ("the handle", 0, 1);
    return difference_;
  }
  const PXL_World& world = Record(worldH_);
  const bool surface = model_.backing == Backing::Surface;
  Differ("headMark", world.headMark, PXL_LiveMark);
  Differ("tailMark", world.tailMark, PXL_LiveMark);
  Differ("flags", world.flags, model_.flags);
  Differ("width", world.width, model_.Width());
  Differ("height", world.height, model_.Height());
  Differ("equality of bounds", world.bounds == model_.bounds, 1);
  Differ("depth", world.depth, model_.depth);
  Differ("ownsHandle", world.ownsHandle, model_.ownsHandle);
  Differ("hasFrame", world.hasFrame, !surface);
  Differ("hasGWorld", world.hasGWorld, surface);
  Differ("presence of gworld", world.gworld != nullptr, surface);
  Differ("presence of gdevice", world.gdevice != nullptr, surface);
  const PXL_PixelBuffer& pixels = world.pixels;
  Differ("lockCount", pixels.lockCount, model_.lockCount);
  Differ("presence of frame", pixels.frame != nullptr, model_.frame);
  Differ("frameSize", static_cast<std::int64_t>(pixels.frameSize),
         static_cast<std::int64_t>(model_.frameSize));
  Differ("presence of baseAddr", pixels.baseAddr != nullptr, model_.base);
  Differ("rowBytes", pixels.rowBytes, model_.rowBytes);
  Differ("presence of provider", pixels.provider != nullptr, model_.backing == Backing::Mapped);
  return difference_;
}

// Where the first pixel is. A block of the old size keeps the old offset.
std::string Player::CompareAddress() {
  if (!model_.live || !difference_.empty()) return difference_;
  const PXL_PixelBuffer& pixels = Record(worldH_).pixels;
  void* address = PXLp_GetPixBaseAddr(worldH_);
  Differ("presence of the address", address != nullptr, model_.HasAddress());
  if (pixels.baseAddr != nullptr) Differ("baseAddr", pixels.baseAddr == address, 1);
  if (model_.backing == Backing::Surface || address == nullptr) return difference_;
  Differ("the offset of the first pixel",
         static_cast<char*>(address) - static_cast<char*>(pixels.frame),
         static_cast<std::int64_t>(pixels.alignOffset));
  if (model_.backing == Backing::Frame && model_.aligned) {
    const auto number = reinterpret_cast<std::uintptr_t>(address);
    Differ("the alignment", static_cast<std::int64_t>(number % 16), 0);
    Differ("the range of alignOffset", pixels.alignOffset < 16, 1);
  }
  return difference_;
}

std::string Player::CompareSurroundings() {
  int handles = 0;
  int blocks = 0;
  int surfaces = 0;
  int files = 0;
  for (const std::string& name : recorder_.Outstanding()) {
    handles += Starts(name, "handle") ? 1 : 0;
    blocks += Starts(name, "heap") || Starts(name, "pool") ? 1 : 0;
    surfaces += Starts(name, "gworld") ? 1 : 0;
    files += Starts(name, "file") ? 1 : 0;
  }
  const bool live = model_.live;
  const bool owned = model_.backing == Backing::Frame && model_.frame;
  Differ("worldCount", PXLp_G.worldCount, model_.worldCount);
  Differ("the number of handles", handles, live && model_.ownsHandle);
  Differ("the number of blocks", blocks, model_.lostBlocks + (live && owned ? 1 : 0));
  Differ("the number of surfaces", surfaces, live && model_.backing == Backing::Surface);
  Differ("the number of files", files,
         model_.lostFiles + (live && model_.backing == Backing::Mapped ? 1 : 0));
  Differ("the application's bytes", applicationBytes_, model_.applicationBytes);
  Differ("the system's bytes", systemBytes_, model_.systemBytes);
  Differ("a lock of the handle", recorder_.IsLocked(reinterpret_cast<Handle>(Target())), 0);
  return difference_;
}

std::string Player::ComparePixels(std::int32_t value) {
  if (!difference_.empty()) return difference_;
  const auto* bytes = static_cast<const unsigned char*>(PXLp_GetPixBaseAddr(worldH_));
  const auto words = static_cast<std::size_t>(model_.rowBytes * model_.Height()) / 4;
  std::size_t equal = 0;
  for (std::size_t i = 0; i < words; ++i) {
    equal += std::memcmp(bytes + i * 4, &value, sizeof value) == 0 ? 1U : 0U;
  }
  Differ("the number of cleared words", static_cast<std::int64_t>(equal),
         static_cast<std::int64_t>(words));
  return difference_;
}

// Disposes of the World; only the blocks that the contract loses are left.
std::string Player::End() {
  difference_.clear();
  ForgetLog();
  troubles_.Begin(Trouble::None);
  if (model_.live && worldH_ != nullptr && Record(worldH_).headMark == PXL_LiveMark) {
    Differ("the status of the last disposal", PXL_DisposeWorld(worldH_),
           model_.Dispose(Trouble::None).status);
  }
  for (PXL_PixelProvider* provider : lost_) provider->release(&provider);
  lost_.clear();
  recorder_.OnCall(nullptr);
  met_.insert(troubles_.Met().begin(), troubles_.Met().end());
  Differ("what is left at the end", static_cast<std::int64_t>(recorder_.Outstanding().size()),
         model_.lostBlocks);
  if (!difference_.empty()) difference_.insert(0, "at the end: ");
  return difference_;
}
