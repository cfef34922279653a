#!/usr/bin/env python3
# Every case of lines.txt through a host of our own that calls the library (flushed and
# unflushed output told apart, the caller's strings checked for blanks) and every legacy line
# through build/bin/tovak against the stand-in Fendix, byte for byte; then the interface
# beyond the lines, the path functions under odd program names and places, the launcher in
# odd places and against faults, and every allocation of a call failing in turn. With
# --valgrind the legacy lines run under memcheck instead, which must find no error and no leak.
#
# usage: launch_test.py BIN_DIR LINES_FILE NO_ENTRY_LIBRARY LIBDIR_FROM_BINDIR VERSION [--valgrind] [--sanitized]
import concurrent.futures, itertools, os, re, shlex, shutil, subprocess, sys, tempfile
from support.expectations import expect, finish

BIN, LINES = os.path.realpath(sys.argv[1]) + "/", sys.argv[2]
NO_ENTRY, LIBDIR, VERSION = os.path.realpath(sys.argv[3]), sys.argv[4], sys.argv[5]
OUTPUT = " --output /var/log/Zantor_Support/"
VALGRIND = ["valgrind", "--quiet", "--leak-check=full", "--errors-for-leak-kinds=definite,indirect,possible",
            "--show-leak-kinds=definite,indirect,possible", "--error-exitcode=99"]
SANITIZERS = {k: v for k, v in os.environ.items() if k.endswith("SAN_OPTIONS")}
SANITIZED = "--sanitized" in sys.argv


# Exit code, standard output and error of a child with exactly the environment given.
def run(program, arguments, env=None, argv0=None, prefix=(), cwd=None):
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        code = subprocess.run([*prefix, program if argv0 is None else argv0, *arguments],
                              executable=(prefix or [program])[0],
                              env={**SANITIZERS, "TOVAK_NO_SYSLOG": "1", **(env or {})},
                              stdout=out, stderr=err, cwd=cwd).returncode
        out.seek(0), err.seek(0)
        errors = err.read().decode(errors="replace")
        if SANITIZED:  # a sanitizer's own remarks, such as on a missing /proc
            errors = "".join(line for line in errors.splitlines(True) if not re.match(r"==\d+==", line))
        return code, out.read().decode(errors="replace"), errors


def launched(directory, line, status, fendix=""):
    return f"The translated command is: \n{directory}./Fendix {line}\n{fendix}The fendx return code is: {status}\n"


def stand_in(words):
    listed = "".join(f"  [{i}] <{w}>\n" for i, w in enumerate(words, 1))
    return f"Fendix stand-in received {len(words)} arguments\n" + listed


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
        prefix = VALGRIND if valgrind else ()
        launched_lines = list(pool.map(lambda case: run(BIN + "tovak", case[1][1:], prefix=prefix), lines))
    for (label, arguments, fendix, flushed, unflushed, in_order), (code, out, err) in zip(all_cases, hosted):
        if arguments[0] != "line":
            expect(label, (out.replace("\0", ""), err), (in_order, ""))
        elif not valgrind:
            ran = f"ran: {BIN}./Fendix {fendix}\n" if fendix else ""
            printed = flushed + (launched(BIN, fendix, 0) if fendix else "") + "\0" + unflushed
            expect(label, (code, out, err), (0 if fendix else 1, printed, ran))
    for (label, arguments, fendix, flushed, unflushed, _), (code, out, err) in zip(lines, launched_lines):
        if valgrind:
            expect(f"valgrind: {label}", code, 0 if fendix else 1)
        else:
            ran = launched(BIN, fendix, 0, stand_in(shlex.split(fendix))) if fendix else ""
            expect(f"launcher: {label}", (code, out), (0 if fendix else 1, flushed + unflushed + ran))


STATUSES = {"0": 0, "1": 1, "256": 1, "768": 3, "32512": 127, "9": 137, "-1": 255, "-2": 255, "4991": 255}


# What "host interface" prints: each fact its own line, "label: value", after the lines the
# library printed for it.
def interface_facts():
    libc = next(line.split()[-1] for line in open("/proc/self/maps") if "/libc.so" in line)
    libc = os.path.dirname(os.path.realpath(libc)) + "/"
    return [
        "sizes: 1", "fields: 1", "virtual slots: 2 3 4", "flag: 1",
        "The parameter value of --x or -s can not be empty. ", "valued, no value: 0",
        " The parameter2 should start with dash!", "valued, dashless: 1",
        " The parameter2 should start with dash!", "flag, dashless: 1",
        'built:  flag word --pair "a b" own --output /var/log/Zantor_Support/ p',
        "compare supports: 1", "The parameter: -s is not supported!", "acquire supports: 0",
        "Warning: The parameter -s or --select is not supported by fendix. It will be ignored!",
        "compare translates: 1", "acquire translates: 1", "quenmark translates: 1",
        "lines: update compare, update acquire, update scan", "missing strings: '' 1",
        "missing vector: ''", "Please specify the command!", "dll_main, missing vector: 1",
        "Please specify the command!", "dll_main, missing strings: 1", "argc: 2", "argv[0]:",
        "argv[1]:", "fendixParameters:  ", *launched(BIN, "", 0).splitlines(),
        "exec: 0", f"paths: {BIN} /tmp/", f"modules: {BIN} {libc} ''", "exception: 125",
        "unknown exception: 125",
        *(f"exit code for {status}: {code}" for status, code in STATUSES.items()),
    ]


