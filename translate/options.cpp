#include "options.h"

#include <string_view>

#include "own_directory.h"

namespace translate {
namespace {

// Sets what one option asks for; false when it is not an option of ours.
bool apply(std::string_view option, Options& options, Output& chosen, int& outputs) {
  const auto output = [&](Output which) {
    chosen = which;
    ++outputs;
    return true;
  };
  if (option == "--script") return options.script = true;
  if (option == "--crontab") return options.script = options.crontab = true;
  if (option == "--crontab-user") return options.crontabUser = true;
  if (option == "--assume-plain-values") return options.assumePlainValues = true;
  if (option == "--diff") return output(Output::kDiff);
  if (option == "--in-place") return output(Output::kInPlace);
  if (option == "--check") return output(Output::kCheck);
  if (option == "--no-backup") {
    options.backup = false;
    return true;
  }
  if (option == "--help") return options.help = true;
  if (option == "--version") return options.version = true;
  return false;
}

std::string whatIsWrong(const Options& options, int outputs) {
  if (outputs > 1) return "choose one of --diff, --in-place and --check";
  if (!options.script && (outputs > 0 || !options.backup)) {
    return "--diff, --in-place, --check and --no-backup go with --script or --crontab";
  }
  if (options.crontabUser && !options.crontab) return "--crontab-user goes with --crontab";
  if (options.assumePlainValues && !options.script) {
    return "--assume-plain-values goes with --script or --crontab";
  }
  const bool inPlace = options.output == Output::kInPlace;
  if (!options.backupDir.empty() && !(options.crontab && inPlace && options.backup)) {
    return "--backup-dir goes with --crontab --in-place";
  }
  // Some cron daemons run every file of /etc/cron.d, a FILE.orig there as well.
  if (options.crontab && inPlace && options.backup && options.backupDir.empty()) {
    return "with --crontab, --in-place needs --backup-dir DIR or --no-backup, as a cron daemon "
           "may run a FILE.orig beside the crontab as well";
  }
  if (!options.backup && options.output != Output::kInPlace)
    return "--no-backup goes with --in-place";
  if (options.output == Output::kInPlace) {
    for (const std::string& file : options.operands) {
      if (file == "-") return "standard input cannot be rewritten in place";
    }
  }
  if (launcher::firstShellSyntaxByte(options.fendix)) {
    return "--fendix " + options.fendix + " holds a byte the shell would read as syntax";
  }
  if (options.script && options.operands.empty()) {
    return std::string(options.crontab ? "--crontab" : "--script") +
           " needs a file, or - for standard input";
  }
  return "";
}

}  // namespace

Options parseOptions(int argc, char** argv) {
  Options options;
  Output chosen = Output::kScripts;
  int outputs = 0;
  bool optionsEnded = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    // The legacy line's own options are not ours.
    optionsEnded = optionsEnded || (!options.script && !options.operands.empty());
    if (optionsEnded || word.substr(0, 2) != "--") {
      options.operands.emplace_back(word);
    } else if (word == "--") {
      optionsEnded = true;
    } else if (word == "--fendix" && i + 1 < argc) {
      options.fendix = argv[++i];
    } else if (word == "--fendix") {
      options.error = "--fendix needs a name";
      return options;
    } else if (word.substr(0, 9) == "--fendix=") {
      options.fendix = std::string(word.substr(9));
    } else if (word == "--backup-dir" && i + 1 < argc) {
      options.backupDir = argv[++i];
    } else if (word.substr(0, 13) == "--backup-dir=") {
      options.backupDir = std::string(word.substr(13));
    } else if (!apply(word, options, chosen, outputs)) {
      options.error = "unknown option " + std::string(word);
      return options;
    }
  }
  options.output = chosen;
  options.error = whatIsWrong(options, outputs);
  return options;
}

}  // namespace translate
