// A library without dll_main, which the launcher must refuse to use.
extern "C" int not_dll_main() { return 0; }
