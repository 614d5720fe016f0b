// Digests of the results of routines for a fixed input.
#include "tools/proof/digest.h"

#include "tools/proof/inputs.h"

namespace proof {
namespace {

constexpr std::size_t kShortLengths[] = {1, 7, 16, 33, 64, 127, 1021};
constexpr std::size_t kNoise = 16411;

// Bytes behind the results, for a faulty routine that writes too much.
constexpr std::size_t kSlack = 256;

// Deciding values, then noise; all in one run, then in shorter runs.
void AddSubject(Digest& digest, const Subject& subject) {
  Bytes source = SourceFor(subject, kNoise);
  std::size_t count = kNoise;
  if (subject.kind == Kind::Conversion) {
    const Bytes values = ValuesFor(subject);
    source.insert(source.begin(), values.begin(), values.end());
    count = source.size() / subject.source.elementBytes;
  }
  Bytes result(count * subject.destination.elementBytes + kSlack);
  const auto run = [&](std::size_t length) {
    subject.run(source.data(), result.data(), length);
    digest.Add(result.data(), length * subject.destination.elementBytes);
  };
  run(count);
  for (const std::size_t length : kShortLengths) run(length);
}

}  // namespace

void Digest::Add(const void* bytes, std::size_t count) {
  constexpr std::uint64_t kPrime = 0x100000001B3;
  const auto* byte = static_cast<const unsigned char*>(bytes);
  for (std::size_t i = 0; i < count; ++i) hash_ = (hash_ ^ byte[i]) * kPrime;
}

std::string Digest::Text() const {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (int shift = 60; shift >= 0; shift -= 4) text += kDigits[hash_ >> shift & 0xF];
  return text;
}

std::string DigestOf(const std::vector<Subject>& subjects) {
  Digest digest;
  for (const Subject& subject : subjects) AddSubject(digest, subject);
  return digest.Text();
}

}  // namespace proof
