#include "tools/pxl/verbs.h"

#include <algorithm>
#include <memory>
#include <string>

#include "host/utf8_path.h"
#include "tools/pxl/commands/commands.h"
#include "tools/pxl/module/language.h"

namespace pxl {

namespace {

constexpr const char* kExitCodes =
    "Exit codes: 0 success, 1 failure, 2 a command line that cannot be meant;\n"
    "'pxl diff' has its own.";

constexpr const char* kFailuresAndEnvironment =
    "\nFailures are told in one line on standard error.\n\n"
    "Environment:\n"
    "  VETRIX_SETTINGS=FILE  debug settings of the module (see 'pxl info')\n"
    "  PXL_FONT=FILE         font of the labels on sheets\n"
    "  PXL_SCRAMBLE=1        move every handle whenever memory is allocated\n"
    "  PXL_MEMORY_BUDGET=N   allow N bytes of handles and pool memory\n"
    "  PXL_FILL=HEX          fill new Worlds with this 32-bit pattern";

constexpr const char* kDiffExitCodes =
    "Exit codes, of this verb alone: 0 the same, 1 different, 2 not compared, since a\n"
    "file could not be read or written or the command line cannot be meant.";

constexpr const char* kConvertFooter =
    "A picture becomes a World of its own depth (PNG with up to 8 bits a channel:\n"
    "32; PNG with 16: 64; OpenEXR: 128) and is blitted to each depth of --via, then\n"
    "to --depth. 64 and 128, between which the blit does not convert, are converted\n"
    "pixel by pixel, unless --blit-only is given.\n"
    "With --mapped every conversion is made pixel by pixel, since the blit does not\n"
    "see mapped pixels: floats are then rounded to 8 bits, where the blit cuts off.\n"
    "With --platform, 32 to 32 is a copy by the drawing layer.\n"
    "8 bits are indices into 256 standard colours. Only the drawing layer makes them,\n"
    "from 32 bits, by the nearest colour or dithered; transparency is lost on the way.\n\n"
    "Inputs are known by their content, the output by its ending. A PNG holds indices\n"
    "at depth 8, 8 bits a channel at 32, else 16; an OpenEXR file always holds floats.\n"
    "Alpha is taken as it is: straight in PNG, and in OpenEXR whatever the file holds.\n"
    "16-bit channels are 0..65535 in files and 0..32768 in Worlds; both ways they are\n"
    "rounded to the nearest. Colour tags are kept, or their loss is told.\n"
    "Into a folder, names are kept and end in .png up to 64, .exr for 128.\n\n"
    "Example: pxl convert photo.png --via 128 --depth 64 -o photo16.png";

constexpr const char* kDemoFooter =
    "Leaves NAME-32.png, NAME-64.png and NAME-128.png, the picture as each depth\n"
    "holds it, and NAME-sheet.png with all of them side by side.";

constexpr const char* kSoakFooter =
    "Worlds of every depth live in frames, mapped files and surfaces; lack of memory\n"
    "is part of the plan. Ends with what was done, and fails if a pixel was lost or if\n"
    "handles, blocks, surfaces or booked bytes remain.\n\n"
    "Example: pxl soak --minutes 2 --budget 256MiB --plot memory.svg";

constexpr const char* kModesFooter =
    "A is the source, B the destination. Both become Worlds of 32 bits on surfaces of\n"
    "the drawing layer, and each of the modes 0 to 18 blits A onto a copy of B. For\n"
    "that they are made opaque, transparent parts being laid on white. B is reduced by\n"
    "a whole factor until neither side is longer than 240 pixels. Where A has another\n"
    "size, the largest part from its middle with B's proportions is scaled to B's size\n"
    "by the drawing layer, after a reduction by a whole factor if it is much larger.\n"
    "Results that are small are shown in squares of pixels.\n\n"
    "The colours drawn with: foreground black, background white (which transparent\n"
    "leaves out, and hilite turns to the highlight colour), highlight orange. The op\n"
    "colour is half of full scale in blend, white in addPin, black in subPin.\n"
    "ditherCopy, 15 and 16, shows on 8 bits only: it draws A into a World of 8 bits,\n"
    "whose colours are shown.\n\n"
    "Example: pxl modes title.png photo.png -o modes.png";

constexpr const char* kDiffFooter =
    "Different are pictures of other sizes, of other depths (the 32, 64 or 128 bits of\n"
    "the Worlds they become) and of other channels (a palette is RGB), and those with a\n"
    "sample that differs by more than the tolerance. Colour tags are not compared.\n\n"
    "The tolerance is in steps of the files' samples: 1/255 of full scale with up to 8\n"
    "bits a channel, 1/65535 with 16. For floats it is in ULPs: how many floats lie\n"
    "between. Floats are compared by value, not by bits: -0 equals 0, and a NaN equals\n"
    "any NaN. A NaN against a number, and an infinity against anything but itself, is\n"
    "different at every tolerance.\n\n"
    "Tells how many pixels and samples differ, the first of them (rows from the top,\n"
    "then red, green, blue, alpha) and the largest difference, also in steps of 8 bits\n"
    "and of 16 bits as Worlds have them (full scale 32768).\n"
    "The picture of --output shows the size of each difference on black, enlarged until\n"
    "all can be seen; differences of alpha show in grey.\n\n"
    "Example: pxl diff before.png after.png --tolerance 1 -o difference.png";

constexpr const char* kSheetFooter =
    "Shows the picture as read, at 32, 64 and 128 bits and in 256 colours, nearest and\n"
    "dithered, and under each the size of its difference to the picture as read, times\n"
    "the factor in its label. Full scale is 1. Differences of alpha show in grey; at 8\n"
    "bits, which hold no alpha, only colours are compared.\n"
    "A picture with a side longer than 240 pixels is first reduced by a whole factor,\n"
    "in its own depth: what is shown and told is that of the reduced picture.\n"
    "The conversions are those of 'pxl convert'; 8 bits are reached by way of 32, on\n"
    "surfaces of the drawing layer.\n\n"
    "Example: pxl sheet photo.exr -o depths.png";

constexpr const char* kSelftestFooter =
    "The module has routines for several levels of processor; those of every level\n"
    "must equal the plain loops bit for bit. This proves it on this processor: every\n"
    "short length and alignment, every value in every place, and all 2^32 floats; then\n"
    "the library's own blit, on Worlds. A routine that touches what it was not given\n"
    "ends the program with a crash.\n\n"
    "Prints a line for each level: its name, a digest of what its routines make of a\n"
    "fixed input, and ok or what differs. Digests are the same on every machine. The\n"
    "exit code is 1 if anything differs. Takes some seconds.";

constexpr const char* kDoctorFooter =
    "Tells versions, the level of processor and what decides it, memory and its limits,\n"
    "where mapped files go, which settings are in force and where each comes from, and\n"
    "the state of the translation. Tries what PXL will need: it brings the module to\n"
    "life, allocates a frame, and reserves space for a small mapped file, which is gone\n"
    "at once.\n\n"
    "The exit code is 1 if something was found that keeps PXL from working; each such\n"
    "thing is a line that starts with 'problem:'. A line that starts with 'note:' is\n"
    "about what PXL can do without.";

// Accepts the depths listed.
CLI::Validator OneOf(const std::vector<std::string>& depths) {
  const auto check = [depths](const std::string& text) -> std::string {
    if (std::find(depths.begin(), depths.end(), text) != depths.end()) return "";
    return text + " is none of " + CLI::detail::join(depths, ", ");
  };
  return {check, CLI::detail::join(depths, "|")};
}

// The library would take -1 for the largest number there is.
CLI::Validator WholeNumber() {
  const auto check = [](const std::string& text) -> std::string {
    if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) return "";
    return text + " is no whole number";
  };
  return {check, ""};
}

// Path is that or optional. The library would make one of the text itself, in
// what the system takes to be its encoding.
template <typename Path>
CLI::Option* AddPath(CLI::App& verb, const std::string& name, Path& path,
                     const std::string& description) {
  const auto keep = [&path](const std::string& text) { path = PathOfUtf8(text); };
  return verb.add_option_function<std::string>(name, keep, description);
}

CLI::Option* AddPaths(CLI::App& verb, const std::string& name,
                      std::vector<std::filesystem::path>& paths, const std::string& description) {
  const auto keep = [&paths](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) paths.push_back(PathOfUtf8(text));
  };
  return verb.add_option_function<std::vector<std::string>>(name, keep, description);
}

