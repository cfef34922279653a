#!/usr/bin/env python3
# Every case of lines.txt through a host of our own that calls the library (flushed and
# unflushed output told apart, the caller's strings checked for blanks) and every legacy line
# through build/bin/tovak against the stand-in Fendix, byte for byte; then a very long line,
# the path functions under odd program names and places, and the faults the shell and the
# loader report. With --valgrind the legacy lines run under memcheck instead, which must find
# no error and no leak.
#
# usage: launch_test.py BIN_DIR LINES_FILE FAILING_MALLOC LIBDIR_FROM_BINDIR [--valgrind] [--sanitized]
import concurrent.futures
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

BIN, LINES, FAILING_MALLOC, LIBDIR = os.path.realpath(sys.argv[1]) + "/", sys.argv[2], os.path.realpath(sys.argv[3]), sys.argv[4]
OUTPUT = " --output /var/log/Zantor_Support/"
VALGRIND = ["valgrind", "--quiet", "--leak-check=full", "--errors-for-leak-kinds=definite,indirect,possible",
            "--show-leak-kinds=definite,indirect,possible", "--error-exitcode=99"]
SANITIZERS = {k: v for k, v in os.environ.items() if k.endswith("SAN_OPTIONS")}
failures = []


# Exit code, standard output and error of a child with exactly the environment given.
def run(program, arguments, env=None, argv0=None, prefix=(), cwd=None):
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        code = subprocess.run([*prefix, program if argv0 is None else argv0, *arguments],
                              executable=(prefix or [program])[0], env={**SANITIZERS, **(env or {})},
                              stdout=out, stderr=err, cwd=cwd).returncode
        out.seek(0), err.seek(0)
        return code, out.read().decode(errors="replace"), err.read().decode(errors="replace")


def expect(label, actual, wanted):
    if actual != wanted:
        failures.append(f"{label}:\n  got    {actual!r}\n  wanted {wanted!r}")


def launched(directory, line, status, fendix=""):
    return f"The translated command is: \n{directory}./Fendix {line}\n{fendix}The fendx return code is: {status}\n"


def stand_in(words):
    return f"Fendix stand-in received {len(words)} arguments\n" + "".join(f"  [{i}] <{w}>\n" for i, w in enumerate(words, 1))


# label, host arguments, Fendix line (None: refused or not a legacy line), what is printed
# flushed, unflushed, and all of it in order.
def cases():
    for line in open(LINES, encoding="utf-8"):
        if line.startswith("#") or not line.strip():
            continue
        label, rest = line.rstrip("\n").split(":", 1)
        words, outcome = rest.split(" =>", 1)
        outcome, messages = (re.split(r"(?= [>~] )", outcome, maxsplit=1) + [""])[:2]
        texts = [(kind, text + "\n" * (kind == ">")) for kind, text in re.findall(r" ([>~]) (.*?)\|", messages)]
        flushed, unflushed = ("".join(text for kind, text in texts if kind == wanted) for wanted in ">~")
        how = shlex.split(outcome)[:3] if outcome.split(" ")[1:2] in (["ask"], ["self-test"]) else ["line"]
        fendix = None if how != ["line"] or outcome == " refused" else outcome[1:] + OUTPUT
        yield label, [*how, *shlex.split(words)], fendix, flushed, unflushed, "".join(text for _, text in texts)


def every_case(valgrind):
    all_cases = list(cases())
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        hosted = list(pool.map(lambda case: run(BIN + "host", case[1]), all_cases))
        lines = [case for case in all_cases if case[1][0] == "line"]
        launched_lines = list(pool.map(lambda case: run(BIN + "tovak", case[1][1:], prefix=VALGRIND if valgrind else ()), lines))
    for (label, arguments, fendix, flushed, unflushed, in_order), (code, out, err) in zip(all_cases, hosted):
        if arguments[0] != "line":
            expect(label, (out.replace("\0", ""), err), (in_order, ""))
        elif not valgrind:
            expect(label, (code, out, err), (0 if fendix else 1, flushed + (launched(BIN, fendix, 0) if fendix else "") + "\0" + unflushed, ""))
    for (label, arguments, fendix, flushed, unflushed, _), (code, out, err) in zip(lines, launched_lines):
        if valgrind:
            expect(f"valgrind: {label}", code, 0 if fendix else 1)
        else:
            expect(f"launcher: {label}", (code, out), (0 if fendix else 1, flushed + unflushed + (launched(BIN, fendix, 0, stand_in(shlex.split(fendix))) if fendix else "")))


