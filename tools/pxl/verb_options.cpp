// Options and validators of CLI11 that several verbs use.
#include "tools/pxl/verb_options.h"

#include <algorithm>

#include "host/utf8_path.h"

namespace pxl {
namespace {

template <typename Path>
CLI::Option* AddAnyPath(CLI::App& verb, const std::string& name, Path& path,
                        const std::string& description) {
  const auto keep = [&path](const std::string& text) { path = PathOfUtf8(text); };
  return verb.add_option_function<std::string>(name, keep, description);
}

}  // namespace

CLI::Validator AnyDepth() {
  const std::vector<std::string> depths = {"8", "32", "64", "128"};
  const auto check = [depths](const std::string& text) -> std::string {
    if (std::find(depths.begin(), depths.end(), text) != depths.end()) return "";
    return text + " is none of " + CLI::detail::join(depths, ", ");
  };
  return {check, CLI::detail::join(depths, "|")};
}

CLI::Validator WholeNumber() {
  const auto check = [](const std::string& text) -> std::string {
    if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) return "";
    return text + " is not a whole number";
  };
  return {check, ""};
}

CLI::Option* AddPath(CLI::App& verb, const std::string& name, std::filesystem::path& path,
                     const std::string& description) {
  return AddAnyPath(verb, name, path, description);
}

CLI::Option* AddPath(CLI::App& verb, const std::string& name,
                     std::optional<std::filesystem::path>& path, const std::string& description) {
  return AddAnyPath(verb, name, path, description);
}

CLI::Option* AddPaths(CLI::App& verb, const std::string& name,
                      std::vector<std::filesystem::path>& paths, const std::string& description) {
  const auto keep = [&paths](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) paths.push_back(PathOfUtf8(text));
  };
  return verb.add_option_function<std::vector<std::string>>(name, keep, description);
}

void AddPicture(CLI::App& verb, const std::string& name, std::filesystem::path& picture,
                const std::string& description) {
  AddPath(verb, name, picture, description)->required()->type_name("");
}

void AddSheetOutput(CLI::App& verb, std::filesystem::path& output) {
  AddPath(verb, "-o,--output", output, "The sheet, a PNG file")->required()->type_name("FILE");
}

void AddMaxPixels(CLI::App& verb, std::uint64_t& maxPixels) {
  verb.add_option("--max-pixels", maxPixels, "Refuse pictures of more pixels (16384 x 16384)")
      ->check(CLI::PositiveNumber)
      ->type_name("N");
}

void AddJson(CLI::App& verb, bool& json) {
  verb.add_flag("--json", json, "Print JSON");
}

}  // namespace pxl
