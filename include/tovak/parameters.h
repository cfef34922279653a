// The parsed legacy command line: the command word and the option tokens exactly as typed,
// the shape check run before anything else, and the queries translators ask about options.
//
// A long option is "--name" and carries its value after "=" in the same token; a short
// option is "-x" and carries its value in the next token when that token has no leading
// dash. An empty value counts as no value.
#ifndef TOVAK_PARAMETERS_H
#define TOVAK_PARAMETERS_H

#include <string>
#include <utility>
#include <vector>

#include "tovak/export.h"

// Rows of (first name, second name): the short form and the long form of an option, or the
// long form and an empty string when the option has no short form.
using SupportedParameterTable = std::vector<std::pair<std::string, std::string>>;

class TOVAK_API Parameters {
 public:
  // Element 1 becomes the command word, elements 2 onward the option tokens; element 0 is
  // never read. Nothing of argv is kept.
  Parameters(int argc, char** argv);
  virtual ~Parameters();

  std::string getCommand();

  bool isNotStartWithDash(std::string token);
  bool isStartWithSingleDash(std::string token);
  bool isStartWithDoubleDash(std::string token);
  // "-m=5" stays whole, "--os=x" gives "--os", a value token gives "".
  std::string getParameterName(std::string token);

  // Prints two lines and returns false when the tokens break the option syntax.
  bool checkValidParametersFormat();

  // The value of one form of an option, or "".
  std::string getSingleParameterValue(std::string name);
  // The value of an option given in either form; parameter1's value wins (with a warning).
  std::string getParameterValue(std::string parameter1, std::string parameter2);
  bool isSetParameter(std::string parameter1, std::string parameter2);
  // Whether the option named by the token is a row of the table.
  bool ifParameterInVectorpair(std::string name, SupportedParameterTable& table);
  // Every option token is in the table and no row carries values in both forms.
  bool checkSupportedParameters(SupportedParameterTable& table);

 private:
  std::string command;
  std::vector<std::string> parameterList;
};

#endif  // TOVAK_PARAMETERS_H
