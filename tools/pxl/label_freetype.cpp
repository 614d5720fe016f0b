#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <array>
#include <cstdlib>
#include <system_error>

#include "tools/pxl/failure.h"
#include "tools/pxl/label.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, 3> kFontFiles = {
    "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", "/usr/share/fonts/dejavu/DejaVuSans.ttf",
    "/usr/share/fonts/TTF/DejaVuSans.ttf"};

// FreeType measures in 64ths of a pixel.
int RoundedUp(FT_Pos value) {
  return static_cast<int>((value + 63) >> 6);
}

// Takes one code point off the front. Bytes that are no UTF-8 stand for
// themselves: file names may hold anything.
FT_ULong TakeCodePoint(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
  FT_ULong point = length == 1 ? first : first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if (i >= text.size() || (byte(i) & 0xC0U) != 0x80U) {
      text.remove_prefix(1);
      return first;
    }
    point = point << 6 | (byte(i) & 0x3FU);
  }
  text.remove_prefix(length);
  return point;
}

// Lays `coverage` (0..255) of the colour over what is there.
void Blend(std::byte* channel, std::uint8_t colour, unsigned coverage) {
  const auto below = std::to_integer<unsigned>(*channel);
  *channel = static_cast<std::byte>((colour * coverage + below * (255U - coverage) + 127U) / 255U);
}

void DrawGlyph(Picture& picture, const FT_Bitmap& glyph, int left, int top, Colour colour) {
  for (int y = 0; y < static_cast<int>(glyph.rows); ++y) {
    if (top + y < 0 || top + y >= picture.header.height) continue;
    std::byte* row = picture.Rows().Row(top + y);
    for (int x = 0; x < static_cast<int>(glyph.width); ++x) {
      if (left + x < 0 || left + x >= picture.header.width) continue;
      const unsigned coverage = glyph.buffer[y * glyph.pitch + x];
      std::byte* pixel = row + std::ptrdiff_t{4} * (left + x);
      Blend(pixel + 1, colour.red, coverage);
      Blend(pixel + 2, colour.green, coverage);
      Blend(pixel + 3, colour.blue, coverage);
    }
  }
}

}  // namespace

struct Font::Face {
  FT_Library library = nullptr;
  FT_Face face = nullptr;

  Face() = default;
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;
  ~Face() {
    if (face != nullptr) FT_Done_Face(face);
    if (library != nullptr) FT_Done_FreeType(library);
  }
};

Font::Font(const fs::path& file, int size) : face_(std::make_unique<Face>()) {
  if (FT_Init_FreeType(&face_->library) != 0 ||
      FT_New_Face(face_->library, file.string().c_str(), 0, &face_->face) != 0 ||
      FT_Set_Pixel_Sizes(face_->face, 0, static_cast<FT_UInt>(size)) != 0) {
    throw Failure(file.string(), "is not a usable font");
  }
}

Font::~Font() = default;

int Font::LineHeight() const {
  const FT_Size_Metrics& metrics = face_->face->size->metrics;
  return RoundedUp(std::max(metrics.height, metrics.ascender - metrics.descender));
}

int Font::Width(std::string_view text) const {
  FT_Pos width = 0;
  while (!text.empty()) {
    if (FT_Load_Char(face_->face, TakeCodePoint(text), FT_LOAD_DEFAULT) == 0) {
      width += face_->face->glyph->advance.x;
    }
  }
  return RoundedUp(width);
}

void Font::Draw(Picture& picture, int left, int top, std::string_view text, Colour colour) const {
  const int baseline = top + RoundedUp(face_->face->size->metrics.ascender);
  FT_Pos pen = FT_Pos{left} * 64;
  while (!text.empty()) {
    if (FT_Load_Char(face_->face, TakeCodePoint(text), FT_LOAD_RENDER) != 0) continue;
    const FT_GlyphSlot glyph = face_->face->glyph;
    DrawGlyph(picture, glyph->bitmap, static_cast<int>(pen >> 6) + glyph->bitmap_left,
              baseline - glyph->bitmap_top, colour);
    pen += glyph->advance.x;
  }
}

fs::path FontFile() {
  if (const char* named = std::getenv("PXL_FONT")) return named;
  std::error_code error;
  for (const char* file : kFontFiles) {
    if (fs::is_regular_file(file, error)) return file;
  }
  throw Failure("DejaVuSans.ttf", "no such font; install DejaVu or name another in PXL_FONT");
}

}  // namespace pxl
