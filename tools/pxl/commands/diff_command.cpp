// Compares two pictures and prints the result as text or JSON.
#include "tools/pxl/commands/diff_command.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>

#include "tools/pxl/formats/picture_file.h"
#include "tools/pxl/module/world.h"
#include "tools/pxl/pictures/picture_difference.h"
#include "tools/pxl/sheets/contact_sheet.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/json_output.h"

namespace pxl {
namespace {

constexpr double kFullScale8 = 255.0;
constexpr double kFullScale16 = 32768.0;

std::string NameOf(const ChannelSet& channels) {
  return std::string(channels.grey ? "grey" : "RGB") + (channels.alpha ? " and alpha" : "");
}

const char* NameOf(SampleType samples) {
  return samples == SampleType::Integer8    ? "8-bit integers"
         : samples == SampleType::Integer16 ? "16-bit integers"
                                            : "floats";
}

// The reason why the pixels cannot be compared.
struct Mismatch {
  const char* property;
  std::string first;
  std::string second;
};

std::optional<Mismatch> MismatchOf(const PictureHeader& a, const PictureHeader& b,
                                   const DiffOptions& options) {
  if (a.width != b.width || a.height != b.height) return Mismatch{"size", SizeText(a), SizeText(b)};
  if (a.samples != b.samples) return Mismatch{"depth", NameOf(a.samples), NameOf(b.samples)};
  if (a.channels != b.channels && !options.anyChannels) {
    return Mismatch{"channels", NameOf(a.channels), NameOf(b.channels)};
  }
  return std::nullopt;
}

// Nine digits distinguish a float from all others.
std::string ValueText(double value, SampleType samples) {
  if (std::isnan(value)) return "nan";
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), samples == SampleType::Float ? "%.9g" : "%.0f", value);
  return text.data();
}

// JSON has finite numbers only.
Json ValueJson(double value, SampleType samples) {
  if (!std::isfinite(value)) return ValueText(value, samples);
  if (samples == SampleType::Float) return value;
  return static_cast<int>(value);
}

const char* StepsKey(SampleType samples) {
  return samples == SampleType::Float ? "ulps" : "fileSteps";
}

Json JsonOf(const PictureDifference& difference, SampleType samples) {
  Json json = {{"pixels", difference.pixels},
               {"samples", difference.samples},
               {"withoutDistance", difference.withoutDistance},
               {"first", nullptr},
               {"largest",
                {{"steps8", difference.largest * kFullScale8},
                 {"steps16", difference.largest * kFullScale16},
                 {StepsKey(samples), difference.mostSteps}}}};
  if (const auto& first = difference.first) {
    json["first"] = {{"x", first->x},
                     {"y", first->y},
                     {"channel", first->channel},
                     {"a", ValueJson(first->first, samples)},
                     {"b", ValueJson(first->second, samples)}};
  }
  return json;
}

Json JsonOf(const Mismatch& mismatch) {
  return {{"what", mismatch.property}, {"a", mismatch.first}, {"b", mismatch.second}};
}

std::string ShortText(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.6g", number);
  return text.data();
}

void PrintLargest(const PictureDifference& difference, SampleType samples) {
  std::cout << "  largest    " << difference.mostSteps << " "
            << (samples == SampleType::Float ? "ULPs" : "steps of the files") << "; "
            << ShortText(difference.largest * kFullScale8) << " steps of 8 bits, "
            << ShortText(difference.largest * kFullScale16)
            << " steps of 16 bits (full scale 32768)\n";
}

void PrintDifference(const PictureDifference& difference, const PictureHeader& header) {
  const SampleType samples = header.samples;
  if (difference.first) {
    std::cout << "  differing  " << difference.pixels << " of " << header.width * header.height
              << " pixels, " << difference.samples << " samples\n"
              << "  first      x " << difference.first->x << ", y " << difference.first->y << ", "
              << difference.first->channel << ": " << ValueText(difference.first->first, samples)
              << " against " << ValueText(difference.first->second, samples) << "\n";
  }
  if (difference.mostSteps > 0) PrintLargest(difference, samples);
  if (difference.withoutDistance > 0) {
    std::cout << "  besides    " << difference.withoutDistance
              << " samples where a NaN or an infinity meets another value\n";
  }
}

// The comparison of two pictures, and its report as text or as JSON.
class Comparison {
 public:
  explicit Comparison(const DiffOptions& options)
      : options_(options),
        a_(options.first, options.maxPixels),
        b_(options.second, options.maxPixels) {}

  int Run() {
    const auto mismatch = MismatchOf(a_.header(), b_.header(), options_);
    return mismatch ? PrintMismatch(*mismatch) : ComparePixels();
  }

 private:
  std::string First() const { return options_.first.string(); }
  std::string Second() const { return options_.second.string(); }

  Json JsonStart(bool same) const {
    return {{"same", same},        {"a", First()},
            {"b", Second()},       {"tolerance", options_.tolerance},
            {"mismatch", nullptr}, {"differing", nullptr}};
  }

  int PrintMismatch(const Mismatch& mismatch) const {
    if (options_.json) {
      Json json = JsonStart(false);
      json["mismatch"] = JsonOf(mismatch);
      PrintJson(std::cout, json);
    } else {
      PrintVerdict("differ");
      std::cout << "  " << mismatch.property << ": " << mismatch.first << " against "
                << mismatch.second << "\n";
    }
    if (options_.output) {
      PrintNote(options_.output->string(),
                "not written, since the pictures differ in " + std::string(mismatch.property));
    }
    return kExitDifferent;
  }

  int ComparePixels() {
    // The limits of a World are checked before anything is decoded.
    About(First(), [this] { Measure(); });
    const Picture a = About(First(), [this] { return a_.Read(); });
    const Picture b = About(Second(), [this] { return b_.Read(); });
    const PictureDifference difference = Compare(a, b, options_.tolerance);
    if (options_.output) WritePicture(PictureOf(difference, a, b, options_.tolerance));
    PrintResult(difference);
    return difference.first ? kExitDifferent : kExitSame;
  }

  void Measure() const {
    Module module;
    MeasureWorld(module, DepthOf(a_.header().samples), a_.header().width, a_.header().height);
  }

  void WritePicture(const Picture& picture) const {
    WritePictureFile(*options_.output, FileFormat::Png, picture.header,
                     [&](std::int64_t y) { return picture.Row(y); });
  }

  void PrintResult(const PictureDifference& difference) const {
    const bool same = !difference.first;
    if (options_.json) {
      Json json = JsonStart(same);
      json["differing"] = JsonOf(difference, a_.header().samples);
      PrintJson(std::cout, json);
      return;
    }
    PrintVerdict(!same                       ? "differ"
                 : difference.mostSteps == 0 ? "are the same"
                                             : "are the same within the tolerance");
    PrintDifference(difference, a_.header());
  }

  void PrintVerdict(const char* verdict) const {
    std::cout << OneLine(First()) << " and " << OneLine(Second()) << " " << verdict << "\n";
  }

  const DiffOptions& options_;
  InputPicture a_;
  InputPicture b_;
};

}  // namespace

int Diff(const DiffOptions& options) {
  if (options.output) CheckSheetPlace(*options.output, {options.first, options.second});
  return Comparison(options).Run();
}

}  // namespace pxl
