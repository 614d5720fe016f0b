// The frame settings and the rule of the pool.
#include "memory/frame_settings.h"

#include <string>
#include <type_traits>

#include "memory/frame_settings_reset.h"
#include "platform/vetrix.h"

namespace {

constinit PXLp_FrameSettings settings;

// Users have these keys in their settings, the digit included.
constexpr const char* kPoolEnabledKey = "VirtualAllocFrames";
constexpr const char* kPoolThresholdKey = "VirtualAllocMinSizeInK3";

template <typename Value, typename Stream>
void UseWordsForBooleans(Stream& stream) {
  if constexpr (std::is_same_v<Value, bool>) stream.boolalpha();
}

template <typename Value>
std::string TextOf(Value value) {
  vetrix::oUTF16StringStream stream;
  UseWordsForBooleans<Value>(stream);
  stream << value;
  return vetrix::utility::UTF16to8(stream.str());
}

// Text that is not a value of the type yields zero, not the default.
template <typename Value>
Value Parsed(const std::string& text) {
  vetrix::iUTF16StringStream stream(vetrix::utility::UTF8to16(text));
  UseWordsForBooleans<Value>(stream);
  Value value{};
  stream >> value;
  return stream.fail() || stream.bad() ? Value{} : value;
}

// Returns the entry's value, or the current one when there is no entry.
template <typename Value>
Value ReadSetting(const char* key, Value current) {
  auto& database = vetrix::debug::DebugDatabase::Instance();
  return Parsed<Value>(database.GetEntry(key, TextOf(current)));
}

}  // namespace

PXLp_FrameSettings& PXLp_AccessFrameSettings() {
  return settings;
}

void PXLp_LoadFrameSettings() {
  if (settings.loaded) return;
  // Set first: a read that throws is not repeated.
  settings.loaded = true;
  settings.poolEnabled = ReadSetting(kPoolEnabledKey, settings.poolEnabled);
  settings.poolThresholdKiB = ReadSetting(kPoolThresholdKey, settings.poolThresholdKiB);
}

bool PXLp_IsPoolFrame(std::uint64_t size) {
  // The 32-bit product may wrap. A negative threshold, as an unsigned number,
  // exceeds every size: all frames then come from the heap.
  const auto product = static_cast<std::uint32_t>(settings.poolThresholdKiB) << 10;
  const auto threshold = static_cast<std::int64_t>(static_cast<std::int32_t>(product));
  return settings.poolEnabled && size > static_cast<std::uint64_t>(threshold);
}
