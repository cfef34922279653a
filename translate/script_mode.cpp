#include "script_mode.h"

#include <cstdio>
#include <string>

#include "crontab_rewriter.h"
#include "diff_writer.h"
#include "script_file.h"
#include "script_rewriter.h"
#include "shell_lexer.h"

namespace translate {
namespace {

void writeOut(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void complain(const std::string& text) {
  std::fprintf(stderr, "tovak-translate: %s\n", text.c_str());
}

class ScriptRun {
 public:
  explicit ScriptRun(const Options& options) : options_(options) {}

  int run() {
    for (const std::string& file : options_.operands) handle(file);
    // A script cut short in a pipeline must not pass for a whole one.
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) fail("cannot write standard output");
    std::fprintf(stderr,
                 "tovak-translate: %d files read, %d invocations translated, %d left, %d refused, "
                 "%d mentions, %d lines reading the launcher's lines, %d files not rewritten, "
                 "%d more with --assume-plain-values\n",
                 read_, counts_.translated, counts_.left, counts_.refused, counts_.mentions,
                 counts_.readers, notRewritten_, counts_.assumable);
    if (failed_) return 1;
    return unfinished_ ? 2 : 0;
  }

 private:
  void handle(const std::string& file) {
    std::string text;
    std::string error;
    if (!readScript(file, text, error)) return fail(error);
    ++read_;
    // Under a POSIX shell such lines hand a carriage return to their last word already; a
    // rewrite would not keep that.
    if (text.find("\r\n") != std::string::npos && text.find("tovak") != std::string::npos) {
      return passThrough(text, file + " has CRLF line ends and is left unchanged");
    }
    Rewrite rewrite;
    try {
      const RewriteOptions rewriting{options_.fendix, options_.assumePlainValues, {}};
      rewrite = options_.crontab ? rewriteCrontab(text, rewriting, options_.crontabUser)
                                 : rewriteScript(text, rewriting);
    } catch (const NestingTooDeep& error) {
      return passThrough(text, file + " is left unchanged: " + error.what());
    }
    // A file that could not be replaced had nothing translated.
    if (options_.output == Output::kInPlace && rewrite.changed() &&
        !replaceScript(file, rewrite.text(), options_.backup, options_.backupDir, error)) {
      return fail(error);
    }
    counts_ += rewrite;
    unfinished_ = unfinished_ || rewrite.left > 0 || rewrite.refused > 0;
    switch (options_.output) {
      case Output::kScripts:
        return writeOut(rewrite.text());
      case Output::kDiff:
        return writeOut(unifiedDiff(file, rewrite));
      case Output::kCheck:
        for (const Finding& finding : rewrite.findings) {
          writeOut(file + ":" + std::to_string(finding.line) + ": " + finding.reason + "\n");
        }
        // Mentions and readers are listed, but only invocations are still to be done.
        unfinished_ = unfinished_ || rewrite.translated > 0;
        return;
      case Output::kInPlace:
        return;
    }
  }

  // A file the tool will not rewrite still reaches the output as it was, so that a pipeline
  // never loses a script.
  void passThrough(const std::string& text, const std::string& why) {
    unfinished_ = true;
    ++notRewritten_;
    complain(why);
    if (options_.output == Output::kScripts) writeOut(text);
  }

  void fail(const std::string& error) {
    failed_ = true;
    complain(error);
  }

  const Options& options_;
  int read_ = 0;
  Counts counts_;
  int notRewritten_ = 0;
  bool unfinished_ = false;
  bool failed_ = false;
};

}  // namespace

int runScripts(const Options& options) { return ScriptRun(options).run(); }

}  // namespace translate
