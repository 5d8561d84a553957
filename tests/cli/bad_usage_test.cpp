// What the tool says when it does not understand its command line.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/cli/dlview_run.h"

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// Expects status 2 and a single sentence that says `words`.
void expect_usage(const std::vector<std::string>& arguments, const std::string& words) {
  const DlviewRun run(arguments);
  EXPECT_EQ(run.status, 2) << words;
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err, AllOf(StartsWith("dlview: "), HasSubstr(words), EndsWith(".\n")));
  EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
}

/// The same for options of a picture whose input and output would not do either.
void expect_option_usage(const std::vector<std::string>& options, const std::string& words) {
  std::vector<std::string> arguments{"render", "/nowhere/in.json", "-o", "/nowhere/out.png"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  expect_usage(arguments, words);
}

TEST(BadUsage, NamesTheCommand) {
  expect_usage({}, "a command is missing");
  expect_usage({"paint"}, "there is no command 'paint'");
  expect_usage({"paint", "a.json", "-o", "a.png"}, "there is no command 'paint'");
  expect_usage({"--nonsense"}, "there is no option '--nonsense'");
}

TEST(BadUsage, NamesWhatIsMissing) {
  expect_usage({"render"}, "INPUT is required");
  expect_usage({"render", "a.json"}, "--output is required");
  expect_usage({"render", "a.json", "--outptu", "a.png"}, "there is no option '--outptu'");
  expect_option_usage({"--line-width"}, "--line-width lacks a value; give --line-width PIXELS");
  expect_option_usage({"--layer"}, "--layer lacks a value");
  expect_option_usage({"--window", "1", "2", "3"},
                      "--window lacks a value; give --window MINX MINY MAXX MAXY");
}

TEST(BadUsage, NamesTheCommandWhoseHelpTellsMore) {
  expect_usage({"convert", "a.json"}, "OUTPUT is required; `dlview convert --help`");
  expect_usage({"info", "a.json", "b.json"}, "'b.json' is one argument too many; `dlview info");
  expect_usage({"verify"}, "FILE is required; `dlview verify --help`");
  expect_usage({"convert", "a.json", "b.dlf", "--compression", "20"},
               "--compression must be a whole number from 1 to 19, not '20'");
}

TEST(BadUsage, NamesWhatIsTooMuch) {
  expect_option_usage({"--nonsense"}, "there is no option '--nonsense'");
  expect_option_usage({"another.json"}, "'another.json' is one argument too many");
  expect_option_usage({"--size", "20x20", "--size", "30x30"}, "--size may be given only once");
  expect_option_usage({"-o", "b.png"}, "--output may be given only once");
  expect_option_usage({"--stats=perhaps"}, "--stats");
}

TEST(BadUsage, NamesTheLimitsOfSizes) {
  for (const char* size : {"70000x70000", "1x1", "65535x65535", "16385x16385", "0x100", "100x-5",
                           "100", "100x", "x100", "100x1e9", "10x10x10", "99999999999x2", ""}) {
    expect_option_usage({"--size", size},
                        "--size must be WxH like 1920x1080, with sides of 2 to 65535 and at most "
                        "268 million pixels in all, not '" +
                            std::string(size) + "'");
  }
}

TEST(BadUsage, NamesTheLimitsOfPixels) {
  for (const char* name : {"--line-width", "--point-size"}) {
    for (const char* pixels : {"1.5", "0", "-1", "1001", "wide", "7px", ""}) {
      expect_option_usage({name, pixels}, name +
                                              std::string(" must be a whole number from 1 to "
                                                          "1000, not '") +
                                              pixels + "'");
    }
  }
}

TEST(BadUsage, AsksForFiniteWindows) {
  for (const char* number : {"nan", "inf", "-inf", "1e999", "five", "5m", ""}) {
    expect_option_usage({"--window", "0", "0", number, "9"},
                        "--window must be four finite numbers MINX MINY MAXX MAXY, not '" +
                            std::string(number) + "'");
  }
}

TEST(BadUsage, ListsFormsAndColors) {
  expect_option_usage({"--form", "square"},
                      "--form must be unclipped, bounded, circled or complex, not 'square'");
  expect_option_usage({"--background", "#12345"}, "--background must be #RRGGBB or one of white");
  expect_option_usage({"--line-color", "#GG0000"}, "--line-color must be #RRGGBB or one of white");
}

}  // namespace
