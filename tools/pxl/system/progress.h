// A progress bar on a terminal.
#ifndef TOOLS_PXL_SYSTEM_PROGRESS_H
#define TOOLS_PXL_SYSTEM_PROGRESS_H

#include <cstddef>
#include <ostream>
#include <string>

namespace pxl {

// Whether standard error is a terminal.
bool StandardErrorIsTerminal();

// Draws nothing unless it is told to. Take it away with Clear before writing
// anything else to the same place.
class Progress {
 public:
  Progress(std::ostream& stream, std::size_t total, bool visible)
      : stream_(stream), total_(total), visible_(visible && total > 0) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Clear(); }

  // Shows that `done` of the total are done, counted in `unit` if it has one.
  void Show(std::size_t done, const std::string& unit = "");
  void Clear();

 private:
  std::ostream& stream_;
  std::size_t total_;
  bool visible_;
};

}  // namespace pxl

#endif
