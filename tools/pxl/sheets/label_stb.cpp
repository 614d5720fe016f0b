// Fonts by stb_truetype.
#include <stb/stb_truetype.h>

#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <system_error>

#include "host/utf8_path.h"
#include "tools/pxl/sheets/label_drawing.h"
#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

// Segoe UI and Arial come with the system.
constexpr std::array<const char*, 3> kFontFiles = {"DejaVuSans.ttf", "segoeui.ttf", "arial.ttf"};

std::string ContentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

fs::path VariableOf(const wchar_t* name) {
  const wchar_t* value = _wgetenv(name);
  return value != nullptr ? fs::path(value) : fs::path();
}

int RoundedUp(float value) {
  return static_cast<int>(std::ceil(value));
}

}  // namespace

struct Font::Face {
  std::string file;
  stbtt_fontinfo info{};
  float scale = 0.0F;
  int ascent = 0, descent = 0, gap = 0;  // in the font's units

  // In whole pixels.
  int AdvanceOf(char32_t point) const {
    int advance = 0;
    int bearing = 0;
    stbtt_GetCodepointHMetrics(&info, static_cast<int>(point), &advance, &bearing);
    return static_cast<int>(std::lround(scale * static_cast<float>(advance)));
  }
};

// The library does not check the file; fonts are files that the user trusts.
Font::Font(const fs::path& file, int size) : face_(std::make_unique<Face>()) {
  face_->file = ContentOf(file);
  const auto* bytes = reinterpret_cast<const unsigned char*>(face_->file.data());
  constexpr std::size_t kHeader = 12;
  const bool usable = face_->file.size() > kHeader && stbtt_GetNumberOfFonts(bytes) > 0 &&
                      stbtt_InitFont(&face_->info, bytes, stbtt_GetFontOffsetForIndex(bytes, 0));
  if (!usable) throw Failure(Utf8OfPath(file), "is not a usable font");
  face_->scale = stbtt_ScaleForMappingEmToPixels(&face_->info, static_cast<float>(size));
  stbtt_GetFontVMetrics(&face_->info, &face_->ascent, &face_->descent, &face_->gap);
}

Font::~Font() = default;

int Font::LineHeight() const {
  const int height = face_->ascent - face_->descent + face_->gap;
  return RoundedUp(face_->scale * static_cast<float>(height));
}

int Font::Width(std::string_view text) const {
  int width = 0;
  while (!text.empty()) width += face_->AdvanceOf(TakeCodePoint(text));
  return width;
}

void Font::Draw(Picture& picture, int left, int top, std::string_view text, Colour colour) const {
  const int baseline = top + RoundedUp(face_->scale * static_cast<float>(face_->ascent));
  while (!text.empty()) {
    const char32_t point = TakeCodePoint(text);
    Coverage shape{};
    int x = 0;
    int y = 0;
    unsigned char* pixels =
        stbtt_GetCodepointBitmap(&face_->info, face_->scale, face_->scale, static_cast<int>(point),
                                 &shape.width, &shape.height, &x, &y);
    shape.first = pixels;
    shape.rowBytes = shape.width;
    if (pixels != nullptr) DrawCoverage(picture, shape, left + x, baseline + y, colour);
    stbtt_FreeBitmap(pixels, nullptr);
    left += face_->AdvanceOf(point);
  }
}

fs::path FontFile() {
  const fs::path named = VariableOf(L"PXL_FONT");
  if (!named.empty()) return named;
  const fs::path folder = VariableOf(L"WINDIR") / "Fonts";
  std::error_code error;
  for (const char* file : kFontFiles) {
    if (fs::is_regular_file(folder / file, error)) return folder / file;
  }
  throw Failure("DejaVuSans.ttf", "no such font; install DejaVu or name another in PXL_FONT");
}

}  // namespace pxl
