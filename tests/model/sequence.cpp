// Random sequences of calls.
#include "tests/model/sequence.h"

#include <random>
#include <sstream>

namespace {

constexpr const char* kActs[] = {"new",       "dispose",      "lock",  "load-lock",
                                 "unlock",    "update",       "clear", "get order",
                                 "set order", "assume order", "purge", "move"};
static_assert(std::size(kActs) == static_cast<std::size_t>(Act::Count));

constexpr const char* kTroubles[] = {"",
                                     ", no handle",
                                     ", no memory",
                                     ", first try fails",
                                     ", first frame fails",
                                     ", frame with a code",
                                     ", surface fails",
                                     ", no memory for the surface",
                                     ", purged once more",
                                     ", no file",
                                     ", no view at first",
                                     ", view throws at first",
                                     ", no view",
                                     ", unmapping throws",
                                     ", reset throws"};
static_assert(std::size(kTroubles) == static_cast<std::size_t>(Trouble::Count));

constexpr const char* kBackings[] = {"surface", "frame", "geometry", "mapped"};

// Locks and unlocks are what hosts do most.
constexpr Act kLikely[] = {Act::New,    Act::New,     Act::Dispose, Act::Lock,     Act::Lock,
                           Act::Lock,   Act::Unlock,  Act::Unlock,  Act::Unlock,   Act::Unlock,
                           Act::Unlock, Act::Update,  Act::Update,  Act::Update,   Act::LoadLock,
                           Act::Purge,  Act::Purge,   Act::Clear,   Act::SetOrder, Act::AssumeOrder,
                           Act::Move,   Act::GetOrder};

bool OneIn(const Dice& roll, std::size_t sides) {
  return roll(sides) == 0;
}

constexpr int kLargestWidth = 40;
constexpr int kLargestHeight = 20;

Rect RandomRect(const Dice& roll) {
  const int left = roll(20) - 10;
  const int top = roll(20) - 10;
  return {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
          static_cast<std::int16_t>(top + 1 + roll(kLargestHeight)),
          static_cast<std::int16_t>(left + 1 + roll(kLargestWidth))};
}

// Now and then a row that no frame can have.
Rect RandomFrameRect(const Dice& roll) {
  Rect rect = RandomRect(roll);
  if (OneIn(roll, 20)) rect = {rect.top, -20000, rect.bottom, 20000};
  return rect;
}

std::int32_t RandomDepth(const Dice& roll, Backing backing) {
  constexpr std::int32_t kAll[] = {8, 32, 64, 128};
  if (backing == Backing::Surface) return kAll[roll(2)];
  return backing == Backing::Frame ? kAll[1 + roll(3)] : kAll[roll(4)];
}

Wish RandomWish(const Dice& roll) {
  Wish wish;
  constexpr Backing kOfferedBackings[] = {Backing::Surface, Backing::Surface, Backing::Frame,
                                          Backing::Frame,   Backing::Mapped,  Backing::Mapped,
                                          Backing::Geometry};
  wish.backing = kOfferedBackings[roll(std::size(kOfferedBackings))];
  wish.depth = RandomDepth(roll, wish.backing);
  wish.callersHandle = OneIn(roll, 2);
  const bool hasPixels = wish.backing == Backing::Surface || wish.backing == Backing::Frame;
  wish.clear = hasPixels && OneIn(roll, 3);
  wish.alternate = wish.backing == Backing::Frame && wish.depth == 32 && OneIn(roll, 3);
  wish.rect = wish.backing == Backing::Surface ? RandomRect(roll) : RandomFrameRect(roll);
  return wish;
}

void Describe(std::ostream& text, const Rect& rect) {
  text << " {" << rect.top << ", " << rect.left << ", " << rect.bottom << ", " << rect.right << "}";
}

void Describe(std::ostream& text, const Wish& wish) {
  text << " " << kBackings[static_cast<int>(wish.backing)] << " of " << wish.depth << " bits";
  Describe(text, wish.rect);
  if (wish.callersHandle) text << ", caller's handle";
  if (wish.clear) text << ", cleared";
  if (wish.alternate) text << ", alternate order";
}

void Describe(std::ostream& text, const Step& step) {
  text << kActs[static_cast<int>(step.act)];
  if (step.act == Act::New) Describe(text, step.wish);
  if (step.act == Act::Update) text << " to depth " << step.depth;
  if (step.act == Act::Update && step.hasRect) Describe(text, step.rect);
  if (step.asks) text << ", asks";
  if (step.asksToo) text << ", asks too";
  if (step.act == Act::Clear) text << " to " << step.value;
  text << kTroubles[static_cast<int>(step.trouble)];
}

}  // namespace

Step RandomStep(const Dice& roll) {
  Step step;
  step.act = kLikely[roll(std::size(kLikely))];
  if (OneIn(roll, 3)) {
    step.trouble = static_cast<Trouble>(roll(static_cast<std::size_t>(Trouble::Count)));
  }
  step.wish = RandomWish(roll);
  step.hasRect = !OneIn(roll, 6);
  step.rect = RandomFrameRect(roll);
  constexpr std::int32_t kDepths[] = {0, 0, 0, 8, 32, 64};
  step.depth = kDepths[roll(std::size(kDepths))];
  step.asks = OneIn(roll, 2);
  step.asksToo = OneIn(roll, 2);
  step.value = OneIn(roll, 3) ? 0 : 0x01020304;
  step.blockOffset = static_cast<std::size_t>(roll(16));
  return step;
}

Sequence RandomSequence(std::uint32_t seed, int length) {
  std::mt19937 engine(seed);
  // No library distribution: they differ between libraries.
  const Dice roll = [&engine](std::size_t sides) { return static_cast<int>(engine() % sides); };
  Sequence sequence;
  for (int i = 0; i < length; ++i) sequence.push_back(RandomStep(roll));
  return sequence;
}

std::string Described(const Sequence& sequence) {
  std::ostringstream text;
  for (const Step& step : sequence) {
    text << "  ";
    Describe(text, step);
    text << "\n";
  }
  return text.str();
}

Sequence Shortest(Sequence sequence, const std::function<bool(const Sequence&)>& fails) {
  bool dropped = true;
  while (dropped) {
    dropped = false;
    for (std::size_t i = sequence.size(); i-- > 0;) {
      Sequence without = sequence;
      without.erase(without.begin() + static_cast<std::ptrdiff_t>(i));
      if (!fails(without)) continue;
      sequence = without;
      dropped = true;
    }
  }
  return sequence;
}
