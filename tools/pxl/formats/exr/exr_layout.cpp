// Checks of attributes and chunks in the bytes of an OpenEXR file.
#include "tools/pxl/formats/exr/exr_layout.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

constexpr std::size_t kStart = 8;  // magic and version
constexpr int kUncompressed = 0;
constexpr int kMipmap = 1;
constexpr int kRipmap = 2;

[[noreturn]] void Refuse(const std::string& reason) {
  throw Failure("damaged OpenEXR: " + reason);
}

// ---- The header

template <typename Number>
Number NumberAt(std::string_view file, std::size_t place) {
  if (place > file.size() || file.size() - place < sizeof(Number)) {
    Refuse("the file ends too early");
  }
  Number value{};
  std::memcpy(&value, file.data() + place, sizeof value);
  return value;
}

// Returns the text at `place`, and moves `place` behind its end.
std::string TakeText(std::string_view file, std::size_t& place) {
  const std::size_t end = file.find('\0', place);
  if (end == std::string_view::npos) Refuse("the file ends too early");
  std::string text(file.substr(place, end - place));
  place = end + 1;
  return text;
}

void CheckSize(const std::string& name, std::int32_t size) {
  static const std::map<std::string, std::int32_t> sizes = {
      {"chunkCount", 4},        {"compression", 1},        {"dataWindow", 16},
      {"displayWindow", 16},    {"lineOrder", 1},          {"pixelAspectRatio", 4},
      {"screenWindowWidth", 4}, {"screenWindowCenter", 8}, {"tiles", 9}};
  const auto found = sizes.find(name);
  if (size < 0 || (found != sizes.end() && found->second != size)) {
    Refuse("an attribute of an impossible size");
  }
}

// ---- Chunks

// A level of a tiled picture, or all of one without tiles.
struct Level {
  std::int32_t x, y;
  std::int64_t width, height;
};

std::int64_t BlocksIn(std::int64_t length, std::int64_t block) {
  return (length + block - 1) / block;
}

std::int64_t Halved(std::int64_t length, int times, bool roundsUp) {
  const std::int64_t divisor = std::int64_t{1} << times;
  return std::max<std::int64_t>(1, roundsUp ? BlocksIn(length, divisor) : length / divisor);
}

int LevelsOf(std::int64_t length, bool roundsUp) {
  int levels = 1;
  while (Halved(length, levels - 1, roundsUp) > 1) ++levels;
  return levels;
}

std::vector<Level> LevelsOf(const ExrLayout& layout) {
  const auto level = [&layout](int x, int y) {
    return Level{x, y, Halved(layout.width, x, layout.roundsUp),
                 Halved(layout.height, y, layout.roundsUp)};
  };
  const int across = LevelsOf(layout.width, layout.roundsUp);
  const int down = LevelsOf(layout.height, layout.roundsUp);
  std::vector<Level> levels;
  if (layout.levels == kMipmap) {
    for (int i = 0; i < std::max(across, down); ++i) levels.push_back(level(i, i));
  } else if (layout.levels == kRipmap) {
    for (int y = 0; y < down; ++y) {
      for (int x = 0; x < across; ++x) levels.push_back(level(x, y));
    }
  } else {
    levels.push_back(level(0, 0));
  }
  return levels;
}

// The rows of a block by the number of the compression.
std::int64_t RowsInBlock(int compression) {
  constexpr std::int64_t kRows[] = {1, 1, 1, 16, 32};
  if (compression < 0 || compression > 4) Refuse("an unknown compression");
  return kRows[compression];
}

class Chunks {
 public:
  Chunks(std::string_view file, std::size_t table, const ExrLayout& layout)
      : file_(file), table_(table), layout_(layout) {}

  void CheckRows() {
    const std::int64_t rows = RowsInBlock(layout_.compression);
    const std::int64_t blocks = BlocksIn(layout_.height, rows);
    if (layout_.chunks > 0 && layout_.chunks != blocks) Refuse("another number of chunks");
    for (std::int64_t block = 0; block < blocks; ++block) {
      const std::size_t place = TakePlace();
      const std::int64_t y = NumberAt<std::int32_t>(file_, place) - layout_.top;
      if (y != block * rows) Refuse("a row outside of its place");
      CheckData(place + 4, layout_.width, std::min(rows, layout_.height - y));
    }
  }

  void CheckTiles(const Level& level) {
    const std::int64_t across = BlocksIn(level.width, layout_.tileWidth);
    const std::int64_t down = BlocksIn(level.height, layout_.tileHeight);
    for (std::int64_t tile = 0; tile < across * down; ++tile) CheckTile(level, across, down);
  }

 private:
  // The next offset of the table.
  std::size_t TakePlace() {
    const auto place = NumberAt<std::uint64_t>(file_, table_);
    table_ += sizeof place;
    if (place == 0 || place >= file_.size()) Refuse("the file is incomplete");
    return static_cast<std::size_t>(place);
  }

  void CheckTile(const Level& level, std::int64_t across, std::int64_t down) {
    const std::size_t place = TakePlace();
    const std::int64_t x = NumberAt<std::int32_t>(file_, place);
    const std::int64_t y = NumberAt<std::int32_t>(file_, place + 4);
    const bool ofLevel = NumberAt<std::int32_t>(file_, place + 8) == level.x &&
                         NumberAt<std::int32_t>(file_, place + 12) == level.y;
    if (!ofLevel || x < 0 || y < 0 || x >= across || y >= down) {
      Refuse("a tile outside of the picture");
    }
    CheckData(place + 16, std::min(layout_.tileWidth, level.width - x * layout_.tileWidth),
              std::min(layout_.tileHeight, level.height - y * layout_.tileHeight));
  }

  // The size and the bytes of the pixels of a chunk.
  void CheckData(std::size_t place, std::int64_t width, std::int64_t height) {
    const std::int64_t size = NumberAt<std::int32_t>(file_, place);
    const auto left = static_cast<std::int64_t>(file_.size() - place - 4);
    if (size < 1 || size > left) Refuse("the file ends too early");
    const std::int64_t unpacked = width * height * layout_.pixelBytes;
    const bool fits = layout_.compression == kUncompressed ? size == unpacked : size <= unpacked;
    if (!fits) Refuse("pixels of an impossible size");
  }

  std::string_view file_;
  std::size_t table_;
  const ExrLayout& layout_;
};

}  // namespace

std::size_t CheckExrHeader(std::string_view file) {
  std::size_t place = kStart;
  std::set<std::string> names;
  for (std::string name = TakeText(file, place); !name.empty(); name = TakeText(file, place)) {
    TakeText(file, place);  // the kind
    const auto size = NumberAt<std::int32_t>(file, place);
    place += sizeof size;
    CheckSize(name, size);
    if (static_cast<std::size_t>(size) > file.size() - place) Refuse("the file ends too early");
    place += static_cast<std::size_t>(size);
    if (!names.insert(name).second) Refuse("an attribute that occurs twice");
  }
  return place;
}

void CheckExrChunks(std::string_view file, std::size_t table, const ExrLayout& layout) {
  Chunks chunks(file, table, layout);
  if (!layout.tiled) return chunks.CheckRows();
  if (layout.levels > kRipmap) Refuse("an unknown kind of levels");
  for (const Level& level : LevelsOf(layout)) chunks.CheckTiles(level);
}

}  // namespace pxl
