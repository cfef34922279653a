#include "call_record.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace launcher {
namespace {

constexpr char kLogSocket[] = "/dev/log";
// What the traditional syslog daemons take whole.
constexpr std::size_t kRecordLimit = 2048;
constexpr std::string_view kCutMarker = "[cut]";
// Only a cycle, which the reuse of process ids could make, is ever this long.
constexpr int kMaxAncestors = 64;

// Programs that only run the command they are given; the caller is above them. A shell
// counts only when it runs the text of its -c.
constexpr std::string_view kWrappers[] = {"sudo",  "env",     "nice",  "nohup",  "timeout",
                                          "ionice", "chrt",   "taskset", "flock", "setsid",
                                          "stdbuf", "time"};
constexpr std::string_view kShells[] = {"sh", "dash", "bash", "ksh", "mksh", "zsh", "ash"};

struct Process {
  std::vector<std::string> words;
  long parent;
  long uid;
};

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

template <std::size_t N>
bool isOneOf(std::string_view name, const std::string_view (&names)[N]) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// The whole of a /proc file, empty when it cannot be read.
std::string contentsOf(const std::string& path) {
  std::string text;
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  char buffer[4096];
  for (ssize_t got; (got = read(fd, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(got));
  }
  close(fd);  // -1 when the open failed: read and close refuse it, harmlessly
  return text;
}

// The number after key in a /proc status text (the first one: the real user id), or -1.
long numberAfter(const std::string& status, const char* key) {
  const std::size_t at = status.find(key);
  return at == std::string::npos ? -1 : std::strtol(status.c_str() + at + std::strlen(key),
                                                    nullptr, 10);
}

Process processOf(long pid) {
  const std::string directory = "/proc/" + std::to_string(pid) + "/";
  const std::string commandLine = contentsOf(directory + "cmdline");
  std::vector<std::string> words;
  for (std::size_t start = 0; start < commandLine.size();) {
    const std::size_t end = std::min(commandLine.find('\0', start), commandLine.size());
    words.push_back(commandLine.substr(start, end - start));
    start = end + 1;
  }
  const std::string status = contentsOf(directory + "status");
  return {words, numberAfter(status, "\nPPid:"), numberAfter(status, "\nUid:")};
}

// Whether a shell's options, before its first operand, hold -c ("-ec" and "-o name -c"
// too). Long options such as --norc are not -c.
bool runsItsArgument(const std::vector<std::string>& words) {
  bool optionName = false;  // the word after -o
  for (auto word = words.begin() + 1; word != words.end(); ++word) {
    if (std::exchange(optionName, false)) continue;
    if ((*word)[0] != '-') return false;  // the first operand (or an empty word)
    if ((*word)[1] == '-') continue;
    if (word->find('c') != std::string::npos) return true;
    optionName = word->back() == 'o';
  }
  return false;
}

bool isWrapper(const std::vector<std::string>& words) {
  if (words.empty()) return false;
  std::string_view name = words[0];
  name.remove_prefix(name.rfind('/') + 1);
  return isOneOf(name, kWrappers) || (isOneOf(name, kShells) && runsItsArgument(words));
}

// The nearest ancestor that is not a wrapper; one that cannot be read (a parent of 0,
// outside this process's namespace) ends the search with no words.
Process caller() {
  Process process = processOf(getppid());
  for (int depth = 0; depth < kMaxAncestors && isWrapper(process.words); ++depth) {
    process = processOf(process.parent);
  }
  return process;
}

std::string withPasswordsMasked(std::string_view word) {
  constexpr std::string_view kKey = "password=";
  std::string masked(word);
  for (std::size_t at = masked.find(kKey); at != std::string::npos; at = masked.find(kKey, at)) {
    at += kKey.size();
    const std::string_view before = std::string_view(masked).substr(0, at);
    const bool ownOption =
        endsWith(before, "--proxy-password=") || endsWith(before, "--vq-password=");
    const bool wholeWord = before == "--proxy-password=" || before == "--vq-password=";
    const std::size_t end =
        wholeWord ? masked.size() : std::min(masked.find_first_of(ownOption ? " " : " ,", at),
                                             masked.size());
    masked.replace(at, end - at, "***");
  }
  return masked;
}

// The length of the valid UTF-8 sequence that bytes start with, or 0: no overlong form,
// no surrogate, nothing past U+10FFFF.
std::size_t utf8Length(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return 1;
  std::size_t length = 4;
  unsigned char low = 0x80, high = 0xbf;  // for the second byte
  if (lead >= 0xc2 && lead <= 0xdf) {
    length = 2;
  } else if (lead >= 0xe0 && lead <= 0xef) {
    length = 3;
    low = lead == 0xe0 ? 0xa0 : low;
    high = lead == 0xed ? 0x9f : high;
  } else if (lead >= 0xf0 && lead <= 0xf4) {
    low = lead == 0xf0 ? 0x90 : low;
    high = lead == 0xf4 ? 0x8f : high;
  } else {
    return 0;
  }
  if (bytes.size() < length || byte(1) < low || byte(1) > high) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (byte(i) < 0x80 || byte(i) > 0xbf) return 0;
  }
  return length;
}

void appendEscaped(std::string& out, std::string_view value) {
  while (!value.empty()) {
    const unsigned char c = static_cast<unsigned char>(value[0]);
    const std::size_t length = utf8Length(value);
    if (c == '\n') {
      out += "\\n";
    } else if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (length == 0 || c < 0x20 || c == 0x7f) {
      char escaped[5];
      std::snprintf(escaped, sizeof escaped, "\\x%02x", c);
      out += escaped;
    } else {
      out.append(value.substr(0, length));
    }
    value.remove_prefix(length == 0 ? 1 : length);
  }
}

// name="words", the words masked and escaped, joined by single blanks.
void appendField(std::string& out, const char* name, const std::vector<std::string>& words) {
  out += name;
  out += "=\"";
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) out += ' ';
    appendEscaped(out, withPasswordsMasked(words[i]));
  }
  out += '"';
}

