// Feeds arbitrary scripts and crontabs to the rewriters that tovak-translate uses, and checks
// the properties that a wrong rewrite breaks: it is idempotent, it leaves a text without
// "tovak" alone, it keeps every line of the script in order with only its own comment lines
// added, and it changes a line only where it reports an invocation rewritten there.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "crontab_rewriter.h"
#include "script_rewriter.h"
#include "shell_lexer.h"

namespace {

void check(bool holds, const char* property) {
  if (!holds) {
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
  }
}

bool isToolComment(std::string_view line) {
  const std::size_t start = line.find_first_not_of(" \t");
  return start != std::string_view::npos && line.substr(start, 19) == "# tovak-translate: ";
}

bool reportedRewritten(const translate::Rewrite& rewrite, std::size_t line) {
  return std::any_of(rewrite.findings.begin(), rewrite.findings.end(), [&](const auto& finding) {
    return finding.reason.rfind("legacy syntax, translates to: ", 0) == 0 && finding.line <= line &&
           line <= finding.lastLine;
  });
}

void checkLines(const translate::Rewrite& rewrite) {
  check(rewrite.result.size() == rewrite.lines.size(), "one result for every line");
  for (std::size_t i = 0; i < rewrite.lines.size(); ++i) {
    const std::vector<std::string>& became = rewrite.result[i];
    check(!became.empty(), "every line is written");
    for (std::size_t k = 0; k + 1 < became.size(); ++k) {
      check(isToolComment(became[k]), "only the tool's comment lines are added");
    }
    check(became.back() == rewrite.lines[i] || reportedRewritten(rewrite, i + 1),
          "a line changes only where an invocation is reported rewritten");
    check(became.back().find('\n') == std::string::npos, "a line stays one line");
  }
}

}  // namespace

// The first byte chooses the mode, by its value modulo 3: a script ("0"), or a crontab in the
// system (1) or the user format (2); and with its bit 3, --assume-plain-values ("H" for a
// script).
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const translate::RewriteOptions options{"", (data[0] & 8) != 0, {}};
  const auto rewrite = [mode = data[0] % 3, &options](const std::string& input) {
    return mode == 0 ? translate::rewriteScript(input, options)
                     : translate::rewriteCrontab(input, options, mode == 2);
  };
  translate::Rewrite first;
  try {
    first = rewrite(text);
  } catch (const translate::NestingTooDeep&) {
    return 0;  // script mode writes such a file through unchanged
  }
  const std::string out = first.text();
  if (text.find("tovak") == std::string::npos) {
    check(out == text && first.findings.empty() && first.mentions == 0,
          "a text without tovak comes out unchanged and counts nothing");
  }
  checkLines(first);
  check(rewrite(out).text() == out, "the rewrite of the rewrite is the rewrite");
  return 0;
}
