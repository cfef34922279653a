#include "tovak/parameters.h"

#include <string>
#include <string_view>
#include <vector>

#include "platform/console.h"

namespace {

constexpr const char* kNotValid = "The command parameters are not vaild!";

bool startsWithDash(std::string_view text) { return !text.empty() && text[0] == '-'; }

bool isSingleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] != '-';
}

bool isDoubleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] == '-';
}

// "" for a value and for a lone "-", so no value token ever names an option.
std::string_view nameOf(std::string_view token) {
  if (isSingleDash(token)) {
    return token;
  }
  if (isDoubleDash(token)) {
    return token.substr(0, token.find('='));
  }
  return std::string_view();
}

bool isInTable(std::string_view name, const SupportedParameterTable& table) {
  for (const auto& row : table) {
    if (name == row.first || name == row.second) {
      return true;
    }
  }
  return false;
}

// Whether some token names the option; an empty name is never set.
bool isNamed(const std::vector<std::string>& tokens, std::string_view name) {
  if (name.empty()) {
    return false;
  }
  for (const std::string& token : tokens) {
    if (nameOf(token) == name) {
      return true;
    }
  }
  return false;
}

// A short option's value is the next token, unless that one has a dash; a long option's is
// what follows the "=" in its own token. The first occurrence that has a value wins.
std::string_view valueOf(const std::vector<std::string>& tokens, std::string_view name) {
  const bool isShort = isSingleDash(name);
  // No token's name holds "=", so such a name has no value.
  const bool isLong = isDoubleDash(name) && name.find('=') == std::string_view::npos;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const std::string_view token = tokens[i];
    if (isShort && token == name && i + 1 < tokens.size() && !startsWithDash(tokens[i + 1])) {
      return tokens[i + 1];
    }
    if (isLong && token.size() > name.size() && token[name.size()] == '=' &&
        token.substr(0, name.size()) == name) {
      return token.substr(name.size() + 1);
    }
  }
  return std::string_view();
}

bool reject(const char* reason) {
  tovak::writeLine(kNotValid);
  tovak::writeLine(reason);
  return false;
}

// The name arguments of isSetParameter and getParameterValue, which word the message for a
// dashless parameter1 each in its own way.
bool namesAreOptions(const std::string& parameter1, const std::string& parameter2,
                     const char* noDashMessage) {
  if (parameter1.empty()) {
    tovak::writeLine(" The parameter1 should not be empty!");
    return false;
  }
  if (!startsWithDash(parameter1)) {
    tovak::writeLine(noDashMessage);
    return false;
  }
  if (!parameter2.empty() && !startsWithDash(parameter2)) {
    tovak::writeLine(" The parameter2 should start with dash!");
    return false;
  }
  return true;
}

}  // namespace

Parameters::Parameters(int argc, char** argv) {
  if (argc < 2 || argv == nullptr) {
    return;
  }
  command = argv[1] != nullptr ? argv[1] : "";
  // One allocation for the list: the allocations of a call are budgeted (bench/costs.py).
  parameterList.reserve(static_cast<std::size_t>(argc - 2));
  for (int i = 2; i < argc; ++i) {
    parameterList.emplace_back(argv[i] != nullptr ? argv[i] : "");
  }
}

Parameters::~Parameters() = default;

std::string Parameters::getCommand() { return command; }

bool Parameters::isNotStartWithDash(std::string token) { return !startsWithDash(token); }

bool Parameters::isStartWithSingleDash(std::string token) { return isSingleDash(token); }

bool Parameters::isStartWithDoubleDash(std::string token) { return isDoubleDash(token); }

std::string Parameters::getParameterName(std::string token) { return std::string(nameOf(token)); }

bool Parameters::checkValidParametersFormat() {
  const std::size_t n = parameterList.size();
  if (n == 0) {
    return true;
  }
  if (!startsWithDash(parameterList[0])) {
    return reject("The first paramater should start with - or --.");
  }
  // The long-option rule covers the whole list before the short-option rule looks at any
  // of it, so its message wins even when a short-option fault stands earlier.
  for (std::size_t i = 0; i + 1 < n; ++i) {
    if (isDoubleDash(parameterList[i]) && !startsWithDash(parameterList[i + 1])) {
      return reject(
          "If the parameter starts with --, the next parameter should start with - or --.");
    }
  }
  for (std::size_t i = 0; i + 2 < n; ++i) {
    if (isSingleDash(parameterList[i]) && !startsWithDash(parameterList[i + 1]) &&
        !startsWithDash(parameterList[i + 2])) {
      return reject(
          "If the parameter starts with -, at least one of the next two parameters should start "
          "with - or --.");
    }
  }
  return true;
}

std::string Parameters::getSingleParameterValue(std::string name) {
  return std::string(valueOf(parameterList, name));
}

std::string Parameters::getParameterValue(std::string parameter1, std::string parameter2) {
  if (!namesAreOptions(parameter1, parameter2, " The parameter1 should start with dash!")) {
    return std::string();
  }
  const std::string_view value1 = valueOf(parameterList, parameter1);
  const std::string_view value2 = valueOf(parameterList, parameter2);
  if (!value1.empty() && !value2.empty()) {
    tovak::writeLine("Warning: Should not set \"" + parameter1 + "\" and \"" + parameter2 +
                     "\" at the same time.");
    tovak::writeLine("Using \"" + parameter1 + "\" this time.");
  }
  return std::string(value1.empty() ? value2 : value1);
}

bool Parameters::isSetParameter(std::string parameter1, std::string parameter2) {
  if (!namesAreOptions(parameter1, parameter2, " The parameter should start with dash!")) {
    return false;
  }
  return isNamed(parameterList, parameter1) || isNamed(parameterList, parameter2);
}

bool Parameters::ifParameterInVectorpair(std::string name, SupportedParameterTable& table) {
  return isInTable(nameOf(name), table);
}

bool Parameters::checkSupportedParameters(SupportedParameterTable& table) {
  for (const std::string& token : parameterList) {
    if (startsWithDash(token) && !isInTable(nameOf(token), table)) {
      // Without a line end and unflushed, as scripts have always seen it.
      tovak::writeText("The parameter: ");
      tovak::writeText(nameOf(token));
      tovak::writeText(" is not supported!");
      return false;
    }
  }
  for (const auto& [first, second] : table) {
    if (!valueOf(parameterList, first).empty() && !valueOf(parameterList, second).empty()) {
      tovak::writeLine("Can not set \"" + first + "\" and \"" + second + "\" at the same time.");
      return false;
    }
  }
  return true;
}
