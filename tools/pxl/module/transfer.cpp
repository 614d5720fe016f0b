// Loads, converts and saves Worlds.
#include "tools/pxl/module/transfer.h"

#include <cstring>
#include <vector>

#include "tools/pxl/module/environment.h"
#include "tools/pxl/module/standard_colours.h"
#include "tools/pxl/pictures/samples.h"

namespace pxl {
namespace {

// The index of ditherCopy among the modes of PXL_Blit; 0 is srcCopy.
constexpr std::uint16_t kDitherCopy = 16;

constexpr std::byte kOpaque{0xFF};

// Applies one of the module's pixel functions to a row.
template <typename From, typename To>
void MapRow(std::int32_t (*function)(const From*, To*), const std::byte* from, std::byte* to,
            std::size_t width) {
  for (std::size_t x = 0; x < width; ++x) {
    From source{};
    To destination{};
    std::memcpy(&source, from + x * sizeof source, sizeof source);
    function(&source, &destination);
    std::memcpy(to + x * sizeof destination, &destination, sizeof destination);
  }
}

std::size_t WidthOf(const World& world) {
  return static_cast<std::size_t>(world.Record().width);
}

// The blit cannot read mapped pixels, copies up to 32 bits between surfaces only,
// and does not convert between 64 and 128.
bool BlitDoes(const World& source, std::int32_t to) {
  const std::int32_t from = source.Record().depth;
  if (source.backing() == Backing::MappedFile) return false;
  if (from <= PXL_Depth_32 && to <= PXL_Depth_32) return source.backing() == Backing::Surface;
  return from == to || from == PXL_Depth_32 || to == PXL_Depth_32;
}

void ConvertPixelByPixel(const World& source, std::int32_t depth, const PixelRows& from,
                         const PixelRows& to) {
  const PXL_World record = source.Record();
  const auto convert = depth == PXL_Depth_128  ? RowToFloat
                       : depth == PXL_Depth_64 ? RowTo16
                                               : RowTo8;
  for (std::int64_t y = 0; y < record.height; ++y) {
    convert(record.depth, from.Row(y), to.Row(y), WidthOf(source));
  }
}

// Fills the World with a pattern that is not like a picture, so that a pixel that is
// not written is visible.
void FillWithMarker(const World& world) {
  const PixelLock lock(world);
  world.module().Check(PXL_ClearWorldToLong(world.handle(), FillMarker()));
}

// The drawing layer leaves alpha 0 when it looks colours up.
void MakeOpaque(const World& world, const PixelRows& rows) {
  const std::int64_t height = world.Record().height;
  for (std::int64_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < WidthOf(world); ++x) {
      rows.Row(y)[x * sizeof(PXL_Pixel8)] = kOpaque;
    }
  }
}

// The row as 8 bits a channel, for the conversions that start there.
std::vector<std::byte> ColoursOf(const std::byte* indices, std::size_t width) {
  std::vector<std::byte> row(width * sizeof(PXL_Pixel8));
  LookUpColours(indices, row.data(), width);
  return row;
}

// A row of the World as PNG or OpenEXR files hold it.
RowSource RowsForFile(const World& world, const PixelRows& rows, FileFormat format) {
  const std::int32_t depth = world.Record().depth;
  const std::size_t width = WidthOf(world);
  std::vector<std::byte> line(width * PixelBytes(SampleType::Float));
  return [=](std::int64_t y) mutable -> const std::byte* {
    const std::byte* row = rows.Row(y);
    if (format == FileFormat::Exr) {
      RowToFloat(depth, row, line.data(), width);
    } else if (depth <= PXL_Depth_32) {
      return row;
    } else {
      RowTo16(depth, row, line.data(), width);
      ToFile16(line.data(), line.data(), width * 4);
    }
    return line.data();
  };
}

// A World of the picture's depth, with rows from `read`.
template <typename Read>
World NewWorld(Module& module, const PictureHeader& header, Backing backing, Read read) {
  World world(module, DepthOf(header.samples), header.width, header.height, backing);
  FillWithMarker(world);
  const PixelLock lock(world);
  const PixelRows rows = lock.Rows();
  read(rows);
  if (header.samples == SampleType::Integer16) {
    for (std::int64_t y = 0; y < header.height; ++y) ToWorld16(rows.Row(y), WidthOf(world) * 4);
  }
  return world;
}

}  // namespace

