// A one-file caller built with nothing but `pkg-config --cflags --libs tovak`: it derives
// its own translator from CommandBase and uses the query operations of Parameters.
//
//   c++ -std=c++17 main.cpp $(pkg-config --cflags --libs tovak) -Wl,-rpath,$(pkg-config --variable=libdir tovak) -o derive
//
// The run-time path lets the program find libtovak.so outside the loader's own directories;
// a library installed under /usr needs none.
#include <tovak/tovak.h>

#include <iostream>
#include <string>

// A made-up "inventory" legacy command: -m/--machine-type becomes Fendix's --mt.
class InventoryCommand : public CommandBase {
 public:
  explicit InventoryCommand(Parameters* parameters) : CommandBase(parameters) {}
  void addSupportedParameters() override {
    supportedParameters.emplace_back("-m", "--machine-type");
  }
  bool translateParameters() override {
    addCommand("update inventory");
    return translateHasValueParameter("-m", "--machine-type", "--mt");
  }
};

int main() {
  char program[] = "derive";
  char word[] = "inventory";
  char option[] = "--machine-type=7X21";
  char* argv[] = {program, word, option, nullptr};
  Parameters parameters(3, argv);
  InventoryCommand command(&parameters);
  if (!command.run()) {
    return 1;
  }
  std::cout << command.getCommandLine() << '\n';
  std::cout << "temporary directory: " << GetSysTempPath() << '\n';
  return command.getCommandLine() == "update inventory --mt 7X21 --output /var/log/Zantor_Support/"
             ? 0
             : 1;
}
