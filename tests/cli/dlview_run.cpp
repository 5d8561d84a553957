#include "tests/cli/dlview_run.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "tests/support/temporary_folder.h"

namespace {

void redirect(int descriptor, const std::string& file) {
  dup2(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
}

std::string content(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// What the child does: becomes the tool.
[[noreturn]] void execute(const std::vector<std::string>& arguments, const std::string& out_file,
                          const std::string& err_file) {
  redirect(STDOUT_FILENO, out_file);
  redirect(STDERR_FILENO, err_file);
  // Permissions then count for the superuser, too; others have nothing to drop.
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

}  // namespace

DlviewRun::DlviewRun(const std::vector<std::string>& arguments, const std::string& to) {
  const TemporaryFolder folder;
  const std::string out_file = to.empty() ? folder.path("out") : to;
  const std::string err_file = folder.path("err");
  const pid_t child = fork();
  if (child == 0) execute(arguments, out_file, err_file);
  int state = 0;
  waitpid(child, &state, 0);
  status = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
  if (to.empty()) out = content(out_file);
  err = content(err_file);
}
