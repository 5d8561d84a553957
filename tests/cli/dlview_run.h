#pragma once

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/importers/temporary_folder.h"

/// A run of the tool: what it was told and what came of it.
class DlviewRun {
 public:
  explicit DlviewRun(const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    const std::string out_file = folder.path("out");
    const std::string err_file = folder.path("err");
    const pid_t child = fork();
    if (child == 0) execute(arguments, out_file, err_file);
    int state = 0;
    waitpid(child, &state, 0);
    status = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    out = content(out_file);
    err = content(err_file);
  }

  int status = -1;  ///< the exit status; -1 when a signal ended the program
  std::string out;
  std::string err;

 private:
  [[noreturn]] static void execute(const std::vector<std::string>& arguments,
                                   const std::string& out_file, const std::string& err_file) {
    redirect(STDOUT_FILENO, out_file);
    redirect(STDERR_FILENO, err_file);
    // Permissions count for the superuser, too, if this takes effect.
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
    std::vector<std::string> words{DLVIEW_BINARY};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(DLVIEW_BINARY, pointers.data());
    _exit(127);
  }
  static void redirect(int descriptor, const std::string& file) {
    dup2(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
  }
  static std::string content(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
};
