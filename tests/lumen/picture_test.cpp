#include "lumen/picture.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <tuple>

#include "lumen/png_file.h"

using lumen::Picture;
using lumen::read_png;
using lumen::write_png;

namespace {

/// A directory of the test's own, gone when the test is over.
class Directory {
 public:
  Directory()
      : m_path(std::filesystem::temp_directory_path() /
               ("lumen_picture_test_" + std::to_string(getpid()))) {
    std::filesystem::create_directory(m_path);
  }
  ~Directory() { std::filesystem::remove_all(m_path); }
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  [[nodiscard]] std::string file(const std::string& name) const { return (m_path / name).string(); }
  [[nodiscard]] std::ptrdiff_t file_count() const {
    return std::distance(std::filesystem::directory_iterator(m_path), {});
  }

 private:
  std::filesystem::path m_path;
};

Picture colorful(std::uint32_t top_bytes) {
  Picture picture(37, 11);
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    for (std::int32_t x = 0; x < picture.width(); ++x) {
      const auto value = static_cast<std::uint32_t>(x * 7919 + y * 104729) * 2654435761U;
      picture.row(y)[x] = value & (0x00FFFFFF | top_bytes);
    }
  }
  return picture;
}

/// Large enough for the file to be written in several goes.
Picture large_picture() {
  Picture large(300, 300);
  for (std::int32_t y = 0; y < 300; ++y) std::copy_n(colorful(0).row(y % 11), 37, large.row(y));
  return large;
}

/// PNG's colour type byte: 2 is RGB, 6 is RGB with alpha.
int color_type(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  file.seekg(25);
  return file.get();
}

TEST(Picture, StartsInOneColor) {
  Picture picture(3, 2, {0x00123456});
  EXPECT_EQ(picture.width(), 3);
  EXPECT_EQ(picture.height(), 2);
  EXPECT_EQ(picture.pixel(2, 1).word, 0x00123456U);
  picture.clear({5});
  EXPECT_EQ(picture.pixel(0, 0).word, 5U);
  picture.row(1)[2] = 6;
  EXPECT_EQ(picture.pixel(2, 1).word, 6U);
}

TEST(Picture, HasInvisiblePixelsAround) {
  const Picture picture(3, 2);
  EXPECT_EQ(picture.pixel(-1, 0).word, 0xFF000000U);
  EXPECT_EQ(picture.pixel(3, 0).word, 0xFF000000U);
  EXPECT_EQ(picture.pixel(0, 2).word, 0xFF000000U);
}

TEST(Picture, ImpossibleSizesMakeAnEmptyOne) {
  const std::int32_t sizes[][2] = {
      {0, 5},         {5, 0},     {-1, 5},        {5, INT32_MIN},
      {INT32_MAX, 1}, {1, 65536}, {65535, 65535}, {INT32_MAX, INT32_MAX}};
  for (const auto& size : sizes) {
    const Picture picture(size[0], size[1]);
    EXPECT_TRUE(picture.is_empty());
    EXPECT_EQ(picture.width(), 0);
    EXPECT_EQ(picture.height(), 0);
  }
}

TEST(PngFile, OpaquePicturesComeBackAsRgb) {
  const Directory directory;
  const std::string path = directory.file("opaque.png");
  const Picture picture = colorful(0);
  EXPECT_EQ(write_png(picture, path), "");
  EXPECT_EQ(color_type(path), 2);
  EXPECT_EQ(read_png(path), picture);
  EXPECT_EQ(directory.file_count(), 1);
}

TEST(PngFile, TransparentPicturesComeBackWithAlpha) {
  const Directory directory;
  const std::string path = directory.file("transparent.png");
  const Picture picture = colorful(0xFF000000);
  EXPECT_EQ(write_png(picture, path), "");
  EXPECT_EQ(color_type(path), 6);
  EXPECT_EQ(read_png(path), picture);
}

TEST(PngFile, AnExistingFileIsReplaced) {
  const Directory directory;
  const std::string path = directory.file("twice.png");
  EXPECT_EQ(write_png(Picture(900, 900), path), "");
  const Picture picture = colorful(0);
  EXPECT_EQ(write_png(picture, path), "");
  EXPECT_EQ(read_png(path), picture);
}

