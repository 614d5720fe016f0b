// The binary interface: numbers, records and signatures.
#include <type_traits>

#include "tests/support/module/contract.h"

namespace {

template <typename Record, typename Field>
using FieldOf = Field Record::*;

template <typename Record, typename Field>
std::size_t Offset(FieldOf<Record, Field> field) {
  static Record record;
  return static_cast<std::size_t>(reinterpret_cast<char*>(&(record.*field)) -
                                  reinterpret_cast<char*>(&record));
}

template <typename Field, typename Wanted>
constexpr bool kSame = std::is_same_v<Field, Wanted>;

}  // namespace

TEST(Layout, OfAWorldIsTheHosts) {
  EXPECT_EQ(sizeof(PXL_World), 112U);
  EXPECT_EQ(alignof(PXL_World), 8U);
  EXPECT_EQ(Offset(&PXL_World::headMark), 0U);
  EXPECT_EQ(Offset(&PXL_World::flags), 4U);
  EXPECT_EQ(Offset(&PXL_World::width), 8U);
  EXPECT_EQ(Offset(&PXL_World::height), 10U);
  EXPECT_EQ(Offset(&PXL_World::bounds), 12U);
  EXPECT_EQ(Offset(&PXL_World::depth), 20U);
  EXPECT_EQ(Offset(&PXL_World::ownsHandle), 22U);
  EXPECT_EQ(Offset(&PXL_World::hasFrame), 23U);
  EXPECT_EQ(Offset(&PXL_World::gworld), 24U);
  EXPECT_EQ(Offset(&PXL_World::gdevice), 32U);
  EXPECT_EQ(Offset(&PXL_World::hasGWorld), 40U);
  EXPECT_EQ(Offset(&PXL_World::pixels), 48U);
  EXPECT_EQ(Offset(&PXL_World::tailMark), 104U);
}

TEST(Layout, OfAPixelBufferIsTheHosts) {
  EXPECT_EQ(sizeof(PXL_PixelBuffer), 56U);
  EXPECT_EQ(alignof(PXL_PixelBuffer), 8U);
  EXPECT_EQ(Offset(&PXL_PixelBuffer::lockCount), 0U);
  EXPECT_EQ(Offset(&PXL_PixelBuffer::frame), 8U);
  EXPECT_EQ(Offset(&PXL_PixelBuffer::frameSize), 16U);
  EXPECT_EQ(Offset(&PXL_PixelBuffer::alignOffset), 24U);
  EXPECT_EQ(Offset(&PXL_PixelBuffer::baseAddr), 32U);
  EXPECT_EQ(Offset(&PXL_PixelBuffer::rowBytes), 40U);
  EXPECT_EQ(Offset(&PXL_PixelBuffer::provider), 48U);
}

TEST(Layout, OfAProviderIsTheHosts) {
  EXPECT_EQ(sizeof(PXL_PixelProvider), 40U);
  EXPECT_EQ(Offset(&PXL_PixelProvider::mapPixels), 0U);
  EXPECT_EQ(Offset(&PXL_PixelProvider::unmapPixels), 8U);
  EXPECT_EQ(Offset(&PXL_PixelProvider::freePixels), 16U);
  EXPECT_EQ(Offset(&PXL_PixelProvider::release), 24U);
  EXPECT_EQ(Offset(&PXL_PixelProvider::context), 32U);
}

TEST(Layout, OfTheStateAndOfARectangleIsTheHosts) {
  EXPECT_EQ(sizeof(PXL_ModuleState), 12U);
  EXPECT_EQ(alignof(PXL_ModuleState), 4U);
  EXPECT_EQ(Offset(&PXL_ModuleState::bornMark), 0U);
  EXPECT_EQ(Offset(&PXL_ModuleState::birthArg), 4U);
  EXPECT_EQ(Offset(&PXL_ModuleState::worldCount), 8U);
  EXPECT_EQ(sizeof(Rect), 8U);
  EXPECT_EQ(Offset(&Rect::top), 0U);
  EXPECT_EQ(Offset(&Rect::left), 2U);
  EXPECT_EQ(Offset(&Rect::bottom), 4U);
  EXPECT_EQ(Offset(&Rect::right), 6U);
}

