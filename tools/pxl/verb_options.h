// Options that several verbs have, and checks of their values.
#ifndef TOOLS_PXL_VERB_OPTIONS_H
#define TOOLS_PXL_VERB_OPTIONS_H

#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace pxl {

// Accepts the depths 8, 32, 64 and 128.
CLI::Validator AnyDepth();

// Accepts digits alone: the library would take -1 for the largest number of an
// unsigned type.
CLI::Validator WholeNumber();

// Options that are paths. Their text is UTF-8 on every system; the library would
// read it in the system's encoding.
CLI::Option* AddPath(CLI::App& verb, const std::string& name, std::filesystem::path& path,
                     const std::string& description);
CLI::Option* AddPath(CLI::App& verb, const std::string& name,
                     std::optional<std::filesystem::path>& path, const std::string& description);
CLI::Option* AddPaths(CLI::App& verb, const std::string& name,
                      std::vector<std::filesystem::path>& paths, const std::string& description);

// A picture that the verb reads; it must be given.
void AddPicture(CLI::App& verb, const std::string& name, std::filesystem::path& picture,
                const std::string& description = "PNG or OpenEXR picture");

// The sheet that the verb writes; it must be given.
void AddSheetOutput(CLI::App& verb, std::filesystem::path& output);

// The limit of pictures that are read.
void AddMaxPixels(CLI::App& verb, std::uint64_t& maxPixels);

// The choice of JSON instead of text.
void AddJson(CLI::App& verb, bool& json);

}  // namespace pxl

#endif
