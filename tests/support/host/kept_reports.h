// Keeps the reports that K makes while it lives.
#ifndef TESTS_SUPPORT_HOST_KEPT_REPORTS_H
#define TESTS_SUPPORT_HOST_KEPT_REPORTS_H

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "K_host.h"

// A report as the sink receives it.
struct KeptReport {
  std::uint32_t code = 0;
  std::uint16_t cls = 0;
  std::int32_t error = 0;
  std::string text;
  bool operator==(const KeptReport&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const KeptReport& report);

using Reports = std::vector<KeptReport>;

class KeptReports {
 public:
  // The first `room` reports are kept without an allocation.
  explicit KeptReports(std::size_t room = 0);
  KeptReports(const KeptReports&) = delete;
  KeptReports& operator=(const KeptReports&) = delete;
  // Later reports go to standard error.
  ~KeptReports();

  // The reports since the last call of Forget or Take.
  [[nodiscard]] const Reports& All() const { return reports_; }
  [[nodiscard]] std::size_t Count() const { return reports_.size(); }
  // The last of them; an empty one if there is none.
  [[nodiscard]] KeptReport Last() const;
  // Keeps the room.
  void Forget();
  Reports Take();

 private:
  static void Keep(const K_Report* report, void* context);
  std::string NextText();

  Reports reports_;
  std::vector<std::string> spareTexts_;  // allocated beforehand
};

#endif
