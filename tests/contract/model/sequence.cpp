#include "tests/contract/model/sequence.h"

#include <random>
#include <sstream>

namespace {

constexpr const char* ACTS[] = {"new",       "dispose",      "lock",  "load-lock",
                                "unlock",    "update",       "clear", "get order",
                                "set order", "assume order", "purge", "move"};
static_assert(std::size(ACTS) == static_cast<std::size_t>(Act::Count));

constexpr const char* TROUBLES[] = {"",
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
static_assert(std::size(TROUBLES) == static_cast<std::size_t>(Trouble::Count));

constexpr const char* BACKINGS[] = {"surface", "frame", "geometry", "mapped"};

// Locks and unlocks are what hosts do most.
constexpr Act LIKELY[] = {Act::New,    Act::New,     Act::Dispose, Act::Lock,     Act::Lock,
                          Act::Lock,   Act::Unlock,  Act::Unlock,  Act::Unlock,   Act::Unlock,
                          Act::Unlock, Act::Update,  Act::Update,  Act::Update,   Act::LoadLock,
                          Act::Purge,  Act::Purge,   Act::Clear,   Act::SetOrder, Act::AssumeOrder,
                          Act::Move,   Act::GetOrder};

class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}
  // 0 .. sides - 1. No library distribution: they differ between libraries.
  int Roll(std::size_t sides) { return static_cast<int>(engine_() % sides); }
  bool OneIn(std::size_t sides) { return Roll(sides) == 0; }

 private:
  std::mt19937 engine_;
};

constexpr int LARGEST_WIDTH = 40;
constexpr int LARGEST_HEIGHT = 20;

Rect RandomRect(Dice& dice) {
  const int left = dice.Roll(20) - 10;
  const int top = dice.Roll(20) - 10;
  return {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
          static_cast<std::int16_t>(top + 1 + dice.Roll(LARGEST_HEIGHT)),
          static_cast<std::int16_t>(left + 1 + dice.Roll(LARGEST_WIDTH))};
}

// Now and then a row that no frame can have.
Rect RandomFrameRect(Dice& dice) {
  Rect rect = RandomRect(dice);
  if (dice.OneIn(20)) rect = {rect.top, -20000, rect.bottom, 20000};
  return rect;
}

std::int32_t RandomDepth(Dice& dice, Backing backing) {
  constexpr std::int32_t all[] = {8, 32, 64, 128};
  if (backing == Backing::Surface) return all[dice.Roll(2)];
  return backing == Backing::Frame ? all[1 + dice.Roll(3)] : all[dice.Roll(4)];
}

Wish RandomWish(Dice& dice) {
  Wish wish;
  constexpr Backing backings[] = {Backing::Surface, Backing::Surface, Backing::Frame,
                                  Backing::Frame,   Backing::Mapped,  Backing::Mapped,
                                  Backing::Geometry};
  wish.backing = backings[dice.Roll(std::size(backings))];
  wish.depth = RandomDepth(dice, wish.backing);
  wish.callersHandle = dice.OneIn(2);
  const bool hasPixels = wish.backing == Backing::Surface || wish.backing == Backing::Frame;
  wish.clear = hasPixels && dice.OneIn(3);
  wish.alternate = wish.backing == Backing::Frame && wish.depth == 32 && dice.OneIn(3);
  wish.rect = wish.backing == Backing::Surface ? RandomRect(dice) : RandomFrameRect(dice);
  return wish;
}

Step RandomStep(Dice& dice) {
  Step step;
  step.act = LIKELY[dice.Roll(std::size(LIKELY))];
  if (dice.OneIn(3)) {
    step.trouble = static_cast<Trouble>(dice.Roll(static_cast<std::size_t>(Trouble::Count)));
  }
  step.wish = RandomWish(dice);
  step.hasRect = !dice.OneIn(6);
  step.rect = RandomFrameRect(dice);
  constexpr std::int32_t depths[] = {0, 0, 0, 8, 32, 64};
  step.depth = depths[dice.Roll(std::size(depths))];
  step.asks = dice.OneIn(2);
  step.asksToo = dice.OneIn(2);
  step.value = dice.OneIn(3) ? 0 : 0x01020304;
  step.blockOffset = static_cast<std::size_t>(dice.Roll(16));
  return step;
}

void Describe(std::ostream& text, const Rect& rect) {
  text << " {" << rect.top << ", " << rect.left << ", " << rect.bottom << ", " << rect.right << "}";
}

void Describe(std::ostream& text, const Wish& wish) {
  text << " " << BACKINGS[static_cast<int>(wish.backing)] << " of " << wish.depth << " bits";
  Describe(text, wish.rect);
  if (wish.callersHandle) text << ", caller's handle";
  if (wish.clear) text << ", cleared";
  if (wish.alternate) text << ", alternate order";
}

void Describe(std::ostream& text, const Step& step) {
  text << ACTS[static_cast<int>(step.act)];
  if (step.act == Act::New) Describe(text, step.wish);
  if (step.act == Act::Update) text << " to depth " << step.depth;
  if (step.act == Act::Update && step.hasRect) Describe(text, step.rect);
  if (step.asks) text << ", asks";
  if (step.asksToo) text << ", asks too";
  if (step.act == Act::Clear) text << " to " << step.value;
  text << TROUBLES[static_cast<int>(step.trouble)];
}

}  // namespace

Sequence RandomSequence(std::uint32_t seed, int length) {
  Dice dice(seed);
  Sequence sequence;
  for (int i = 0; i < length; ++i) sequence.push_back(RandomStep(dice));
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
