// Prints messages on standard error and flushes standard output.
#include "tools/pxl/system/console.h"

#include <cerrno>
#include <cstring>
#include <iostream>

namespace pxl {

std::string OneLine(const std::string& text) {
  std::string line = text;
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  }
  return line;
}

void PrintFailure(const std::string& name, const std::string& reason) {
  std::cerr << OneLine("pxl: " + (name.empty() ? "" : name + ": ") + reason) << std::endl;
}

void PrintNote(const std::string& name, const std::string& text) {
  PrintFailure(name, "note: " + text);
}

void FinishOutput() {
  errno = 0;
  std::cout.flush();
  if (!std::cout) {
    throw Failure("standard output", std::strerror(errno != 0 ? errno : EIO));
  }
}

}  // namespace pxl
