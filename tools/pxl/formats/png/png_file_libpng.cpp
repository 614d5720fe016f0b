// PNG files by libpng, which reports errors by longjmp. Every call that can fail is
// therefore made inside Guarded, in a lambda without objects that have destructors.
#include <png.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <csetjmp>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <ostream>

#include "tools/pxl/formats/png/png_colour_chunks.h"
#include "tools/pxl/formats/png/png_file.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/stream_errors.h"

namespace pxl {
namespace {

static_assert(std::endian::native == std::endian::little, "16-bit rows are swapped for libpng");

// Zero-terminated names of five bytes, as libpng wants them listed.
constexpr std::array<png_byte, 20> kColourChunks = {'g', 'A', 'M', 'A', 0, 'c', 'H', 'R', 'M', 0,
                                                    's', 'R', 'G', 'B', 0, 'i', 'C', 'C', 'P', 0};
constexpr int kColourChunkCount = 4;

// The last bytes of every PNG: the CRC-32 of "IEND", a chunk without data.
constexpr std::array<png_byte, 4> kChecksumOfEnd = {0xAE, 0x42, 0x60, 0x82};

// The last messages of libpng, and causes that its messages do not have.
struct Messages {
  std::array<char, 200> error{};
  std::array<char, 200> warning{};
  bool outOfMemory = false;
  bool unreadable = false;  // the system failed to read; the error is its reason

  static void Keep(std::array<char, 200>& place, const char* text) {
    std::strncpy(place.data(), text, place.size() - 1);
  }
};

[[noreturn]] void OnError(png_structp png, png_const_charp text) {
  Messages::Keep(static_cast<Messages*>(png_get_error_ptr(png))->error, text);
  png_longjmp(png, 1);
}

void OnWarning(png_structp png, png_const_charp text) {
  Messages::Keep(static_cast<Messages*>(png_get_error_ptr(png))->warning, text);
}

// libpng reports lack of memory like damage, with another text only.
void* Allocate(png_structp png, std::size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) static_cast<Messages*>(png_get_mem_ptr(png))->outOfMemory = true;
  return block;
}

void Free(png_structp /*png*/, void* block) {
  std::free(block);
}

// The file, and the last bytes read from it.
struct Source {
  std::istream& stream;
  std::array<png_byte, 4> last{};
};

void ReadBytes(png_structp png, png_bytep data, std::size_t count) {
  Source& source = *static_cast<Source*>(png_get_io_ptr(png));
  errno = 0;
  source.stream.read(reinterpret_cast<char*>(data), static_cast<std::streamsize>(count));
  if (source.stream) {
    const std::size_t kept = std::min(count, source.last.size());
    std::copy_n(data + count - kept, kept, source.last.end() - kept);
    return;
  }
  if (!source.stream.bad()) png_error(png, "the file ends too early");
  static_cast<Messages*>(png_get_error_ptr(png))->unreadable = true;
  png_error(png, std::strerror(errno != 0 ? errno : EIO));
}

void WriteBytes(png_structp png, png_bytep data, std::size_t count) {
  auto& stream = *static_cast<std::ostream*>(png_get_io_ptr(png));
  errno = 0;
  stream.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(count));
  if (!stream) png_error(png, errno != 0 ? std::strerror(errno) : "the stream takes no more");
}

void FlushBytes(png_structp /*png*/) {
}

// The error, and the warning before it, which often has the cause.
std::string ReasonIn(const Messages& messages) {
  std::string reason = messages.error.data();
  if (messages.warning[0] != '\0') reason.append(" (").append(messages.warning.data()).append(")");
  return reason;
}

// Runs the work; throws Failure with `what` and the error of libpng.
template <typename Work>
void Guarded(png_structp png, const char* what, const Messages& messages, const Work& work) {
  // NOLINTNEXTLINE(cert-err52-cpp): libpng requires it
  if (setjmp(png_jmpbuf(png)) != 0) {
    if (messages.outOfMemory) throw Failure("not enough memory");
    throw Failure((messages.unreadable ? "cannot read" : what) + (": " + ReasonIn(messages)));
  }
  work();
}

