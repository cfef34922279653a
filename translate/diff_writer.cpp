#include "diff_writer.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace translate {
namespace {

constexpr std::size_t kContext = 3;

class DiffWriter {
 public:
  explicit DiffWriter(const Rewrite& rewrite) : rewrite_(rewrite) {}

  std::string write(const std::string& name) {
    std::size_t first = 0;
    while ((first = nextChange(first)) < rewrite_.lines.size()) {
      // A hunk runs on while the next change is close enough for the contexts to meet.
      std::size_t last = first;
      for (std::size_t next;
           (next = nextChange(last + 1)) < rewrite_.lines.size() && next - last <= 2 * kContext;) {
        last = next;
      }
      writeHunk(first >= kContext ? first - kContext : 0,
                std::min(last + kContext + 1, rewrite_.lines.size()));
      first = last + 1;
    }
    // The tab ends the name for patch, which would otherwise stop at a blank in it.
    return diff_.empty() ? diff_ : "--- " + name + "\t\n+++ " + name + "\t\n" + diff_;
  }

 private:
  std::size_t nextChange(std::size_t from) const {
    while (from < rewrite_.lines.size() && !rewrite_.lineChanged(from)) ++from;
    return from;
  }

  // Lines begin to end of the original; comments added above a kept line are additions.
  void writeHunk(std::size_t begin, std::size_t end) {
    std::string body;
    std::size_t newCount = 0;
    for (std::size_t i = begin; i < end; ++i) {
      const std::vector<std::string>& became = rewrite_.result[i];
      const bool kept = became.back() == rewrite_.lines[i];
      const bool endsFile = i + 1 == rewrite_.lines.size();
      for (std::size_t j = 0; j + 1 < became.size(); ++j) addLine(body, '+', became[j], false);
      if (kept) {
        addLine(body, ' ', rewrite_.lines[i], endsFile);
      } else {
        addLine(body, '-', rewrite_.lines[i], endsFile);
        addLine(body, '+', became.back(), endsFile);
      }
      newCount += became.size();
    }
    diff_ += "@@ -" + std::to_string(begin + 1) + "," + std::to_string(end - begin) + " +" +
             std::to_string(begin + 1 + added_) + "," + std::to_string(newCount) + " @@\n" + body;
    added_ += newCount - (end - begin);
  }

  // Only the script's last line can lack a line end, before the change and after it.
  void addLine(std::string& body, char sign, const std::string& line, bool endsFile) const {
    body += sign + line + "\n";
    if (endsFile && !rewrite_.finalLineEnd) body += "\\ No newline at end of file\n";
  }

  const Rewrite& rewrite_;
  std::string diff_;
  std::size_t added_ = 0;
};

}  // namespace

std::string unifiedDiff(const std::string& name, const Rewrite& rewrite) {
  return DiffWriter(rewrite).write(name);
}

}  // namespace translate
