// The verbs of the command line with their options and help.
#ifndef TOOLS_PXL_VERBS_H
#define TOOLS_PXL_VERBS_H

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pxl {

// Runs a verb and returns the exit code.
using Action = std::function<int()>;

// The action of a verb, for when the command line is parsed.
struct Verb {
  Action action;
  int failureCode;  // the exit code when that throws Failure
};

// The translation file of the command line; set when it is parsed.
using LanguageFile = std::shared_ptr<const std::optional<std::string>>;

// Adds all verbs, in the order in which CLI11 keeps them.
std::vector<Verb> AddVerbs(CLI::App& app, const LanguageFile& language);

}  // namespace pxl

#endif