def interface():
    code, out, err = run(BIN + "host", ["interface", *STATUSES])
    got, wanted = out.replace("\0", "").splitlines(), interface_facts()
    for i, (line, fact) in enumerate(itertools.zip_longest(got, wanted), 1):
        expect(f"interface, line {i}", line, fact)
    expect("interface, status and errors", (code, err), (0, f"ran: {BIN}./Fendix \n"
           "tovak: dll_main failed: thrown\ntovak: dll_main failed with an unknown exception\n"))


def standard_output_full():
    # A failed write neither silences the next call nor is hidden from the host.
    expect("standard output full in a first call", run(BIN + "host", ["full", "qk"]),
           (0, launched(BIN, OUTPUT, 0) + "\0", f"ran: {BIN}./Fendix {OUTPUT}\n" * 2 + "error indicator: 1\n"))
    # Closed, it leaves tovak-translate nothing to catch the library's lines with: dup() fails
    # while descriptors are free, and the temporary file would take descriptor 1 itself.
    closed = ["sh", "-c", 'exec "$@" >&-', "sh"]
    refusal = "tovak-translate: cannot catch the library's output: Bad file descriptor\n"
    expect("tovak-translate with standard output closed",
           run(BIN + "tovak-translate", ["co"], prefix=closed), (1, "", refusal))


# text; the first byte a shell reads as syntax in a line the library built, and in the
# launcher's directory (0: none)
SHELL_SYNTAX = [
    ("a quote opening the line", '"a b" x', 0, 0x22),
    ("a quote left open, no blank after it", 'x --dir "abc --output /o/', 0x22, 0x20),
    ("# opening the line", "#x", 0x23, 0x23),
    ("# right after a closing quote", '"a b"#c', 0, 0x22),
]


def shell_syntax():
    got = run(BIN + "host", ["syntax", *(t for _, t, _, _ in SHELL_SYNTAX)])[1].replace("\0", "").split("\n")
    for i, (label, _, in_line, in_path) in enumerate(SHELL_SYNTAX):
        expect(f"shell syntax: {label}", got[i] if i < len(got) else None, f"{in_line:x} {in_path:x}")


def copies(directory, names=("tovak", "libtovak.so", "Fendix", "host")):
    os.makedirs(directory, exist_ok=True)
    for name in names:
        shutil.copy(BIN + name, os.path.join(directory, name))
    return os.path.join(directory, "")


def paths():
    # "host paths" prints the executable's directory, then the host's module directory.
    nowhere = "/dev/null/"  # where no program can be: what a path function gives when unsure
    for argv0, module in [("./nowhere/host", nowhere), ("", nowhere)]:
        printed = run(BIN + "host", ["paths"], argv0=argv0, cwd="/")[1]
        expect(f"paths for argv[0] {argv0!r}", printed, f"\0{BIN}\n{module}\n")
    refusal = "tovak: cannot tell this program's directory from /proc/self/exe\n"
    # The kernel gives a program path of up to 4095 bytes, which is read whole; a longer one
    # cannot be read.
    top = tempfile.mkdtemp(prefix="tovak-deep-")
    os.chdir(top)
    for depth in range(17):
        os.mkdir("d" * 250)
        os.chdir("d" * 250)
        if depth == 15:
            exact, here = 4095 - len(os.getcwd()) - 1, os.getcwd() + "/"
            for name in ("host", "tovak"):
                shutil.copy(BIN + name, name[0] * exact)
            printed = run("./" + "h" * exact, ["paths"], argv0="host")[1]
            expect("paths at 4095 bytes", printed.replace("\0", ""), f"{here}\n{here}\n")
            code, _, err = run("./" + "t" * exact, ["qk"])  # the library's path is too long to load
            refused = err.startswith(f"tovak: cannot load libtovak.so: {here}")
            expect("launcher at 4095 bytes", (code, refused), (125, True))
    copies(".", ("host", "tovak"))
    expect("paths past PATH_MAX", run("./host", ["paths"], argv0="host")[1], f"\0{nowhere}\n{nowhere}\n")
    expect("launcher past PATH_MAX", run("./tovak", ["qk"]), (125, "", refusal))
    os.chdir(BIN)
    subprocess.run(["rm", "-rf", top], check=True)


