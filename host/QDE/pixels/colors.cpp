// Builds the standard table, and reads the tables of callers.
#include "host/QDE/pixels/colors.h"

#include <algorithm>
#include <limits>

namespace qde {
namespace {

// The flag of tables whose entries have their position as index.
constexpr std::int16_t kDeviceTable = std::numeric_limits<std::int16_t>::min();

// The low and the high byte of a component are equal.
constexpr std::uint16_t Widened(int byte) {
  return static_cast<std::uint16_t>(byte * 257);
}

constexpr void Append(QDE_ColorTable* table, int red, int green, int blue) {
  const auto index = static_cast<std::int16_t>(table->ctSize + 1);
  table->ctTable[index] = {index, {Widened(red), Widened(green), Widened(blue)}};
  table->ctSize = index;
}

constexpr int kLevels[] = {0xFF, 0xCC, 0x99, 0x66, 0x33, 0x00};
constexpr int kRamp[] = {0xEE, 0xDD, 0xBB, 0xAA, 0x88, 0x77, 0x55, 0x44, 0x22, 0x11};

// A cube of six levels a component, from white on, without its black.
constexpr void AppendCube(QDE_ColorTable* table) {
  for (const int red : kLevels) {
    for (const int green : kLevels) {
      for (const int blue : kLevels) {
        if (red + green + blue != 0) Append(table, red, green, blue);
      }
    }
  }
}

// The steps between the cube's levels in red, green, blue and grey.
constexpr void AppendRamps(QDE_ColorTable* table) {
  for (const int step : kRamp) Append(table, step, 0, 0);
  for (const int step : kRamp) Append(table, 0, step, 0);
  for (const int step : kRamp) Append(table, 0, 0, step);
  for (const int step : kRamp) Append(table, step, step, step);
}

constexpr QDE_ColorTable MakeStandard() {
  QDE_ColorTable table{};
  table.ctSeed = 8;
  table.ctSize = -1;
  AppendCube(&table);
  AppendRamps(&table);
  Append(&table, 0, 0, 0);
  return table;
}

constexpr QDE_ColorTable MakeDirect() {
  QDE_ColorTable table{};
  table.ctSeed = 24;
  return table;
}

// Master pointers: a handle is the address of one.
constinit QDE_ColorTable theStandard = MakeStandard();
constinit QDE_ColorTable theDirect = MakeDirect();
constinit QDE_ColorTable* theStandardMaster = &theStandard;
constinit QDE_ColorTable* theDirectMaster = &theDirect;

constexpr std::int16_t kLastEntry = 255;

constexpr std::uint8_t HighByte(std::uint16_t component) {
  return static_cast<std::uint8_t>(component >> 8);
}

}  // namespace

CTabHandle StandardColors() {
  return &theStandardMaster;
}

CTabHandle DirectColors() {
  return &theDirectMaster;
}

Color ToColor(const QDE_RGBColor& color) {
  return {HighByte(color.red), HighByte(color.green), HighByte(color.blue)};
}

OwnTable::OwnTable(const QDE_ColorTable& table) {
  table_.ctSeed = table.ctSeed;
  table_.ctFlags = table.ctFlags;
  table_.ctSize = table.ctSize;
  // The memory of a short table may end after its last entry.
  std::copy_n(table.ctTable, table.ctSize + 1, table_.ctTable);
}

bool IsSound(const QDE_ColorTable& table) {
  return table.ctSize >= 0 && table.ctSize <= kLastEntry;
}

Palette::Palette(const QDE_ColorTable& table) {
  const bool byPosition = (table.ctFlags & kDeviceTable) != 0;
  const int last = std::min(table.ctSize, kLastEntry);
  for (int position = 0; position <= last; ++position) {
    const QDE_ColorSpec& entry = table.ctTable[position];
    const int index = byPosition ? position : entry.value;
    if (index < 0 || index > 255) continue;
    const auto at = static_cast<std::size_t>(index);
    colors_[at] = ToColor(entry.rgb);
    present_.set(at);
  }
}

bool AreSame(const QDE_ColorTable& a, const QDE_ColorTable& b) {
  return &a == &b || a.ctSeed == b.ctSeed || Palette(a) == Palette(b);
}

}  // namespace qde

CTabHandle QDE_StandardColors() {
  return qde::StandardColors();
}
