// What the doctor found, for people and for programs.
#ifndef TOOLS_PXL_COMMANDS_DOCTOR_REPORT_H
#define TOOLS_PXL_COMMANDS_DOCTOR_REPORT_H

#include <cstdint>
#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace pxl {

using Json = nlohmann::ordered_json;

class DoctorReport {
 public:
  // Findings belong to the section that was begun last.
  void BeginSection(const std::string& title);
  // One fact, as a program reads it and as people do. In JSON the words of titles
  // and labels are one: "free space" is freeSpace.
  void Add(const std::string& label, Json value, const std::string& text);
  void Add(const std::string& label, const std::string& text) { Add(label, text, text); }
  void AddBytes(const std::string& label, std::uint64_t bytes);
  // What keeps PXL from working.
  void AddProblem(const std::string& text) { problems_.push_back(text); }
  // What PXL can do without.
  void AddNote(const std::string& text) { notes_.push_back(text); }

  bool IsHealthy() const { return problems_.empty(); }
  void PrintText(std::ostream& stream) const;
  void PrintJson(std::ostream& stream) const;

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
