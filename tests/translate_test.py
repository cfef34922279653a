#!/usr/bin/env python3
# tovak-translate against the launcher: a hand-written script and a generated one are each
# run whole under dash and bash as written (through build/bin/tovak) and as rewritten; the
# stand-in Fendix logs every argument list and the scripts every status, and the logs must be
# identical. Then the README's example, line mode and the file options.
#
# usage: translate_test.py BIN_DIR SCRIPT README [--seed N] [--count N]
import argparse, concurrent.futures, hashlib, itertools, os, random, re, resource, shutil, signal, subprocess, sys, tempfile
from pathlib import Path

parser = argparse.ArgumentParser()
parser.add_argument("bin"), parser.add_argument("script"), parser.add_argument("readme")
parser.add_argument("--seed", type=int, default=1), parser.add_argument("--count", type=int, default=500)
parser.add_argument("--sanitized", action="store_true")  # a sanitizer cannot start under an address-space limit
ARGS = parser.parse_args()
BIN = os.path.realpath(ARGS.bin)
TOOL = os.path.join(BIN, "tovak-translate")
PRELUDE = 's() { echo "status $?" >>"$FENDIX_LOG"; }\n'
failures = []


def tool(arguments, stdin="", cwd=None, limit=None):  # stdin None: closed; limit: (resource, value)
    def child():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)  # past a file-size limit, a write fails instead
        if stdin is None:
            os.close(0)
        if limit:
            resource.setrlimit(limit[0], (limit[1], limit[1]))
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:  # files open for reading too
        code = subprocess.run([TOOL, *arguments], input=None if stdin is None else stdin.encode(), stdout=out, stderr=err, cwd=cwd, preexec_fn=child).returncode
        return code, *(file.seek(0) or file.read().decode(errors="replace") for file in (out, err))


def expect(label, actual, wanted):
    if actual != wanted:
        failures.append(f"{label}:\n  got    {actual!r}\n  wanted {wanted!r}")


def run_log(shell, text, tmp):
    # A run is a function of the shell, the script and the programs it starts, so the mutation
    # script, whose faults in tovak-translate change none of those programs, keeps the logs.
    cache = os.environ.get("TOVAK_TRANSLATE_TEST_CACHE")
    if not cache:
        return run_log_afresh(shell, text, tmp)
    programs = b"".join(Path(BIN, program).read_bytes() for program in ["tovak", "libtovak.so", "Fendix"])
    kept = Path(cache, hashlib.sha256(f"{shell}\0{text.replace(tmp, '@TMP@')}".encode() + programs).hexdigest())
    if not kept.exists():
        os.makedirs(cache, exist_ok=True)
        with tempfile.NamedTemporaryFile(dir=cache, delete=False) as fresh:
            fresh.write(run_log_afresh(shell, text, tmp).replace(tmp.encode(), b"@TMP@"))
        os.replace(fresh.name, kept)
    return kept.read_bytes().replace(b"@TMP@", tmp.encode())


# The log of one whole run, in a fresh directory where only the programs the scripts name
# are found, so that values the launcher hands the shell as syntax touch nothing else.
def run_log_afresh(shell, text, tmp):
    home = tempfile.mkdtemp(dir=tmp)
    os.mkdir(home + "/path")
    for name, target in [("tovak", BIN), ("Fendix", BIN), ("cat", "/bin"), ("env", "/usr/bin"), ("nice", "/usr/bin")]:
        os.symlink(f"{target}/{name}", f"{home}/path/{name}")
    env = {"PATH": home + "/path", "HOME": home, "FENDIX_LOG": home + "/log"}
    Path(home, "script").write_text(text)
    done = subprocess.run([shutil.which(shell), "script"], cwd=home, env=env, stdin=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=600)
    return Path(home, "log").read_bytes().replace(home.encode(), b"~") + f"exit {done.returncode}\n".encode()


