#include "script_mode.h"

#include <cstdio>
#include <string>

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
    std::fflush(stdout);
    std::fprintf(stderr,
                 "tovak-translate: %d files read, %d invocations translated, %d left, %d refused\n",
                 read_, translated_, left_, refused_);
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
    if (text.find("\r\n") != std::string::npos) {
      unfinished_ = true;
      return complain(file + " has CRLF line ends and is left unchanged");
    }
    Rewrite rewrite;
    try {
      rewrite = rewriteScript(text, options_.fendix);
    } catch (const NestingTooDeep& error) {
      return fail(file + " is refused: " + error.what());
    }
    // A file that could not be replaced had nothing translated.
    if (options_.output == Output::kInPlace && rewrite.changed() &&
        !replaceScript(file, rewrite.text(), options_.backup, error)) {
      return fail(error);
    }
    translated_ += rewrite.translated;
    left_ += rewrite.left;
    refused_ += rewrite.refused;
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
        unfinished_ = unfinished_ || !rewrite.findings.empty();
        return;
      case Output::kInPlace:
        return;
    }
  }

  void fail(const std::string& error) {
    failed_ = true;
    complain(error);
  }

  const Options& options_;
  int read_ = 0;
  int translated_ = 0;
  int left_ = 0;
  int refused_ = 0;
  bool unfinished_ = false;
  bool failed_ = false;
};

}  // namespace

int runScripts(const Options& options) { return ScriptRun(options).run(); }

}  // namespace translate
