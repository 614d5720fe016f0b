// Deciding values at every place and in runs of every length.
#include "tools/proof/values.h"

#include <algorithm>
#include <cstring>

#include "tools/proof/difference.h"
#include "tools/proof/inputs.h"

namespace proof {
namespace {

// More than any loop takes at once.
constexpr std::size_t kMostPlaces = 256;
constexpr std::size_t kMostLength = 72;

// Up to this number, values are tried at each place of a short run as well; more would
// take minutes.
constexpr std::size_t kFewValues = 8192;

// The values behind a run-up of others, converted by the plain loop.
class Values {
 public:
  explicit Values(const Subject& subject)
      : subject_(subject), source_(SourceFor(subject, kMostPlaces)) {
    const Bytes values = ValuesFor(subject);
    source_.insert(source_.end(), values.begin(), values.end());
    count_ = source_.size() / subject.source.elementBytes;
    expected_.resize(count_ * subject.destination.elementBytes);
    result_.resize(expected_.size());
    subject.plain(source_.data(), expected_.data(), count_);
  }

  // Each value moves up by one place with each run.
  Finding TryEveryPlace() {
    for (std::size_t place = 0; place < kMostPlaces; ++place) {
      Run(kMostPlaces - place, count_);
      if (auto finding = Compare(kMostPlaces - place, std::to_string(place) + " before")) {
        return finding;
      }
    }
    return std::nullopt;
  }

  Finding TryEveryLength() {
    for (std::size_t length = 1; length <= kMostLength; ++length) {
      const std::size_t places = count_ > kFewValues ? 1 : length;
      for (std::size_t place = 0; place < places; ++place) {
        if (auto finding = TryRuns(place, length)) return finding;
      }
    }
    return std::nullopt;
  }

 private:
  Finding TryRuns(std::size_t first, std::size_t length) {
    std::fill(result_.begin(), result_.end(), static_cast<unsigned char>(0xA5));
    for (std::size_t i = first; i < count_; i += length) Run(i, std::min(count_, i + length));
    return Compare(first, "in runs of " + std::to_string(length));
  }

  void Run(std::size_t first, std::size_t end) {
    subject_.run(&source_[first * subject_.source.elementBytes],
                 &result_[first * subject_.destination.elementBytes], end - first);
  }

  [[nodiscard]] Finding Compare(std::size_t first, const std::string& how) const {
    const std::size_t size = subject_.destination.elementBytes;
    const std::size_t start = first * size;
    const auto difference =
        FirstDifference(&result_[start], &expected_[start], result_.size() - start);
    if (!difference) return std::nullopt;
    const std::size_t element = first + difference->place / size;
    return subject_.name + ": the element " + Element(element) + ", " + how + ": byte " +
           std::to_string(difference->place % size) + " " + TextOf(*difference);
  }

  [[nodiscard]] std::string Element(std::size_t index) const {
    const std::size_t size = subject_.source.elementBytes;
    std::uint32_t bits = 0;
    std::memcpy(&bits, &source_[index * size], size);
    return Hex(bits, static_cast<int>(2 * size));
  }

  const Subject& subject_;
  Bytes source_;
  Bytes expected_;
  Bytes result_;
  std::size_t count_ = 0;
};

}  // namespace

Finding CheckValues(const Subject& subject) {
  if (subject.kind != Kind::Conversion) return std::nullopt;
  Values values(subject);
  if (auto finding = values.TryEveryPlace()) return finding;
  return values.TryEveryLength();
}

}  // namespace proof
