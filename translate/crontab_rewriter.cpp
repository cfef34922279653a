#include "crontab_rewriter.h"

#include <algorithm>
#include <cctype>

namespace translate {
namespace {

constexpr std::string_view kBlanks = " \t";

// Where the command field of an entry begins, past its time fields (five, or one "@daily")
// and its user field; npos when the line is no entry.
std::size_t commandStart(std::string_view line, bool userFormat) {
  std::size_t at = line.find_first_not_of(kBlanks);
  if (at == std::string_view::npos) return at;
  const int fields = (line[at] == '@' ? 1 : 5) + (userFormat ? 0 : 1);
  for (int field = 0; field < fields && at != std::string_view::npos; ++field) {
    at = line.find_first_of(kBlanks, at);
    at = at == std::string_view::npos ? at : line.find_first_not_of(kBlanks, at);
  }
  return at;
}

// The name of an environment line ("SHELL=/bin/bash", "MAILTO = ops"), or empty.
std::string_view variableOf(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos || std::isdigit(static_cast<unsigned char>(line[begin])))
    return {};
  std::size_t end = begin;
  while (end < line.size() &&
         (std::isalnum(static_cast<unsigned char>(line[end])) || line[end] == '_')) {
    ++end;
  }
  const std::size_t equals = line.find_first_not_of(kBlanks, end);
  if (end == begin || equals == std::string_view::npos || line[equals] != '=') return {};
  return line.substr(begin, end - begin);
}

std::string_view valueOf(std::string_view line) {
  std::string_view value = line.substr(line.find('=') + 1);
  value.remove_prefix(std::min(value.find_first_not_of(kBlanks), value.size()));
  value.remove_suffix(value.size() - value.find_last_not_of(kBlanks) - 1);
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
      value.back() == value.front()) {
    value = value.substr(1, value.size() - 2);
  }
  return value;
}

class CrontabRewriter {
 public:
  CrontabRewriter(std::string_view text, const RewriteOptions& options, bool userFormat)
      : text_(text), options_(options), userFormat_(userFormat) {}

  Rewrite run() {
    rewrite_ = asWritten(text_);
    if (text_.find("tovak") == std::string_view::npos) return std::move(rewrite_);
    for (std::size_t i = 0; i < rewrite_.lines.size(); ++i) rewriteLine(i);
    return std::move(rewrite_);
  }

 private:
  void rewriteLine(std::size_t i) {
    const std::string& line = rewrite_.lines[i];
    rewrite_.result[i] = {line};
    const std::string_view variable = variableOf(line);
    const std::size_t start = commandStart(line, userFormat_);
    const std::size_t first = line.find_first_not_of(kBlanks);
    // "0 6 * * * tovak co -F" read as a system entry runs "co" as the user tovak: an entry of
    // a user's crontab, whose calls would otherwise pass unseen.
    if (const std::size_t user = commandStart(line, true);
        !userFormat_ && variable.empty() && user != std::string::npos && line[first] != '#' &&
        mentionsLauncher(std::string_view(line).substr(user, start - user))) {
      const Rewrite asUser = rewriteScript(std::string_view(line).substr(user), options_);
      rewrite_.left += std::max(1, asUser.translated + asUser.left + asUser.refused);
      return comment(i,
                     "left as it is: tovak stands in the user field, so this looks like a "
                     "user's crontab, which --crontab-user reads");
    }
    if (!variable.empty() || start == std::string::npos || line[first] == '#') {
      if (variable == "SHELL") shell_ = valueOf(line);
      // cron hands its environment to every command after it.
      if (!variable.empty() && mentionsLauncher(valueOf(line))) {
        options_.launcherVariables.insert(std::string(variable));
      }
      if (mentionsLauncher(line) && !isToolComment(line)) mention(i);
      return;
    }
    const Rewrite command = rewriteScript(std::string_view(line).substr(start), options_);
    const int calls = command.translated + command.left + command.refused;
    if (calls > 0 && (line.find('%', start) != std::string::npos || shell_ != "/bin/sh")) {
      rewrite_.left += calls;
      return comment(i, line.find('%', start) != std::string::npos
                            ? "left as it is: a % in the command, which cron turns into a line "
                              "break and standard input"
                            : "left as it is: SHELL=" + shell_ +
                                  ", and the tool proves its rewrites under sh");
    }
    rewrite_ += command;
    for (Finding finding : command.findings) {
      finding.line = i + 1;
      finding.lastLine = finding.lastLine == 0 ? 0 : i + 1;
      rewrite_.findings.push_back(std::move(finding));
    }
    const std::vector<std::string>& became = command.result[0];
    rewrite_.result[i].clear();
    for (std::size_t k = 0; k + 1 < became.size(); ++k) {
      if (!rewrite_.saysAbove(i, became[k])) rewrite_.result[i].push_back(became[k]);
    }
    rewrite_.result[i].push_back(line.substr(0, start) + became.back());
  }

  void mention(std::size_t i) {
    ++rewrite_.mentions;
    rewrite_.findings.push_back({i + 1, "mentions tovak", 0});
  }

  void comment(std::size_t i, const std::string& reason) {
    rewrite_.findings.push_back({i + 1, reason, 0});
    const std::string line = toolComment(reason);
    rewrite_.result[i] = {rewrite_.lines[i]};
    if (!rewrite_.saysAbove(i, line)) rewrite_.result[i].insert(rewrite_.result[i].begin(), line);
  }

  std::string_view text_;
  RewriteOptions options_;
  bool userFormat_;
  Rewrite rewrite_;
  std::string shell_ = "/bin/sh";
};

}  // namespace

Rewrite rewriteCrontab(std::string_view text, const RewriteOptions& options, bool userFormat) {
  return CrontabRewriter(text, options, userFormat).run();
}

}  // namespace translate
