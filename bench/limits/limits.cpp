// Makes the limits' contenders: hollow kernels and the runtime's block moves.
#include "bench/limits/limits.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "simd/processor_level.h"
#include "simd/streaming.h"

namespace bench {
namespace {

struct Job {
  std::uint8_t* to;
  const std::uint8_t* from;
  std::size_t bytes;  // written
};
using Jobs = std::vector<Job>;

HollowRow HollowRowFor(Shape shape, bool streaming) {
  switch (simd::ProcessorLevel()) {
    case simd::Level::Avx512:
      return HollowRowAvx512(shape, streaming);
    case simd::Level::Avx2:
      return HollowRowAvx2(shape, streaming);
    default:
      return HollowRowSse41(shape, streaming);
  }
}

// As one run without gaps: the same loads and stores, without the cost of rows.
Jobs JobsOf(const Picture& source, const Picture& destination) {
  return {{destination.pixels, source.pixels, destination.UsedRowBytes() * destination.Rows()}};
}

std::vector<Contender> HollowContenders(Shape shape, const Jobs& jobs) {
  std::vector<Contender> contenders;
  for (const bool streaming : {false, true}) {
    const HollowRow row = HollowRowFor(shape, streaming);
    contenders.push_back(
        {Role::Limit, streaming ? "hollow, streaming" : "hollow", Repeat([row, jobs, streaming] {
           for (const Job& job : jobs) row(job.to, job.from, job.bytes);
           if (streaming) simd::FinishStreaming();
         })});
  }
  return contenders;
}

void CopyInPieces(const Job& job) {
  constexpr std::size_t kPiece = std::size_t{16} * 1024;
  for (std::size_t done = 0; done < job.bytes; done += kPiece) {
    std::memcpy(job.to + done, job.from + done, std::min(kPiece, job.bytes - done));
  }
}

}  // namespace

std::vector<Contender> LimitsOf(Shape shape, const Picture& source, const Picture& destination) {
  const Jobs jobs = JobsOf(source, destination);
  std::vector<Contender> contenders = HollowContenders(shape, jobs);
  if (shape != Shape::Copy) return contenders;
  contenders.push_back({Role::Limit, "memcpy", Repeat([jobs] {
                          for (const Job& job : jobs) std::memcpy(job.to, job.from, job.bytes);
                        })});
  contenders.push_back({Role::Limit, "memcpy in pieces", Repeat([jobs] {
                          for (const Job& job : jobs) CopyInPieces(job);
                        })});
  return contenders;
}

std::vector<Contender> LimitsOfHalving(const Picture& source, const Picture& destination) {
  Jobs jobs;
  for (int y = 0; y < destination.height; ++y) {
    jobs.push_back({destination.Row(y), source.Row(2 * y), destination.UsedRowBytes()});
  }
  return HollowContenders(Shape::Narrow2, jobs);
}

std::vector<Contender> LimitsOfDoubling(const Picture& source, const Picture& destination) {
  return HollowContenders(Shape::Widen4, JobsOf(source, destination));
}

Contender LimitOfZeroFill(const Picture& destination) {
  return {Role::Limit, "memset",
          Repeat([destination] { std::memset(destination.pixels, 0, destination.Bytes()); })};
}

}  // namespace bench
