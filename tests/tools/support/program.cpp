// Sample pictures and checks of messages.
#include "tests/tools/support/program.h"

#include "tools/pxl/formats/picture_file.h"

pxl::Picture ReadPictureFile(const std::filesystem::path& path) {
  return pxl::InputPicture(path).Read();
}

std::string SamplePicture(const std::string& name) {
  return PXL_PICTURES "/" + name;
}

std::vector<std::string> SamplePictures() {
  return {SamplePicture("astronaut.png"), SamplePicture("coffee.png"),
          SamplePicture("raccoon-16.png"), SamplePicture("cat-float.exr")};
}

bool IsOneLine(const std::string& text, const std::string& start) {
  return text.rfind(start, 0) == 0 && text.find('\n') == text.size() - 1;
}
