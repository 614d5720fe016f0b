// A scripted recorder in the place of the six imported libraries.
//
// Every call is written to a log, in order and with its arguments. Any call
// can be made to fail, and the results of the calls can be scripted. Calls that
// are not scripted work: handles are allocated and (unless locked) moved,
// surfaces have pixels, mapped files have memory. All resources are tracked, so
// that a test sees those that are still owned.
#ifndef TESTS_SUPPORT_RECORDER_RECORDER_H
#define TESTS_SUPPORT_RECORDER_RECORDER_H

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/K.h"
#include "platform/QDE.h"
#include "platform/vetrix.h"
#include "tests/support/recorder/layer_errors.h"

namespace recorder {

using Thrower = std::function<void()>;

// While one lives, `new` is the recorder's own and not observed: its books are not
// part of the libraries that it plays.
class Aside {
 public:
  Aside() { ++depth_; }
  ~Aside() { --depth_; }
  Aside(const Aside&) = delete;
  Aside& operator=(const Aside&) = delete;
  static bool Holds() { return depth_ > 0; }

 private:
  static int depth_;
};

// The results of the imports. A function that is not set leaves the call working;
// the numbers are those that the calls return.
struct Script {
  // K
  std::function<std::int32_t(std::uint64_t, K_PurgeAttempt, void*)> purgeLoop;
  int purgeRounds = 1;          // further attempts that the purge loop grants
  std::size_t blockOffset = 0;  // of heap and pool blocks, from a 16-byte boundary
  std::function<std::int32_t(std::int32_t error)> quexErrString;
  std::int32_t translatedException = 77;
  std::int32_t versionsOfK = 0;
  std::int32_t versionsOfQ = 0;
  std::int32_t versionsOfTXT = 0;
  // vetrix
  std::map<std::string, std::string> settings;
  bool inputIsBad = false;     // a stream that was read reports it, independent of fail()
  std::uint64_t fileSize = 0;  // 0: what Init was given
  // QDE
  std::int16_t newGWorldError = kLayerError;     // when NewGWorld fails
  GWorldPtr surfaceOfFailure = nullptr;          // what it then leaves in its output
  std::int32_t updateGWorldError = kLayerError;  // when UpdateGWorld fails
  std::uint32_t updateGWorldFlags = 0;           // when it succeeds
  bool updateReplacesSurface = false;
  bool updateLosesPixels = false;  // the map's base address becomes null
  bool surfaceWithoutMap = false;
  std::int16_t surfaceDepth = 0;     // 0: the depth asked for
  std::int16_t surfaceRowBytes = 0;  // 0: the width's, rounded up to 16
  std::int32_t pixmapFormat = 0;
  std::int16_t pixmapFormatError = 0;
  GrafPtr currentPort = nullptr;
  GDHandle currentDevice = nullptr;
};

// The script and the log of the test that runs now.
class Recorder {
 public:
  Script script;
  std::vector<std::string> log;

  // Back to an empty log and a script that works; frees what tests left.
  void Reset();

  // The nth call of `name` from now on fails (1: the next). A call that has no
  // way to fail ignores it.
  void Fail(const std::string& name, int nth = 1);
  // Every call of `name` fails from now on.
  void FailAlways(const std::string& name);
  // The nth call of `name` from now on throws, after it was logged.
  void Throw(const std::string& name, Thrower thrower, int nth = 1);
  // Is run in every call, after it was logged.
  void OnCall(std::function<void(const std::string& name)> observer);

  // How an address appears in the log.
  void Name(const void* address, const std::string& name);
  [[nodiscard]] std::string NameOf(const void* address) const;

  // The calls of these names, in order.
  [[nodiscard]] std::vector<std::string> LogOf(const std::set<std::string>& names) const;
  [[nodiscard]] int Count(const std::string& name) const;

  // The resources that are still owned, by name.
  [[nodiscard]] std::vector<std::string> Outstanding() const;

  // A handle as a host would own it; its block moves like any other.
  Handle NewHandle(std::size_t size);
  void FreeHandle(Handle handle);
  [[nodiscard]] bool IsLocked(Handle handle) const;
  // Moves every unlocked block and fills its old place.
  void MoveBlocks();

  // For the imports: logs a call and returns whether it has to fail.
  bool Enter(std::string_view call, const std::string& arguments);
  void Own(const void* address, const std::string& name, std::function<void()> release);
  void Disown(const void* address);
  // Releases an owned resource.
  void Release(const void* address);
  [[nodiscard]] bool Owns(const void* address) const;
  // The same for one kind: the name that Own was given.
  [[nodiscard]] bool Owns(const void* address, const std::string& kind) const;

 private:
  struct Plan {
    int calls = 0;
    std::set<int> failing;
    bool always = false;
    std::map<int, Thrower> throwing;
  };
  struct Block {
    std::vector<unsigned char> bytes;
    bool locked = false;
  };
  struct Owned {
    std::string kind;
    std::string name;
    std::function<void()> release;  // run by Reset on what a test left behind
  };
  void Place(Handle handle, std::vector<unsigned char> bytes);

  std::map<std::string, Plan> plans_;
  std::function<void(const std::string&)> observer_;
  std::map<const void*, std::string> names_;
  std::map<const void*, Owned> owned_;
  std::map<Handle, Block> blocks_;
  std::vector<std::vector<unsigned char>> abandoned_;
  std::map<std::string, int> counters_;

  friend void ::HLock(Handle);
  friend void ::HUnlock(Handle);
};

Recorder& Current();

// Is asked in every `new` of the module, and of the functions played here that
// may throw, whether it has to fail; null: none. It stays its owner's.
void OnNew(const std::function<bool()>* observer);

// The next allocation of exactly that many bytes with `new` throws; 0: none.
void FailNewOf(std::size_t size);

// Arguments as they appear in the log.
std::string Text(const char* text);
std::string Text(const std::string& text);
std::string Text(const std::u16string& text);
std::string Text(const Rect* rect);
std::string Hex(std::uint32_t value);
std::string Text(const void* address);
template <typename Type>
concept ANumber = std::is_arithmetic_v<Type>;
template <ANumber Number>
std::string Text(Number number) {
  const Aside aside;
  return std::to_string(number);
}

template <typename... Arguments>
std::string Join(const Arguments&... arguments) {
  const Aside aside;
  std::string joined;
  ((joined += (joined.empty() ? "" : ", ") + arguments), ...);
  return joined;
}

}  // namespace recorder

#endif
