// The command line parsed by CLI11, and its errors as messages of the tool.
#include "tools/pxl/arguments.h"

#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "tools/pxl/module/module.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/verb_help.h"
#include "tools/pxl/verbs.h"

namespace pxl {
namespace {

constexpr const char* kDescription =
    "Converts pictures between the pixel depths of PXL, shows the effects of depths and\n"
    "transfer modes, and examines the module and its texts.";

// Prints the help of the verb in question, or of the whole program.
int PrintHelp(const CLI::App& app) {
  std::cout << app.help();
  return kExitSuccess;
}

int PrintLine(const std::string& text) {
  std::cout << text << "\n";
  return kExitSuccess;
}

// The translation to use, for any verb.
LanguageFile AddLanguage(CLI::App& app) {
  auto file = std::make_shared<std::optional<std::string>>();
  app.add_option("--language", *file, "Translation of the module's texts, before any verb")
      ->type_name("FILE");
  return file;
}

constexpr const char* kNoVerb = "a verb is needed; see pxl --help";

bool HasNoVerb(const CLI::App& app, const CLI::ParseError& error) {
  return dynamic_cast<const CLI::RequiredError*>(&error) != nullptr &&
         app.get_subcommands().empty();
}

// The library would report a missing verb.
void RefuseUnknownVerb(const CLI::App& app, const std::vector<std::string>& arguments) {
  if (arguments.size() < 2) throw UsageError(kNoVerb);
  const std::string& first = arguments[1];
  const auto hasName = [&](const CLI::App* verb) { return verb->get_name() == first; };
  if (first.rfind('-', 0) == 0 || !app.get_subcommands(hasName).empty()) return;
  throw UsageError(first, "is no verb; see pxl --help");
}

// The library's message about an option in the form of all messages of this
// program: name and reason.
UsageError Translated(const CLI::ParseError& error) {
  const std::string text = error.what();
  for (const char* word : {" is required", " requires ", " excludes "}) {
    const std::size_t place = text.find(word);
    if (place != std::string::npos) return {text.substr(0, place), text.substr(place + 1)};
  }
  const std::string conversion = "Could not convert: ";
  const std::size_t equals = text.find(" = ");
  if (text.rfind(conversion, 0) == 0 && equals != std::string::npos) {
    return {text.substr(conversion.size(), equals - conversion.size()),
            "is not a number: " + text.substr(equals + 3)};
  }
  return {"", text};
}

std::string VersionText() {
  return "pxl " + PackageVersion();
}

void SetUp(CLI::App& app) {
  app.footer(CommonHelp());
  // A slash starts the name of a file, not an option, on Windows too.
  app.allow_windows_style_options(false);
  app.set_version_flag("--version", VersionText);
  app.require_subcommand(1);
}

// The failure behind an error of the library.
UsageError UsageErrorOf(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  if (!unknown.empty()) return {unknown.front(), "is not expected"};
  if (HasNoVerb(app, error)) return {"", kNoVerb};
  return Translated(error);
}

// The verb that was parsed. The library keeps verbs in the order of their addition.
Command ChosenCommand(CLI::App& app, const std::vector<Verb>& verbs) {
  const std::vector<CLI::App*> places = app.get_subcommands({});
  for (std::size_t i = 0; i < verbs.size(); ++i) {
    if (places[i]->parsed()) return {verbs[i].action, verbs[i].failureCode};
  }
  throw UsageError(kNoVerb);
}

}  // namespace

Command ParseArguments(const std::vector<std::string>& arguments) {
  auto app = std::make_shared<CLI::App>(kDescription, "pxl");
  SetUp(*app);
  const LanguageFile language = AddLanguage(*app);
  const std::vector<Verb> verbs = AddVerbs(*app, language);
  RefuseUnknownVerb(*app, arguments);
  try {
    // The library takes the last one first, and not the program's name.
    app->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend() - 1));
  } catch (const CLI::CallForHelp&) {
    return {[app] { return PrintHelp(*app); }, kExitFailure};
  } catch (const CLI::CallForVersion& version) {
    return {[text = std::string(version.what())] { return PrintLine(text); }, kExitFailure};
  } catch (const CLI::ParseError& error) {
    throw UsageErrorOf(*app, error);
  }
  return ChosenCommand(*app, verbs);
}

}  // namespace pxl
