// Checks the option index against the plain definition of each question, a scan of the
// tokens, on arbitrary token lists: whether an option is set, its first value, the first
// option name a table lacks and the first row with a value in both forms. Input: tokens
// separated by '\n'.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz_input.h"
#include "parameters/option_index.h"

namespace {

using Tokens = std::vector<std::string>;

bool isShort(const std::string& name) {
  return name.size() >= 2 && name[0] == '-' && name[1] != '-';
}

bool isLong(const std::string& name) {
  return name.size() >= 2 && name[0] == '-' && name[1] == '-' &&
         name.find('=') == std::string::npos;
}

bool plainIsSet(const Tokens& tokens, const std::string& name) {
  for (const std::string& token : tokens) {
    if ((isShort(name) && token == name) ||
        (isLong(name) && (token == name || token.rfind(name + "=", 0) == 0))) {
      return true;
    }
  }
  return false;
}

std::string plainValueOf(const Tokens& tokens, const std::string& name) {
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (isShort(name) && tokens[i] == name && i + 1 < tokens.size() && tokens[i + 1][0] != '-') {
      return tokens[i + 1];
    }
    if (isLong(name) && tokens[i].rfind(name + "=", 0) == 0)
      return tokens[i].substr(name.size() + 1);
  }
  return "";
}

std::string plainFirstUnsupported(const Tokens& tokens, const SupportedParameterTable& table) {
  for (const std::string& token : tokens) {
    if (token.empty() || token[0] != '-') continue;
    const std::string name = token.size() < 2  ? ""
                             : token[1] != '-' ? token
                                               : token.substr(0, token.find('='));
    bool listed = false;
    for (const auto& row : table) listed = listed || row.first == name || row.second == name;
    if (!listed) return name;
  }
  return "(all listed)";
}

std::string plainConflict(const Tokens& tokens, const SupportedParameterTable& table) {
  for (const auto& row : table) {
    if (!plainValueOf(tokens, row.first).empty() && !plainValueOf(tokens, row.second).empty())
      return row.first + " " + row.second;
  }
  return "(none)";
}

void check(bool holds, const char* question, const std::string& name) {
  if (holds) return;
  std::fprintf(stderr, "the index and the scan differ on %s of '%s'\n", question, name.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Tokens tokens = tokensOf(data, size);
  // What the library sees of each token: up to a NUL byte.
  for (std::string& token : tokens) token = token.c_str();
  std::vector<char*> argv{nullptr, nullptr};
  std::string word = "co";
  argv[1] = word.data();
  for (std::string& token : tokens) argv.push_back(token.data());
  const Parameters parameters(static_cast<int>(argv.size()), argv.data());
  tovak::OptionIndex index(parameters);
  Tokens names = {"", "-", "--", "-m", "--mt", "-m=5", "--mt=x"};
  for (const std::string& token : tokens) {
    names.push_back(token);
    names.emplace_back(tovak::optionNameOf(token));
  }
  for (const std::string& name : names) {
    check(index.isSet(name) == plainIsSet(tokens, name), "whether it is set", name);
    check(index.valueOf(name) == plainValueOf(tokens, name), "its value", name);
  }
  const SupportedParameterTable table = {{"-m", "--mt"}, {"--x", ""}, {"-a", "--bb"}, {"-a", "-m"}};
  const tovak::OptionIndex::TableCheck against = index.checkAgainst(table);
  check((against.unsupported ? std::string(*against.unsupported) : "(all listed)") ==
            plainFirstUnsupported(tokens, table),
        "the first name the table lacks", "");
  check((against.conflict ? against.conflict->first + " " + against.conflict->second : "(none)") ==
            plainConflict(tokens, table),
        "the first row with two values", "");
  return 0;
}