# wanted: the exact counts of translated, left and refused invocations, or the least number
# translated.
def prove(label, text, wanted):
    with tempfile.TemporaryDirectory() as tmp:
        os.mkdir(tmp + "/link")
        os.symlink(BIN + "/tovak", tmp + "/link/tovak")
        text = PRELUDE + text.replace("@BIN@", BIN).replace("@LINK@", tmp + "/link")
        code, rewritten, summary = tool(["--script", "-"], text)
        counts = re.search(r"(\d+) invocations translated, (\d+) left, (\d+) refused", summary)
        counted = tuple(int(n) for n in counts.groups()) if counts else (0, 0, 0)
        if counted != wanted if isinstance(wanted, tuple) else counted[0] < wanted:
            return failures.append(f"{label}: {counted} invocations translated, left, refused; wanted {wanted}")
        expect(f"{label}: rewritten again", tool(["--script", "-"], rewritten)[1], rewritten)
        # --check lists each invocation the summary counts; the status says whether any is left.
        listed = tool(["--script", "--check", "-"], text)[1]
        expect(f"{label}: --check and the status agree with the summary",
               [listed.count(f": {kind}") for kind in ("legacy syntax, translates to", "left as it is:", "refused by")] + [code],
               [*counted, 2 if counted[1] + counted[2] else 0])
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            runs = {(shell, t): pool.submit(run_log, shell, t, tmp) for shell in ["dash", "bash"] for t in [text, rewritten]}
        for shell in ["dash", "bash"]:
            expect(f"{label} under {shell}", runs[shell, rewritten].result(), runs[shell, text].result())
        print(f"{label}: {counts[1]} invocations rewritten, {counts[2]} left, {counts[3]} refused")


COMPARE = "-F -D -L -s -u --xml --noinventory -l -f -o -e -i -m --host= --update-args= --vmware-esxi=".split()
ACQUIRE = "-L -r --xml --meta-only --ignore-req --no-proxy -u -l -i -m -o --proxy-address= --proxy-user= --proxy-port=".split()
OPTIONS = {"compare": COMPARE, "up": COMPARE, "ac": ACQUIRE, "qk": "-s --vq-address= --vq-user= --vq-password=".split()}
VALUED = "-l -f -o -e -i -m".split()
VALUES = ["/srv/repo", "7X21", "1,2", "all", "a b", "", "x", "10.0.0.1"]
# A lone "&" would start Fendix in the background, and the log's order with it.
CHARS = [*" ,.:@%=+-_;|<>(){}$`\\*?[]~#\"'!\t\n", "&&"]
WRAPS = ["{}", "({})", "{{ {}; }}", "if {}; then :; fi", "{} && :", "{} || :", "{} | cat >/dev/null",
         "{} >/dev/null 2>&1", "{} # c", "x=$({})", 'echo {} >>"$FENDIX_LOG"', "cat <<'EOT' >>\"$FENDIX_LOG\"\n{}\nEOT"]


def quote(r, word):
    way = r.randrange(4)
    if way == 0 and "'" not in word:
        return f"'{word}'"
    if way == 1:
        return '"' + re.sub(r'([$`"\\])', r"\\\1", word) + '"'
    if way == 2 or not re.fullmatch(r"[\w,.:@%=+/-]+", word):
        return "".join(c if c.isalnum() else "'\n'" if c == "\n" else "\\" + c for c in word)
    return word


def generate(r, count):
    lines = []
    for _ in range(count):
        words = [command := r.choice(list(OPTIONS))]
        for _ in range(r.randrange(5)):
            option, value = r.choice(OPTIONS[command]), r.choice(VALUES)
            if r.random() < .15:  # a byte the shell may read as syntax once joined
                at = r.randint(0, len(value))
                value = value[:at] + r.choice(CHARS) + value[at:]
            words += [option + value] if option.endswith("=") else [option, value] if option in VALUED else [option]
        line = " ".join(quote(r, w) for w in words) + r.choice(["", "", "", "", "", "", "", "", "", ' "$HOME"', " *"])
        launcher = r.choice(["tovak", "tovak", "@BIN@/tovak", "@LINK@/tovak", "'tovak'"])
        prefix = r.choice(["", "", "env ", "command ", "nice ", "! ", "A=1 "])
        lines.append(r.choice(WRAPS).format(f"{prefix}{launcher} {line}") + "\ns\n")
    return "".join(lines)


