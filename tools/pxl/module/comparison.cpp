// Worlds converted to pictures, and their channels compared as floats.
#include "tools/pxl/module/comparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <sstream>
#include <vector>

#include "tools/pxl/module/transfer.h"

namespace pxl {
namespace {

constexpr std::size_t kChannels = 4;

std::vector<float> RowAsFloats(const PXL_World& record, const std::byte* row) {
  const auto width = static_cast<std::size_t>(record.width);
  std::vector<float> values(kChannels * width);
  RowToFloat(record.depth, row, reinterpret_cast<std::byte*>(values.data()), width);
  return values;
}

double ChangeOf(float before, float after) {
  const double change = std::fabs(double{before} - double{after});
  return std::isnan(change) ? 0.0 : change;
}

// Calls visit(y, changes) for each row, four changes a pixel. Those of alpha are
// 0 unless alpha is compared.
template <typename Visit>
void ForEachRow(const World& before, const World& after, Compared compared, Visit visit) {
  const PXL_World first = before.Record();
  const PXL_World second = after.Record();
  const PixelLock lockBefore(before);
  const PixelLock lockAfter(after);
  std::vector<double> changes(kChannels * static_cast<std::size_t>(first.width));
  for (std::int64_t y = 0; y < first.height; ++y) {
    const std::vector<float> a = RowAsFloats(first, lockBefore.Rows().Row(y));
    const std::vector<float> b = RowAsFloats(second, lockAfter.Rows().Row(y));
    for (std::size_t i = 0; i < changes.size(); ++i) {
      const bool counts = compared == Compared::AllChannels || i % kChannels != 0;
      changes[i] = counts ? ChangeOf(a[i], b[i]) : 0.0;
    }
    visit(y, changes);
  }
}

std::byte Magnified(double change, double factor) {
  return static_cast<std::byte>(std::lround(std::min(change * factor, 1.0) * 255.0));
}

void WriteChange(const double* change, double factor, std::byte* pixel) {
  pixel[0] = std::byte{255};
  for (std::size_t k = 1; k < kChannels; ++k) {
    pixel[k] = Magnified(std::max(change[k], change[0]), factor);
  }
}

}  // namespace

Picture PictureOf(const World& world) {
  const PXL_World record = world.Record();
  const PixelLock lock(world);
  Picture picture = NewPicture(record.width, record.height, SampleType::Integer8);
  for (std::int64_t y = 0; y < record.height; ++y) {
    RowTo8(record.depth, lock.Rows().Row(y), picture.Rows().Row(y),
           static_cast<std::size_t>(record.width));
  }
  return picture;
}

double LargestChange(const World& before, const World& after, Compared compared) {
  double largest = 0.0;
  ForEachRow(before, after, compared, [&](std::int64_t, const std::vector<double>& changes) {
    for (const double change : changes) largest = std::max(largest, change);
  });
  return largest;
}

std::string ChangeText(double change) {
  if (change == 0.0) return "nothing changed";
  std::ostringstream text;
  text << "largest change " << std::setprecision(2) << change;
  return text.str();
}

Picture ChangePicture(const World& before, const World& after, double factor, Compared compared) {
  const PXL_World record = before.Record();
  Picture picture = NewPicture(record.width, record.height, SampleType::Integer8);
  ForEachRow(before, after, compared, [&](std::int64_t y, const std::vector<double>& changes) {
    std::byte* pixel = picture.Rows().Row(y);
    for (std::size_t i = 0; i < changes.size(); i += kChannels, pixel += kChannels) {
      WriteChange(&changes[i], factor, pixel);
    }
  });
  return picture;
}

}  // namespace pxl