def launcher_places():
    line = "update compare --type fw --dir /srv" + OUTPUT
    words = ["compare", *["-F", "--local=/srv"] * 50000]
    expect("100,000 tokens, Fendix exits with 3", run(BIN + "tovak", words, {"FENDIX_EXIT_CODE": "3"}),
           (3, launched(BIN, line, 768, stand_in(shlex.split(line))), ""))
    top = tempfile.mkdtemp(prefix="tovak-places-")
    for name, byte in (("azAZ09+,:@%=_-.", None), ("semi;colon", 0x3b), ("a blank", 0x20), ("caf\u00e9", 0xc3)):
        directory = copies(os.path.join(top, name))
        refusal = f"tovak: will not run from {directory}: the shell would read its byte 0x{byte or 0:02x}\n"
        ran = launched(directory, OUTPUT, 0, stand_in(shlex.split(OUTPUT)))
        expect(f"launcher in {name!r}", run(directory + "tovak", ["qk"]), (125, "", refusal) if byte else (0, ran, ""))
    lonely = copies(os.path.join(top, "lonely"), ("tovak",))
    # --help and --version need no library and answer anywhere, but only as the whole line.
    usage = run(lonely + "tovak", ["--help"])
    words = "compare (co), update (up), acquire (ac), quenmark (qk)\n"
    expect("help", (usage[0], usage[1].startswith("Usage: tovak COMMAND"), words in usage[1]), (0, True, True))
    expect("version", run(os.path.join(top, "semi;colon", "tovak"), ["--version"]), (0, f"tovak {VERSION}\n", ""))
    expect("help and version", run(BIN + "tovak", ["--help", "--version"]),
           (1, "The command: --help is not supported.\n", ""))
    on_full_disk = subprocess.run([BIN + "tovak", "--help"], stdout=open("/dev/full", "w"))
    expect("help on a full disk", on_full_disk.returncode, 1)
    shutil.copy(NO_ENTRY, lonely + "libtovak.so")
    expect("library without dll_main", run(lonely + "tovak", ["co"]), (125, "", "tovak: libtovak.so has no dll_main\n"))
    os.remove(lonely + "libtovak.so")
    code, _, err = run(lonely + "tovak", ["co"])
    refused = re.fullmatch(f"tovak: cannot load libtovak.so: {lonely}libtovak.so: .*\n", err)
    expect("no library", (code, bool(refused)), (125, True))
    # Installed, the library is in its own directory, found relative to the launcher's.
    installed = copies(os.path.join(top, "bin"), ("tovak", "Fendix"))
    copies(os.path.normpath(installed + LIBDIR), ("libtovak.so",))
    ran = launched(installed, OUTPUT, 0, stand_in(shlex.split(OUTPUT)))
    expect("installed", run(installed + "tovak", ["qk"]), (0, ran, ""))
    shutil.rmtree(top)


def failed_allocations(sanitized):
    if sanitized:  # the pointers to 140,000 arguments past the sanitizer's limit: status 0, silently
        limits = {"ASAN_OPTIONS": "allocator_may_return_null=1:max_allocation_size_mb=1"}
        code, out, _ = run(BIN + "tovak", [""] * 140000, limits)
        expect("failed allocation", (code, out), (0, ""))
        return
    # Each allocation of a whole call fails in turn. Then the call ends with status 0 and
    # silently (an argument copy), or with the launcher's line and 125 after whatever was
    # printed, Fendix run with the whole line or not at all, or completes as if nothing failed.
    for words in (["co", "-F", "-l", "/srv repo", "-e", "1,2", "-L"],
                  ["up", "--host=h", "--update-args=--user=u,--password=p"],
                  ["ac", "-l", "/d", "--proxy-address=p", "--proxy-port=8"],
                  ["qk", "-s", "--vq-address=a", "--vq-user=u"]):
        whole = run(BIN + "host", ["line", *words])
        for n in itertools.count(1):
            code, out, err = run(BIN + "host", ["fail", str(n), *words])
            if "not reached" in err:
                break
            ran, failure = err.partition("tovak: dll_main failed: ")[::2]
            fine = (code, out, err) == (0, "", "") or (code, out, err) == whole or (
                code == 125 and whole[1].replace("\0", "").startswith(out.replace("\0", ""))
                and ran in ("", whole[2]) and failure == "std::bad_alloc\n")
            expect(f"allocation {n} failing for {words}", fine, True)


every_case(valgrind="--valgrind" in sys.argv)
if "--valgrind" not in sys.argv:
    interface()
    shell_syntax()
    standard_output_full()
    paths()
    launcher_places()
    failed_allocations(SANITIZED)
finish("all runs as expected")
