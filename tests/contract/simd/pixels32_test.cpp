// Vector routines on pixels of 32 bits.
#include "simd/pixels32.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

using Bytes = std::vector<unsigned char>;

}  // namespace

TEST(Fill32, WritesTheWordThatOftenAtAnyAddress) {
  Bytes bytes(10, 0xEE);
  simd::Fill32(&bytes[1], 0x01020304, 2);
  unsigned char word[4];
  const std::uint32_t value = 0x01020304;
  std::memcpy(word, &value, sizeof value);
  EXPECT_THAT(bytes, ElementsAre(0xEE, word[0], word[1], word[2], word[3], word[0], word[1],
                                 word[2], word[3], 0xEE));
}

TEST(Fill32, OfNoWordsTouchesNothing) {
  Bytes bytes(4, 0xEE);
  simd::Fill32(bytes.data(), 0, 0);
  EXPECT_THAT(bytes, ElementsAreArray(Bytes(4, 0xEE)));
}

TEST(ReverseBytes32, TurnsEachWordRoundAtAnyAddress) {
  Bytes bytes = {0xEE, 0x81, 3, 2, 0x84, 5, 0x86, 0x87, 8, 0xEE};
  simd::ReverseBytes32(&bytes[1], 2);
  EXPECT_THAT(bytes, ElementsAre(0xEE, 0x84, 2, 3, 0x81, 8, 0x87, 0x86, 5, 0xEE));
}

TEST(ReverseBytes32, OfNoWordsTouchesNothing) {
  Bytes bytes = {1, 2, 3, 4};
  simd::ReverseBytes32(bytes.data(), 0);
  EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 4));
}
