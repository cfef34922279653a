// One row of a translator table: a legacy line, and either the Fendix line it becomes (before
// the closing output option) or nullopt for a refused line, with everything printed.
#ifndef TOVAK_TESTS_TRANSLATOR_CASES_H
#define TOVAK_TESTS_TRANSLATOR_CASES_H

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/legacy_line.h"

struct TranslatorCase {
  std::vector<std::string> words;
  std::optional<std::string> line;
  std::string printed;
};

// The two lines a translator prints for an option with a wrong value, for "-x or --xx".
inline std::string carryValueLine(const std::string& names) {
  return "The parameter " + names + " can not carry value. \n";
}
inline std::string emptyValueLine(const std::string& names) {
  return "The parameter value of " + names + " can not be empty. \n";
}

inline void expectTranslations(const std::vector<TranslatorCase>& cases) {
  for (const TranslatorCase& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.words));
    const TranslationOutcome outcome = translateLine(c.words);
    EXPECT_EQ(outcome.accepted, c.line.has_value());
    if (c.line) {
      EXPECT_EQ(outcome.commandLine, *c.line + kOutputOption);
    }
    EXPECT_EQ(outcome.printed, c.printed);
  }
}

#endif  // TOVAK_TESTS_TRANSLATOR_CASES_H
