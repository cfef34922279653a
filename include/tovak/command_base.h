// The base of every command translator: the supported-option table, the fixed order in
// which a translation runs, and the operations that append to the translated Fendix line.
//
// A translator fills the table in addSupportedParameters() and builds the line in
// translateParameters(); run() checks the legacy options against the table in between and
// closes the line with the output directory option.
#ifndef TOVAK_COMMAND_BASE_H
#define TOVAK_COMMAND_BASE_H

#include <string>

#include "tovak/export.h"
#include "tovak/parameters.h"

class TOVAK_API CommandBase {
 public:
  // The Parameters object is not owned and must outlive the translator.
  explicit CommandBase(Parameters* parameters);
  virtual ~CommandBase();

  virtual void addSupportedParameters() = 0;
  virtual bool checkConflictParameters();
  virtual bool translateParameters() = 0;

  // Table, option check, conflict check, translation, output option; false at the first
  // failing stage, which has printed its own message.
  bool run();
  bool checkSupportedParameters();
  std::string getCommandLine();

  // Replaces the whole command line with the subcommand.
  void addCommand(std::string text);
  // Appends " text".
  void addParameter(std::string text);
  // Appends " name value", the value in double quotes when it holds a blank.
  void addParameter(std::string name, std::string value);
  // A legacy flag: appends targetOption when it is given without a value.
  bool translateNoValueParameter(std::string parameter1, std::string parameter2,
                                 std::string targetOption);
  // A legacy option with a value: appends targetOption and the value when it has one.
  bool translateHasValueParameter(std::string parameter1, std::string parameter2,
                                  std::string targetOption);

 protected:
  SupportedParameterTable supportedParameters;
  Parameters* parameters;
  std::string commandLine;
};

#endif  // TOVAK_COMMAND_BASE_H