prove("hand-written script", Path(ARGS.script).read_text(), (19, 5, 1))
# CI's seed pinned whole: a line newly left or refused is a change of reach, not only of proof.
prove(f"generated script (seed {ARGS.seed})", generate(random.Random(ARGS.seed), ARGS.count),
      (221, 122, 59) if (ARGS.seed, ARGS.count) == (1, 500) else ARGS.count // 5)

# The README's before and after.
section = Path(ARGS.readme).read_text().split("## Moving scripts to Fendix")[1]
blocks = re.findall(r"```sh\n(.*?)```", section, re.S)
expect("README example", tool(["--script", "-"], blocks[0])[1], blocks[1])
usage = tool(["--help"])
expect("README --help", (usage[0], "$ tovak-translate --help\n" + usage[1]), (0, re.findall(r"```text\n(.*?)```", section, re.S)[0]))
expect("no arguments", tool([]), (1, "", usage[1]))

USAGE = "tovak-translate: {}\n"
for arguments, wanted in [
        (["compare", "-F", "-L"], (0, "Fendix update compare --type fw --scope latest --output /var/log/Zantor_Support/\n", "\n")),
        (["acquire", "--proxy-user=a"], (1, "", "The parameter: --proxy-address need specify. \n")),
        (["--script", "--fendix=/o/F", "-"], (0, "/o/F update compare --type fw --output /var/log/Zantor_Support/\n",
                                              USAGE.format("1 files read, 1 invocations translated, 0 left, 0 refused"))),
        (["--", "--version"], (1, "", "The command: --version is not supported.\n")),
        (["--fendix", "/o/F"], (1, "", "Please specify the command!\n")),
        (["--version"], (0, "tovak-translate 1.0.0\n", "")),
        (["--diff", "x"], (1, "", USAGE.format("--diff, --in-place, --check and --no-backup go with --script"))),
        (["--script", "--diff", "--check", "-"], (1, "", USAGE.format("choose one of --diff, --in-place and --check"))),
        (["--script", "--in-place", "-"], (1, "", USAGE.format("standard input cannot be rewritten in place"))),
        (["--script", "--no-backup", "-"], (1, "", USAGE.format("--no-backup goes with --in-place"))),
        (["--script"], (1, "", USAGE.format("--script needs a file, or - for standard input"))),
        (["--fendix", "a;b", "co"], (1, "", USAGE.format("--fendix a;b holds a byte the shell would read as syntax"))),
        (["--bogus"], (1, "", USAGE.format("unknown option --bogus"))),
        (["--script", "-", "--fendix"], (1, "", USAGE.format("--fendix needs a name"))),
        (["--script", "/dev/null"], (1, "", USAGE.format("cannot read /dev/null: not a regular file") + USAGE.format("0 files read, 0 invocations translated, 0 left, 0 refused"))),
        (["--script", "/none"], (1, "", USAGE.format("cannot read /none: No such file or directory") +
                                 USAGE.format("0 files read, 0 invocations translated, 0 left, 0 refused")))]:
    expect(" ".join(arguments), tool(arguments, "tovak co -F\n"), wanted)

LEGACY, NEW = "tovak compare -F\n", "Fendix update compare --type fw --output /var/log/Zantor_Support/\n"  # a change on the first line
with tempfile.TemporaryDirectory() as tmp:
    def write(name, text, mode=0o644):
        Path(tmp, name).write_bytes(text.encode())
        os.chmod(f"{tmp}/{name}", mode)

    read = lambda name: Path(tmp, name).read_bytes().decode()  # noqa: E731

    write("real.sh", LEGACY, 0o741)
    os.symlink("real.sh", tmp + "/link.sh")
    if os.geteuid() == 0:  # only root can make a file owned by someone else
        os.chown(tmp + "/real.sh", 1234, 5678)
    owner = lambda: (os.stat(tmp + "/real.sh").st_uid, os.stat(tmp + "/real.sh").st_gid)  # noqa: E731
    owned = owner()
    write("kept.sh", LEGACY), write("kept.sh.orig", "old"), write("bare.sh", LEGACY), write("same.sh", NEW + "cat <<E\n")
    expect("two scripts", tool(["--script", "kept.sh", "bare.sh"], cwd=tmp)[1], NEW * 2)
    for arguments, stdin in [(["link.sh", "same.sh"], ""), (["link.sh"], ""), (["--no-backup", "bare.sh"], None)]:
        expect(f"--in-place {arguments}", tool(["--script", "--in-place", *arguments], stdin, cwd=tmp)[0], 0)
    expect("through the link", (os.path.islink(tmp + "/link.sh"), read("real.sh"), read("real.sh.orig"),
                                oct(os.stat(tmp + "/real.sh").st_mode & 0o7777), owner()), (True, NEW, LEGACY, "0o741", owned))
    expect("refused for its backup", (tool(["--script", "--in-place", "kept.sh"], cwd=tmp)[0::2], read("kept.sh"), read("kept.sh.orig")), ((1, USAGE.format(
        f"{os.path.realpath(tmp)}/kept.sh.orig exists already; kept.sh is left unchanged") + USAGE.format("1 files read, 0 invocations translated, 0 left, 0 refused")), LEGACY, "old"))
    expect("left alone", sorted(os.listdir(tmp)), ["bare.sh", "kept.sh", "kept.sh.orig", "link.sh", "real.sh", "real.sh.orig", "same.sh"])
    write("x" * 250, LEGACY)  # too long a name for the temporary file beside it
    expect("no temporary file", tool(["--script", "--in-place", "x" * 250], cwd=tmp)[0::2], (1, USAGE.format(
        f"cannot create a temporary file beside {os.path.realpath(tmp)}/{'x' * 250}: File name too long") +
        USAGE.format("1 files read, 0 invocations translated, 0 left, 0 refused")))
    write("full.sh", LEGACY)  # the disk fills up part way through the rewritten file
    cut = tool(["--script", "--in-place", "--no-backup", "full.sh"], cwd=tmp, limit=(resource.RLIMIT_FSIZE, 40))[0]
    expect("a write cut short", (cut, read("full.sh"), [n for n in os.listdir(tmp) if n.startswith(".")]), (1, LEGACY, []))
    # One system call failing at a time (strace injects the error; not write(), which the
    # sanitizers also call): a failed replacement leaves the file, and nothing beside it.
    os.mkdir(tmp + "/f")
    script, temporary = os.path.realpath(tmp) + "/f/s.sh", f"cannot write {os.path.realpath(tmp)}/f/.s.sh.XXXXXX"
    for fault, refusal in [("read:error=EINTR:when=1", ""), ("read:error=EIO", "cannot read s.sh"), ("fchown:error=EPERM", ""),
                           ("fsync:error=EIO", temporary), ("link:error=EIO", "cannot replace s.sh"),
                           ("rename:error=EIO", "cannot replace s.sh"), ("readlink:error=EIO", "cannot resolve s.sh")
                           ] if shutil.which("strace") else print("skipped: no strace to make system calls fail") or []:
        write("f/s.sh", LEGACY)
        done = subprocess.run(["strace", "-f", "-qq", "-o", "/dev/null", *["-P", script] * (fault.split(":")[0] in ("read", "readlink")), "-e", "inject=" + fault,
                               TOOL, "--script", "--in-place", "s.sh"], cwd=tmp + "/f", capture_output=True,
                              env={**os.environ, "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"})  # no leak check under ptrace
        summary = USAGE.format(f"{int(fault != 'read:error=EIO')} files read, {int(not refusal)} invocations translated, 0 left, 0 refused")
        expect(f"{fault} failing", (done.returncode, re.sub(r"\.s\.sh\.\w{6}", ".s.sh.XXXXXX", done.stderr.decode()), read("f/s.sh"), sorted(os.listdir(tmp + "/f"))),
               (1, USAGE.format(refusal + ": Input/output error") + summary, LEGACY, ["s.sh"]) if refusal else
               (0, summary, NEW, ["s.sh", "s.sh.orig"]))
        shutil.rmtree(tmp + "/f"), os.mkdir(tmp + "/f")
    # Changes 6 lines apart share a hunk, 7 apart do not; a comment added; no final line end;
    # a change on the first line.
    for script, hunks in [
            ("a\nb\nc\nd\ne\nf\ng\ntovak compare -l '#'\nh\ni\nj\nk\nl\ntovak co -F\nm\nn\no\np\nq\nr\ntovak co -\\F",
             ["@@ -5,13 +5,14 @@", "@@ -18,4 +19,4 @@"]),
            ("tovak co -F\na\nb\nc\nd\ne\n", ["@@ -1,4 +1,4 @@"])]:
        write("t ail.sh", script)
        code, diff, _ = tool(["--script", "--diff", "t ail.sh"], cwd=tmp)
        subprocess.run(["patch", "-s", "-p0"], input=diff.encode(), cwd=tmp, check=True)
        expect(f"--diff applied to {script!r}", (code, read("t ail.sh"), re.findall(r"^(?:@@|---|\+\+\+) .*", diff, re.M)),
               (2 if "'#'" in script else 0, tool(["--script", "-"], script)[1], ["--- t ail.sh\t", "+++ t ail.sh\t", *hunks]))
    write("crlf.sh", "tovak co -F\r\n")
    expect("CRLF", tool(["--script", "crlf.sh"], cwd=tmp), (2, "", USAGE.format("crlf.sh has CRLF line ends and is left unchanged")
                                                        + USAGE.format("1 files read, 0 invocations translated, 0 left, 0 refused")))
    os.mkdir(tmp + "/x y"), write("x y/tovak", "")
    translates = "legacy syntax, translates to: Fendix update compare --type fw --output /var/log/Zantor_Support/"
    # Each line of one script and what --check says of it, or None for nothing.
    rows = [("tovak co -l '#'", "left as it is: the Fendix line would hand '#' to the shell as syntax"), ("# tovak-translate: x", None),
            *[(f"{wrapper} tovak co -F | cat", translates) for wrapper in ["sudo", "exec", "command", "nohup", "time", "env"]],
            *[(line, translates) for line in ["echo $;tovak co -F", "case a in a) tovak co -F;; esac", "$9sudo tovak co -F", *(f"{text}; tovak co -F" for text in [
                'echo "$x" ${y:-\'a\'}', "echo ``", "x=`a\\b`", "y=`cat <f`", "echo ${x:-'}'}", "echo ${x:-''}", 'echo ${x:-"\\""}', 'echo ${x:-"}"}', "echo ${x:-a(}"])]],
            ("tovak co -F &>/dev/null &>>/dev/null", translates + " &>/dev/null &>>/dev/null"),
            *[(line, "mentions tovak") for line in ["echo '/x/tovak' # tovak", "echo ${y:-;tovak co }", "echo ${y:-$(echo };tovak co)}", "\\if tovak co",
                                                    "$sudo tovak co", 'echo "$$(tovak co)"', "echo $((1<<2)) tovak co", "echo ${x:-\\}$(tovak co)}"]],
            *[(line, "left as it is: inside a command substitution") for line in ['echo "$(tovak co)"', 'x=$(echo "\\")"; tovak co)', "echo `tovak co`", "x=`\\`;tovak co`"]],
            *[(line, "left as it is: a line continuation") for line in ["tovak co \\\n-F", "tovak co -l a\\\nb", 'tovak co -l "a\\\nb"']],
            *[(line, "left as it is: an unquoted glob character") for line in ["tovak co -l a? -l ~ -l a{b,c}", "tovak co -l a[b"]],
            *[(line, "left as it is: an unquoted brace") for line in ["tovak co -l a{b,c}", "tovak co -l a{b}c", "tovak co -l a}"]],
            ("tovak co -l ~ -l a{b,c}", "left as it is: an unquoted ~"), ("~/tovak co", "left as it is: an unquoted ~"),
            ("tovak co -l \"`x`\" $y", "left as it is: a backquote"), ("tovak co -l \"${y}\" `x`", "left as it is: a $ expansion"),
            ("./tovak co -F", "left as it is: a relative path to tovak: its directory depends on where the script runs"),
            ("/tovak co", "left as it is: cannot resolve /tovak: No such file or directory"),
            ("'/n\r\t\x01/tovak' co", "left as it is: cannot resolve /n\\r\\t\\x01/tovak: No such file or directory"),
            ("tovak co --fendix x", "refused by the library: The command parameters are not vaild!\\nIf the parameter starts with --, the next parameter should start with - or --."),
            (f"'{tmp}/x y/tovak' co", f"left as it is: the launcher refuses to run from {tmp}/x y/ (byte 0x20)"),
            ("tovak co -F 9<<E\n'\nE", "left as it is: a here-document on the invocation"), ("tovak co -l 'a b\nc'", "left as it is: it spans lines"),
            *[(f"tovak co -l {value}", f"left as it is: the Fendix line would hand '{byte}' to the shell as syntax")
              for value, byte in [("{", "{"), ("'a\tb'", "\\t"), ("'a b\\c'", "\\"), ("'a\rb'", "\\r"), ("'$a b'", "$"), ("'a b\"#'", '"'),
                                  ('"\\$\\a"', "$"), ('"\\a"', "\\"), ('"\\\0x"', "\\"), ('"\\$\0"', "$")]],
            ("tovak co -l 'a", "left as it is: an unterminated quote")]
    code, listed, _ = tool(["--script", "--check", "-"], "".join(line + "\n" for line, _ in rows))
    said = {int(number): reason for number, reason in re.findall(r"^-:(\d+): (.*)$", listed, re.M)}
    for n, (line, reason) in zip(itertools.accumulate([1] + [line.count("\n") + 1 for line, _ in rows]), rows):
        expect(f"--check of {line!r}", said.pop(n, None), reason)
    expect("--check: the status, and nothing more said", (code, said), (2, {}))
    # Here-documents quoted or not, of two lines; an invocation inside the program word of another, listed after it;
    # a continuation ahead of the program word.
    expect("delimiters", tool(["--script", "--check", "-"], 'cat <<"E"\nx\n$(tovak co)\nE\ncat <<E\na(tovak co)\n\\$(tovak co)\n$x$(tovak co)\n$$(tovak co)\nE\n'
                                                        '$(tovak co)/tovak\n\\\ntovak co -F\n')[:2],
           (2, "-:3: mentions tovak\n-:6: mentions tovak\n-:7: mentions tovak\n-:8: left as it is: inside a command substitution\n-:9: mentions tovak\n"
               f"-:11: left as it is: a $ expansion\n-:11: left as it is: inside a command substitution\n-:13: {translates}\n"))
    # tovak as a word of its own, not a piece of another name; an indent of a tab and a blank.
    words = ["tova  ;", "xtovak tovakx tovak- _tovak 9tovak tova  ;", "tovak", "tovak x", "tovakx", "xtovak tovak;"]
    expect("mentions", tool(["--script", "--check", "-"], 'cat <<"E"\n' + "".join(f"echo {w}\n" for w in words) + "E\n")[1],
           "-:4: mentions tovak\n-:5: mentions tovak\n-:7: mentions tovak\n")
    indented = '\t # tovak-translate: left as it is: the Fendix line would hand \'#\' to the shell as syntax\n\t tovak co -l "#"\n'
    expect("indented", [tool(["--script", "-"], text)[1] for text in ['\t tovak co -l "#"\n', indented]], [indented] * 2)
    for script, reason in [("y=$(case a in a) tovak co;; esac)", "a case statement inside a command substitution"),
                           ("$(cat <<E)/tovak co", "a here-document that begins inside a command substitution"),
                           ("y=`#`; tovak co", "a comment or here-document inside backquotes"),
                           ('echo "${x:-it\'s}"; tovak co', "a single quote inside ${...} within double quotes")]:
        expect(script, tool(["--script", "--check", "-"], script + "\n")[1], f"-:1: left as it is: after {reason}, where quoting cannot be followed\n")
    expect("one refusal", tool(["--script", "-"], "tovak co --fendix x\n")[0::2], (2, USAGE.format("1 files read, 0 invocations translated, 0 left, 1 refused")))
    for text, deep in [('$(echo "' * 99999, True), ("${a:-" * 64, False), ("${a:-" * 65, True)]:  # substitutions, and braces alone
        expect(f"nested: {text[:8]} {len(text)}", tool(["--script", "--check", "-"], "x=" + text), (int(deep), "", USAGE.format(
            "- is refused: expansions nested more than 64 deep") * deep + USAGE.format("1 files read, 0 invocations translated, 0 left, 0 refused")))
    if not ARGS.sanitized:
        huge = subprocess.run([TOOL, "--script", "-"], stdin=open("/dev/zero"), capture_output=True, preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (400 << 20,) * 2))
        expect("out of memory", (huge.returncode, huge.stderr), (1, b"tovak-translate: out of memory\n"))
    # Each file read, refused or failing to read (/proc/self/mem at 0: EIO), and each question to the library give back
    # the descriptors they took: 20 of each under a limit of 16, also with standard input closed, where the first is 0.
    files = ["/dev/null", tmp + "/bare.sh", "/proc/self/mem"] * 20
    for stdin, first in [("tovak co -L\n" * 40, ["-"]), (None, [])]:
        expect(f"descriptors, standard input {stdin and 'read' or 'closed'}", tool(["--script", *first, *files], stdin, limit=(resource.RLIMIT_NOFILE, 16)),
               tool(["--script", *first, *files], stdin or ""))
    # The library's questions give back descriptor 0 too: a - read after one finds it closed, not a copy of standard output.
    expect("- after a question", tool(["--script", "kept.sh", "-"], None, cwd=tmp), (1, NEW, USAGE.format("cannot read -: Bad file descriptor") +
                                                                                USAGE.format("1 files read, 1 invocations translated, 0 left, 0 refused")))
    expect("no descriptor to spare", tool(["co", "-F"], limit=(resource.RLIMIT_NOFILE, 4)), (1, "", USAGE.format("cannot catch the library's output: Too many open files")))
    # The scripts are flushed ahead of the summary.
    both = subprocess.run([TOOL, "--script", "-"], input=b"tovak co -F\n", stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout.decode()
    expect("summary last", both, NEW + USAGE.format("1 files read, 1 invocations translated, 0 left, 0 refused"))
    # Texts that end inside a quote, an expansion or a here-document, and one where quoting stops being certain
    # just after an invocation begins.
    expect("each alone", [tool(["--script", "--check", "-"], text)[:2] for text in ['tovak co "a\\', "echo `tovak co", "echo ${x", 'echo ${x:-"', "\"${x:-'}\"/tovak co", "cat <<E\nx",
                                                                          "echo ${x:-'}'}; tovak co -F"]],
           [(2, "-:1: left as it is: an unterminated quote\n"), (2, "-:1: left as it is: inside a command substitution\n"), (0, ""), (0, ""), (2, "-:1: left as it is: a $ expansion\n"), (0, ""), (2, f"-:1: {translates}\n")])

print("\n".join(failures) or "all passed")
sys.exit(1 if failures else 0)