// Cuts a record past the limit after a whole character or escape, and marks the cut.
void cutToLimit(std::string& record) {
  if (record.size() <= kRecordLimit) return;
  std::size_t end = 0;
  for (;;) {
    const std::string_view rest = std::string_view(record).substr(end);
    const std::size_t unit = rest[0] == '\\' ? (rest[1] == 'x' ? 4 : 2) : utf8Length(rest);
    if (end + unit > kRecordLimit - kCutMarker.size()) break;
    end += unit;
  }
  record.resize(end);
  record += kCutMarker;
}

std::string workingDirectory() {
  char* path = getcwd(nullptr, 0);
  std::string directory = path == nullptr ? "" : path;
  std::free(path);
  return directory;
}

// "<13>Mmm dd hh:mm:ss tovak[PID]: " and the fields: facility user, priority notice.
std::string recordOf(int argc, char** argv) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char stamp[sizeof "<13>Mmm dd hh:mm:ss tovak["];  // the C locale's month names
  std::strftime(stamp, sizeof stamp, "<13>%b %e %H:%M:%S tovak[", &local);
  std::string record = stamp + std::to_string(getpid()) + "]: ";
  const Process from = caller();
  appendField(record, "caller", from.words);
  record += " uid=" + std::to_string(from.uid);
  if (const char* sudoUser = std::getenv("SUDO_USER")) {
    appendField(record, " sudo_user", {sudoUser});
  }
  appendField(record, " cwd", {workingDirectory()});
  appendField(record, " line", std::vector<std::string>(argv + 1, argv + argc));
  cutToLimit(record);
  return record;
}

// One datagram, never waiting for a daemon that does not read; a failure, of the socket too
// (-1, which sendto and close refuse), is dropped.
void send(const std::string& record) {
  const int fd = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, kLogSocket, sizeof kLogSocket);
  sendto(fd, record.data(), record.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
         reinterpret_cast<const sockaddr*>(&address), sizeof address);
  close(fd);
}

}  // namespace

void recordCall(int argc, char** argv) {
  struct stat log {};
  if (std::getenv(kNoRecordVariable) != nullptr || stat(kLogSocket, &log) != 0 ||
      !S_ISSOCK(log.st_mode)) {
    return;
  }
  try {
    send(recordOf(argc, argv));
  } catch (...) {
    // Out of memory: the call goes on without its record.
  }
}

}  // namespace launcher