class PngReader : public PictureReader {
 public:
  explicit PngReader(std::istream& stream) : source_{stream} {
    png_ = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, &messages_, OnError, OnWarning,
                                    &messages_, Allocate, Free);
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
    if (info_ == nullptr) {
      png_destroy_read_struct(&png_, nullptr, nullptr);
      throw Failure("not enough memory");
    }
    png_set_read_fn(png_, &source_, ReadBytes);
    try {
      ReadHeader();
    } catch (...) {
      png_destroy_read_struct(&png_, &info_, nullptr);
      throw;
    }
  }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;
  ~PngReader() override { png_destroy_read_struct(&png_, &info_, nullptr); }

  const PictureHeader& header() const override { return header_; }

  void Read(const PixelRows& rows) override {
    std::vector<png_bytep> addresses(static_cast<std::size_t>(header_.height));
    for (std::size_t y = 0; y < addresses.size(); ++y) {
      addresses[y] = reinterpret_cast<png_bytep>(rows.Row(static_cast<std::int64_t>(y)));
    }
    png_bytepp const first = addresses.data();
    Guarded(png_, "damaged PNG", messages_, [this, first] {
      RequestArgb();
      png_read_image(png_, first);
      png_read_end(png_, nullptr);
      // Newer versions of libpng only warn of a wrong checksum here.
      if (source_.last != kChecksumOfEnd) png_error(png_, "the end has a wrong checksum");
    });
  }

 private:
  void ReadHeader() {
    Guarded(png_, "damaged PNG", messages_, [this] {
      // The sizes of Worlds are the limit; they are checked before any row is read.
      png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
      png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_ALWAYS, kColourChunks.data(),
                                  kColourChunkCount);
      png_read_info(png_, info_);
    });
    header_.width = png_get_image_width(png_, info_);
    header_.height = png_get_image_height(png_, info_);
    const int bits = png_get_bit_depth(png_, info_);
    const int type = png_get_color_type(png_, info_);
    header_.samples = bits == 16 ? SampleType::Integer16 : SampleType::Integer8;
    header_.format =
        "PNG, " + std::to_string(bits) + " bits a channel, " + NameOfPngColourType(type);
    header_.channels.grey = (type & PNG_COLOR_MASK_COLOR) == 0;
    header_.channels.alpha =
        (type & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    TakeColourChunks();
  }

  void TakeColourChunks() {
    png_unknown_chunkp chunks = nullptr;
    const int count = png_get_unknown_chunks(png_, info_, &chunks);
    for (int i = 0; i < count; ++i) {
      PngChunk chunk{reinterpret_cast<const char*>(chunks[i].name), {}};
      if (chunks[i].size > 0) chunk.data.assign(chunks[i].data, chunks[i].data + chunks[i].size);
      KeepColourChunk(header_.colour, std::move(chunk));
    }
    header_.colour.greyProfile =
        header_.channels.grey && FindChunk(header_.colour, "iCCP") != nullptr;
  }

  void RequestArgb() {
    png_set_expand(png_);
    png_set_gray_to_rgb(png_);
    // Alpha is moved to the front, or inserted there.
    png_set_swap_alpha(png_);
    png_set_add_alpha(png_, 0xFFFF, PNG_FILLER_BEFORE);
    if (header_.samples == SampleType::Integer16) png_set_swap(png_);
    png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    const std::size_t expected =
        static_cast<std::size_t>(header_.width) * PixelBytes(header_.samples);
    if (png_get_rowbytes(png_, info_) != expected) png_error(png_, "rows of an unknown layout");
  }

  Messages messages_;
  Source source_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  PictureHeader header_;
};

class PngWriter {
 public:
  explicit PngWriter(std::ostream& stream) {
    png_ = png_create_write_struct_2(PNG_LIBPNG_VER_STRING, &messages_, OnError, OnWarning,
                                     &messages_, Allocate, Free);
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
    if (info_ == nullptr) {
      png_destroy_write_struct(&png_, nullptr);
      throw Failure("not enough memory");
    }
    png_set_write_fn(png_, &stream, WriteBytes, FlushBytes);
  }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;
  ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

  void WriteHeader(const PictureHeader& header, const std::vector<PngChunk>& chunks) {
    const bool indexed = !header.palette.empty();
    const bool deep = !indexed && header.samples == SampleType::Integer16;
    Guarded(png_, "cannot write", messages_, [this, &header, &chunks, indexed, deep] {
      png_set_IHDR(png_, info_, static_cast<png_uint_32>(header.width),
                   static_cast<png_uint_32>(header.height), deep ? 16 : 8,
                   indexed ? PNG_COLOR_TYPE_PALETTE : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
                   PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
      if (indexed) SetPalette(header.palette);
      png_write_info_before_PLTE(png_, info_);
      for (const PngChunk& chunk : chunks) {
        png_write_chunk(png_, reinterpret_cast<png_const_bytep>(chunk.name.c_str()),
                        chunk.data.data(), chunk.data.size());
      }
      png_write_info(png_, info_);
      if (!indexed) png_set_swap_alpha(png_);
      if (deep) png_set_swap(png_);
    });
  }

  void WriteRows(std::int64_t height, const RowSource& rows) {
    for (std::int64_t y = 0; y < height; ++y) {
      const auto* row = reinterpret_cast<png_const_bytep>(rows(y));
      Guarded(png_, "cannot write", messages_, [this, row] { png_write_row(png_, row); });
    }
    Guarded(png_, "cannot write", messages_, [this] { png_write_end(png_, nullptr); });
  }

 private:
  void SetPalette(const Palette& palette) {
    std::array<png_color, PNG_MAX_PALETTE_LENGTH> colours{};
    const auto converted = [](const auto& rgb) { return png_color{rgb[0], rgb[1], rgb[2]}; };
    std::transform(palette.begin(), palette.end(), colours.begin(), converted);
    png_set_PLTE(png_, info_, colours.data(), static_cast<int>(palette.size()));
  }

  Messages messages_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

}  // namespace

bool IsPng(std::istream& stream) {
  std::array<png_byte, 8> start{};
  stream.read(reinterpret_cast<char*>(start.data()), start.size());
  ReturnToStart(stream);
  return png_sig_cmp(start.data(), 0, start.size()) == 0;
}

std::unique_ptr<PictureReader> OpenPng(std::istream& stream) {
  return std::make_unique<PngReader>(stream);
}

bool CanWrite16BitPng() {
  return true;
}

void WritePng(std::ostream& stream, const PictureHeader& header, const RowSource& rows) {
  const std::vector<PngChunk> chunks = ColourChunksToWrite(header.colour);
  PngWriter writer(stream);
  writer.WriteHeader(header, chunks);
  writer.WriteRows(header.height, rows);
}

}  // namespace pxl
