// A host of the library's own for the tests. "host line <words>" calls dll_main with the
// vector "/opt/t/tovak <words>" and exits with its status; "host self-test <words>" runs the
// self-test on that vector; "host ask <parameter1> <parameter2> <words>" asks the queries and
// prints their answers; "host paths" prints the executable's directory and this program's.
// system() is replaced by one that runs nothing, so that a line prints what dll_main prints
// and launches nothing. After the call one NUL byte goes straight to the descriptor: what
// stands before it was flushed during the call, what follows was left in the buffers.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tovak/tovak.h"

extern "C" int system(const char*) { return 0; }

namespace {

void ask(Parameters& parameters, const std::string& first, const std::string& second) {
  const bool set = parameters.isSetParameter(first, second);
  const std::string value = parameters.getParameterValue(first, second);
  SupportedParameterTable table = {{"-q", second}};
  std::printf("%d%d%d %s set=%d value=%s single=%s listed=%d\n",
              parameters.isNotStartWithDash(first), parameters.isStartWithSingleDash(first),
              parameters.isStartWithDoubleDash(first), parameters.getParameterName(first).c_str(),
              set, value.c_str(), parameters.getSingleParameterValue(first).c_str(),
              parameters.ifParameterInVectorpair(first, table));
}

}  // namespace

int main(int argc, char** argv) {
  const std::string how = argc > 1 ? argv[1] : "paths";
  const int words = how == "ask" ? 4 : 2;
  std::vector<std::string> strings{"/opt/t/tovak"};
  strings.insert(strings.end(), argv + std::min(words, argc), argv + argc);
  std::vector<char*> vector;
  for (std::string& text : strings) vector.push_back(text.data());
  Parameters parameters(static_cast<int>(vector.size()), vector.data());
  int status = 0;
  if (how == "line") status = dll_main(static_cast<int>(vector.size()), vector.data());
  if (how == "self-test") {
    Test test(static_cast<int>(vector.size()), vector.data());
    test.printCommandAndParamaters();
    test.testParameters();
  }
  if (how == "ask") ask(parameters, argv[2], argv[3]);
  if (how == "paths") {
    std::printf("%s\n%s\n", GetCurProcessPathLin().c_str(),
                GetModulePathLin(reinterpret_cast<void*>(&ask)).c_str());
  }
  write(STDOUT_FILENO, "", 1);
  // The caller's strings after the first: blanks now, each as long as before.
  for (std::size_t i = 0; how == "line" && i < strings.size(); ++i) {
    const bool blank = strings[i].find_first_not_of(' ') == std::string::npos;
    if (std::strlen(vector[i]) != strings[i].size() || blank != (i > 0)) {
      std::fprintf(stderr, "argument %zu is wrong afterwards: '%s'\n", i, vector[i]);
    }
  }
  return status;
}
