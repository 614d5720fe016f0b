// Compares the results of peers with those of the plain loops.
#include "bench/subjects/exactness.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "bench/subjects/own_picture.h"

namespace bench {
namespace {

constexpr int kChannels = 4;
constexpr int kWidth = 256;

// Every channel of a pixel meets every value: each starts elsewhere in the list.
template <typename Value>
OwnPicture PictureOf(const std::vector<Value>& values) {
  const auto count = static_cast<int>(values.size());
  OwnPicture picture(kWidth, (count + kWidth - 1) / kWidth, kChannels * int{sizeof(Value)});
  auto* to = reinterpret_cast<Value*>(picture.View().pixels);
  for (int i = 0; i < kWidth * picture.View().height; ++i) {
    for (int k = 0; k < kChannels; ++k) {
      *to++ = values[static_cast<std::size_t>((i + k * (count / kChannels)) % count)];
    }
  }
  return picture;
}

template <typename Value>
std::vector<Value> AllWholeNumbers() {
  std::vector<Value> values(std::size_t{std::numeric_limits<Value>::max()} + 1);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<Value>(i);
  return values;
}

std::vector<float> ManyFloats() {
  constexpr std::uint64_t kStep = 4099;  // prime, so that the low bits vary
  std::vector<float> values;
  for (std::uint64_t bits = 0; bits >> 32 == 0; bits += kStep) {
    values.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
  }
  for (int step = 0; step <= 2 * 255; ++step) {  // truncation and rounding
    const float value = static_cast<float>(step) / (2 * 255.0F);
    const float infinity = std::numeric_limits<float>::infinity();
    const float above = std::nextafter(value, infinity);
    const float below = std::nextafter(value, -infinity);
    values.insert(values.end(), {value, above, std::nextafter(above, infinity), below,
                                 std::nextafter(below, -infinity)});
  }
  return values;
}

OwnPicture RandomPicture(int width, int height, int pixelBytes) {
  OwnPicture picture(width, height, pixelBytes);
  std::mt19937 random(1);
  std::generate_n(picture.View().pixels, picture.View().Bytes(),
                  [&random] { return static_cast<std::uint8_t>(random()); });
  return picture;
}

template <typename Value>
std::uint32_t BitsOf(Value value) {
  if constexpr (std::is_same_v<Value, float>) return std::bit_cast<std::uint32_t>(value);
  return static_cast<std::uint32_t>(value);
}

template <typename Value>
void Compare(Value ours, Value theirs, bool nominal, Exactness& exactness) {
  if (BitsOf(ours) == BitsOf(theirs)) return;
  exactness.exact = false;
  const double error = std::abs(static_cast<double>(theirs) - static_cast<double>(ours));
  exactness.largestError = std::max(exactness.largestError, error);
  if (nominal) exactness.nominalError = std::max(exactness.nominalError, error);
}

bool IsNominal(std::uint8_t) {
  return true;
}
bool IsNominal(std::uint16_t value) {
  return value <= 32768;
}
bool IsNominal(float value) {
  return value >= 0 && value <= 1;
}

// Both have run on the same source. An OwnPicture has no padding.
template <typename From, typename To>
Exactness CompareAll(const Picture& source, const Picture& ours, const Picture& theirs) {
  Exactness exactness{true, true, 0, 0};
  const auto* from = reinterpret_cast<const From*>(source.pixels);
  const auto* own = reinterpret_cast<const To*>(ours.pixels);
  const auto* other = reinterpret_cast<const To*>(theirs.pixels);
  const bool sameCount = source.Bytes() / sizeof(From) == ours.Bytes() / sizeof(To);
  for (std::size_t i = 0; i < ours.Bytes() / sizeof(To); ++i) {
    Compare(own[i], other[i], !sameCount || IsNominal(from[i]), exactness);
  }
  return exactness;
}

template <typename From, typename To>
Exactness Check(Operation operation, const Prepare& prepare, OwnPicture source, int width,
                int height) {
  const int pixelBytes = source.View().pixelBytes / int{sizeof(From)} * int{sizeof(To)};
  OwnPicture ours = RandomPicture(width, height, pixelBytes);
  OwnPicture theirs = RandomPicture(width, height, pixelBytes);
  DoPlainly(operation, source.View(), ours.View());
  prepare(source.View(), theirs.View())(1);
  return CompareAll<From, To>(source.View(), ours.View(), theirs.View());
}

template <typename From, typename To>
Exactness CheckConversion(Operation operation, const Prepare& prepare,
                          const std::vector<From>& values) {
  OwnPicture source = PictureOf(values);
  const int height = source.View().height;
  return Check<From, To>(operation, prepare, std::move(source), kWidth, height);
}

}  // namespace

Exactness CheckExactness(Operation operation, const Prepare& prepare, int pixelBytes) {
  using Byte = std::uint8_t;
  using Word = std::uint16_t;
  constexpr int kHeight = 64;
  switch (operation) {
    case Operation::From8to16:
      return CheckConversion<Byte, Word>(operation, prepare, AllWholeNumbers<Byte>());
    case Operation::From8toF:
      return CheckConversion<Byte, float>(operation, prepare, AllWholeNumbers<Byte>());
    case Operation::From16to8:
      return CheckConversion<Word, Byte>(operation, prepare, AllWholeNumbers<Word>());
    case Operation::FromFto8:
      return CheckConversion<float, Byte>(operation, prepare, ManyFloats());
    case Operation::HalveNearest:
      return Check<Byte, Byte>(operation, prepare,
                               RandomPicture(2 * kWidth, 2 * kHeight, pixelBytes), kWidth, kHeight);
    case Operation::DoubleNearest:
      return Check<Byte, Byte>(operation, prepare, RandomPicture(kWidth, kHeight, pixelBytes),
                               2 * kWidth, 2 * kHeight);
    default:
      return Check<Byte, Byte>(operation, prepare, RandomPicture(kWidth, kHeight, pixelBytes),
                               kWidth, kHeight);
  }
}

}  // namespace bench