void AddMaxPixels(CLI::App& verb, std::uint64_t& maxPixels) {
  verb.add_option("--max-pixels", maxPixels, "Refuse pictures of more pixels (16384 x 16384)")
      ->check(CLI::PositiveNumber)
      ->type_name("N");
}

CLI::Option* AddBacking(CLI::App& verb, ConvertOptions& options, const std::string& name,
                        Backing backing, const std::string& description) {
  const auto choose = [&options, backing](std::int64_t) { options.backing = backing; };
  return verb.add_flag_function(name, choose, description);
}

Verb AddConvert(CLI::App& app) {
  auto options = std::make_shared<ConvertOptions>();
  CLI::App* verb = app.add_subcommand("convert", "Convert pictures to another depth");
  verb->footer(std::string(kConvertFooter) + "\n\n" + CommonHelp());
  AddPaths(*verb, "IN", options->inputs, "PNG or OpenEXR pictures")->required()->type_name("");
  AddPath(*verb, "-o,--output", options->output,
          "Output file (.png or .exr), or a folder that exists")
      ->required()
      ->type_name("FILE");
  verb->add_option("--depth", options->depth, "Bits a pixel of the last World")
      ->required()
      ->check(OneOf({"8", "32", "64", "128"}));
  verb->add_option("--via", options->via, "Depths on the way, for instance 128,32")
      ->delimiter(',')
      ->check(OneOf({"8", "32", "64", "128"}))
      ->expected(1)
      ->take_all();
  CLI::Option* blitOnly =
      verb->add_flag("--blit-only", options->blitOnly, "Fail where the blit does not convert");
  CLI::Option* mapped = AddBacking(*verb, *options, "--mapped", Backing::MappedFile,
                                   "Keep the Worlds in mapped files, convert pixel by pixel");
  mapped->excludes(blitOnly);
  AddBacking(*verb, *options, "--platform", Backing::Surface,
             "Keep Worlds of 32 bits in surfaces of the drawing layer")
      ->excludes(mapped);
  verb->add_flag("--dither", options->dither, "Dither on the way to 8 bits");
  verb->add_flag("--verbose", options->verbose, "Tell the memory of each World");
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Convert(*options); }, kExitFailure};
}

