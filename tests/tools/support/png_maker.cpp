// Makes PNG files by libpng and chunk by chunk.
#include "tests/tools/support/png_maker.h"

#include <png.h>
#include <zlib.h>

#include <cstdlib>
#include <iostream>

namespace {

// A test whose file cannot be made has no result.
[[noreturn]] void OnError(png_structp /*png*/, png_const_charp text) {
  std::cerr << "png_maker: " << text << std::endl;
  std::abort();
}

void Append(png_structp png, png_bytep data, std::size_t count) {
  static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<char*>(data), count);
}

// A row as in the file: packed, the highest byte and bit first.
std::vector<png_byte> PackedRow(const PngRecipe& recipe, std::uint32_t y) {
  const int channels = ChannelsOf(recipe.colourType);
  std::vector<png_byte> row((recipe.width * static_cast<unsigned>(channels * recipe.bits) + 7) / 8);
  std::size_t bit = 0;
  for (std::uint32_t x = 0; x < recipe.width; ++x) {
    for (int c = 0; c < channels; ++c) {
      const unsigned value = recipe.sample(x, y, c);
      for (int b = recipe.bits - 1; b >= 0; --b, ++bit) {
        row[bit / 8] = static_cast<png_byte>(row[bit / 8] | (value >> b & 1U) << (7 - bit % 8));
      }
    }
  }
  return row;
}

std::string Chunk(const std::string& name, const std::string& data) {
  const std::string body = name + data;
  const auto crc =
      crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return BigEndian(static_cast<std::uint32_t>(data.size())) + body +
         BigEndian(static_cast<std::uint32_t>(crc));
}

void WriteStart(png_structp png, png_infop info, const PngRecipe& recipe) {
  png_set_IHDR(png, info, recipe.width, recipe.height, recipe.bits, recipe.colourType,
               recipe.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  std::vector<png_color> palette;
  for (const auto& c : recipe.palette) palette.push_back({c[0], c[1], c[2]});
  if (!palette.empty()) png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
  png_write_info_before_PLTE(png, info);
  for (const pxl::PngChunk& chunk : recipe.chunks) {
    png_write_chunk(png, reinterpret_cast<png_const_bytep>(chunk.name.c_str()), chunk.data.data(),
                    chunk.data.size());
  }
  png_write_info(png, info);
  if (recipe.transparency.empty()) return;
  png_write_chunk(png, reinterpret_cast<png_const_bytep>("tRNS"),
                  reinterpret_cast<png_const_bytep>(recipe.transparency.data()),
                  recipe.transparency.size());
}

}  // namespace

int ChannelsOf(int colourType) {
  switch (colourType) {
    case PNG_COLOR_TYPE_RGB:
      return 3;
    case PNG_COLOR_TYPE_RGB_ALPHA:
      return 4;
    case PNG_COLOR_TYPE_GRAY_ALPHA:
      return 2;
    default:
      return 1;
  }
}

std::string BigEndian(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<char>(value >> shift));
  return bytes;
}

std::string MakePng(const PngRecipe& recipe) {
  std::string file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &file, Append, nullptr);
  WriteStart(png, info, recipe);
  std::vector<std::vector<png_byte>> rows;
  std::vector<png_bytep> addresses;
  rows.reserve(recipe.height);
  addresses.reserve(recipe.height);
  for (std::uint32_t y = 0; y < recipe.height; ++y) rows.push_back(PackedRow(recipe, y));
  for (auto& row : rows) addresses.push_back(row.data());
  png_write_image(png, addresses.data());
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

std::string MakePngHeader(std::uint32_t width, std::uint32_t height, int bits, int colourType) {
  std::string data = BigEndian(width) + BigEndian(height);
  for (const int byte : {bits, colourType, 0, 0, 0}) data.push_back(static_cast<char>(byte));
  // The first bytes of image data, so that the header counts as complete.
  return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", data) + Chunk("IDAT", "\x78\x9C");
}
