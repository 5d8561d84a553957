#include "lumen/png_file.h"

#include <png.h>

#include <array>
#include <cerrno>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "lumen/new_file.h"

namespace lumen {
namespace {

constexpr std::size_t reason_size = 200;

bool has_transparency(const Picture& picture) {
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    const std::uint32_t* row = picture.row(y);
    for (std::int32_t x = 0; x < picture.width(); ++x) {
      if (row[x] >> 24 != 0) return true;
    }
  }
  return false;
}

/// What the encoder works on, and the reason when it gives up.
struct Encoding {
  const Picture& picture;
  std::FILE* file;
  bool with_alpha;
  std::vector<png_byte> row;
  std::array<char, reason_size> reason{};
};

void fill_row(Encoding& encoding, std::int32_t y) {
  const std::uint32_t* words = encoding.picture.row(y);
  png_byte* bytes = encoding.row.data();
  for (std::int32_t x = 0; x < encoding.picture.width(); ++x) {
    for (int shift = 16; shift >= 0; shift -= 8) {
      *bytes++ = static_cast<png_byte>(words[x] >> shift);
    }
    if (encoding.with_alpha) *bytes++ = static_cast<png_byte>(255 - (words[x] >> 24));
  }
}

[[noreturn]] void give_up(png_structp png, png_const_charp reason) {
  auto* encoding = static_cast<Encoding*>(png_get_error_ptr(png));
  // Of a file that failed the system knows more than the library.
  if (std::ferror(encoding->file) != 0) reason = std::strerror(errno);
  std::snprintf(encoding->reason.data(), encoding->reason.size(), "%s", reason);
  png_longjmp(png, 1);
}

void ignore_warning(png_structp /*png*/, png_const_charp /*warning*/) {}

/// Nothing here has a destructor: the library leaves by longjmp.
bool encode_rows(png_structp png, png_infop info, Encoding& encoding) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;  // NOLINT(cert-err52-cpp)
  png_init_io(png, encoding.file);
  png_set_IHDR(png, info, static_cast<png_uint_32>(encoding.picture.width()),
               static_cast<png_uint_32>(encoding.picture.height()), 8,
               encoding.with_alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  // Of line art no filter makes the smallest file, and the soonest.
  png_set_compression_level(png, 6);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_write_info(png, info);
  for (std::int32_t y = 0; y < encoding.picture.height(); ++y) {
    fill_row(encoding, y);
    png_write_row(png, encoding.row.data());
  }
  png_write_end(png, info);
  return true;
}

/// Empty on success, else the reason.
std::string encode(const Picture& picture, std::FILE* file) {
  const bool with_alpha = has_transparency(picture);
  Encoding encoding{picture, file, with_alpha, {}};
  encoding.row.resize(static_cast<std::size_t>(picture.width()) * (with_alpha ? 4 : 3));
  png_structp png =
      png_create_write_struct(PNG_LIBPNG_VER_STRING, &encoding, &give_up, &ignore_warning);
  if (png == nullptr) return "out of memory";
  png_infop info = png_create_info_struct(png);
  const bool written = info != nullptr && encode_rows(png, info, encoding);
  png_destroy_write_struct(&png, &info);
  if (written) return {};
  return encoding.reason[0] == '\0' ? "out of memory" : encoding.reason.data();
}

/// Empty on success, else the reason.
std::string write_file(const Picture& picture, const std::string& path) {
  NewFile file(path);
  if (file.stream() == nullptr) return std::strerror(errno);
  std::string reason = encode(picture, file.stream());
  if (reason.empty() && !file.put_in_place()) reason = std::strerror(errno);
  return reason;
}

/// The pixel whose red, green, blue and alpha bytes lie in the word's memory.
std::uint32_t word_of(std::uint32_t rgba_bytes) {
  std::array<png_byte, 4> bytes{};
  std::memcpy(bytes.data(), &rgba_bytes, bytes.size());
  return (255U - bytes[3]) << 24 | std::uint32_t{bytes[0]} << 16 | std::uint32_t{bytes[1]} << 8 |
         std::uint32_t{bytes[2]};
}

}  // namespace

std::string write_png(const Picture& picture, const std::string& path) {
  const std::string failure = "cannot write '" + path + "': ";
  if (picture.is_empty()) return failure + "the picture is empty";
  const std::string reason = write_file(picture, path);
  return reason.empty() ? reason : failure + reason;
}

Picture read_png(const std::string& path, std::string* error) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  const auto fail = [&](const std::string& reason) {
    png_image_free(&image);
    if (error != nullptr) *error = "cannot read '" + path + "': " + reason;
    return Picture();
  };
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) return fail(image.message);
  if (image.width > Picture::max_side || image.height > Picture::max_side) {
    return fail("the image is too large");
  }
  Picture picture(static_cast<std::int32_t>(image.width), static_cast<std::int32_t>(image.height));
  if (picture.is_empty()) return fail("the image is too large");

  // Decoded in place: four bytes become one word.
  image.format = PNG_FORMAT_RGBA;
  if (png_image_finish_read(&image, nullptr, picture.row(0), 0, nullptr) == 0) {
    return fail(image.message);
  }
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    std::uint32_t* row = picture.row(y);
    for (std::int32_t x = 0; x < picture.width(); ++x) row[x] = word_of(row[x]);
  }
  return picture;
}

}  // namespace lumen
