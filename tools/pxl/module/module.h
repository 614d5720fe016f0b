// The life of the module, and its reports.
#ifndef TOOLS_PXL_MODULE_MODULE_H
#define TOOLS_PXL_MODULE_MODULE_H

#include <cstdint>
#include <string>
#include <vector>

#include "K_host.h"

namespace pxl {

// Checks the versions and brings the module to life; ends its life in the destructor.
// Meanwhile it receives the module's reports, which are not printed on standard
// error. One object at a time. Throws Failure.
class Module {
 public:
  Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module();

  // Throws Failure with the module's reports if a call returned an error, or reported
  // one without returning it; Shortage if the error is lack of memory.
  void Check(std::int32_t status);
  // Discards the reports since the last Check.
  void Drop() { reports_.clear(); }

 private:
  static void Take(const K_Report* report, void* module);
  std::string TakeReports();

  std::vector<std::string> reports_;
};

// Interface and revision of the library: "31.14".
std::string PackageVersion();

}  // namespace pxl

#endif