TEST(Layout, GivesTheFieldsTheirSigns) {
  EXPECT_TRUE((kSame<decltype(PXL_World::headMark), std::uint32_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::flags), std::uint32_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::width), std::int16_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::height), std::int16_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::depth), std::int16_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::ownsHandle), std::uint8_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::hasFrame), std::uint8_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::hasGWorld), std::uint8_t>));
  EXPECT_TRUE((kSame<decltype(PXL_World::tailMark), std::uint32_t>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelBuffer::lockCount), std::int32_t>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelBuffer::frameSize), std::uint64_t>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelBuffer::alignOffset), std::uint64_t>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelBuffer::rowBytes), std::int32_t>));
  EXPECT_TRUE((kSame<decltype(PXL_ModuleState::bornMark), std::uint32_t>));
  EXPECT_TRUE((kSame<decltype(PXL_ModuleState::birthArg), std::uint32_t>));
  EXPECT_TRUE((kSame<decltype(PXL_ModuleState::worldCount), std::int32_t>));
  EXPECT_TRUE((kSame<decltype(Rect::top), std::int16_t>));
}

TEST(Signatures, AreTheHosts) {
  using H = PXL_WorldHandle;
  EXPECT_TRUE((kSame<H, PXL_World**>));
  EXPECT_TRUE((kSame<decltype(PXL_Birth), std::int32_t(std::uint32_t)>));
  EXPECT_TRUE((kSame<decltype(PXL_Death), std::int32_t()>));
  EXPECT_TRUE((kSame<decltype(PXL_PkgObjectVersion), std::uint32_t()>));
  EXPECT_TRUE((kSame<decltype(PXL_CheckVersions), std::int32_t(std::uint32_t, std::int32_t)>));
  EXPECT_TRUE((kSame<decltype(PXL_NewWorld), std::int32_t(H, std::uint32_t, const Rect*,
                                                          std::int32_t, std::uint32_t, H, H*)>));
  EXPECT_TRUE((kSame<decltype(PXL_DisposeWorld), std::int32_t(H)>));
  EXPECT_TRUE((kSame<decltype(PXL_CanSetChannelOrder), std::int32_t(H, std::uint8_t*)>));
  EXPECT_TRUE((kSame<decltype(PXL_GetChannelOrder), std::int32_t(H, std::uint32_t*)>));
  EXPECT_TRUE((kSame<decltype(PXL_SetChannelOrder), std::int32_t(H, std::int32_t)>));
  EXPECT_TRUE((kSame<decltype(PXL_AssumeChannelOrder), std::int32_t(H, std::int32_t)>));
  EXPECT_TRUE((
      kSame<decltype(PXL_AllocateFrameQuiet), std::int32_t(std::uint64_t, std::uint64_t, void**)>));
  EXPECT_TRUE((kSame<decltype(PXL_FreeFrame), std::int32_t(void*, std::uint64_t)>));
  EXPECT_TRUE(
      (kSame<decltype(PXL_ReportWorldAllocationFailure),
             std::int32_t(std::int32_t, std::int32_t, std::int16_t, std::int16_t, std::int16_t)>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelProvider::mapPixels), std::int32_t (*)(void*, void**)>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelProvider::unmapPixels), std::int32_t (*)(void*, void**)>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelProvider::freePixels), std::int32_t (*)(void*, void**)>));
  EXPECT_TRUE((kSame<decltype(PXL_PixelProvider::release), std::int32_t (*)(PXL_PixelProvider**)>));
}

TEST(Constants, OfStatusAreTheHosts) {
  EXPECT_EQ(PXL_Err_NONE, 0);
  EXPECT_EQ(PXL_Err_FAILED, 1);
  EXPECT_EQ(PXL_Err_INVALID, 2);
  EXPECT_EQ(PXL_Err_REFUSED, 3);
  EXPECT_EQ(PXL_Err_NO_MEMORY, 4);
  EXPECT_EQ(PXL_Err_VERSION, 7);
  EXPECT_EQ(PXL_Err_PURGED, 1793);
  EXPECT_EQ(PXL_ModuleNumber, 7);
  EXPECT_EQ(PXL_LiveMark, 781514);
  EXPECT_EQ(PXL_InterfaceVersion, 31);
}

TEST(Constants, OfCreationAreTheHosts) {
  EXPECT_EQ(PXL_Flag_KEEP_LOCAL, 0x0008);
  EXPECT_EQ(PXL_Flag_PURGEABLE, 0x0020);
  EXPECT_EQ(PXL_Flag_CLEAR, 0x0100);
  EXPECT_EQ(PXL_Flag_NO_PLATFORM, 0x0200);
  EXPECT_EQ(PXL_Flag_ALT_ORDER, 0x0400);
  EXPECT_EQ(PXL_Flag_DEFERRED, 0x0800);
  EXPECT_EQ(PXL_Flag_MAPPED, 0x1000);
  EXPECT_EQ(PXL_Depth_SHARE, 0);
  EXPECT_EQ(PXL_ChannelOrder_STANDARD, 0);
  EXPECT_EQ(PXL_ChannelOrder_ALTERNATE, 1);
}
