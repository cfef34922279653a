#include "tovak/parameters.h"

#include <string>
#include <string_view>
#include <vector>

#include "platform/console.h"

namespace {

// The queries below run once per token per question, so they work on views of the stored
// tokens instead of copying them.
bool startsWithDash(std::string_view text) { return !text.empty() && text[0] == '-'; }

bool isSingleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] != '-';
}

bool isDoubleDash(std::string_view token) {
  return token.size() >= 2 && token[0] == '-' && token[1] == '-';
}

// A short option is never split at "="; a long one is named by what stands before it.
std::string_view nameOf(std::string_view token) {
  if (isSingleDash(token)) {
    return token;
  }
  if (isDoubleDash(token)) {
    return token.substr(0, token.find('='));
  }
  return std::string_view();
}

// Equal texts; option names share their leading dashes, so the last byte is compared first
// and settles most mismatches without a call to memcmp.
[[gnu::always_inline]] inline bool sameText(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a.empty() || (a.back() == b.back() && a.compare(b) == 0));
}

// An option name prepared once per query and then compared with every token, so that the
// name is not cut out of each token again for every question.
class NameMatcher {
 public:
  explicit NameMatcher(std::string_view name) : name_(name), kind_(kindOf(name)) {}

  // Whether the token's option name is this name.
  bool matches(std::string_view token) const {
    switch (kind_) {
      case Kind::kShort:
        return sameText(token, name_);  // a short option is never split at "="
      case Kind::kLong: {
        const std::size_t n = name_.size();
        // The cheap test first: a long option is the name alone or the name and "=".
        return token.size() >= n && (token.size() == n || token[n] == '=') &&
               token[n - 1] == name_[n - 1] && token.compare(0, n, name_) == 0;
      }
      case Kind::kNone:
        break;
    }
    return false;
  }

  // Whether the token is this long option followed by "=" (the value after it may be empty).
  bool hasValuePart(std::string_view token) const {
    return kind_ == Kind::kLong && token.size() > name_.size() && matches(token);
  }

 private:
  enum class Kind { kShort, kLong, kNone };

  // A long name with "=", or a text that is not an option name, names no option token.
  static Kind kindOf(std::string_view name) {
    if (isSingleDash(name)) return Kind::kShort;
    if (isDoubleDash(name)) {
      return name.find('=') == std::string_view::npos ? Kind::kLong : Kind::kNone;
    }
    return Kind::kNone;
  }

  std::string_view name_;
  Kind kind_;
};

bool inTable(std::string_view name, const SupportedParameterTable& table) {
  for (const auto& row : table) {
    if (sameText(name, row.first) || sameText(name, row.second)) {
      return true;
    }
  }
  return false;
}

// The value one form of an option carries: the next token for a short form (the last
// token is never taken as the option), the text after "=" for a long form.
std::string_view valueOf(const std::vector<std::string>& tokens, std::string_view name) {
  if (isSingleDash(name)) {
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
      if (sameText(tokens[i], name) && !startsWithDash(tokens[i + 1])) {
        return tokens[i + 1];
      }
    }
  } else if (isDoubleDash(name)) {
    const NameMatcher matcher(name);
    for (const std::string& token : tokens) {
      if (matcher.hasValuePart(token)) {
        return std::string_view(token).substr(name.size() + 1);
      }
    }
  }
  return std::string_view();
}

// The option-name arguments of a query: parameter1 a dashed name, parameter2 empty or
// dashed. Anything else is reported, with the query's own wording for a dashless parameter1.
bool checkNameArguments(const std::string& parameter1, const std::string& parameter2,
                        std::string_view noDashMessage) {
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

constexpr std::string_view kNotValid = "The command parameters are not vaild!";

bool reject(std::string_view reason) {
  tovak::writeLine(kNotValid);
  tovak::writeLine(reason);
  return false;
}

}  // namespace

Parameters::Parameters(int argc, char** argv) {
  if (argc < 2 || argv == nullptr) {
    return;
  }
  command = argv[1] != nullptr ? argv[1] : "";
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
  if (!checkNameArguments(parameter1, parameter2, " The parameter1 should start with dash!")) {
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
  if (!checkNameArguments(parameter1, parameter2, " The parameter should start with dash!")) {
    return false;
  }
  const NameMatcher first(parameter1);
  const NameMatcher second(parameter2);
  for (const std::string& token : parameterList) {
    if (first.matches(token) || second.matches(token)) {
      return true;
    }
  }
  return false;
}

bool Parameters::ifParameterInVectorpair(std::string name, SupportedParameterTable& table) {
  return inTable(nameOf(name), table);
}

bool Parameters::checkSupportedParameters(SupportedParameterTable& table) {
  for (const std::string& token : parameterList) {
    if (!startsWithDash(token)) {
      continue;  // a value, never looked up
    }
    const std::string_view name = nameOf(token);
    if (!inTable(name, table)) {
      // Left without a line end and unflushed, as scripts have always seen it.
      tovak::writeText("The parameter: ");
      tovak::writeText(name);
      tovak::writeText(" is not supported!");
      return false;
    }
  }
  for (const auto& row : table) {
    // A row without a second form cannot carry two values; skip its scan.
    if (!row.second.empty() && !valueOf(parameterList, row.first).empty() &&
        !valueOf(parameterList, row.second).empty()) {
      tovak::writeLine("Can not set \"" + row.first + "\" and \"" + row.second +
                       "\" at the same time.");
      return false;
    }
  }
  return true;
}
