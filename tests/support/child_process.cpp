#include "child_process.h"

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

extern char** environ;

namespace {

std::vector<std::string> mergedEnvironment(const std::vector<std::string>& overrides) {
  std::vector<std::string> merged;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text(*entry);
    const std::string name = text.substr(0, text.find('=') + 1);
    bool replaced = false;
    for (const std::string& override : overrides) {
      replaced = replaced || override.compare(0, name.size(), name) == 0;
    }
    if (!replaced) {
      merged.push_back(text);
    }
  }
  merged.insert(merged.end(), overrides.begin(), overrides.end());
  return merged;
}

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  for (std::string& text : strings) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

// Reads both pipes to their end; either may fill up while the other is still open.
void drain(int outFd, int errFd, ChildResult& result) {
  pollfd fds[2] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}};
  std::string* sinks[2] = {&result.out, &result.err};
  int open = 2;
  char buffer[65536];
  while (open > 0) {
    if (poll(fds, 2, -1) < 0) {
      throw std::runtime_error("poll failed");
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      const ssize_t got = read(fds[i].fd, buffer, sizeof buffer);
      if (got > 0) {
        sinks[i]->append(buffer, static_cast<std::size_t>(got));
      } else {
        close(fds[i].fd);
        fds[i].fd = -1;
        --open;
      }
    }
  }
}

}  // namespace

ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments,
                     const std::vector<std::string>& environment) {
  std::vector<std::string> argvStrings{program};
  argvStrings.insert(argvStrings.end(), arguments.begin(), arguments.end());
  std::vector<std::string> envStrings = mergedEnvironment(environment);
  std::vector<char*> argv = pointersTo(argvStrings);
  std::vector<char*> envp = pointersTo(envStrings);

  int outPipe[2];
  int errPipe[2];
  if (pipe(outPipe) != 0 || pipe(errPipe) != 0) {
    throw std::runtime_error("pipe failed");
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, outPipe[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errPipe[1], STDERR_FILENO);
  posix_spawn_file_actions_addclose(&actions, outPipe[0]);
  posix_spawn_file_actions_addclose(&actions, errPipe[0]);
  pid_t pid = 0;
  const int failed = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  close(outPipe[1]);
  close(errPipe[1]);
  if (failed != 0) {
    close(outPipe[0]);
    close(errPipe[0]);
    throw std::runtime_error("cannot start " + program + ": " + std::strerror(failed));
  }
  ChildResult result;
  drain(outPipe[0], errPipe[0], result);
  int status = 0;
  waitpid(pid, &status, 0);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

std::string binDirectory() { return TOVAK_TEST_BIN_DIR; }
