// A progress bar on a terminal.
#ifndef TOOLS_PXL_SYSTEM_PROGRESS_H
#define TOOLS_PXL_SYSTEM_PROGRESS_H

#include <cstddef>
#include <ostream>
#include <string>

namespace pxl {

// Draws nothing unless `visible`. Call Clear before other output to the same terminal.
class Progress {
 public:
  Progress(std::ostream& stream, std::size_t total, bool visible)
      : stream_(stream), total_(total), visible_(visible && total > 0) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Clear(); }

  // Shows `done` of the total, with the unit unless it is empty.
  void Show(std::size_t done, const std::string& unit = "");
  void Clear();

 private:
  std::ostream& stream_;
  std::size_t total_;
  bool visible_;
};

}  // namespace pxl

#endif
