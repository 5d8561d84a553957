#include "lumen/new_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <string>

#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

std::string content(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Whether it worked.
bool save(const std::string& path, const std::string& text = "new") {
  lumen::NewFile file(path);
  return file.stream() != nullptr && std::fputs(text.c_str(), file.stream()) >= 0 &&
         file.put_in_place();
}

mode_t permissions_of(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

/// Sets the mask of the process while it exists.
class Umask {
 public:
  explicit Umask(mode_t mask) : m_old(umask(mask)) {}
  Umask(const Umask&) = delete;
  Umask& operator=(const Umask&) = delete;
  ~Umask() { umask(m_old); }

 private:
  mode_t m_old;
};

TEST(NewFile, ReplacesWhatALinkLeadsTo) {
  const TemporaryFolder folder;
  const std::string target = folder.write("target", "old");
  for (const char* leads_to : {"target", "first"}) {
    const std::string link = folder.path(leads_to == std::string("target") ? "first" : "second");
    fs::create_symlink(leads_to, link);
    ASSERT_TRUE(save(link, leads_to));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_FALSE(fs::is_symlink(target));
    EXPECT_EQ(content(target), leads_to);
  }
  EXPECT_EQ(folder.file_count(), 3U);
}

TEST(NewFile, MakesWhatALinkLeadsToWhenItIsMissing) {
  const TemporaryFolder folder;
  fs::create_directory(folder.path("far"));
  fs::create_symlink("far/target", folder.path("link"));
  ASSERT_TRUE(save(folder.path("link")));
  EXPECT_TRUE(fs::is_symlink(folder.path("link")));
  EXPECT_EQ(content(folder.path("far/target")), "new");
}

TEST(NewFile, FailsForALinkToItself) {
  const TemporaryFolder folder;
  fs::create_symlink("link", folder.path("link"));
  EXPECT_FALSE(save(folder.path("link")));
  EXPECT_EQ(errno, ELOOP);
  EXPECT_FALSE(save(folder.path("link/file")));
  EXPECT_TRUE(fs::is_symlink(folder.path("link")));
}

TEST(NewFile, HasThePermissionsOfTheOldOne) {
  const TemporaryFolder folder;
  const Umask mask(022);
  for (const mode_t mode : {0600U, 0640U, 0666U, 0444U, 0755U}) {
    const std::string path = folder.write("file", "old");
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    ASSERT_TRUE(save(path));
    EXPECT_EQ(permissions_of(path), mode);
    EXPECT_EQ(content(path), "new");
    ASSERT_EQ(unlink(path.c_str()), 0);
  }
}

TEST(NewFile, HasThePermissionsThatTheMaskLeavesWhenThereWasNone) {
  const TemporaryFolder folder;
  const Umask mask(027);
  ASSERT_TRUE(save(folder.path("file")));
  EXPECT_EQ(permissions_of(folder.path("file")), 0640U);
}

TEST(NewFile, KeepsTheOwnerWhereThatIsAllowed) {
  const TemporaryFolder folder;
  const std::string path = folder.write("file", "old");
  // Others than the superuser keep what they have, which is theirs.
  [[maybe_unused]] const int refused = chown(path.c_str(), 12345, 23456);
  struct stat before {};
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  ASSERT_TRUE(save(path));
  struct stat after {};
  ASSERT_EQ(stat(path.c_str(), &after), 0);
  EXPECT_EQ(after.st_uid, before.st_uid);
  EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST(NewFile, IsWrittenStraightIntoAPipe) {
  const TemporaryFolder folder;
  const std::string path = folder.path("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  auto reader = std::async(std::launch::async, [&path] { return content(path); });
  EXPECT_TRUE(save(path, "through the pipe"));
  EXPECT_EQ(reader.get(), "through the pipe");
  EXPECT_TRUE(fs::is_fifo(path));
  EXPECT_EQ(folder.file_count(), 1U);
}

TEST(NewFile, IsWrittenStraightIntoADevice) {
  const TemporaryFolder folder;
  fs::create_symlink("/dev/null", folder.path("link"));
  EXPECT_TRUE(save(folder.path("link")));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_TRUE(fs::is_symlink(folder.path("link")));
  EXPECT_FALSE(save("/dev/full"));
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(NewFile, FailsWhereThereIsAFolder) {
  const TemporaryFolder folder;
  fs::create_directory(folder.path("folder"));
  const lumen::NewFile file(folder.path("folder"));
  EXPECT_EQ(file.stream(), nullptr);
  EXPECT_EQ(errno, EISDIR);
}

TEST(NewFile, MayHaveTheLongestName) {
  const TemporaryFolder folder;
  const std::string path = folder.path(std::string(NAME_MAX, 'n'));
  ASSERT_TRUE(save(path, "first"));
  ASSERT_TRUE(save(path, "second"));
  EXPECT_EQ(content(path), "second");
  EXPECT_EQ(folder.file_count(), 1U);
}

TEST(NewFile, LeavesNothingWhenItIsNotPutInPlace) {
  const TemporaryFolder folder;
  const std::string path = folder.write("file", "old");
  {
    const lumen::NewFile file(path);
    ASSERT_NE(file.stream(), nullptr);
    std::fputs("new", file.stream());
  }
  EXPECT_EQ(content(path), "old");
  EXPECT_EQ(folder.file_count(), 1U);
}

}  // namespace
