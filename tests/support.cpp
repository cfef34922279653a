#include "support.h"

#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "entry/translation.h"

namespace {

// Fully buffered whatever fd 1 is, so that only an explicit flush reaches the capture file.
const int kFullyBuffered = std::setvbuf(stdout, nullptr, _IOFBF, 1 << 16);

std::string contentsOf(const std::string& path) {
  std::ifstream file(path);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  for (std::string& text : strings) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

ArgumentVector::ArgumentVector(std::vector<std::string> arguments)
    : storage_(std::move(arguments)) {
  for (std::string& argument : storage_) pointers_.push_back(argument.data());
}

OutputCapture::OutputCapture() : file_(std::tmpfile()), saved_(dup(STDOUT_FILENO)) {
  static_cast<void>(kFullyBuffered);
  std::cout.flush();
  std::fflush(stdout);
  dup2(fileno(file_), STDOUT_FILENO);
}

OutputCapture::~OutputCapture() {
  all();
  dup2(saved_, STDOUT_FILENO);
  close(saved_);
  std::fclose(file_);
}

std::string OutputCapture::flushed() {
  return contentsOf("/proc/self/fd/" + std::to_string(fileno(file_)));
}

std::string OutputCapture::all() {
  std::cout.flush();
  std::fflush(stdout);
  return flushed();
}

Translated translate(const std::vector<std::string>& words) {
  std::vector<std::string> arguments{"/opt/t/tovak"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  ArgumentVector vector(arguments);
  OutputCapture capture;
  const tovak::Translation translation = tovak::translateArguments(vector.argc(), vector.argv());
  Translated result{translation.accepted ? std::optional(translation.commandLine) : std::nullopt,
                    capture.flushed(), capture.all(),
                    std::strcmp(vector.argv()[0], "/opt/t/tovak") == 0};
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    result.blanked &= vector.argv()[i] == std::string(std::strlen(arguments[i].c_str()), ' ');
  }
  return result;
}

ChildResult runChild(const std::string& program, const std::string& argv0,
                     const std::vector<std::string>& arguments,
                     const std::vector<std::string>& environment) {
  std::vector<std::string> argvText{argv0};
  argvText.insert(argvText.end(), arguments.begin(), arguments.end());
  std::vector<std::string> envText = environment;
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = getenv(name)) envText.push_back(std::string(name) + "=" + value);
  }
  std::vector<char*> argv = pointersTo(argvText);
  std::vector<char*> envp = pointersTo(envText);
  char outPath[] = "/tmp/tovak-out-XXXXXX";
  char errPath[] = "/tmp/tovak-err-XXXXXX";
  const int outFd = mkstemp(outPath);
  const int errFd = mkstemp(errPath);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, outFd, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errFd, STDERR_FILENO);
  pid_t pid = 0;
  const int failed =
      posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  const bool waited = failed == 0 && waitpid(pid, &status, 0) == pid;
  const ChildResult result{contentsOf(outPath), contentsOf(errPath),
                           !waited                ? -1
                           : WIFEXITED(status)    ? WEXITSTATUS(status)
                                                  : 128 + WTERMSIG(status)};
  for (const int fd : {outFd, errFd}) close(fd);
  unlink(outPath);
  unlink(errPath);
  if (failed != 0) throw std::runtime_error("cannot start " + program);
  return result;
}

std::string binDirectory() {
  char resolved[4096];
  return std::string(realpath(TOVAK_TEST_BIN_DIR, resolved)) + "/";
}

std::string launched(const std::string& dir, const std::string& line, int status,
                     const std::string& fendix) {
  return "The translated command is: \n" + dir + "./Fendix " + line + "\n" + fendix +
         "The fendx return code is: " + std::to_string(status) + "\n";
}

std::string standIn(const std::vector<std::string>& received) {
  std::string text = "Fendix stand-in received " + std::to_string(received.size()) + " arguments\n";
  for (std::size_t i = 0; i < received.size(); ++i) {
    text += "  [" + std::to_string(i + 1) + "] <" + received[i] + ">\n";
  }
  return text;
}
