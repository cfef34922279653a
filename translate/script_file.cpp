#include "script_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace translate {
namespace {

bool fail(std::string& error, const std::string& what) {
  error = what + ": " + std::strerror(errno);
  return false;
}

bool writeAll(int fd, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t n = write(fd, text.data() + done, text.size() - done);
    if (n < 0 && errno != EINTR) return false;
    if (n > 0) done += static_cast<std::size_t>(n);
  }
  return true;
}

// A temporary file in the target's own directory, so that the rename cannot cross devices.
bool writeTemporary(const std::string& target, const std::string& text, const struct stat& old,
                    std::string& temporary, std::string& error) {
  const std::size_t slash = target.rfind('/');
  std::string name = target.substr(0, slash + 1) + "." + target.substr(slash + 1) + ".XXXXXX";
  std::vector<char> pattern(name.begin(), name.end());
  pattern.push_back('\0');
  const int fd = mkstemp(pattern.data());
  if (fd < 0) return fail(error, "cannot create a temporary file beside " + target);
  temporary = pattern.data();
  // The owner before the mode, as a change of owner clears the set-user-ID bit. Only root
  // may give a file away; anyone else keeps the file as their own.
  const bool written = writeAll(fd, text) &&
                       (fchown(fd, old.st_uid, old.st_gid) == 0 || errno == EPERM) &&
                       fchmod(fd, old.st_mode & 07777) == 0 && fsync(fd) == 0;
  if (close(fd) != 0 || !written) {
    fail(error, "cannot write " + temporary);
    unlink(temporary.c_str());
    return false;
  }
  return true;
}

// A backup in a directory on another file system, where no second name can be given: a copy,
// which like the link never overwrites a backup that is there.
bool copyOf(const std::string& from, const std::string& to, const struct stat& old) {
  std::string text, error;
  if (!readScript(from, text, error)) return false;
  const int fd = open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, old.st_mode & 0777);
  if (fd < 0) return false;
  const bool written = writeAll(fd, text) && fsync(fd) == 0;
  if (close(fd) == 0 && written) return true;
  unlink(to.c_str());
  return false;
}

}  // namespace

bool readScript(const std::string& path, std::string& text, std::string& error) {
  // Told by the name, not the descriptor: with standard input closed, open() may give 0.
  const bool standardInput = path == "-";
  // O_NONBLOCK: opening a FIFO would wait for a writer before the check below could refuse it.
  const int fd =
      standardInput ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return fail(error, "cannot read " + path);
  // A device or a pipe may never end, and a directory has no text to rewrite.
  struct stat status {};
  if (!standardInput && (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode))) {
    close(fd);
    error = "cannot read " + path + ": not a regular file";
    return false;
  }
  char buffer[65536];
  ssize_t n;
  while ((n = read(fd, buffer, sizeof buffer)) != 0) {
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      const int savedErrno = errno;
      if (!standardInput) close(fd);
      errno = savedErrno;
      return fail(error, "cannot read " + path);
    }
    text.append(buffer, static_cast<std::size_t>(n));
  }
  if (!standardInput) close(fd);
  return true;
}

bool replaceScript(const std::string& path, const std::string& text, bool backup,
                   const std::string& backupDir, std::string& error) {
  char resolved[PATH_MAX];
  struct stat status {};
  if (realpath(path.c_str(), resolved) == nullptr || stat(resolved, &status) != 0) {
    return fail(error, "cannot resolve " + path);
  }
  const std::string target = resolved;
  const std::string backupName =
      (backupDir.empty() ? target : backupDir + target.substr(target.rfind('/'))) + ".orig";
  if (backup && access(backupName.c_str(), F_OK) == 0) {
    error = backupName + " exists already; " + path + " is left unchanged";
    return false;
  }
  std::string temporary;
  if (!writeTemporary(target, text, status, temporary, error)) return false;
  // A second name for the old file is its backup: nothing is copied, and the link fails
  // rather than overwrite a backup that appeared meanwhile.
  const bool linked = backup && (link(target.c_str(), backupName.c_str()) == 0 ||
                                 (errno == EXDEV && copyOf(target, backupName, status)));
  if ((backup && !linked) || rename(temporary.c_str(), target.c_str()) != 0) {
    fail(error, "cannot replace " + path);
    unlink(temporary.c_str());
    // A backup left behind would refuse the next run on a file that never changed.
    if (linked) unlink(backupName.c_str());
    return false;
  }
  return true;
}

}  // namespace translate