Verb AddInfo(CLI::App& app) {
  auto options = std::make_shared<InfoOptions>();
  CLI::App* verb = app.add_subcommand(
      "info", "Show versions and settings, and the geometry of a picture's World");
  AddPath(*verb, "FILE", options->file, "PNG or OpenEXR picture; only its header is read")
      ->type_name("");
  verb->add_option("--depth", options->depth, "Bits a pixel, if not the picture's own")
      ->check(OneOf({"8", "32", "64", "128"}))
      ->needs("FILE");
  AddMaxPixels(*verb, options->maxPixels);
  verb->add_flag("--json", options->json, "Print JSON");
  return {[options] { return Info(*options); }, kExitFailure};
}

Verb AddMessages(CLI::App& app) {
  auto options = std::make_shared<MessagesOptions>();
  CLI::App* verb = app.add_subcommand("messages", "List the module's texts as users see them");
  verb->add_flag("--json", options->json, "Print JSON");
  return {[options] { return Messages(*options); }, kExitFailure};
}

Verb AddDemo(CLI::App& app) {
  auto options = std::make_shared<DemoOptions>();
  CLI::App* verb = app.add_subcommand("demo", "Take pictures through every depth");
  verb->footer(std::string(kDemoFooter) + "\n\n" + CommonHelp());
  AddPaths(*verb, "PICTURE", options->pictures, "PNG or OpenEXR pictures")
      ->required()
      ->type_name("");
  AddPath(*verb, "-o,--output", options->folder, "Folder for the results; made if need be")
      ->required()
      ->type_name("FOLDER");
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Demo(*options); }, kExitFailure};
}