TEST(PngFile, AFailedWriteNamesTheFileAndLeavesNothing) {
  const Directory directory;
  const std::string path = directory.file("no/such/directory.png");
  const std::string error = write_png(colorful(0), path);
  EXPECT_NE(error.find(path), std::string::npos) << error;
  EXPECT_NE(error.find("No such file"), std::string::npos) << error;

  const std::string taken = directory.file("taken");
  std::filesystem::create_directory(taken);
  EXPECT_NE(write_png(colorful(0), taken), "");
  EXPECT_EQ(directory.file_count(), 1);
}

/// Writes under a limit on the file size, which stands for a full disk: both
/// fail in mid-file. Ends the process, with 0 if the error names the file and
/// the system's reason.
[[noreturn]] void write_beyond_limit(const Picture& picture, const std::string& path) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{1000, 1000};
  setrlimit(RLIMIT_FSIZE, &limit);
  const std::string error = write_png(picture, path);
  const bool told = error.find(path) != std::string::npos &&
                    error.find(std::strerror(EFBIG)) != std::string::npos;
  _exit(told ? 0 : 1);
}

TEST(PngFile, AFullDiskIsToldAndLeavesNothing) {
  const Directory directory;
  const std::string path = directory.file("full.png");
  EXPECT_EXIT(write_beyond_limit(colorful(0), path), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(write_beyond_limit(large_picture(), path), testing::ExitedWithCode(0), "");
  EXPECT_EQ(directory.file_count(), 0);
}

bool can_make_unnamed_files(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_TMPFILE | O_WRONLY, 0600);
  if (descriptor >= 0) close(descriptor);
  return descriptor >= 0;
}

/// Ends the process by a signal in mid-file.
void die_while_writing(const std::string& path) {
  std::signal(SIGXFSZ, SIG_DFL);
  const rlimit no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  const rlimit limit{1000, 1000};
  setrlimit(RLIMIT_FSIZE, &limit);
  std::ignore = write_png(large_picture(), path);
}

TEST(PngFile, AKilledProcessLeavesNoPicture) {
  const Directory directory;
  EXPECT_EXIT(die_while_writing(directory.file("killed.png")), testing::KilledBySignal(SIGXFSZ),
              "");
  EXPECT_FALSE(std::filesystem::exists(directory.file("killed.png")));
  // Only where the system has no files without a name, one with a name stays.
  EXPECT_EQ(directory.file_count(), can_make_unnamed_files(directory.file(".")) ? 0 : 1);
}

TEST(PngFile, ANameWithoutFolderIsInTheCurrentOne) {
  const Directory directory;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(directory.file("."));
  EXPECT_EQ(write_png(colorful(0), "here.png"), "");
  std::filesystem::current_path(before);
  EXPECT_EQ(read_png(directory.file("here.png")), colorful(0));
  EXPECT_EQ(directory.file_count(), 1);
}

TEST(PngFile, AnEmptyPictureCannotBeWritten) {
  const Directory directory;
  EXPECT_NE(write_png(Picture(), directory.file("empty.png")), "");
  EXPECT_EQ(directory.file_count(), 0);
}

TEST(PngFile, WhatIsNoPngIsToldByName) {
  const Directory directory;
  std::string error;
  EXPECT_TRUE(read_png(directory.file("missing.png"), &error).is_empty());
  EXPECT_NE(error.find("missing.png"), std::string::npos) << error;

  const std::string text = directory.file("text.png");
  std::ofstream(text) << "this is no picture";
  EXPECT_TRUE(read_png(text, &error).is_empty());
  EXPECT_NE(error.find("text.png"), std::string::npos) << error;

  const std::string cut = directory.file("cut.png");
  ASSERT_EQ(write_png(colorful(0), cut), "");
  std::filesystem::resize_file(cut, 200);
  EXPECT_TRUE(read_png(cut, &error).is_empty());
  EXPECT_NE(error.find("cut.png"), std::string::npos) << error;
}

}  // namespace
