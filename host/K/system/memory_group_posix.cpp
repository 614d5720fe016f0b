// Reads the memory limits of Linux control groups, version 2.
//
// The path of the process' group in the tree of groups is in proc/self/cgroup, in
// the line that starts with "0::". Each group is a folder below sys/fs/cgroup with
// these files:
//
//   memory.max      the hard limit in bytes, or "max"
//   memory.high     the limit above which the group is slowed down, or "max"
//   memory.current  the bytes in use, pages of files included
//   memory.stat     their division, a name and a number on each line
//
// A limit applies to all groups below, so all groups up to the root are read.
// The system frees pages of files before it refuses memory: they count as free.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>

#include "host/K/system/memory_group.h"

namespace k {
namespace {

// Buffers outside of the heap, which may be exhausted.
using Path = std::array<char, PATH_MAX>;
using Content = std::array<char, 8192>;

// The first bytes of a file, as many as fit; empty when it cannot be read.
std::string_view Read(const char* path, Content& content) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return {};
  std::size_t size = 0;
  ssize_t got = 0;
  do {
    got = read(file, content.data() + size, content.size() - size);
    if (got > 0) size += static_cast<std::size_t>(got);
  } while (got > 0 && size < content.size());
  close(file);
  return {content.data(), size};
}

// Removes the first line from the text and returns it.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t length = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return line;
}

std::uint64_t NumberOr(std::string_view text, std::uint64_t otherwise) {
  std::uint64_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc() ? number : otherwise;
}

// One group's files.
class Group {
 public:
  Group(const char* root, std::string_view name) : root_(root), name_(name) {}

  // "max" is not a number and means no limit.
  std::uint64_t Limit() const {
    return std::min(Number("memory.max", kNoLimit), Number("memory.high", kNoLimit));
  }

  std::uint64_t Used() const {
    const std::uint64_t used = Number("memory.current", 0);
    return used - std::min(used, FilePages());
  }

 private:
  std::string_view Text(const char* file, Content& content) const {
    Path path;
    const int length = std::snprintf(path.data(), path.size(), "%s/sys/fs/cgroup%.*s/%s", root_,
                                     static_cast<int>(name_.size()), name_.data(), file);
    const bool fits = length > 0 && static_cast<std::size_t>(length) < path.size();
    return fits ? Read(path.data(), content) : std::string_view();
  }

  std::uint64_t Number(const char* file, std::uint64_t otherwise) const {
    Content content;
    return NumberOr(Text(file, content), otherwise);
  }

  std::uint64_t FilePages() const {
    Content content;
    std::string_view text = Text("memory.stat", content);
    std::uint64_t pages = 0;
    while (!text.empty()) {
      std::string_view line = TakeLine(text);
      for (const std::string_view name : {"inactive_file ", "active_file "}) {
        if (line.starts_with(name)) pages += NumberOr(line.substr(name.size()), 0);
      }
    }
    return pages;
  }

  const char* root_;
  std::string_view name_;
};

// The path of the process' group below the root of the tree; empty for the root.
// None when the process is in no group, or in one that is not visible here.
std::optional<std::string_view> OwnGroup(const char* root, Content& content) {
  Path path;
  const int length = std::snprintf(path.data(), path.size(), "%s/proc/self/cgroup", root);
  if (length < 0 || static_cast<std::size_t>(length) >= path.size()) return {};
  std::string_view text = Read(path.data(), content);
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (!line.starts_with("0::/") || line.starts_with("0::/..")) continue;
    const std::string_view name = line.substr(3);
    return name == "/" ? std::string_view() : name;
  }
  return {};
}

void Narrow(GroupMemory& memory, const Group& group) {
  const std::uint64_t limit = group.Limit();
  if (limit == kNoLimit) return;
  memory.limit = std::min(memory.limit, limit);
  memory.room = std::min(memory.room, limit - std::min(limit, group.Used()));
}

}  // namespace

GroupMemory ReadGroupMemory(const char* root) {
  GroupMemory memory;
  Content content;
  std::optional<std::string_view> name = OwnGroup(root, content);
  while (name) {
    Narrow(memory, Group(root, *name));
    if (name->empty()) break;
    *name = name->substr(0, name->rfind('/'));
  }
  return memory;
}

}  // namespace k
