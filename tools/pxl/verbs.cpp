// Each verb with its options, and the command that it runs.
#include "tools/pxl/verbs.h"

#include <memory>
#include <string>

#include "tools/pxl/commands/convert_command.h"
#include "tools/pxl/commands/demo_command.h"
#include "tools/pxl/commands/diff_command.h"
#include "tools/pxl/commands/doctor/doctor_command.h"
#include "tools/pxl/commands/info_command.h"
#include "tools/pxl/commands/messages_command.h"
#include "tools/pxl/commands/modes_command.h"
#include "tools/pxl/commands/selftest/selftest_command.h"
#include "tools/pxl/commands/sheet_command.h"
#include "tools/pxl/commands/soak/soak_command.h"
#include "tools/pxl/module/language.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/verb_help.h"
#include "tools/pxl/verb_options.h"

namespace pxl {
namespace {

CLI::Option* AddBacking(CLI::App& verb, ConvertOptions& options, const std::string& name,
                        Backing backing, const std::string& description) {
  const auto choose = [&options, backing](std::int64_t) { options.backing = backing; };
  return verb.add_flag_function(name, choose, description);
}

void AddDepths(CLI::App& verb, ConvertOptions& options) {
  verb.add_option("--depth", options.depth, "Bits a pixel of the last World")
      ->required()
      ->check(AnyDepth());
  verb.add_option("--via", options.via, "Depths in between, for instance 128,32")
      ->delimiter(',')
      ->check(AnyDepth())
      ->expected(1)
      ->take_all();
}

// Options that choose how and where Worlds are converted.
void AddWays(CLI::App& verb, ConvertOptions& options) {
  CLI::Option* blitOnly =
      verb.add_flag("--blit-only", options.blitOnly, "Fail where the blit does not convert");
  CLI::Option* mapped = AddBacking(verb, options, "--mapped", Backing::MappedFile,
                                   "Keep the Worlds in mapped files, convert pixel by pixel");
  mapped->excludes(blitOnly);
  AddBacking(verb, options, "--platform", Backing::Surface,
             "Keep Worlds of 32 bits in surfaces of the drawing layer")
      ->excludes(mapped);
}

Verb AddConvert(CLI::App& app) {
  auto options = std::make_shared<ConvertOptions>();
  CLI::App* verb = app.add_subcommand("convert", "Convert pictures to another depth");
  verb->footer(ConvertHelp());
  AddPaths(*verb, "IN", options->inputs, "PNG or OpenEXR pictures")->required()->type_name("");
  AddPath(*verb, "-o,--output", options->output,
          "Output file (.png or .exr), or a folder that exists")
      ->required()
      ->type_name("FILE");
  AddDepths(*verb, *options);
  AddWays(*verb, *options);
  verb->add_flag("--dither", options->dither, "Dither when converting to 8 bits");
  verb->add_flag("--verbose", options->verbose, "Print the memory of each World");
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Convert(*options); }, kExitFailure};
}

Verb AddInfo(CLI::App& app) {
  auto options = std::make_shared<InfoOptions>();
  CLI::App* verb = app.add_subcommand(
      "info", "Show versions and settings, and the geometry of a picture's World");
  AddPath(*verb, "FILE", options->file, "PNG or OpenEXR picture; only its header is read")
      ->type_name("");
  verb->add_option("--depth", options->depth, "Bits a pixel (the picture's own)")
      ->check(AnyDepth())
      ->needs("FILE");
  AddMaxPixels(*verb, options->maxPixels);
  AddJson(*verb, options->json);
  return {[options] { return Info(*options); }, kExitFailure};
}

Verb AddMessages(CLI::App& app) {
  auto options = std::make_shared<MessagesOptions>();
  CLI::App* verb = app.add_subcommand("messages", "List the module's texts as users see them");
  AddJson(*verb, options->json);
  return {[options] { return Messages(*options); }, kExitFailure};
}

Verb AddDemo(CLI::App& app) {
  auto options = std::make_shared<DemoOptions>();
  CLI::App* verb = app.add_subcommand("demo", "Convert pictures to every depth");
  verb->footer(DemoHelp());
  AddPaths(*verb, "PICTURE", options->pictures, "PNG or OpenEXR pictures")
      ->required()
      ->type_name("");
  AddPath(*verb, "-o,--output", options->folder,
          "Folder for the results; created if it does not exist")
      ->required()
      ->type_name("FOLDER");
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Demo(*options); }, kExitFailure};
}

