// Pictures reduced, cropped and enlarged.
#include "tools/pxl/pictures/resize.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

using namespace pxl;

namespace {

template <typename Channel>
Picture PictureFrom(std::int64_t width, SampleType samples, const std::vector<Channel>& channels) {
  const auto pixels = static_cast<std::int64_t>(channels.size() / 4);
  Picture picture = NewPicture(width, pixels / width, samples);
  std::memcpy(picture.pixels.data(), channels.data(), picture.pixels.size());
  return picture;
}

template <typename Channel>
std::vector<Channel> ChannelsOf(const Picture& picture) {
  std::vector<Channel> channels(picture.pixels.size() / sizeof(Channel));
  std::memcpy(channels.data(), picture.pixels.data(), picture.pixels.size());
  return channels;
}

Picture Solid(std::int64_t width, std::int64_t height) {
  Picture picture = NewPicture(width, height, SampleType::Integer8);
  for (std::byte& channel : picture.pixels) channel = std::byte{77};
  return picture;
}

void ExpectSize(const Picture& picture, std::int64_t width, std::int64_t height) {
  EXPECT_EQ(picture.header.width, width);
  EXPECT_EQ(picture.header.height, height);
}

}  // namespace

TEST(ReducedPicture, HasTheMeansOfSquaresInItsOwnSamples) {
  const auto bytes = Reduced(
      PictureFrom<std::uint8_t>(2, SampleType::Integer8,
                                {0, 255, 1, 10, 0, 255, 2, 10, 0, 255, 1, 10, 2, 254, 2, 10}),
      2);
  EXPECT_EQ(ChannelsOf<std::uint8_t>(bytes), (std::vector<std::uint8_t>{1, 255, 2, 10}));
  const auto words = Reduced(
      PictureFrom<std::uint16_t>(2, SampleType::Integer16, {0, 65535, 1, 300, 0, 65535, 3, 401}),
      2);
  EXPECT_EQ(ChannelsOf<std::uint16_t>(words), (std::vector<std::uint16_t>{0, 65535, 2, 351}));
  const auto floats = Reduced(
      PictureFrom<float>(2, SampleType::Float, {0.0F, 8.0F, -1.0F, 0.25F, 1.0F, 4.0F, -2.0F, 0.0F}),
      2);
  EXPECT_EQ(ChannelsOf<float>(floats), (std::vector<float>{0.5F, 6.0F, -1.5F, 0.125F}));
}

TEST(ReducedPicture, KeepsTheEdgesOfOddSizes) {
  Picture picture = Solid(5, 3);
  picture.Rows().Row(2)[16] = std::byte{9};
  const Picture small = Reduced(picture, 2);
  ExpectSize(small, 3, 2);
  EXPECT_EQ(small.Row(1)[8], std::byte{9});
  EXPECT_EQ(small.Row(1)[9], std::byte{77});
}

TEST(ReducedPicture, IsTheSameForFactorOne) {
  const Picture picture = Solid(5, 3);
  EXPECT_EQ(Reduced(picture, 1).pixels, picture.pixels);
}

TEST(ReductionFactor, IsTheSmallestThatIsEnough) {
  const auto factor = [](std::int64_t width, std::int64_t height) {
    return ReductionTo(240, Solid(width, height).header);
  };
  EXPECT_EQ(factor(1, 1), 1);
  EXPECT_EQ(factor(240, 10), 1);
  EXPECT_EQ(factor(241, 10), 2);
  EXPECT_EQ(factor(10, 480), 2);
  EXPECT_EQ(factor(10, 481), 3);
}

TEST(CroppedPicture, IsTheMiddle) {
  const Picture picture = PictureFrom<float>(
      4, SampleType::Float, {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                             16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31});
  const Picture pixel = Cropped(picture, 1, 1);
  ExpectSize(pixel, 1, 1);
  EXPECT_EQ(ChannelsOf<float>(pixel), (std::vector<float>{4, 5, 6, 7}));
  const Picture column = Cropped(picture, 2, 2);
  EXPECT_EQ(ChannelsOf<float>(column),
            (std::vector<float>{4, 5, 6, 7, 8, 9, 10, 11, 20, 21, 22, 23, 24, 25, 26, 27}));
  EXPECT_EQ(Cropped(picture, 4, 2).pixels, picture.pixels);
}

TEST(EnlargedPicture, ShowsPixelsAsSquaresInItsOwnSamples) {
  const Picture large =
      Enlarged(PictureFrom<float>(2, SampleType::Float, {1, 2, 3, 4, 5, 6, 7, 8}), 2);
  ExpectSize(large, 4, 2);
  const std::vector<float> row = {1, 2, 3, 4, 1, 2, 3, 4, 5, 6, 7, 8, 5, 6, 7, 8};
  std::vector<float> rows = row;
  rows.insert(rows.end(), row.begin(), row.end());
  EXPECT_EQ(ChannelsOf<float>(large), rows);
}

TEST(FittedPicture, IsReducedByTheSmallestWholeFactor) {
  ExpectSize(Fitted(Solid(501, 7), 100), 84, 2);
  ExpectSize(Fitted(Solid(4, 2), 2), 2, 1);
}

TEST(FittedPicture, IsEnlargedByTheLargestWholeFactor) {
  ExpectSize(Fitted(Solid(2, 1), 7), 6, 3);
  ExpectSize(Fitted(Solid(7, 3), 7), 7, 3);
}
