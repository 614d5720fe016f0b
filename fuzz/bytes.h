// Reads values from the front of a fuzzer's input. Beyond its end all bytes are
// zero, so that every input is valid.
#ifndef FUZZ_BYTES_H
#define FUZZ_BYTES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace fuzz {

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  [[nodiscard]] bool Empty() const { return size_ == 0; }

  std::uint8_t Byte() {
    if (size_ == 0) return 0;
    --size_;
    return *data_++;
  }

  template <typename Number>
  Number Take() {
    static_assert(std::is_integral_v<Number>);
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i) number |= std::uint64_t{Byte()} << (8 * i);
    return static_cast<Number>(number);
  }

  // 0 to sides - 1, of no more bytes than that needs: so inputs stay short, and a
  // changed byte changes one number.
  std::uint32_t Below(std::uint32_t sides) {
    if (sides <= 0x100) return Byte() % sides;
    return (sides <= 0x10000 ? Take<std::uint16_t>() : Take<std::uint32_t>()) % sides;
  }

  // A text whose length is read first.
  std::string Text() {
    const std::size_t length = std::min<std::size_t>(Byte(), size_);
    std::string text(View().substr(0, length));
    Skip(length);
    return text;
  }
  std::string Rest() {
    std::string text(View());
    Skip(size_);
    return text;
  }

 private:
  [[nodiscard]] std::string_view View() const {
    return {reinterpret_cast<const char*>(data_), size_};
  }
  void Skip(std::size_t count) {
    data_ += count;
    size_ -= count;
  }

  const std::uint8_t* data_;
  std::size_t size_;
};

}  // namespace fuzz

#endif