World LoadWorld(Module& module, InputPicture& picture, Backing backing) {
  return NewWorld(module, picture.header(), backing,
                  [&](const PixelRows& rows) { picture.Read(rows); });
}

World LoadWorld(Module& module, const Picture& picture, Backing backing) {
  return NewWorld(module, picture.header, backing, [&](const PixelRows& rows) {
    for (std::int64_t y = 0; y < picture.header.height; ++y) {
      std::memcpy(rows.Row(y), picture.Row(y), picture.RowBytes());
    }
  });
}

World ConvertWorld(const World& source, std::int32_t depth, Route route) {
  const PXL_World record = source.Record();
  World destination(source.module(), depth, record.width, record.height, source.backing());
  FillWithMarker(destination);
  const PixelLock sourceLock(source);
  const PixelLock destinationLock(destination);
  if (!route.blitOnly && !BlitDoes(source, depth)) {
    ConvertPixelByPixel(source, depth, sourceLock.Rows(), destinationLock.Rows());
  } else {
    const std::uint16_t mode = route.dither ? kDitherCopy : 0;
    source.module().Check(PXL_Blit(source.handle(), destination.handle(), nullptr, nullptr, mode));
  }
  if (record.depth == PXL_Depth_8 && depth == PXL_Depth_32) {
    MakeOpaque(destination, destinationLock.Rows());
  }
  return destination;
}

bool IsOpaque(const World& world) {
  const PixelLock lock(world);
  const PixelRows rows = lock.Rows();
  const std::int64_t height = world.Record().height;
  for (std::int64_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < WidthOf(world); ++x) {
      if (rows.Row(y)[x * sizeof(PXL_Pixel8)] != kOpaque) return false;
    }
  }
  return true;
}

void RowToFloat(std::int32_t depth, const std::byte* row, std::byte* floats, std::size_t width) {
  if (depth == PXL_Depth_8) {
    MapRow(PXL_Pixel8toF, ColoursOf(row, width).data(), floats, width);
  } else if (depth == PXL_Depth_32) {
    MapRow(PXL_Pixel8toF, row, floats, width);
  } else if (depth == PXL_Depth_64) {
    MapRow(PXL_Pixel16toF, row, floats, width);
  } else {
    std::memcpy(floats, row, width * sizeof(PXL_PixelF));
  }
}

void RowTo8(std::int32_t depth, const std::byte* row, std::byte* bytes, std::size_t width) {
  if (depth == PXL_Depth_128) {
    MapRow(PXL_PixelFto8, row, bytes, width);
  } else if (depth == PXL_Depth_64) {
    MapRow(PXL_Pixel16to8, row, bytes, width);
  } else if (depth == PXL_Depth_8) {
    LookUpColours(row, bytes, width);
  } else {
    std::memcpy(bytes, row, width * sizeof(PXL_Pixel8));
  }
}

void RowTo16(std::int32_t depth, const std::byte* row, std::byte* words, std::size_t width) {
  if (depth == PXL_Depth_128) {
    MapRow(PXL_PixelFto16, row, words, width);
  } else if (depth == PXL_Depth_32) {
    MapRow(PXL_Pixel8to16, row, words, width);
  } else if (depth == PXL_Depth_8) {
    MapRow(PXL_Pixel8to16, ColoursOf(row, width).data(), words, width);
  } else {
    std::memcpy(words, row, width * sizeof(PXL_Pixel16));
  }
}

void SaveWorld(const World& world, const std::filesystem::path& path, FileFormat format,
               const ColourTags& colour) {
  const PixelLock lock(world);
  const PXL_World record = world.Record();
  PictureHeader header;
  header.width = record.width;
  header.height = record.height;
  header.colour = colour;
  header.samples = format == FileFormat::Exr      ? SampleType::Float
                   : record.depth <= PXL_Depth_32 ? SampleType::Integer8
                                                  : SampleType::Integer16;
  if (record.depth == PXL_Depth_8) header.palette = StandardColours();
  WritePictureFile(path, format, header, RowsForFile(world, lock.Rows(), format));
}

}  // namespace pxl
