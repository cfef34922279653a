#!/usr/bin/env python3
# Checks that libtovak.so defines exactly the dynamic symbols its public headers declare:
# dll_main, each exported function, every member an exported class declares (pure virtual
# ones excepted) and the classes' vtables and type information. Names are compared
# demangled, so the constructor and destructor variants count once.
#
# usage: check_exported_symbols.py LIBRARY INCLUDE_DIR
import pathlib, re, subprocess, sys

STRING = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
TABLE = f"std::vector<std::pair<{STRING}, {STRING} >, std::allocator<std::pair<{STRING}, {STRING} > > >"
DECLARATION = re.compile(r"(?:TOVAK_API|virtual|explicit|\s)*([\w:*& ]*?)\s*(~?\w+)\(([^)]*)\)([^;{]*)")


# The name c++filt prints for a declaration.
def demangled(result, scope, name, arguments):
    types = [re.sub(r"\s*\w+$", "", a.strip()) for a in arguments.split(",") if a.strip()]
    types = [t.replace("SupportedParameterTable", TABLE).replace("std::string", STRING) for t in types]
    # A string result not seen among the argument types is tagged in the mangled name.
    tag = "[abi:cxx11]" if result == "std::string" and STRING not in types else ""
    return f"{scope}{name}{tag}({', '.join(t.replace(' *', '*') for t in types)})"


def declared(include):
    names = {"dll_main"}
    for header in pathlib.Path(include, "tovak").glob("*.h"):
        text = re.sub(r"//.*", "", header.read_text())
        for cls, body in re.findall(r"class TOVAK_API (\w+)[^{]*\{(.*?)\n\};", text, re.S):
            names |= {f"{kind} {cls}" for kind in ("vtable for", "typeinfo for", "typeinfo name for")}
            for result, name, arguments, rest in DECLARATION.findall(body):
                if "= 0" not in rest:
                    names.add(demangled(result.strip(), cls + "::", name, arguments))
        for result, name, arguments, _ in re.findall(r"^TOVAK_API " + DECLARATION.pattern, text, re.M):
            names.add(demangled(result.strip(), "", name, arguments))
    return names


library, include = sys.argv[1:3]
symbols = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True)
mangled = "\n".join(line.split()[-1] for line in symbols.stdout.splitlines())
unmangled = subprocess.run(["c++filt"], input=mangled, capture_output=True, text=True, check=True)
exported = set(unmangled.stdout.split("\n")) - {""}
wanted = declared(include)
for name in sorted(wanted - exported):
    print("missing:", name)
for name in sorted(exported - wanted):
    print("extra:  ", name)
print(f"libtovak.so exports {len(exported)} names; the headers declare {len(wanted)}")
sys.exit(0 if exported == wanted else 1)
