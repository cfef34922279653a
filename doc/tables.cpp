// tovak_tables: fills the manual pages, the shell completion and the launcher's help from
// the library's own tables of command words and options, so that none of them keeps a copy
// of its own. Run at build time:
//
//   tovak_tables TEMPLATE OUTPUT
//
// Template lines, all others copied as they are:
//   @form WORDS OPTION[=VALUE] TEXT
//                            the manual's text for OPTION (its first name) under each of the
//                            comma-separated command WORDS, and the name of its value if it
//                            takes one; the line itself is dropped
//   @options WORD            a manual entry (.TP) for each option of WORD, with its @form text
//   @option_cases@           a bash case arm for each command word: WORD|ABBREVIATION) the
//                            command's option names
// and anywhere in a line, @COMMAND_WORDS@ ("compare co update up ...") and @COMMAND_LIST@
// ("compare (co), update (up), ..."). An option without text, a text without an option or
// an unknown command word fails the run, and no output is written.
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "entry/translation.h"
#include "tovak/parameters.h"

namespace {

bool fail(const std::string& why) {
  std::cerr << "tovak_tables: " << why << '\n';
  return false;
}

const tovak::CommandWord* findWord(const std::string& name) {
  for (const tovak::CommandWord& word : tovak::kCommandWords) {
    if (word.name == name) return &word;
  }
  return nullptr;
}

// groff reads "-" as a hyphen; options are typed with the minus sign.
std::string manEscaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '-') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// "-l dir" or "--local=dir", the name in bold and the value in italics.
std::string manTag(const std::string& name, const std::string& value) {
  const bool isLong = name[1] == '-';
  return "\\fB" + manEscaped(name) + "\\fR" +
         (value.empty() ? "" : (isLong ? "=" : " ") + ("\\fI" + value + "\\fR"));
}

void replaceAll(std::string& line, const std::string& from, const std::string& to) {
  for (std::size_t at = line.find(from); at != std::string::npos;
       at = line.find(from, at + to.size())) {
    line.replace(at, from.size(), to);
  }
}

class Filler {
 public:
  // Collects the @form lines first: an entry may come before its texts.
  bool readForms(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
      std::istringstream fields(line);
      std::string keyword, words, option, text;
      fields >> keyword;
      if (keyword != "@form") continue;
      fields >> words >> option >> std::ws;
      std::getline(fields, text);
      const std::size_t equals = option.find('=');
      const std::string value = equals == std::string::npos ? "" : option.substr(equals + 1);
      std::istringstream names(words);
      for (std::string word; std::getline(names, word, ',');) {
        if (findWord(word) == nullptr) return fail("no command word " + word);
        forms[{word, option.substr(0, equals)}] = {value, text};
      }
    }
    return true;
  }

  bool fill(const std::string& line, std::string& out) {
    std::istringstream fields(line);
    std::string keyword, name;
    fields >> keyword >> name;
    if (keyword == "@form") return true;
    if (keyword == "@options") return addEntries(name, out);
    if (line == "@option_cases@") {
      addCaseArms(out);
      return true;
    }
    std::string filled = line;
    replaceAll(filled, "@COMMAND_WORDS@", commandWords(" ", "", " "));
    replaceAll(filled, "@COMMAND_LIST@", commandWords(" (", ")", ", "));
    out += filled + '\n';
    return true;
  }

  // Every text was used by some entry.
  bool allFormsUsed() {
    for (const auto& [key, form] : forms) {
      if (used.count(key) == 0) return fail("no option " + key.second + " in " + key.first);
    }
    return true;
  }

 private:
  bool addEntries(const std::string& name, std::string& out) {
    if (findWord(name) == nullptr) return fail("no command word " + name);
    for (const auto& [first, second] : tovak::optionTableOf(name)) {
      const auto form = forms.find({name, first});
      if (form == forms.end()) return fail("no text for " + first + " in " + name);
      used.insert(form->first);
      const auto& [value, text] = form->second;
      out += ".TP\n" + manTag(first, value) + (second.empty() ? "" : ", " + manTag(second, value)) +
             '\n' + text + '\n';
    }
    return true;
  }

  static void addCaseArms(std::string& out) {
    for (const tovak::CommandWord& word : tovak::kCommandWords) {
      std::string names;
      for (const auto& [first, second] : tovak::optionTableOf(std::string(word.name))) {
        names += ' ' + first + (second.empty() ? "" : ' ' + second);
      }
      out += std::string(word.name) + '|' + std::string(word.abbreviation) + ") echo" + names +
             " ;;" + '\n';
    }
  }

  // Each word as name, open, abbreviation, close, the words joined by the separator.
  static std::string commandWords(const std::string& open, const std::string& close,
                                  const std::string& separator) {
    std::string text;
    for (const tovak::CommandWord& word : tovak::kCommandWords) {
      if (!text.empty()) text += separator;
      text += std::string(word.name) + open + std::string(word.abbreviation) + close;
    }
    return text;
  }

  // (command word, option) to (value name, text).
  std::map<std::pair<std::string, std::string>, std::pair<std::string, std::string>> forms;
  std::set<std::pair<std::string, std::string>> used;
};

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> paths(argv + 1, argv + argc);
  if (paths.size() != 2) {
    std::cerr << "usage: tovak_tables TEMPLATE OUTPUT\n";
    return 2;
  }
  const std::string& templatePath = paths.front();
  const std::string& outputPath = paths.back();
  std::ifstream in(templatePath);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  Filler filler;
  std::string out;
  bool done = (in.eof() || fail("cannot read " + templatePath)) && filler.readForms(lines);
  for (auto line = lines.begin(); done && line != lines.end(); ++line) {
    done = filler.fill(*line, out);
  }
  done = done && filler.allFormsUsed() &&
         (std::ofstream(outputPath, std::ios::binary) << out || fail("cannot write " + outputPath));
  return done ? 0 : 1;
}
