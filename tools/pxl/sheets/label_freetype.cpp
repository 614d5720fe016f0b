// Fonts by FreeType.
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <array>
#include <cstdlib>
#include <system_error>

#include "tools/pxl/sheets/label_drawing.h"
#include "tools/pxl/system/failure.h"

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

Coverage CoverageOf(const FT_Bitmap& glyph) {
  return {glyph.buffer, static_cast<int>(glyph.width), static_cast<int>(glyph.rows), glyph.pitch};
}

}  // namespace

struct Font::Face {
  fs::path file;
  FT_Library library = nullptr;
  FT_Face face = nullptr;

  Face() = default;
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;
  ~Face() {
    if (face != nullptr) FT_Done_Face(face);
    if (library != nullptr) FT_Done_FreeType(library);
  }

  // Throws Failure, named after the file, for an error that is not 0.
  void Check(FT_Error error, const char* reason) const {
    if (error == FT_Err_Out_Of_Memory) throw Failure(file.string(), "not enough memory");
    if (error != 0) throw Failure(file.string(), reason);
  }

  // Takes the next letter of the text. A letter that cannot be drawn is an error.
  FT_GlyphSlot Load(std::string_view& text, FT_Int32 how) const {
    Check(FT_Load_Char(face, TakeCodePoint(text), how), "a letter cannot be drawn");
    return face->glyph;
  }
};

Font::Font(const fs::path& file, int size) : face_(std::make_unique<Face>()) {
  constexpr const char* kUnusable = "is not a usable font";
  face_->file = file;
  face_->Check(FT_Init_FreeType(&face_->library), kUnusable);
  face_->Check(FT_New_Face(face_->library, file.string().c_str(), 0, &face_->face), kUnusable);
  face_->Check(FT_Set_Pixel_Sizes(face_->face, 0, static_cast<FT_UInt>(size)), kUnusable);
}

Font::~Font() = default;

int Font::LineHeight() const {
  const FT_Size_Metrics& metrics = face_->face->size->metrics;
  return RoundedUp(std::max(metrics.height, metrics.ascender - metrics.descender));
}

int Font::Width(std::string_view text) const {
  FT_Pos width = 0;
  while (!text.empty()) width += face_->Load(text, FT_LOAD_DEFAULT)->advance.x;
  return RoundedUp(width);
}

void Font::Draw(Picture& picture, int left, int top, std::string_view text, Colour colour) const {
  const int baseline = top + RoundedUp(face_->face->size->metrics.ascender);
  FT_Pos pen = FT_Pos{left} * 64;
  while (!text.empty()) {
    const FT_GlyphSlot glyph = face_->Load(text, FT_LOAD_RENDER);
    DrawCoverage(picture, CoverageOf(glyph->bitmap),
                 static_cast<int>(pen >> 6) + glyph->bitmap_left, baseline - glyph->bitmap_top,
                 colour);
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
