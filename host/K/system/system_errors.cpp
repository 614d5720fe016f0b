// English texts of error numbers.
#include "host/K/system/system_errors.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

namespace k {
namespace {

struct Wording {
  std::int32_t error;
  const char* text;
};

constexpr std::array<Wording, 14> kWordings = {{
    {-50, "An argument of a drawing call is not legal (paramErr)."},
    {-108, "There is not enough memory (memFullErr)."},
    {-109, "A handle is empty (nilHandleErr)."},
    {-111, "A block of memory is no longer in use (memWZErr)."},
    {-112, "A locked block of memory cannot be purged (memPurErr)."},
    {-152, "There is not enough memory for colors (cNoMemErr)."},
    {-153, "There is not enough temporary memory (cTempMemErr)."},
    {-157, "The pixel depth is not legal (cDepthErr)."},
    {1, "The operation failed."},
    {2, "An object is not valid."},
    {3, "The request was refused."},
    {4, "There is not enough memory."},
    {7, "The versions do not match."},
    {0x701, "The pixels were purged."},
}};

}  // namespace

std::array<char, 64> EnglishError(std::int32_t error) {
  const auto* found = std::ranges::find(kWordings, error, &Wording::error);
  std::array<char, 64> text{};
  if (found != kWordings.end()) {
    std::snprintf(text.data(), text.size(), "%s", found->text);
  } else {
    std::snprintf(text.data(), text.size(), "error %" PRId32, error);
  }
  return text;
}

}  // namespace k