Verb AddDiff(CLI::App& app) {
  auto options = std::make_shared<DiffOptions>();
  CLI::App* verb = app.add_subcommand("diff", "Compare two pictures sample by sample");
  verb->footer(DiffHelp());
  AddPicture(*verb, "A", options->first);
  AddPicture(*verb, "B", options->second);
  verb->add_option("--tolerance", options->tolerance, "Steps that a sample may differ by (0)")
      ->check(WholeNumber())
      ->type_name("N");
  verb->add_flag("--any-channels", options->anyChannels,
                 "Read grey as RGB, and a picture without alpha as opaque");
  AddPath(*verb, "-o,--output", options->output, "Picture of the differences, a PNG file")
      ->type_name("FILE");
  AddMaxPixels(*verb, options->maxPixels);
  AddJson(*verb, options->json);
  return {[options] { return Diff(*options); }, kExitNotCompared};
}

Verb AddSoak(CLI::App& app) {
  auto options = std::make_shared<SoakOptions>();
  CLI::App* verb =
      app.add_subcommand("soak", "Make, draw and dispose of Worlds at random for a while");
  verb->footer(SoakHelp());
  verb->add_option("--minutes", options->minutes, "Duration in minutes; may be a fraction")
      ->required()
      ->type_name("M");
  verb->add_option("--budget", options->budget, "Memory that K allows, for instance 256MiB")
      ->transform(CLI::AsSizeValue(false))
      ->type_name("SIZE");
  AddPath(*verb, "--plot", options->plot, "Draw K's memory over time (.svg)")->type_name("FILE");
  verb->add_option("--seed", options->seed, "Repeat the calls of an earlier run")
      ->check(WholeNumber())
      ->type_name("N");
  return {[options] { return RunSoak(*options); }, kExitFailure};
}

Verb AddModes(CLI::App& app) {
  auto options = std::make_shared<ModesOptions>();
  CLI::App* verb = app.add_subcommand("modes", "Show all transfer modes of two pictures");
  verb->footer(ModesHelp());
  AddPicture(*verb, "A", options->source, "PNG or OpenEXR picture, the source");
  AddPicture(*verb, "B", options->destination, "PNG or OpenEXR picture, the destination");
  AddSheetOutput(*verb, options->output);
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Modes(*options); }, kExitFailure};
}

Verb AddSheet(CLI::App& app) {
  auto options = std::make_shared<SheetOptions>();
  CLI::App* verb = app.add_subcommand("sheet", "Show the changes of a picture at each depth");
  verb->footer(SheetHelp());
  AddPicture(*verb, "IN", options->picture);
  AddSheetOutput(*verb, options->output);
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Sheet(*options); }, kExitFailure};
}

Verb AddSelftest(CLI::App& app) {
  auto options = std::make_shared<SelftestOptions>();
  CLI::App* verb = app.add_subcommand("selftest", "Prove the module's routines on this processor");
  verb->footer(SelftestHelp());
  verb->add_flag("--quick", options->quick, "Leave out the conversion of all floats");
  return {[options] { return Selftest(*options); }, kExitFailure};
}

// The doctor reports errors of the translation, so it puts the translation in force
// itself.
Verb AddDoctor(CLI::App& app, const LanguageFile& language) {
  auto options = std::make_shared<DoctorOptions>();
  CLI::App* verb = app.add_subcommand("doctor", "Examine the requirements of PXL on this machine");
  verb->footer(DoctorHelp());
  AddJson(*verb, options->json);
  const auto run = [options, language] {
    options->language = *language;
    return Doctor(*options);
  };
  return {run, kExitFailure};
}

Action InLanguage(const LanguageFile& file, const Action& action) {
  return [file, action] {
    if (*file) UseLanguage(**file);
    return action();
  };
}

}  // namespace

std::vector<Verb> AddVerbs(CLI::App& app, const LanguageFile& language) {
  std::vector<Verb> verbs = {AddConvert(app), AddInfo(app), AddMessages(app),
                             AddDemo(app),    AddDiff(app), AddModes(app),
                             AddSheet(app),   AddSoak(app), AddSelftest(app)};
  for (Verb& verb : verbs) verb.action = InLanguage(language, verb.action);
  verbs.push_back(AddDoctor(app, language));
  return verbs;
}

}  // namespace pxl
