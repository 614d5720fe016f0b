// The findings of the doctor, as text and as JSON.
#ifndef TOOLS_PXL_COMMANDS_DOCTOR_REPORT_H
#define TOOLS_PXL_COMMANDS_DOCTOR_REPORT_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "tools/pxl/system/json_output.h"

namespace pxl {

class DoctorReport {
 public:
  // Findings are added to the section that was begun last.
  void BeginSection(const std::string& title);
  // One finding, as a JSON value and as text. In JSON, titles and labels are one
  // word: "free space" becomes freeSpace.
  void Add(const std::string& label, Json value, const std::string& text);
  void Add(const std::string& label, const std::string& text) { Add(label, text, text); }
  void AddBytes(const std::string& label, std::uint64_t bytes);
  // A finding that keeps PXL from working.
  void AddProblem(const std::string& text) { problems_.push_back(text); }
  // A finding that PXL can do without.
  void AddNote(const std::string& text) { notes_.push_back(text); }

  bool IsHealthy() const { return problems_.empty(); }
  void PrintText(std::ostream& stream) const;
  [[nodiscard]] Json AsJson() const;

 private:
  struct Finding {
    std::string label;
    Json value;
    std::string text;
  };
  struct Section {
    std::string title;
    std::vector<Finding> findings;
  };

  std::vector<Section> sections_;
  std::vector<std::string> problems_;
  std::vector<std::string> notes_;
};

// "512.0 MiB (536870912 bytes)".
std::string BytesText(std::uint64_t bytes);

}  // namespace pxl

#endif
