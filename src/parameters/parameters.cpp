#include "tovak/parameters.h"

#include <string>
#include <string_view>
#include <vector>

#include "parameters/option_index.h"
#include "platform/console.h"

namespace {

using tovak::isDoubleDash;
using tovak::isSingleDash;
using tovak::startsWithDash;

constexpr const char* kNotValid = "The command parameters are not vaild!";

bool reject(const char* reason) {
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

std::string Parameters::getParameterName(std::string token) {
  return std::string(tovak::optionNameOf(token));
}

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
  return std::string(tovak::OptionIndex(*this).valueOf(name));
}

std::string Parameters::getParameterValue(std::string parameter1, std::string parameter2) {
  if (!tovak::checkQueryNames(parameter1, parameter2, tovak::kValueQueryDashless)) {
    return std::string();
  }
  return std::string(tovak::valueInEitherForm(tovak::OptionIndex(*this), parameter1, parameter2));
}

bool Parameters::isSetParameter(std::string parameter1, std::string parameter2) {
  if (!tovak::checkQueryNames(parameter1, parameter2, tovak::kSetQueryDashless)) {
    return false;
  }
  return tovak::isSetInEitherForm(tovak::OptionIndex(*this), parameter1, parameter2);
}

bool Parameters::ifParameterInVectorpair(std::string name, SupportedParameterTable& table) {
  return tovak::isInTable(tovak::optionNameOf(name), table);
}

bool Parameters::checkSupportedParameters(SupportedParameterTable& table) {
  tovak::OptionIndex index(*this);
  return tovak::checkSupported(index, table);
}
