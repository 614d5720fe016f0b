// Text drawn into pictures.
#ifndef TOOLS_PXL_SHEETS_LABEL_H
#define TOOLS_PXL_SHEETS_LABEL_H

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

struct Colour {
  std::uint8_t red, green, blue;
};

// A font at one size. Texts are UTF-8, one line each.
class Font {
 public:
  // `size` is in pixels. Throws Failure, named after the file.
  Font(const std::filesystem::path& file, int size);
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  ~Font();

  // Pixels from one line to the next.
  int LineHeight() const;
  // Pixels that the text takes from left to right. Throws Failure.
  int Width(std::string_view text) const;
  // Draws the text into an opaque Integer8 picture; left and top are those of
  // its line. Pixels outside the picture are left out. Throws Failure.
  void Draw(Picture& picture, int left, int top, std::string_view text, Colour colour) const;

 private:
  struct Face;
  std::unique_ptr<Face> face_;
};

// The font file of the tool: the value of PXL_FONT, otherwise DejaVu Sans in the
// folders of the system. Throws Failure if there is none.
std::filesystem::path FontFile();

}  // namespace pxl

#endif
