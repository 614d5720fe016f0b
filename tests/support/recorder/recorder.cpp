// The log, the plans of failures and the blocks of the recorder.
#include "tests/support/recorder/recorder.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace recorder {

int Aside::depth_ = 0;

namespace {

constexpr unsigned char kAbandoned = 0xDD;

std::string Escaped(const std::string& text) {
  const Aside aside;
  std::string escaped = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    char buffer[5];
    std::snprintf(buffer, sizeof buffer, "\\x%02X", byte);
    if (byte < 0x20 || byte > 0x7E) {
      escaped += buffer;
    } else {
      escaped += c;
    }
  }
  return escaped + "\"";
}

}  // namespace

Recorder& Current() {
  static Recorder recorder;
  return recorder;
}

void Recorder::Reset() {
  for (auto& [address, owned] : owned_) owned.release();
  for (auto& [handle, block] : blocks_) delete handle;
  *this = Recorder();
}

void Recorder::Fail(const std::string& name, int nth) {
  plans_[name].failing.insert(plans_[name].calls + nth);
}

void Recorder::FailAlways(const std::string& name) {
  plans_[name].always = true;
}

void Recorder::Throw(const std::string& name, Thrower thrower, int nth) {
  plans_[name].throwing[plans_[name].calls + nth] = std::move(thrower);
}

void Recorder::OnCall(std::function<void(const std::string&)> observer) {
  observer_ = std::move(observer);
}

void Recorder::Name(const void* address, const std::string& name) {
  const Aside aside;
  names_[address] = name;
}

std::string Recorder::NameOf(const void* address) const {
  const Aside aside;
  if (address == nullptr) return "null";
  const auto found = names_.find(address);
  return found != names_.end() ? found->second : "?";
}

std::vector<std::string> Recorder::LogOf(const std::set<std::string>& names) const {
  std::vector<std::string> chosen;
  for (const std::string& call : log) {
    if (names.contains(call.substr(0, call.find('(')))) chosen.push_back(call);
  }
  return chosen;
}

int Recorder::Count(const std::string& name) const {
  return static_cast<int>(LogOf({name}).size());
}

std::vector<std::string> Recorder::Outstanding() const {
  std::vector<std::string> names;
  for (const auto& [address, owned] : owned_) names.push_back(owned.name);
  std::sort(names.begin(), names.end());
  return names;
}

Handle Recorder::NewHandle(std::size_t size) {
  const Aside aside;
  auto* handle = new Ptr(nullptr);
  blocks_[handle].locked = false;
  Place(handle, std::vector<unsigned char>(size));
  return handle;
}

void Recorder::Place(Handle handle, std::vector<unsigned char> bytes) {
  Block& block = blocks_[handle];
  std::swap(block.bytes, bytes);
  std::fill(bytes.begin(), bytes.end(), kAbandoned);
  abandoned_.push_back(std::move(bytes));
  *handle = block.bytes.empty() ? nullptr : reinterpret_cast<Ptr>(block.bytes.data());
}

void Recorder::FreeHandle(Handle handle) {
  const Aside aside;
  Place(handle, {});
  blocks_.erase(handle);
  delete handle;
}

bool Recorder::IsLocked(Handle handle) const {
  const auto found = blocks_.find(handle);
  return found != blocks_.end() && found->second.locked;
}

void Recorder::MoveBlocks() {
  const Aside aside;
  for (auto& [handle, block] : blocks_) {
    if (!block.locked && !block.bytes.empty()) {
      Place(handle, std::vector<unsigned char>(block.bytes));
    }
  }
}

bool Recorder::Enter(std::string_view call, const std::string& arguments) {
  const Aside aside;
  const std::string name(call);
  log.push_back(name + "(" + arguments + ")");
  if (observer_) observer_(name);
  Plan& plan = plans_[name];
  ++plan.calls;
  const auto thrower = plan.throwing.find(plan.calls);
  if (thrower != plan.throwing.end()) thrower->second();
  return plan.always || plan.failing.contains(plan.calls);
}

void Recorder::Own(const void* address, const std::string& name, std::function<void()> release) {
  const Aside aside;
  const std::string numbered = name + std::to_string(++counters_[name]);
  owned_[address] = {name, numbered, std::move(release)};
  names_[address] = numbered;
}

void Recorder::Disown(const void* address) {
  owned_.erase(address);
}

void Recorder::Release(const void* address) {
  owned_.at(address).release();
  Disown(address);
}

bool Recorder::Owns(const void* address) const {
  return owned_.contains(address);
}

bool Recorder::Owns(const void* address, const std::string& kind) const {
  const auto found = owned_.find(address);
  return found != owned_.end() && found->second.kind == kind;
}

std::string Text(const char* text) {
  const Aside aside;
  return text == nullptr ? "null" : Escaped(text);
}

std::string Text(const std::string& text) {
  return Escaped(text);
}

std::string Text(const std::u16string& text) {
  const Aside aside;
  std::string narrow;
  for (const char16_t c : text) narrow += c < 0x80 ? static_cast<char>(c) : '?';
  return Escaped(narrow).insert(0, 1, 'u');
}

std::string Text(const Rect* rect) {
  const Aside aside;
  if (rect == nullptr) return "null";
  std::ostringstream text;
  text << "{" << rect->top << ", " << rect->left << ", " << rect->bottom << ", " << rect->right
       << "}";
  return text.str();
}

std::string Text(const void* address) {
  return Current().NameOf(address);
}

std::string Hex(std::uint32_t value) {
  const Aside aside;
  char buffer[11];
  std::snprintf(buffer, sizeof buffer, "0x%X", value);
  return buffer;
}

}  // namespace recorder
