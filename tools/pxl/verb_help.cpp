// The help texts of the program and of each verb.
#include "tools/pxl/verb_help.h"

namespace pxl {
namespace {

constexpr const char* kExitCodes =
    "Exit codes: 0 success, 1 failure, 2 unusable command line; 'pxl diff' has its own.";

constexpr const char* kFailuresAndEnvironment =
    "\nA failure is reported in one line on standard error.\n\n"
    "Environment:\n"
    "  VETRIX_SETTINGS=FILE  debug settings of the module (see 'pxl info')\n"
    "  PXL_FONT=FILE         font of the labels on sheets\n"
    "  PXL_SCRAMBLE=1        move every handle whenever memory is allocated\n"
    "  PXL_MEMORY_BUDGET=N   allow N bytes of handles and pool memory\n"
    "  PXL_FILL=HEX          fill new Worlds with this 32-bit pattern";

constexpr const char* kDiffExitCodes =
    "Exit codes of this verb: 0 the same, 1 different, 2 not compared, because a file\n"
    "cannot be read or written or the command line is unusable.";

constexpr const char* kConvert =
    "A picture becomes a World of its own depth (PNG with up to 8 bits a channel:\n"
    "32; PNG with 16: 64; OpenEXR: 128) and is blitted to each depth of --via, then\n"
    "to --depth. The blit does not convert between 64 and 128; these are converted\n"
    "pixel by pixel, unless --blit-only is given.\n"
    "With --mapped every conversion is made pixel by pixel, since the blit cannot read\n"
    "mapped pixels: floats are then rounded to 8 bits, where the blit cuts off.\n"
    "With --platform, 32 to 32 is a copy by the drawing layer.\n"
    "8 bits are indices into 256 standard colours. Only the drawing layer makes them,\n"
    "from 32 bits, by the nearest colour or dithered; transparency is lost.\n\n"
    "The format of an input is detected from its content, that of the output from the\n"
    "ending of its name. A PNG file holds indices at depth 8, 8 bits a channel at 32,\n"
    "otherwise 16; an OpenEXR file always holds floats.\n"
    "Alpha is not changed: straight in PNG, and in OpenEXR as the file has it.\n"
    "16-bit channels are 0..65535 in files and 0..32768 in Worlds; both conversions\n"
    "round to the nearest. Colour tags are kept; tags that are lost are reported.\n"
    "In an output folder, files keep their names, with the ending .png up to 64 bits\n"
    "and .exr for 128.\n\n"
    "Example: pxl convert photo.png --via 128 --depth 64 -o photo16.png";

constexpr const char* kDemo =
    "Writes NAME-32.png, NAME-64.png and NAME-128.png, the picture at each depth, and\n"
    "NAME-sheet.png with all of them side by side.";

constexpr const char* kSoak =
    "Makes Worlds of every depth in frames, mapped files and surfaces, and lets memory\n"
    "run short on purpose. Prints the number of each operation, and fails if a pixel is\n"
    "lost or if handles, blocks, surfaces or booked bytes remain.\n\n"
    "Example: pxl soak --minutes 2 --budget 256MiB --plot memory.svg";

constexpr const char* kModes =
    "A is the source, B the destination. Both become Worlds of 32 bits on surfaces of\n"
    "the drawing layer, and each of the modes 0 to 18 blits A onto a copy of B. Both\n"
    "are made opaque first: transparent parts are laid over white. B is reduced by\n"
    "a whole factor until neither side is longer than 240 pixels. Where A has another\n"
    "size, the largest part from its middle with B's proportions is scaled to B's size\n"
    "by the drawing layer, after a reduction by a whole factor if it is much larger.\n"
    "Small results are enlarged, each pixel to a square.\n\n"
    "The colours of the drawing layer: foreground black, background white (omitted by\n"
    "transparent, and replaced by the highlight colour in hilite), highlight orange.\n"
    "The op colour is half of full scale in blend, white in addPin, black in subPin.\n"
    "ditherCopy, 15 and 16, has an effect on 8 bits only: it draws A into a World of\n"
    "8 bits, whose colours are shown.\n\n"
    "Example: pxl modes title.png photo.png -o modes.png";

constexpr const char* kDiff =
    "Pictures differ if they have other sizes, other depths (the 32, 64 or 128 bits of\n"
    "the Worlds they become) or other channels (a palette counts as RGB), or if a\n"
    "sample differs by more than the tolerance. Colour tags are not compared.\n\n"
    "The tolerance is in steps of the files' samples: 1/255 of full scale with up to 8\n"
    "bits a channel, 1/65535 with 16. For floats it is in ULPs, the number of floats\n"
    "between two values. Floats are compared by value, not by bits: -0 equals 0, and a\n"
    "NaN equals any NaN. A NaN and a number, or an infinity and any other value, differ\n"
    "at every tolerance.\n\n"
    "Prints how many pixels and samples differ, the first of them (rows from the top,\n"
    "then red, green, blue, alpha) and the largest difference, also in steps of 8 bits\n"
    "and of 16 bits as Worlds have them (full scale 32768).\n"
    "The picture of --output shows the size of each difference on black, enlarged until\n"
    "all are visible; differences of alpha show in grey.\n\n"
    "Example: pxl diff before.png after.png --tolerance 1 -o difference.png";

constexpr const char* kSheet =
    "Shows the picture as read, at 32, 64 and 128 bits and in 256 colours, nearest and\n"
    "dithered, and under each the size of its difference to the picture as read, times\n"
    "the factor in its label. Full scale is 1. Differences of alpha show in grey; 8\n"
    "bits hold no alpha, so only colours are compared there.\n"
    "A picture with a side longer than 240 pixels is first reduced by a whole factor,\n"
    "in its own depth; the sheet and its numbers are those of the reduced picture.\n"
    "The conversions are those of 'pxl convert'; 8 bits are made from 32, on surfaces\n"
    "of the drawing layer.\n\n"
    "Example: pxl sheet photo.exr -o depths.png";

constexpr const char* kSelftest =
    "The module has routines for several levels of processor; those of every level\n"
    "must equal the plain loops bit for bit. This verb proves it on this processor: it\n"
    "tries every short length and alignment, every value in every place, and all 2^32\n"
    "floats; then the library's own blit, on Worlds. A routine that accesses memory\n"
    "outside of its rows crashes the program.\n\n"
    "Prints a line for each level: its name, a digest of the results of its routines\n"
    "for a fixed input, and ok or the difference. Digests are the same on every\n"
    "machine. The exit code is 1 if anything differs. Takes some seconds.";

constexpr const char* kDoctor =
    "Prints versions, the level of the processor and the reason for it, memory and its\n"
    "limits, the folder of mapped files, the settings in force and the origin of each,\n"
    "and the state of the translation. Tries the calls that PXL will make: brings the\n"
    "module to life, allocates a frame, and reserves space for a small mapped file,\n"
    "which is removed at once.\n\n"
    "The exit code is 1 if something keeps PXL from working; each such finding is a\n"
    "line that starts with 'problem:'. A line that starts with 'note:' is about\n"
    "something that PXL can do without.";

std::string WithCommonHelp(const char* text) {
  return std::string(text) + "\n\n" + CommonHelp();
}

}  // namespace

std::string CommonHelp() {
  return std::string(kExitCodes) + kFailuresAndEnvironment;
}

std::string ConvertHelp() {
  return WithCommonHelp(kConvert);
}

std::string DemoHelp() {
  return WithCommonHelp(kDemo);
}

std::string DiffHelp() {
  return std::string(kDiff) + "\n\n" + kDiffExitCodes + kFailuresAndEnvironment;
}

std::string DoctorHelp() {
  return WithCommonHelp(kDoctor);
}

std::string ModesHelp() {
  return WithCommonHelp(kModes);
}

std::string SelftestHelp() {
  return WithCommonHelp(kSelftest);
}

std::string SheetHelp() {
  return WithCommonHelp(kSheet);
}

std::string SoakHelp() {
  return WithCommonHelp(kSoak);
}

}  // namespace pxl
