#!/usr/bin/env python3
"""build/bin/tovak as a child process, its output compared byte for byte: every legacy
line of lines.txt against the stand-in Fendix, a very long line, the path functions under
odd program names and places, and the faults the shell and the loader report. With
--valgrind the lines run under memcheck instead, which must find no error and no leak.

usage: launch_test.py BIN_DIR LINES_FILE FAILING_MALLOC [--valgrind] [--sanitized]"""
import concurrent.futures
import os
import shlex
import shutil
import subprocess
import sys
import tempfile

BIN = os.path.realpath(sys.argv[1]) + "/"
OUTPUT = " --output /var/log/Zantor_Support/"
VALGRIND = ["valgrind", "--quiet", "--leak-check=full", "--errors-for-leak-kinds=definite,indirect,possible",
            "--show-leak-kinds=definite,indirect,possible", "--error-exitcode=99"]
SANITIZERS = {k: v for k, v in os.environ.items() if k.endswith("SAN_OPTIONS")}
failures = []


def run(program, arguments, env=None, argv0=None, prefix=()):
    """Exit code, standard output and error of a child with exactly the environment given."""
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        code = subprocess.run([*prefix, argv0 if argv0 is not None else program, *arguments], executable=prefix[0] if prefix else program,
                              env={**SANITIZERS, **(env or {})}, stdout=out, stderr=err).returncode
        out.seek(0), err.seek(0)
        return code, out.read().decode(errors="replace"), err.read().decode(errors="replace")


def expect(label, actual, wanted):
    if actual != wanted:
        failures.append(f"{label}:\n  got    {actual!r}\n  wanted {wanted!r}")


def launched(directory, line, status, fendix=""):
    return f"The translated command is: \n{directory}./Fendix {line}\n{fendix}The fendx return code is: {status}\n"


def stand_in(words):
    return f"Fendix stand-in received {len(words)} arguments\n" + "".join(f"  [{i}] <{w}>\n" for i, w in enumerate(words, 1))


def cases(path):
    """(label, words, Fendix line or None, printed) of each legacy line of the data file."""
    for line in open(path, encoding="utf-8"):
        if line.startswith("#") or not line.strip():
            continue
        label, rest = line.rstrip("\n").split(": ", 1)
        words, outcome = rest.split(" =>", 1)
        outcome, *messages = outcome.replace(" ~ ", " > ").split(" > ")
        if outcome.split(" ")[1:2] not in (["ask"], ["tokens"], ["self-test"]):
            printed = "".join(m[:-1] + ("\n" if f" > {m}" in rest else "") for m in messages)
            yield label, shlex.split(words), None if outcome == " refused" else outcome[1:] + OUTPUT, printed


def legacy_lines(valgrind):
    all_cases = list(cases(sys.argv[2]))
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        runs = pool.map(lambda case: run(BIN + "tovak", case[1], prefix=VALGRIND if valgrind else ()), all_cases)
    for (label, words, line, printed), (code, out, _) in zip(all_cases, runs):
        if valgrind:
            expect(f"valgrind: {label}", code, 0 if line else 1)
            continue
        expect(label, out, printed + (launched(BIN, line, 0, stand_in(shlex.split(line))) if line else ""))
        expect(f"{label}: exit code", code, 0 if line else 1)


def long_line_and_paths():
    many = ["-F", "--local=/srv"] * 50000
    line = "update compare --type fw --dir /srv" + OUTPUT
    expect("100,000 tokens, Fendix exits with 3", run(BIN + "tovak", ["compare", *many], {"FENDIX_EXIT_CODE": "3"}),
           (3, launched(BIN, line, 768, stand_in(shlex.split(line))), ""))
    probe = BIN + "path_probe"  # prints the executable's directory, then its own module's
    for argv0, module in [(probe, BIN), ("path_probe", BIN), ("./nowhere/path_probe", ""),
                          ("/nowhere/path_probe", ""), ("", "")]:
        expect(f"paths for argv[0] {argv0!r}", run(probe, [], argv0=argv0)[1], f"{BIN}\n{module}\n")
    # Past PATH_MAX the link to the executable is cut short: no directory rather than a wrong one.
    top = tempfile.mkdtemp(prefix="tovak-deep-")
    os.chdir(top)
    for _ in range(20):
        os.mkdir("d" * 250)
        os.chdir("d" * 250)
    shutil.copy(probe, "path_probe")
    expect("paths past PATH_MAX", run("./path_probe", [])[1], "\n\n")
    os.chdir(BIN)
    subprocess.run(["rm", "-rf", top], check=True)


def faults(sanitized):
    # A failed allocation while copying the arguments ends the process with 0, silently: 54321
    # bytes and a terminator, or the pointers to 140,000 arguments past a sanitizer's limit.
    if sanitized:
        failing = [""] * 140000, {"ASAN_OPTIONS": "allocator_may_return_null=1:max_allocation_size_mb=1"}
    else:
        failing = ["co", "-l", "x" * 54321], {"TOVAK_FAIL_MALLOC_SIZE": "54322", "LD_PRELOAD": sys.argv[3]}
    expect("failed allocation", run(BIN + "tovak", *failing), (0, "", ""))
    lonely = tempfile.mkdtemp(prefix="tovak-fault-") + "/"
    for name in ("tovak", "libtovak.so"):
        shutil.copy(BIN + name, lonely)
    code, out, err = run(lonely + "tovak", ["qk", "-s"])
    expect("no Fendix", (code, out, "Fendix" in err), (127, launched(lonely, "update scan" + OUTPUT, 32512), True))
    with open(lonely + "Fendix", "w") as fendix:
        fendix.write("not a program\n")
    expect("Fendix not executable", run(lonely + "tovak", ["qk"])[:2], (126, launched(lonely, OUTPUT, 32256)))
    shutil.copy(sys.argv[3], lonely + "libtovak.so")
    expect("library without dll_main", run(lonely + "tovak", ["co"]), (125, "", "tovak: libtovak.so has no dll_main\n"))
    os.remove(lonely + "libtovak.so")
    code, _, err = run(lonely + "tovak", ["co"])
    expect("no library", (code, err.startswith(f"tovak: cannot load libtovak.so: {lonely}libtovak.so: ")), (125, True))
    shutil.rmtree(lonely)


if "--valgrind" in sys.argv:
    legacy_lines(valgrind=True)
    code, _, _ = run(BIN + "tovak", ["compare"] + ["-F", "--local=/srv/repo"] * 5000, prefix=VALGRIND)
    expect("valgrind: 10,000 tokens", code, 0)
else:
    legacy_lines(valgrind=False)
    long_line_and_paths()
    faults("--sanitized" in sys.argv)
print("\n".join(failures) or "all launches as expected")
sys.exit(1 if failures else 0)
