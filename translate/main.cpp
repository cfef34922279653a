// tovak-translate: prints the Fendix line for a legacy tovak line, or rewrites whole scripts
// into Fendix lines, with the library's own translation. It runs nothing.
#include <cctype>
#include <cstdio>
#include <cstring>
#include <new>
#include <optional>
#include <string>

#include "library_call.h"
#include "options.h"
#include "script_mode.h"
#include "shell_safety.h"

namespace {

constexpr const char* kUsage =
    "usage: tovak-translate [--fendix NAME] LEGACY-LINE...\n"
    "       tovak-translate --script [--diff | --in-place [--no-backup] | --check]\n"
    "                       [--assume-plain-values] [--fendix NAME] FILE...\n"
    "       tovak-translate --crontab [--crontab-user] [--diff | --check |\n"
    "                       --in-place (--backup-dir DIR | --no-backup)]\n"
    "                       [--assume-plain-values] [--fendix NAME] FILE...\n"
    "\n"
    "Prints the Fendix command line the legacy line would run; the library's own\n"
    "lines go to standard error. Exit 0 when translated, 1 when refused, 2 when\n"
    "the shell would read a byte of the Fendix line as syntax.\n"
    "\n"
    "With --script, writes each FILE (- for standard input) with every invocation of\n"
    "tovak that can be translated safely replaced by its Fendix line; any other stays\n"
    "as it is under a comment saying why.\n"
    "  --diff        print a unified diff for patch -p0 instead\n"
    "  --in-place    rewrite the files that change, keeping FILE.orig\n"
    "  --no-backup   with --in-place, keep no FILE.orig\n"
    "  --check       change nothing; list each invocation, reader and mention\n"
    "  --fendix NAME the Fendix every rewritten line names (default: the one beside\n"
    "                the tovak it replaces, or Fendix through PATH for a bare tovak)\n"
    "  --assume-plain-values  also translate calls whose values hold expansions\n"
    "                ($REPO), as they run when each value is plain (see the manual)\n"
    "With --crontab, each FILE is a crontab (/etc/crontab, /etc/cron.d/*; with\n"
    "--crontab-user, one as crontab -l prints it) whose commands are rewritten.\n"
    "  --backup-dir DIR  with --in-place, keep FILE.orig in DIR, not beside FILE\n"
    "Exit 0 when every invocation was translated, 2 when one was left or refused\n"
    "or a file was not rewritten, 1 when a file could not be read or written.\n";

int translateLine(const translate::Options& options) {
  const translate::LibraryAnswer answer = translate::askLibrary(options.operands);
  std::fwrite(answer.messages.data(), 1, answer.messages.size(), stderr);
  if (!answer.accepted) return 1;
  const std::string fendix = options.fendix.empty() ? "Fendix" : options.fendix;
  std::printf("%s %s\n", fendix.c_str(), answer.commandLine.c_str());
  // The line is meant for reading, but it may well be pasted into a shell.
  const std::optional<char> syntax = translate::firstSyntaxByte(answer.commandLine);
  if (!syntax) return 0;
  const unsigned char byte = static_cast<unsigned char>(*syntax);
  char shown[sizeof " ('x')"] = "";
  if (std::isgraph(byte)) std::snprintf(shown, sizeof shown, " ('%c')", byte);
  std::fprintf(stderr,
               "tovak-translate: the shell would read byte 0x%02x%s of this line as syntax\n", byte,
               shown);
  return 2;
}

// A line lost on a full disk or a closed pipe must not pass for a translation.
int written(int status) {
  if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return status;
  std::fputs("tovak-translate: cannot write standard output\n", stderr);
  return 1;
}

int run(int argc, char** argv) {
  const translate::Options options = translate::parseOptions(argc, argv);
  if (options.help || argc == 1) {
    std::fputs(kUsage, options.help ? stdout : stderr);
    return options.help ? written(0) : 1;
  }
  if (options.version) {
    std::printf("tovak-translate %s\n", TOVAK_VERSION);
    return written(0);
  }
  if (!options.error.empty()) {
    std::fprintf(stderr, "tovak-translate: %s\n", options.error.c_str());
    return 1;
  }
  return options.script ? translate::runScripts(options) : written(translateLine(options));
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("tovak-translate: out of memory\n", stderr);
    return 1;
  } catch (const translate::CaptureFailed& failed) {
    std::fprintf(stderr, "tovak-translate: cannot catch the library's output: %s\n",
                 std::strerror(failed.error));
    return 1;
  }
}