Verb AddDiff(CLI::App& app) {
  auto options = std::make_shared<DiffOptions>();
  CLI::App* verb = app.add_subcommand("diff", "Compare two pictures sample by sample");
  verb->footer(std::string(kDiffFooter) + "\n\n" + kDiffExitCodes + kFailuresAndEnvironment);
  AddPath(*verb, "A", options->first, "PNG or OpenEXR picture")->required()->type_name("");
  AddPath(*verb, "B", options->second, "PNG or OpenEXR picture")->required()->type_name("");
  verb->add_option("--tolerance", options->tolerance,
                   "Steps that a sample may differ by; 0 if none")
      ->check(WholeNumber())
      ->type_name("N");
  verb->add_flag("--any-channels", options->anyChannels,
                 "Take grey as RGB, and what has no alpha as opaque");
  AddPath(*verb, "-o,--output", options->output, "Picture of the differences, a PNG file")
      ->type_name("FILE");
  AddMaxPixels(*verb, options->maxPixels);
  verb->add_flag("--json", options->json, "Print JSON");
  return {[options] { return Diff(*options); }, kExitNotCompared};
}

Verb AddSoak(CLI::App& app) {
  auto options = std::make_shared<SoakOptions>();
  CLI::App* verb =
      app.add_subcommand("soak", "Make, draw and dispose of Worlds at random for a while");
  verb->footer(std::string(kSoakFooter) + "\n\n" + CommonHelp());
  verb->add_option("--minutes", options->minutes, "How long; parts of a minute will do")
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

void AddSheetOutput(CLI::App& verb, std::filesystem::path& output) {
  AddPath(verb, "-o,--output", output, "The sheet, a PNG file")->required()->type_name("FILE");
}

Verb AddModes(CLI::App& app) {
  auto options = std::make_shared<ModesOptions>();
  CLI::App* verb = app.add_subcommand("modes", "Show all transfer modes of two pictures");
  verb->footer(std::string(kModesFooter) + "\n\n" + CommonHelp());
  AddPath(*verb, "A", options->source, "PNG or OpenEXR picture, the source")
      ->required()
      ->type_name("");
  AddPath(*verb, "B", options->destination, "PNG or OpenEXR picture, the destination")
      ->required()
      ->type_name("");
  AddSheetOutput(*verb, options->output);
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Modes(*options); }, kExitFailure};
}

Verb AddSheet(CLI::App& app) {
  auto options = std::make_shared<SheetOptions>();
  CLI::App* verb = app.add_subcommand("sheet", "Show what each depth changes in a picture");
  verb->footer(std::string(kSheetFooter) + "\n\n" + CommonHelp());
  AddPath(*verb, "IN", options->picture, "PNG or OpenEXR picture")->required()->type_name("");
  AddSheetOutput(*verb, options->output);
  AddMaxPixels(*verb, options->maxPixels);
  return {[options] { return Sheet(*options); }, kExitFailure};
}

Verb AddSelftest(CLI::App& app) {
  auto options = std::make_shared<SelftestOptions>();
  CLI::App* verb = app.add_subcommand("selftest", "Prove the module's routines on this processor");
  verb->footer(std::string(kSelftestFooter) + "\n\n" + CommonHelp());
  verb->add_flag("--quick", options->quick, "Leave out the conversion of all floats");
  return {[options] { return Selftest(*options); }, kExitFailure};
}

// It tells what is wrong with the translation, and so puts it to use itself.
Verb AddDoctor(CLI::App& app, const LanguageFile& language) {
  auto options = std::make_shared<DoctorOptions>();
  CLI::App* verb = app.add_subcommand("doctor", "Examine what PXL needs on this machine");
  verb->footer(std::string(kDoctorFooter) + "\n\n" + CommonHelp());
  verb->add_flag("--json", options->json, "Print JSON");
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

std::string CommonHelp() {
  return std::string(kExitCodes) + kFailuresAndEnvironment;
}

std::vector<Verb> AddVerbs(CLI::App& app, const LanguageFile& language) {
  std::vector<Verb> verbs = {AddConvert(app), AddInfo(app), AddMessages(app),
                             AddDemo(app),    AddDiff(app), AddModes(app),
                             AddSheet(app),   AddSoak(app), AddSelftest(app)};
  for (Verb& verb : verbs) verb.action = InLanguage(language, verb.action);
  verbs.push_back(AddDoctor(app, language));
  return verbs;
}

}  // namespace pxl