def interface():
    libc = os.path.dirname(next(line.split()[-1] for line in open("/proc/self/maps") if "/libc.so" in line))
    expect("interface", run(BIN + "host", ["interface", "0", "1", "256", "768", "32512", "9", "-1", "-2", "4991"]), (0, (
        "sizes 1, fields 1, slots 2 3 4\nholes: '' 1 ''\nPlease specify the command!\nPlease specify the command!\n1 1\n"
        "argc: 2\nargv[0]:\nargv[1]:\nfendixParameters:  \nTest paramters.checkValidParametersFormat ... \nReport true!\n"
        "Test paramters.isSetParameter ... \nReport false!\nTest paramters.getParameterValue ... \nValue is: \n"
        f"{launched(BIN, '', 0)}\0" f"0 {BIN} /tmp/\nmodules: {BIN} {os.path.realpath(libc)}/ ''\n"
        "0 1 1 3 127 137 255 255 255 "), ""))


def long_line_and_paths():
    line = "update compare --type fw --dir /srv" + OUTPUT
    expect("100,000 tokens, Fendix exits with 3", run(BIN + "tovak", ["compare", *["-F", "--local=/srv"] * 50000], {"FENDIX_EXIT_CODE": "3"}),
           (3, launched(BIN, line, 768, stand_in(shlex.split(line))), ""))
    # "host paths" prints the executable's directory, then the host's module directory.
    for argv0, module in [(BIN + "host", BIN), ("host", BIN), ("./nowhere/host", ""), ("/nowhere/host", ""), ("", "")]:
        expect(f"paths for argv[0] {argv0!r}", run(BIN + "host", ["paths"], argv0=argv0, cwd="/")[1], f"\0{BIN}\n{module}\n")
    # Past PATH_MAX the link to the executable is cut short: no directory rather than a wrong one.
    top = tempfile.mkdtemp(prefix="tovak-deep-")
    os.chdir(top)
    for _ in range(20):
        os.mkdir("d" * 250)
        os.chdir("d" * 250)
    shutil.copy(BIN + "host", "host")
    expect("paths past PATH_MAX", run("./host", ["paths"], argv0="host")[1], "\0\n\n")
    os.chdir(BIN)
    subprocess.run(["rm", "-rf", top], check=True)


def faults(sanitized):
    # A failed allocation while copying the arguments ends the process with 0, silently: 54321
    # bytes and a terminator, or the pointers to 140,000 arguments past a sanitizer's limit.
    if sanitized:
        failing = [""] * 140000, {"ASAN_OPTIONS": "allocator_may_return_null=1:max_allocation_size_mb=1"}
    else:
        failing = ["co", "-l", "x" * 54321], {"TOVAK_FAIL_MALLOC_SIZE": "54322", "LD_PRELOAD": FAILING_MALLOC}
    code, out, err = run(BIN + "tovak", *failing)
    expect("failed allocation", (code, out, "" if sanitized else err), (0, "", ""))  # ASan warns
    lonely = tempfile.mkdtemp(prefix="tovak-fault-") + "/"
    for name in ("tovak", "libtovak.so"):
        shutil.copy(BIN + name, lonely)
    code, out, err = run(lonely + "tovak", ["qk", "-s"])
    expect("no Fendix", (code, out, "Fendix" in err), (127, launched(lonely, "update scan" + OUTPUT, 32512), True))
    with open(lonely + "Fendix", "w") as fendix:
        fendix.write("not a program\n")
    expect("Fendix not executable", run(lonely + "tovak", ["qk"])[:2], (126, launched(lonely, OUTPUT, 32256)))
    shutil.copy(FAILING_MALLOC, lonely + "libtovak.so")
    expect("library without dll_main", run(lonely + "tovak", ["co"]), (125, "", "tovak: libtovak.so has no dll_main\n"))
    os.remove(lonely + "libtovak.so")
    code, _, err = run(lonely + "tovak", ["co"])
    expect("no library", (code, bool(re.fullmatch(f"tovak: cannot load libtovak.so: {lonely}libtovak.so: .*\n", err))), (125, True))
    # Installed, the library is in its own directory, found relative to the launcher's.
    os.makedirs(lonely + "bin"), os.makedirs(os.path.normpath(f"{lonely}bin/{LIBDIR}"))
    for name, place in (("tovak", "bin"), ("Fendix", "bin"), ("libtovak.so", f"bin/{LIBDIR}")):
        shutil.copy(BIN + name, f"{lonely}{place}/{name}")
    expect("installed", run(lonely + "bin/tovak", ["qk"]), (0, launched(lonely + "bin/", OUTPUT, 0, stand_in(shlex.split(OUTPUT))), ""))
    shutil.rmtree(lonely)


every_case(valgrind="--valgrind" in sys.argv)
if "--valgrind" in sys.argv:
    expect("valgrind: 10,000 tokens", run(BIN + "tovak", ["compare", *["-F", "--local=/srv/repo"] * 5000], prefix=VALGRIND)[0], 0)
else:
    interface()
    long_line_and_paths()
    faults("--sanitized" in sys.argv)
print("\n".join(failures) or "all runs as expected")
sys.exit(1 if failures else 0)
