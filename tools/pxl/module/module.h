// The module while it lives, and what it reports.
#ifndef TOOLS_PXL_MODULE_MODULE_H
#define TOOLS_PXL_MODULE_MODULE_H

#include <cstdint>
#include <string>
#include <vector>

#include "K_host.h"

namespace pxl {

// Checks the versions and brings the module to life; lays it to rest at the
// end. While one is there, the module's reports go to it instead of standard
// error. One at a time. Throws Failure.
class Module {
 public:
  Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module();

  // Throws Failure in the module's own words if a call gave an error, or
  // reported one and gave none; Shortage if the error is lack of memory.
  void Check(std::int32_t status);
  // Forgets what was reported since.
  void Drop() { reports_.clear(); }

 private:
  static void Take(const K_Report* report, void* module);
  std::string TakeReports();

  std::vector<std::string> reports_;
};

}  // namespace pxl

#endif
