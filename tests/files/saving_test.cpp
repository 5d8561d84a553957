#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>

#include "files/drawing_file.h"
#include "tests/files/file_checks.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::HasSubstr;

/// Dots whose coordinates do not compress.
void add_dots(DL::DisplayList& list, int count) {
  std::mt19937 random(7);
  for (int i = 0; i < count; ++i) {
    const auto x = static_cast<std::int32_t>(random());
    list.add(new DL::DLDot({}, {x, static_cast<std::int32_t>(random())}));
  }
}

std::size_t drawables_in(const std::string& path) {
  files::Contents contents;
  EXPECT_EQ(files::read_file(path, {}, contents), "");
  return contents.list == nullptr ? 0 : drawables_of(*contents.list).size();
}

/// Runs in a process of its own, which ends with the exit code that it returns.
template <class Work>
int in_child(const Work& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Saving, ReplacesTheFileThatWasThere) {
  const TemporaryFolder folder;
  const std::string path = folder.path("drawing.dlf");
  DL::DisplayList list;
  add_dots(list, 10);
  ASSERT_EQ(files::write_file(path, list), "");
  EXPECT_EQ(drawables_in(path), 10U);
  add_dots(list, 5);
  ASSERT_EQ(files::write_file(path, list), "");
  EXPECT_EQ(drawables_in(path), 15U);
  EXPECT_EQ(folder.file_count(), 1U);
}

TEST(Saving, TellsFileAndReason) {
  const TemporaryFolder folder;
  DL::DisplayList list;
  files::Contents contents;
  const std::string missing = folder.path("missing/drawing.dlf");
  EXPECT_EQ(files::write_file(missing, list),
            "cannot write '" + missing + "': No such file or directory");
  EXPECT_EQ(files::read_file(missing, {}, contents),
            "cannot read '" + missing + "': No such file or directory");
  const std::string foreign = folder.write("picture.dlf", "\x89PNG\r\n");
  EXPECT_THAT(files::read_file(foreign, {}, contents),
              HasSubstr("'" + foreign + "': it is no display list file"));
  EXPECT_THAT(files::read_file(folder.path(""), {}, contents), HasSubstr("directory"));
}

TEST(Reading, TakesRegularFilesOnly) {
  const TemporaryFolder folder;
  files::Contents contents;
  EXPECT_THAT(files::read_file(folder.path("."), {}, contents), HasSubstr("it is a directory"));
  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THAT(files::read_file(pipe, {}, contents), HasSubstr("it is a pipe or a device"));
  EXPECT_THAT(files::read_file("/dev/zero", {}, contents), HasSubstr("it is a pipe or a device"));
  EXPECT_FALSE(files::is_drawing_file(pipe));
  EXPECT_FALSE(files::is_drawing_file(folder.path(".")));
}

TEST(Reading, LooksNoFurtherThanTheStartOfForeignFiles) {
  const TemporaryFolder folder;
  // Most of it is a hole, but reading it would take its size in memory.
  const std::string path = folder.write("large", "no display list");
  std::filesystem::resize_file(path, std::uintmax_t{1} << 36U);
  files::Contents contents;
  EXPECT_THAT(files::read_file(path, {}, contents), HasSubstr("it is no display list file"));
  EXPECT_FALSE(files::is_drawing_file(path));
}

TEST(Saving, GoesThroughALink) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("drawing.dlf", folder.path("link.dlf"));
  DL::DisplayList list;
  add_dots(list, 10);
  ASSERT_EQ(files::write_file(folder.path("link.dlf"), list), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.dlf")));
  EXPECT_EQ(drawables_in(folder.path("drawing.dlf")), 10U);
  EXPECT_TRUE(files::is_drawing_file(folder.path("link.dlf")));
}

TEST(Saving, ThatFailsLeavesTheOldFile) {
  const TemporaryFolder folder;
  const std::string path = folder.path("drawing.dlf");
  DL::DisplayList list;
  add_dots(list, 10);
  ASSERT_EQ(files::write_file(path, list), "");
  add_dots(list, 5000);
  const int code = in_child([&] {
    // As on a device that is full.
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
    const std::string reason = files::write_file(path, list);
    return reason.find(path) != std::string::npos ? 0 : 1;
  });
  EXPECT_EQ(code, 0);
  EXPECT_EQ(drawables_in(path), 10U);
  EXPECT_EQ(folder.file_count(), 1U);
}

TEST(Saving, OfWhatCannotBeKeptLeavesTheOldFile) {
  const TemporaryFolder folder;
  const std::string path = folder.path("drawing.dlf");
  DL::DisplayList list;
  add_dots(list, 10);
  ASSERT_EQ(files::write_file(path, list), "");
  list.add(new DL::DrawableDisplayList(nullptr, new DL::DisplayList, nullptr));
  auto* nested = static_cast<DL::DrawableDisplayList*>(drawables_of(list).back());
  auto* inner = new DL::DrawableDisplayList(nullptr, nullptr, nullptr);
  nested->display_list()->add(inner);
  inner->set_display_list(nested->display_list(), nullptr);  // a list inside itself
  EXPECT_THAT(files::write_file(path, list), HasSubstr("nested"));
  inner->set_display_list(nullptr, nullptr);
  EXPECT_EQ(drawables_in(path), 10U);
}

TEST(Saving, OfAProcessThatIsKilledLeavesAWholeFile) {
  const TemporaryFolder folder;
  const std::string path = folder.path("drawing.dlf");
  DL::DisplayList small;
  DL::DisplayList large;
  add_dots(small, 100);
  add_dots(large, 3000);
  ASSERT_EQ(files::write_file(path, small), "");
  std::mt19937 random(1);
  for (int round = 0; round < 40; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (;;) {
        if (!files::write_file(path, large).empty()) _exit(1);
        if (!files::write_file(path, small).empty()) _exit(1);
      }
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 30000));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_THAT(drawables_in(path), testing::AnyOf(100U, 3000U));
  }
}

}  // namespace
