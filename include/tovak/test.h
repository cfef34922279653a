// A self-test a caller can run on an argument vector: it echoes the vector, shows it joined
// the way values are quoted, and prints the results of the shape check and two queries.
#ifndef TOVAK_TEST_H
#define TOVAK_TEST_H

#include "tovak/export.h"

class TOVAK_API Test {
 public:
  // The vector is neither copied nor owned; keep it alive while the object is used.
  Test(int argc, char** argv);
  virtual ~Test();

  void printCommandAndParamaters();
  void testParameters();

 private:
  int argc;
  char** argv;
};

#endif  // TOVAK_TEST_H
