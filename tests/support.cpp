#include "support.h"

#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>
#include <utility>

#include "entry/translation.h"

extern char** environ;

ArgumentVector::ArgumentVector(std::vector<std::string> arguments)
    : storage_(std::move(arguments)) {
  for (std::string& argument : storage_) pointers_.push_back(argument.data());
}

Outcome translateLine(const std::vector<std::string>& words) {
  std::vector<std::string> arguments{"tovak"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  ArgumentVector vector(arguments);
  StdoutCapture capture;
  const tovak::Translation translation = tovak::translateArguments(vector.argc(), vector.argv());
  return {translation.accepted ? translation.commandLine : "", capture.text()};
}

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  for (std::string& text : strings) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::string contentsOf(const std::string& path) {
  std::ifstream file(path);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments) {
  std::vector<std::string> argvText{program};
  argvText.insert(argvText.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv = pointersTo(argvText);

  char outPath[] = "/tmp/tovak-out-XXXXXX";
  char errPath[] = "/tmp/tovak-err-XXXXXX";
  const int outFd = mkstemp(outPath);
  const int errFd = mkstemp(errPath);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, outFd, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errFd, STDERR_FILENO);
  pid_t pid = 0;
  const int failed = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ChildResult result;
  int status = 0;
  if (failed == 0 && waitpid(pid, &status, 0) == pid) {
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  close(outFd);
  close(errFd);
  result.out = contentsOf(outPath);
  result.err = contentsOf(errPath);
  unlink(outPath);
  unlink(errPath);
  if (failed != 0) throw std::runtime_error("cannot start " + program);
  return result;
}

std::string binDirectory() {
  char resolved[4096];
  return std::string(realpath(TOVAK_TEST_BIN_DIR, resolved)) + "/";
}
