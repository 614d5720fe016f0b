#include "memory/frame_settings.h"

#include <string>
#include <type_traits>

#include "platform/vetrix.h"

constinit PXLp_FrameSettings PXLp_frameSettings;

namespace {

// The keys as users have them in their settings; the digit belongs to it.
constexpr const char* POOL_ENABLED_KEY = "VirtualAllocFrames";
constexpr const char* POOL_THRESHOLD_KEY = "VirtualAllocMinSizeInK3";

template <class Value, class Stream>
void UseWordsForBooleans(Stream& stream) {
  if constexpr (std::is_same_v<Value, bool>) stream.boolalpha();
}

template <class Value>
std::string TextOf(Value value) {
  vetrix::oUTF16StringStream stream;
  UseWordsForBooleans<Value>(stream);
  stream << value;
  return vetrix::utility::UTF16to8(stream.str());
}

// Text that is no such value gives zero, not the default.
template <class Value>
Value Parsed(const std::string& text) {
  vetrix::iUTF16StringStream stream(vetrix::utility::UTF8to16(text));
  UseWordsForBooleans<Value>(stream);
  Value value{};
  stream >> value;
  return stream.fail() || stream.bad() ? Value{} : value;
}

// The entry's value, or, when there is no entry, the current one.
template <class Value>
Value ReadSetting(const char* key, Value current) {
  auto& database = vetrix::debug::DebugDatabase::Instance();
  return Parsed<Value>(database.GetEntry(key, TextOf(current)));
}

}  // namespace

void PXLp_LoadFrameSettings() {
  auto& settings = PXLp_frameSettings;
  if (settings.loaded) return;
  // Raised first: a read that throws is not tried again.
  settings.loaded = true;
  settings.poolEnabled = ReadSetting(POOL_ENABLED_KEY, settings.poolEnabled);
  settings.poolThresholdKiB = ReadSetting(POOL_THRESHOLD_KEY, settings.poolThresholdKiB);
}

bool PXLp_IsPoolFrame(std::uint64_t size) {
  // A 32-bit product that wraps: a threshold that comes out negative exceeds,
  // as an unsigned number, every size, and sends all frames to the heap.
  const auto product = static_cast<std::uint32_t>(PXLp_frameSettings.poolThresholdKiB) << 10;
  const auto threshold = static_cast<std::int64_t>(static_cast<std::int32_t>(product));
  return PXLp_frameSettings.poolEnabled && size > static_cast<std::uint64_t>(threshold);
}
