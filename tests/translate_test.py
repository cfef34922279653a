#!/usr/bin/env python3
# tovak-translate against the launcher: a hand-written script and a generated one are each
# run whole under dash and bash as written (through build/bin/tovak) and as rewritten; the
# stand-in Fendix logs every argument list and the scripts every status, and the logs must be
# identical. Then the README's example, line mode and the file options.
#
# usage: translate_test.py BIN_DIR SCRIPT README [--seed N] [--count N]
import argparse, concurrent.futures, hashlib, itertools, os, random, re, resource, shutil, signal
import subprocess, sys, tempfile
from pathlib import Path
from support.expectations import expect, failures, finish

parser = argparse.ArgumentParser()
parser.add_argument("bin"), parser.add_argument("script"), parser.add_argument("readme")
parser.add_argument("--seed", type=int, default=1), parser.add_argument("--count", type=int, default=500)
# A sanitizer cannot start under an address-space limit.
parser.add_argument("--sanitized", action="store_true")
ARGS = parser.parse_args()
BIN = os.path.realpath(ARGS.bin)
TOOL = os.path.join(BIN, "tovak-translate")
PRELUDE = 's() { echo "status $?" >>"$FENDIX_LOG"; }\nT=tovak\n'
# Passes the command through as sudo would, for the options the scripts give it.
SUDO = '#!/bin/sh\nwhile :; do case $1 in -[ugCDprtTU]) shift 2;; --) shift; break;; -*) shift;;\n' \
       '*=*) export "$1"; shift;; *) break;; esac; done\nexec "$@"\n'
PROGRAMS = "cat env nice timeout nohup ionice chrt taskset flock setsid stdbuf time grep sed sh dash".split()


def summary(read=1, translated=0, left=0, refused=0, mentions=0, readers=0, unchanged=0, assumable=0):
    return (f"tovak-translate: {read} files read, {translated} invocations translated, {left} left, "
            f"{refused} refused, {mentions} mentions, {readers} lines reading the launcher's lines, "
            f"{unchanged} files not rewritten, {assumable} more with --assume-plain-values\n")


def tool(arguments, stdin="", cwd=None, limit=None):  # stdin None: closed; limit: (resource, value)
    def child():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)  # past a file-size limit, a write fails instead
        if stdin is None:
            os.close(0)
        if limit:
            resource.setrlimit(limit[0], (limit[1], limit[1]))
    # Files open for reading too.
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        code = subprocess.run([TOOL, *arguments], input=None if stdin is None else stdin.encode(),
                              stdout=out, stderr=err, cwd=cwd, preexec_fn=child).returncode
        return code, *(file.seek(0) or file.read().decode(errors="replace") for file in (out, err))


def check(text, *options):
    return tool(["--script", "--check", *options, "-"], text)


def run_log(shell, text, tmp):
    # A run is a function of the shell, the script and the programs it starts, so the mutation
    # script, whose faults in tovak-translate change none of those programs, keeps the logs.
    cache = os.environ.get("TOVAK_TRANSLATE_TEST_CACHE")
    if not cache:
        return run_log_afresh(shell, text, tmp)
    programs = b"".join(Path(BIN, program).read_bytes() for program in ["tovak", "libtovak.so", "Fendix"])
    key = f"{shell}\0{SUDO}\0{text.replace(tmp, '@TMP@')}".encode() + programs
    kept = Path(cache, hashlib.sha256(key).hexdigest())
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
    for name in ["tovak", "Fendix"]:
        os.symlink(f"{BIN}/{name}", f"{home}/path/{name}")
    for name in PROGRAMS:
        os.symlink(shutil.which(name), f"{home}/path/{name}")
    Path(home, "path/sudo").write_text(SUDO), os.chmod(home + "/path/sudo", 0o755)
    # stdbuf preloads a library ahead of a sanitizer's runtime.
    env = {"PATH": home + "/path", "HOME": home, "FENDIX_LOG": home + "/log", "TOVAK_NO_SYSLOG": "1",
           "ASAN_OPTIONS": "verify_asan_link_order=0"}
    Path(home, "script").write_text(text)
    done = subprocess.run([shutil.which(shell), "script"], cwd=home, env=env, stdin=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=600)
    return Path(home, "log").read_bytes().replace(home.encode(), b"~") + f"exit {done.returncode}\n".encode()


# wanted: the exact counts of translated, left and refused invocations, or the least number
# translated; calls: how many the script makes, every one of which must be counted. With a
# seed, --assume-plain-values, each shell's run given fresh plain values for the variables
# V0..V2 (anywhere) and W0, W1 (in --update-args). A crontab's entries are run by dash -c, as
# cron runs them, one after the other.
def prove(label, text, wanted, calls=None, seed=None, crontab=False):
    options = ["--assume-plain-values"] * (seed is not None) + ["--crontab"] * crontab
    r, shells = random.Random(seed), ["dash"] if crontab else ["dash", "bash"]
    def runner(t):  # the commands of the entries "* * * * * root COMMAND", read back one by one
        commands = [line[15:] for line in t.splitlines() if line.startswith("* ")]
        return (PRELUDE + "cat >\"$HOME/cmds\" <<'EOT_CMDS'\n" + "\n".join(commands) + "\nEOT_CMDS\n" +
                "".join(f'dash -c "$(sed -n {k}p "$HOME/cmds")"; s\n' for k in range(1, len(commands) + 1)))
    with tempfile.TemporaryDirectory() as tmp:
        os.mkdir(tmp + "/link")
        os.symlink(BIN + "/tovak", tmp + "/link/tovak")
        text = PRELUDE * (not crontab) + text.replace("@BIN@", BIN).replace("@LINK@", tmp + "/link")
        code, rewritten, summary = tool(["--script", *options, "-"], text)
        counts = re.search(r"(\d+) invocations translated, (\d+) left, (\d+) refused", summary)
        counted = tuple(int(n) for n in counts.groups()) if counts else (0, 0, 0)
        if counted != wanted if isinstance(wanted, tuple) else counted[0] < wanted:
            return failures.append(f"{label}: {counted} invocations translated, left, refused; wanted {wanted}")
        if calls is not None:
            expect(f"{label}: no call missed in silence", sum(counted), calls)
        expect(f"{label}: rewritten again", tool(["--script", *options, "-"], rewritten)[1], rewritten)
        # --check lists each invocation the summary counts; the status says whether any is left.
        listed = tool(["--script", "--check", *options, "-"], text)[1]
        kinds = ("legacy syntax, translates to", "left as it is:", "refused by")
        expect(f"{label}: --check and the status agree with the summary",
               [listed.count(f": {kind}") for kind in kinds] + [code], [*counted, 2 if counted[1] + counted[2] else 0])
        values = {shell: "".join(f"{name}='{plain(r, name[0] == 'V')}'\n" for name in "V0 V1 V2 W0 W1".split())
                  * (seed is not None) for shell in shells}
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            runs = {(shell, t): pool.submit(run_log, shell, values[shell] + (runner(t) if crontab else t), tmp)
                    for shell in shells for t in [text, rewritten]}
        for shell in shells:
            expect(f"{label} under {shell} with\n{values[shell]}", runs[shell, rewritten].result(),
                   runs[shell, text].result())
        print(f"{label}: {counts[1]} invocations rewritten, {counts[2]} left, {counts[3]} refused")


# A plain value: letters, digits and _/.:@%+ (and "," where the library copies the value
# whole), "-" after the first byte but never two in a row; "all" now and then.
def plain(r, comma):
    value = r.choice(first := "abcXYZ019_/.:@%+" + "," * comma)
    for _ in range(r.randrange(12)):
        value += r.choice(first + "-" * (value[-1] != "-"))
    return "all" if r.random() < .1 else value


COMPARE = "-F -D -L -s -u --xml --noinventory -l -f -o -e -i -m --host= --update-args= --vmware-esxi=".split()
ACQUIRE = ("-L -r --xml --meta-only --ignore-req --no-proxy -u -l -i -m -o --proxy-address= --proxy-user= "
           "--proxy-port=").split()
OPTIONS = {"compare": COMPARE, "up": COMPARE, "ac": ACQUIRE,
           "qk": "-s --vq-address= --vq-user= --vq-password=".split()}
VALUED = "-l -f -o -e -i -m".split()
VALUES = ["/srv/repo", "7X21", "1,2", "all", "a b", "", "x", "10.0.0.1"]
# A lone "&" would start Fendix in the background, and the log's order with it.
CHARS = [*" ,.:@%=+-_;|<>(){}$`\\*?[]~#\"'!\t\n", "&&"]
WRAPS = ["{}", "({})", "{{ {}; }}", "if {}; then :; fi", "{} && :", "{} || :", "{} | cat >/dev/null",
         "{} >/dev/null 2>&1", "{} # c", "x=$({})", 'echo {} >>"$FENDIX_LOG"', "cat <<'EOT' >>\"$FENDIX_LOG\"\n{}\nEOT",
         '{} >>"$HOME/out" 2>"$HOME/err" <"$FENDIX_LOG"', "{} <<E\nin\nE", "case x in (tovak|y) :;; x) {};; esac",
         '{} >"$HOME/o"; grep -c "return code" "$HOME/o" >>"$FENDIX_LOG"',
         '{} | grep -c "translated command" >>"$FENDIX_LOG"']
# Wrappers as operators write them; the last three are left.
PREFIXES = ["", "", "env ", "command ", "nice ", "! ", "A=1 ", "sudo -u fw nice -n 10 ", "sudo -E -- ",
            'env -u X B="$HOME" ', "timeout 60 ", "timeout -s KILL -k 5 60 ", "nohup ", "ionice -c3 ",
            "chrt -b 0 ", "taskset -c 0 ", "flock lock ",
            "setsid -w ", "stdbuf -oL ", "time -p ", "nice -5 ", "sudo -i ", "timeout -s INT 60 ", "$NOTHING "]
DECOYS = ["command -v tovak >/dev/null", "echo tovak >/dev/null", "case tovak in tovak) :;; esac"]


def quote(r, word):
    way = r.randrange(4)
    if way == 0 and "'" not in word:
        return f"'{word}'"
    if way == 1:
        return '"' + re.sub(r'([$`"\\])', r"\\\1", word) + '"'
    if way == 2 or not re.fullmatch(r"[\w,.:@%=+/-]+", word):
        return "".join(c if c.isalnum() else "'\n'" if c == "\n" else "\\" + c for c in word)
    return word


# The script, how many calls it makes (the echoed and here-document lines make none), and its
# commands of one line each.
def generate(r, count):
    lines, calls, commands = [], 0, []
    for _ in range(count):
        words = [quote(r, command := r.choice(list(OPTIONS)))]
        for _ in range(r.randrange(5)):
            option, value = r.choice(OPTIONS[command]), r.choice(VALUES)
            if r.random() < .15:  # a byte the shell may read as syntax once joined
                at = r.randint(0, len(value))
                value = value[:at] + r.choice(CHARS) + value[at:]
            if option == "--update-args=" and r.random() < .3:  # credentials from variables
                words.append('--update-args="--user=$W0,--password=${W1}"')
            elif (option in VALUED or option.endswith("=")) and r.random() < .2:  # a value from one
                value = r.choice(['"$V{}"', "$V{}", '"${{V{}}}/x"', "a${{V{}}}"]).format(r.randrange(3))
                words += [quote(r, option) + value] if option.endswith("=") else [quote(r, option), value]
            else:
                words += [quote(r, w) for w in ([option + value] if option.endswith("=") else
                                                 [option, value] if option in VALUED else [option])]
        # Continued between words now and then.
        line = "".join(r.choice([" "] * 9 + [" \\\n  "]) + w for w in words)
        line += r.choice(["", "", "", "", "", "", "", "", "", ' "$HOME"', " *"])
        launcher = r.choice(["tovak", "tovak", "@BIN@/tovak", "@LINK@/tovak", "'tovak'", '"$T"'])
        wrap = r.choice(WRAPS)
        calls += not wrap.startswith(("echo", "cat <<"))
        lines.append(wrap.format(f"{r.choice(PREFIXES)}{launcher}{line}") + "\ns\n")
        commands += [lines[-1][:-3]] * ("\n" not in lines[-1][:-3])
        if r.random() < .05:
            lines.append(r.choice(DECOYS) + "\n")
    return "".join(lines), calls, commands


prove("hand-written script", Path(ARGS.script).read_text(), (30, 16, 1), 47)
# CI's seed pinned whole: a line newly left or refused is a change of reach, not only of proof.
GENERATED = generate(random.Random(ARGS.seed), ARGS.count)
prove(f"generated script (seed {ARGS.seed})", GENERATED[0],
      (115, 293, 32) if (ARGS.seed, ARGS.count) == (1, 500) else ARGS.count // 5, GENERATED[1])
prove(f"generated crontab (seed {ARGS.seed})", "T=tovak\n" + "".join(f"* * * * * root {c}\n" for c in GENERATED[2]),
      (89, 189, 18) if (ARGS.seed, ARGS.count) == (1, 500) else ARGS.count // 20,
      sum(not command.startswith("echo") for command in GENERATED[2]), crontab=True)
prove(f"generated script (seed {ARGS.seed}), plain values", GENERATED[0],
      (148, 244, 48) if (ARGS.seed, ARGS.count) == (1, 500) else ARGS.count // 5, GENERATED[1], ARGS.seed)
prove("hand-written script, plain values", Path(ARGS.script).read_text(), (31, 15, 1), 47, ARGS.seed)

# The README's before and after.
section = Path(ARGS.readme).read_text().split("## Moving scripts to Fendix")[1]
blocks = re.findall(r"```sh\n(.*?)```", section, re.S)
expect("README example", tool(["--script", "-"], blocks[0])[1], blocks[1])
usage = tool(["--help"])
expect("README --help", (usage[0], "$ tovak-translate --help\n" + usage[1]),
       (0, re.findall(r"```text\n(.*?)```", section, re.S)[0]))
expect("no arguments", tool([]), (1, "", usage[1]))
full = subprocess.run([TOOL, "co", "-F"], stdout=open("/dev/full", "w"), stderr=subprocess.PIPE)
expect("a full disk", (full.returncode, full.stderr), (1, b"tovak-translate: cannot write standard output\n"))

USAGE = "tovak-translate: {}\n"
for arguments, wanted in [
        (["compare", "-F", "-L"],
         (0, "Fendix update compare --type fw --scope latest --output /var/log/Zantor_Support/\n", "\n")),
        (["acquire", "--proxy-user=a"], (1, "", "The parameter: --proxy-address need specify. \n")),
        *[(words, (2, f"Fendix update {line} --output /var/log/Zantor_Support/\n",
                   USAGE.format(f"the shell would read byte {byte} of this line as syntax")))
          for words, line, byte in [(["co", "-l", "a;b", "-F"], "compare --type fw --dir a;b", "0x3b (';')"),
                                    (["co", "-l", "a\tb"], "compare --dir a\tb", "0x09"),
                                    (["ac", "-l", "#x"], "acquire --dir #x", "0x23 ('#')")]],
        (["co", "-l", "a b", "-F"],
         (0, 'Fendix update compare --type fw --dir "a b" --output /var/log/Zantor_Support/\n', "")),
        (["co", "-l", "a#b"], (0, "Fendix update compare --dir a#b --output /var/log/Zantor_Support/\n", "")),
        (["--script", "--fendix=/o/F", "-"],
         (0, "/o/F update compare --type fw --output /var/log/Zantor_Support/\n", summary(translated=1))),
        (["--", "--version"], (1, "", "The command: --version is not supported.\n")),
        (["--fendix", "/o/F"], (1, "", "Please specify the command!\n")),
        (["--version"], (0, "tovak-translate 1.0.0\n", "")),
        (["--diff", "x"],
         (1, "", USAGE.format("--diff, --in-place, --check and --no-backup go with --script or --crontab"))),
        (["--script", "--diff", "--check", "-"], (1, "", USAGE.format("choose one of --diff, --in-place and --check"))),
        (["--script", "--in-place", "-"], (1, "", USAGE.format("standard input cannot be rewritten in place"))),
        (["--script", "--no-backup", "-"], (1, "", USAGE.format("--no-backup goes with --in-place"))),
        (["--script"], (1, "", USAGE.format("--script needs a file, or - for standard input"))),
        (["--fendix", "a;b", "co"], (1, "", USAGE.format("--fendix a;b holds a byte the shell would read as syntax"))),
        (["--bogus"], (1, "", USAGE.format("unknown option --bogus"))),
        (["--script", "-", "--fendix"], (1, "", USAGE.format("--fendix needs a name"))),
        (["--script", "/dev/null"], (1, "", USAGE.format("cannot read /dev/null: not a regular file") + summary(0))),
        (["--script", "/none"], (1, "", USAGE.format("cannot read /none: No such file or directory") + summary(0)))]:
    expect(" ".join(arguments), tool(arguments, "tovak co -F\n"), wanted)

# The scripts of the issue that found what operators write: wrappers with options, an
# expansion in a redirection target, a case pattern, CRLF line ends (written through).
FENDIX_CO = "Fendix update compare --type fw --output /var/log/Zantor_Support/"
for label, script, wanted in [
        ("a case pattern", "case $1 in\n  tovak) echo legacy ;;\nesac\n",
         (0, "case $1 in\n  tovak) echo legacy ;;\nesac\n", summary(mentions=1))),
        ("CRLF", "tovak co -F -l /srv/repo\r\n", (2, "tovak co -F -l /srv/repo\r\n",
                                                 USAGE.format("- has CRLF line ends and is left unchanged") +
                                                 summary(unchanged=1))),
        ("continued", "  tovak co \\\n    -F \\\n    -l /srv >/dev/null; s\n",
         (0, "  Fendix update compare --type fw \\\n    --dir /srv \\\n    --output /var/log/Zantor_Support/"
             " >/dev/null; s\n", summary(translated=1))),
        ("continued more than it has options", "tovak \\\n\\\n\\\nco -F\n",
         (0, "Fendix update \\\ncompare --type \\\nfw \\\n--output /var/log/Zantor_Support/\n",
          summary(translated=1))),
        ("no tovak, CRLF and nesting", "x=${a:-" * 70 + "\r\n", (0, "x=${a:-" * 70 + "\r\n", summary()))]:
    expect(label, tool(["--script", "-"], script), wanted)

# Crontabs: the command field rewritten as a script line, every other byte kept; an entry with
# a % left; every entry after a SHELL other than /bin/sh left; a user's crontab from standard input.
CRON = ("# jobs\nMAILTO=ops\n15 2 * * *\troot\ttovak co -F >>/l 2>&1\n@daily  root  tovak co -F\n"
        "0 3 * * * root tovak co -F >/o-$(date +\\%F)\n1 * * * * root echo tovak\n"
        "2 * * * * root sudo -u fw nice -n 5 tovak co -F\n3 * * * * root ls\nSHELL = '/bin/bash'\n"
        "4 * * * * root tovak co -F; tovak co -D\n")
PERCENT = ("# tovak-translate: left as it is: a % in the command, which cron turns into a line break and "
           "standard input\n")
BASH = "# tovak-translate: left as it is: SHELL=/bin/bash, and the tool proves its rewrites under sh\n"
for label, arguments, text, wanted in [
        ("a system crontab", ["--crontab", "-"], CRON, (2, CRON.replace("tovak co -F >>", FENDIX_CO + " >>").replace(
            "  tovak co -F\n", f"  {FENDIX_CO}\n").replace("0 3", PERCENT + "0 3")
            .replace("5 tovak co -F", "5 " + FENDIX_CO)
            .replace("4 *", BASH + "4 *"), summary(translated=3, left=3, mentions=1))),
        ("a user's crontab", ["--crontab", "--crontab-user", "-"], "0 1 * * * tovak co -F\n@reboot  tovak co -F\n",
         (0, f"0 1 * * * {FENDIX_CO}\n@reboot  {FENDIX_CO}\n", summary(translated=2))),
        ("a user's crontab read as a system one", ["--crontab", "-"], "0 6 * * * tovak co -F\n",
         (2, "# tovak-translate: left as it is: tovak stands in the user field, so this looks like a user's crontab, "
             "which --crontab-user reads\n0 6 * * * tovak co -F\n", summary(left=1))),
        ("in place, no backup directory", ["--crontab", "--in-place", "x"], "", (1, "", USAGE.format(
            "with --crontab, --in-place needs --backup-dir DIR or --no-backup, as a cron daemon may run a FILE.orig "
            "beside the crontab as well"))),
        ("--crontab-user alone", ["--script", "--crontab-user", "-"], "",
         (1, "", USAGE.format("--crontab-user goes with --crontab"))),
        ("--backup-dir alone", ["--crontab", "--backup-dir=/", "-"], "", (1, "", USAGE.format(
            "--backup-dir goes with --crontab --in-place")))]:
    expect(label, tool(arguments, text), wanted)

# --assume-plain-values: what is translated, what stays left and why; without it the same calls
# are left as before, each saying what it would become.
ISSUE = 'tovak update -F -l "$REPO" --host=$h --update-args="--user=$U,--password=${P}"\n'
BECOMES = ('Fendix update flash --type fw --dir "$REPO" --vek "$U:$P@$h" --output /var/log/Zantor_Support/')
plain_left = "left as it is: {}"
for label, text, wanted in [
        ("the example", ISSUE, f"-:1: legacy syntax, translates to: {BECOMES}\n"),
        ("next to a name byte", 'tovak co -m ${M}x -l "$B"/r', "-:1: legacy syntax, translates to: Fendix update "
         'compare --dir "$B/r" --mt "${M}x" --output /var/log/Zantor_Support/\n'),
        ("IFS= a call's word, not set", "tovak co - IFS=\ntovak co -l $X", "-:1: legacy syntax, translates to: Fendix "
         'update compare --output /var/log/Zantor_Support/\n-:2: legacy syntax, translates to: Fendix update compare '
         '--dir "$X" --output /var/log/Zantor_Support/\n'),
        *[(line, line, f"-:1: {plain_left.format(why)}\n") for line, why in [
            ('tovak co -e "$X"', "an expansion in the value of -e, which the library compares with all"),
            ("tovak co --exclude=$X", "an expansion in the value of -e, which the library compares with all"),
            ("tovak co $O", "an expansion that may stand for an option"),
            ("tovak co -F -$O", "an expansion in an option's name"),
            ("tovak co --$O=1", "an expansion in an option's name"),
            ("IFS=,; tovak co -l $X", "an unquoted expansion in a script that sets IFS"),
            ("tovak IFS=$x -F", "an expansion in the command word"),
            ('tovak co -l "$X" $Y  # IFS= in a comment sets nothing', "an expansion that may stand for an option"),
            ('tovak co -l "$(x)"', "a $ expansion"), ('tovak co -l "$@"', "a $ expansion"),
            ("tovak co -l $X*", "a $ expansion"), ("tovak co -l `x`", "a backquote"),
            *((line, "a word holds 'PlainValue', the text the tool asks the library with in place of an "
                     "expansion") for line in ['tovak co -l "$X" -m PlainValue0Z', 'tovak co -l "$aPlainValue0Z"']),
            ('tovak co -l "$return code"', "a value holds 'return code', which would make its Fendix line a line "
                                           "reading the launcher's lines")]]]:
    expect(f"--assume-plain-values: {label}", check(text, "--assume-plain-values")[1], wanted)
expect("without --assume-plain-values", tool(["--script", "-"], ISSUE),
       (2, f"# tovak-translate: left as it is: a $ expansion; with --assume-plain-values: {BECOMES}\n" + ISSUE,
        summary(left=1, assumable=1)))
# Values outside the class: the differences the manual lists (nothing run, or another line).
for value, same in [("", False), ("-x", False), ("a;b", False), ("a\tb", False), ("a b", True), ("x", True)]:
    with tempfile.TemporaryDirectory() as tmp:
        text = PRELUDE + f"R='{value}'\ntovak co -F -l \"$R\"; s\n"
        rewritten = tool(["--script", "--assume-plain-values", "-"], text)[1]
        expect(f"the value {value!r}", run_log("dash", rewritten, tmp) == run_log("dash", text, tmp), same)

LEGACY, NEW = "tovak compare -F\n", FENDIX_CO + "\n"  # a change on the first line
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
    write("kept.sh", LEGACY), write("kept.sh.orig", "old"), write("bare.sh", LEGACY)
    write("same.sh", NEW + "cat <<E\n")
    expect("two scripts", tool(["--script", "kept.sh", "bare.sh"], cwd=tmp)[1], NEW * 2)
    for arguments, stdin in [(["link.sh", "same.sh"], ""), (["link.sh"], ""), (["--no-backup", "bare.sh"], None)]:
        expect(f"--in-place {arguments}", tool(["--script", "--in-place", *arguments], stdin, cwd=tmp)[0], 0)
    expect("through the link", (os.path.islink(tmp + "/link.sh"), read("real.sh"), read("real.sh.orig"),
                                oct(os.stat(tmp + "/real.sh").st_mode & 0o7777), owner()),
           (True, NEW, LEGACY, "0o741", owned))
    expect("refused for its backup",
           (tool(["--script", "--in-place", "kept.sh"], cwd=tmp)[0::2], read("kept.sh"), read("kept.sh.orig")),
           ((1, USAGE.format(f"{os.path.realpath(tmp)}/kept.sh.orig exists already; kept.sh is left unchanged") +
             summary()), LEGACY, "old"))
    expect("left alone", sorted(os.listdir(tmp)),
           ["bare.sh", "kept.sh", "kept.sh.orig", "link.sh", "real.sh", "real.sh.orig", "same.sh"])
    # The backup on another file system where there is one (a copy, not a link), standard input closed.
    os.mkdir(tmp + "/cron.d"), write("cron.d/job", "* * * * * root " + LEGACY)
    kept = tempfile.mkdtemp(dir="/dev/shm" if os.path.isdir("/dev/shm") else tmp)
    in_place = ["--crontab", "--in-place", "--backup-dir", kept, "cron.d/job"]
    expect("a crontab in place", (tool(in_place, None, cwd=tmp)[0], os.listdir(tmp + "/cron.d"), read("cron.d/job"),
                                  Path(kept, "job.orig").read_text()),
           (0, ["job"], "* * * * * root " + NEW, "* * * * * root " + LEGACY))
    shutil.rmtree(kept)
    write("x" * 250, LEGACY)  # too long a name for the temporary file beside it
    expect("no temporary file", tool(["--script", "--in-place", "x" * 250], cwd=tmp)[0::2], (1, USAGE.format(
        f"cannot create a temporary file beside {os.path.realpath(tmp)}/{'x' * 250}: File name too long") + summary()))
    write("full.sh", LEGACY)  # the disk fills up part way through the rewritten file
    cut = tool(["--script", "--in-place", "--no-backup", "full.sh"], cwd=tmp, limit=(resource.RLIMIT_FSIZE, 40))[0]
    expect("a write cut short", (cut, read("full.sh"), [n for n in os.listdir(tmp) if n.startswith(".")]),
           (1, LEGACY, []))
    # One system call failing at a time (strace injects the error; not write(), which the
    # sanitizers also call): a failed replacement leaves the file, and nothing beside it.
    os.mkdir(tmp + "/f")
    script, temporary = os.path.realpath(tmp) + "/f/s.sh", f"cannot write {os.path.realpath(tmp)}/f/.s.sh.XXXXXX"
    faults = [("read:error=EINTR:when=1", ""), ("read:error=EIO", "cannot read s.sh"), ("fchown:error=EPERM", ""),
              ("fsync:error=EIO", temporary), ("link:error=EIO", "cannot replace s.sh"),
              ("rename:error=EIO", "cannot replace s.sh"), ("readlink:error=EIO", "cannot resolve s.sh")]
    if not shutil.which("strace"):
        faults = print("skipped: no strace to make system calls fail") or []
    for fault, refusal in faults:
        write("f/s.sh", LEGACY)
        only = ["-P", script] * (fault.split(":")[0] in ("read", "readlink"))
        # No leak check under ptrace.
        env = {**os.environ, "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}
        done = subprocess.run(["strace", "-f", "-qq", "-o", "/dev/null", *only, "-e", "inject=" + fault,
                               TOOL, "--script", "--in-place", "s.sh"], cwd=tmp + "/f", capture_output=True, env=env)
        said = re.sub(r"\.s\.sh\.\w{6}", ".s.sh.XXXXXX", done.stderr.decode())
        counts = summary(int(fault != "read:error=EIO"), int(not refusal))
        expect(f"{fault} failing", (done.returncode, said, read("f/s.sh"), sorted(os.listdir(tmp + "/f"))),
               (1, USAGE.format(refusal + ": Input/output error") + counts, LEGACY, ["s.sh"]) if refusal else
               (0, counts, NEW, ["s.sh", "s.sh.orig"]))
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
        expect(f"--diff applied to {script!r}",
               (code, read("t ail.sh"), re.findall(r"^(?:@@|---|\+\+\+) .*", diff, re.M)),
               (2 if "'#'" in script else 0, tool(["--script", "-"], script)[1],
                ["--- t ail.sh\t", "+++ t ail.sh\t", *hunks]))
    os.mkdir(tmp + "/x y"), write("x y/tovak", "")
    translates = "legacy syntax, translates to: " + FENDIX_CO
    later = "left as it is: tovak is run later by {}, from its words or a text, which the tool does not rewrite"
    option = "left as it is: {}: an option that may change what runs, which the tool does not follow"
    # Each line of one script and what --check says of it, or None for nothing.
    rows = [
        ("tovak co -l '#'", "left as it is: the Fendix line would hand '#' to the shell as syntax"),
        ("# tovak-translate: x", None),
        ("echo xtovak tovakx tovak- _tovak 9tovak tova  ;", None),  # tovak as a word of its own only
        *[(f"{wrapper} tovak co -F | cat", translates) for wrapper in [
            "sudo", "exec", "command", "nohup", "time", "env", "sudo -u fw -E -- nice -n 10 -5", "sudo -ufw -- A=1",
            "env -i -u X -- A=1", "env - -C / --unset=Y", "timeout -s 15 --kill-after=5 1m", "timeout -sKILL 1",
            "ionice -c 3 -t", "chrt -b -R 0", "taskset -c 0-3", "flock -x -w 5 /l", "setsid -f", "stdbuf -o L -eL",
            "/usr/bin/time -p", "command -p", "nice -10", "/usr/bin/sudo -n", 'sudo -u "$U"', "nice --adjustment=1",
            "sudo 2>/dev/null", *(f"timeout -s {signal} 1" for signal in "TERM SIGTERM 9 SIGKILL".split()),
            # Every option each wrapper's grammar knows.
            "sudo -AEHknPSB -uu -gg -C3 -D/ -pp -rr -tt -T1 -Uu --askpass --preserve-env --set-home --non-interactive "
            "--preserve-groups --stdin --bell --reset-timestamp --user=u --group g --close-from=3 --chdir=/ --prompt=p "
            "--role=r --type=t --command-timeout=1 --other-user=u",
            "env -i0v -uX -C/ --ignore-environment --null --debug --unset=X --chdir /",
            "timeout -v --preserve-status --verbose --signal=TERM 1", "ionice -n7 --ignore --class 3 --classdata=7",
            "chrt -bdfioRrva -T1 -P1 -D1 --batch --deadline --fifo --idle --other --rr --reset-on-fork --verbose "
            "--all-tasks --sched-runtime=1 --sched-period=1 --sched-deadline=1 0",
            "taskset -ca --cpu-list --all-tasks 0", "setsid -cfw --ctty --fork --wait",
            "flock -sxenuoF -w1 -E1 --shared --exclusive --unlock --nonblock --nb --close --no-fork --verbose "
            "--timeout=1 --wait 1 --conflict-exit-code=1 /l",
            "stdbuf -i0 -oL -eL --input=0 --output=L --error=L",
            "time -apqv -fx -oy --append --portability --quiet --verbose --format=x --output=y"]],
        *[(f"{wrapper} tovak co", option.format(name)) for wrapper, name in [
            ("sudo -i", "sudo -i"), ("sudo -Q", "sudo -Q"), ("env -S x", "env -S"), ("exec -a x", "exec -a"),
            ("timeout --foreground 1", "timeout --foreground"), ("timeout -sINT 1", "timeout -s INT"),
            ("nice --adj=1", "nice --adj"), ("sudo --user=fw --login", "sudo --login"),
            ("timeout -s'x\ty' 1", "timeout -s x\\ty")]],
        *[(line, f"left as it is: {why}") for line, why in [
            ("nice $N tovak co", "an expansion among the options of nice"),
            ("env A=$x tovak co", "an unquoted expansion among the words of env"),
            ("timeout $T tovak co", "an expansion among the options of timeout"),
            ("timeout 1 $N tovak co", "the program before tovak is a $ expansion"),
            ("$9sudo tovak", "the program before tovak is a $ expansion"),
            ("tovak co -l 'a b\nc'", "it spans lines"),
            ("~/tovak co", "an unquoted ~"), ("tovak co -l ~ -l a{b,c}", "an unquoted ~"),
            ("tovak co -l \"`x`\" $y", "a backquote"), ("tovak co -l \"${y}\" `x`", "a $ expansion"),
            ("/tovak co", "cannot resolve /tovak: No such file or directory"),
            ("./tovak co -F", "a relative path to tovak: its directory depends on where the script runs")]],
        *[(line, later.format(runner)) for line, runner in [
            ("sh -c 'tovak co -F'", "sh"), ("dash -c 'x \"tovak\" y'", "dash"), ("bash -c 'x; /opt/tovak co'", "bash"),
            ("ssh host tovak co", "ssh"), ("xargs -n1 tovak co", "xargs"), ("find . -execdir tovak co {} +", "find"),
            ('eval "tovak co $A"', "eval"), ("trap 'tovak co' EXIT", "trap"), ("su - fw -c 'tovak co'", "su"),
            ("watch tovak co", "watch"),
            ("flock /l -c 'tovak co'", "flock -c"), ("sudo runuser -u fw -- tovak co", "runuser"),
            *((f"{runner} x tovak", runner) for runner in ["ksh", "zsh", "parallel", "at", "batch", "script", "nsenter",
                                                          "chroot", "unshare", "systemd-run", "doas", "pkexec"])]],
        *[(line, "left as it is: runs tovak through $T, whose value is known only when the script runs")
          for line in ["$T co -F", '"${T}" co', "sudo -- $T co"]],
        # Set through an expansion, or by a for loop; run by a runner, or by a program not known.
        ("X=${X:-/b/tovak} Y=$(command -v tovak) C='tovak co' && for v in a tovak; do :; done", "mentions tovak"),
        *[(f"{line} co", f"left as it is: runs tovak through ${name}, whose value is known only when the script "
                         "runs") for line, name in [("$X", "X"), ('"$Y"', "Y"), ("$v", "v")]],
        ('eval "$C"', later.format("eval")),
        *[(line, f"left as it is: tovak is among the words of {name}, a program the tool does not know, which "
                 "may run it") for line, name in [("run tovak co -F", "run"), ('retry 3 "$T" co', "retry"),
                                                  ("tmux new 'tovak co -F'", "tmux"), ("\\if tovak co", "if")]],
        *[(line, "mentions tovak") for line in ["echo tovak co -F", "[ -x /b/tovak ] && [[ -x /b/tovak ]]",
                                                "1a=3 tovak co"]],
        ("function fw { tovak co -F; }", translates),
        *[(line, "mentions tovak") for line in ["run 'tovak x ' co", "case x y tovak co", "echo tovak=1"]],
        ("tmux new 'tovak\nco -F'", "left as it is: tovak is among the words of tmux, a program the tool does not "
                                     "know, which may run it"),
        *[(line, None) for line in ["run x co", 'sh -c "$y"', "alias tovakx=1", 'run "" co', "run a$T co"]],
        *[(line, translates) for line in [
            "echo $;tovak co -F", "tovak c\0o -F", "case a in a) tovak co -F;; esac",
            "case a in (x|tovak) :;; a) tovak co -F;; esac",
            *(f"{text}; tovak co -F" for text in [
                'echo "$x" ${y:-\'a\'}', "echo ``", "x=`a\\b`", "y=`cat <f`", "echo ${x:-'}'}", "echo ${x:-''}",
                'echo ${x:-"\\""}', 'echo ${x:-"}"}', "echo ${x:-a(}", "for x in tovak", "f() { :; }"])]],
        ("tovak co -F &>/dev/null &>>/dev/null", translates + " &>/dev/null &>>/dev/null"),
        ("(tovak co -F | cat)", translates),  # the pipeline ends with its subshell, before the next line
        ("echo return code", "reads the launcher's own lines ('return code'), which a Fendix line does not print"),
        ('tovak co -F >>"$L" 2>"$E" <"$I" <<<$x', translates + ' >>"$L" 2>"$E" <"$I" <<<$x'),
        ("tovak co \\\n-F", translates), ("tovak co -F 9<<E\n'\nE", translates + " 9<<E"),
        ("X=$x PATH=$P:/b tovak co -F", translates),
        ("tovak co -l 'return code'", "left as it is: a value holds 'return code', which would make its Fendix line a "
                                      "line reading the launcher's lines"),
        *[(line, "mentions tovak") for line in [
            "echo '/x/tovak' # tovak", "echo ${y:-;tovak co }", "echo ${y:-$(echo };tovak co)}",
            'echo "$$(tovak co)"', "echo $((1<<2)) tovak co", "echo ${x:-\\}$(tovak co)}", "command -v tovak",
            "command -V tovak", "sudo -l tovak co", "sudo --list tovak", "ionice -p 1 tovak", "chrt -p 1 tovak",
            "taskset -p 1 tovak", "type tovak", "case tovak in tovak|x) :;; (tovak) :;; esac",
            "for x in tovak; do :; done", "find . -name tovak", "T=tovak", "ssh h ls; echo tovak",
            "echo xtovak tovak;",
            *(f"{wrapper} tovak" for wrapper in ["sudo -V", "sudo --validate", "sudo --remove-timestamp", "sudo --edit",
                                                 "ionice -u1", "ionice --pid 1", "ionice --pgid 1", "ionice --uid 1",
                                                 "chrt -m", "chrt --pid 1", "chrt --max", "taskset --pid 1"])]],
        *[(line, "left as it is: inside a command substitution") for line in [
            'echo "$(tovak co)"', 'x=$(echo "\\")"; tovak co)', "echo `tovak co`", "x=`\\`;tovak co`"]],
        *[(line, "left as it is: inside a process substitution") for line in ["diff <(tovak co) x", "tee >(tovak co)"]],
        ("(tovak co -F) <x", translates),
        *[(line, "left as it is: a line continuation") for line in ["tovak co -l a\\\nb", 'tovak co -l "a\\\nb"']],
        *[(line, f"left as it is: an unquoted {what}") for line, what in [
            ("tovak co -l a? -l ~ -l a{b,c}", "glob character"), ("tovak co -l a[b", "glob character"),
            *((line, "brace") for line in ["tovak co -l a{b,c}", "tovak co -l a{b}c", "tovak co -l a}"])]],
        ("'/n\r\t\x01/tovak' co", "left as it is: cannot resolve /n\\r\\t\\x01/tovak: No such file or directory"),
        ("tovak co --fendix x", "refused by the library: The command parameters are not vaild!\\nIf the parameter "
                                "starts with --, the next parameter should start with - or --."),
        (f"'{tmp}/x y/tovak' co", f"left as it is: the launcher refuses to run from {tmp}/x y/ (byte 0x20)"),
        *[(f"tovak co -l {value}", f"left as it is: the Fendix line would hand '{byte}' to the shell as syntax")
          for value, byte in [("{", "{"), ("'a\tb'", "\\t"), ("'a b\\c'", "\\"), ("'a\rb'", "\\r"), ("'$a b'", "$"),
                              ("'a b\"#'", '"'), ('"\\$\\a"', "$"), ('"\\a"', "\\"), ('"\\\0x"', "\\"),
                              ('"\\$\0"', "$")]],
        ("tovak co -l 'a", "left as it is: an unterminated quote")]  # last: the quote runs to the end
    code, listed, _ = check("T=/x/tovak\n" + "".join(line + "\n" for line, _ in rows))
    said = {int(number): reason for number, reason in re.findall(r"^-:(\d+): (.*)$", listed, re.M)}
    expect("--check of the assignment", said.pop(1, None), "mentions tovak")
    for n, (line, reason) in zip(itertools.accumulate([2] + [line.count("\n") + 1 for line, _ in rows]), rows):
        expect(f"--check of {line!r}", said.pop(n, None), reason)
    expect("--check: the status, and nothing more said", (code, said), (2, {}))
    # Lines that read the launcher's own lines, and the calls whose output they read: written to a file
    # they name (not /dev/null, not another), or piped into them; a function named tovak.
    reading = ('tovak co -F &>"$OUT"\ntovak co -D >/dev/null\n'
               "tovak co -L >>log2; tovak co -F 1>>log; tovak co -D >|log; tovak co -L 2>log; tovak co -F &>>log\n"
               'c=$(grep \'Return code\' "$OUT" log)\n'
               "tovak co -F | grep -q fendx\ntovak co -F |\n\n  sed 's/translated command//'\n# return code\n")
    reads = "reads the launcher's own lines ('{}'), which a Fendix line does not print"
    piped = "left as it is: its output is piped into a line that reads the launcher's own lines"
    goes = "left as it is: its output goes to {}, which a line reads for the launcher's own lines"
    expect("readers", check(reading), (2, "".join(f"-:{n}: {why}\n" for n, why in [
        (1, goes.format('"$OUT"')), (2, translates.replace("fw", "dd") + " >/dev/null"),
        (3, translates.replace("type fw", "scope latest") + " >>log2"), (3, goes.format("log")),
        (3, goes.format("log")),
        (3, translates.replace("type fw", "scope latest") + " 2>log"), (3, goes.format("log")),
        (4, reads.format("return code")), (5, reads.format("fendx")), (5, piped), (6, piped),
        (8, reads.format("translated command"))]), summary(translated=3, left=6, readers=3)))
    # What makes a call unsafe to rewrite, each row one fault: a reader above the call, run later as a function.
    for label, options, text, wanted in [
            ("a reader above", [], 'c() { grep -q "return code" "$A"; }\ntovak co -D >"$A"; c\n',
             [(1, reads.format("return code")), (2, goes.format('"$A"'))]),
            ("what sh reads otherwise", [],
             "tovak co -F 10>/dev/null\ntovak co &>/dev/null -F\ntovak co -F &>/dev/null 2>&1\n",
             [(1, "left as it is: a redirection of descriptor 10, which sh reads as the word 10 and >"),
              (2, "left as it is: a word after &>, which sh reads as the end of the command"),
              (3, translates + " &>/dev/null 2>&1")]),
            ("a Fendix in a fendx directory", ["--fendix", "/opt/fendx/Fendix"], "tovak co -F\n",
             [(1, translates.replace("Fendix", "/opt/fendx/Fendix"))]),
            ("${A} as $A", [], 'tovak co -F >"${A}"; grep -q "return code" "$A"\ntovak co -F >$B; grep -q fendx ${B}\n',
             [(1, reads.format("return code")), (1, goes.format('"${A}"')), (2, reads.format("fendx")),
              (2, goes.format("$B"))])]:
        expect(label, check(text, *options)[1], "".join(f"-:{n}: {why}\n" for n, why in wanted))
    os.mkfifo(tmp + "/fifo")  # opened for reading, it would wait for a writer that never comes
    # Lookaheads at (( and $(( redone at every level of nesting took time exponential in it.
    parentheses = subprocess.run([TOOL, "--script", "-"], input=b"tovak co\nx=" + b"$(((" * 40 + b"((" * 40,
                                 capture_output=True, timeout=10)
    expect("(( nested 40 deep", parentheses.returncode, 0)
    fifo = subprocess.run([TOOL, "--script", tmp + "/fifo"], capture_output=True, timeout=10)
    expect("a FIFO", (fifo.returncode, fifo.stderr.decode()),
           (1, USAGE.format(f"cannot read {tmp}/fifo: not a regular file") + summary(0)))
    for defined in ['tovak co -l "$R"\n/x/tovak co\ntovak()', "tovak co -F\n/x/tovak co\nfunction tovak",
                    "tovak co -F\n/x/tovak co\nalias tovak=x"]:  # defined last
        expect(f"a function named tovak: {defined!r}", check(defined)[:2],
               (2, "-:1: left as it is: the script defines a function or alias named tovak, which this runs\n"
                   "-:2: left as it is: cannot resolve /x/tovak: No such file or directory\n-:3: mentions tovak\n"))
    # Here-documents quoted or not, of two lines; an invocation inside the program word of another, listed after it;
    # a continuation ahead of the program word.
    expect("delimiters", check('cat <<"E"\nx\n$(tovak co)\nE\ncat <<E\na(tovak co)\n\\$(tovak co)\n$x$(tovak co)\n'
                               '$$(tovak co)\nE\n$(tovak co)/tovak\n\\\ntovak co -F\n')[:2],
           (2, "-:3: mentions tovak\n-:6: mentions tovak\n-:7: mentions tovak\n-:8: left as it is: inside a command "
               "substitution\n-:9: mentions tovak\n-:11: left as it is: a $ expansion\n"
               f"-:11: left as it is: inside a command substitution\n-:13: {translates}\n"))
    # An indent of a tab and a blank.
    indented = ("\t # tovak-translate: left as it is: the Fendix line would hand '#' to the shell as syntax\n"
                '\t tovak co -l "#"\n')
    expect("indented", [tool(["--script", "-"], text)[1] for text in ['\t tovak co -l "#"\n', indented]],
           [indented] * 2)
    for script, reason in [("y=$(case a in a) tovak co;; esac)", "a case statement inside a command substitution"),
                           ("$(cat <<E)/tovak co", "a here-document that begins inside a command substitution"),
                           ("y=`#`; tovak co", "a comment or here-document inside backquotes"),
                           ('echo "${x:-it\'s}"; tovak co', "a single quote inside ${...} within double quotes")]:
        expect(script, check(script)[1], f"-:1: left as it is: after {reason}, where quoting cannot be followed\n")
    expect("one refusal", tool(["--script", "-"], "tovak co --fendix x\n")[0::2], (2, summary(refused=1)))
    # Substitutions nested past the limit, and braces alone: the file is written through.
    for text, deep in [('$(echo "' * 99999, True), ("${a:-" * 64, False), ("${a:-" * 65, True)]:
        expect(f"nested: {text[:8]} {len(text)}", tool(["--script", "-"], "tovak co -F\nx=" + text)[0::2],
               (2, USAGE.format("- is left unchanged: expansions nested more than 64 deep") + summary(unchanged=1))
               if deep else (0, summary(translated=1)))
    if not ARGS.sanitized:
        huge = subprocess.run([TOOL, "--script", "-"], stdin=open("/dev/zero"), capture_output=True,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (400 << 20,) * 2))
        expect("out of memory", (huge.returncode, huge.stderr), (1, b"tovak-translate: out of memory\n"))
    # Each file read, refused or failing to read (/proc/self/mem at 0: EIO), and each question to the library give
    # back the descriptors they took: 20 of each under a limit of 16, also with standard input closed, where the first
    # is 0.
    files = ["/dev/null", tmp + "/bare.sh", "/proc/self/mem"] * 20
    for stdin, first in [("tovak co -L\n" * 40, ["-"]), (None, [])]:
        expect(f"descriptors, standard input {stdin and 'read' or 'closed'}",
               tool(["--script", *first, *files], stdin, limit=(resource.RLIMIT_NOFILE, 16)),
               tool(["--script", *first, *files], stdin or ""))
    # The library's questions give back descriptor 0 too: a - read after one finds it closed, not a copy of
    # standard output.
    expect("- after a question", tool(["--script", "kept.sh", "-"], None, cwd=tmp),
           (1, NEW, USAGE.format("cannot read -: Bad file descriptor") + summary(translated=1)))
    expect("no descriptor to spare", tool(["co", "-F"], limit=(resource.RLIMIT_NOFILE, 4)),
           (1, "", USAGE.format("cannot catch the library's output: Too many open files")))
    # The scripts are flushed ahead of the summary.
    both = subprocess.run([TOOL, "--script", "-"], input=b"tovak co -F\n", stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT).stdout.decode()
    expect("summary last", both, NEW + summary(translated=1))
    # Texts that end inside a quote, an expansion or a here-document, and one where quoting stops being certain
    # just after an invocation begins.
    expect("each alone", [check(text)[:2] for text in [
        'tovak co "a\\', "echo `tovak co", "echo ${x tovak", 'echo ${x:-" tovak', "\"${x:-'}\"/tovak co",
        "cat <<E\nx tovak", "echo ${x:-'}'}; tovak co -F", "cat <<E\n`\nE\ntovak co -F",
        "tovak co -F >/x$(: return code)", "tovak co -F; tovak (", "tovak co >-; Fendix --output x; echo return code",
        "tovak co >x; /o/Fendix x; echo return code",
        "tovak co -F | cat || (\n  echo return code\n)", "tovak co -F | (\n  grep -q 'return code'\n)",
        "tovak co -F | while read l; do\n  grep -q 'return code'\ndone", "( tovak co -F ) | grep -q fendx",
        "while :; do tovak co -F; done >&2 | grep -q fendx", "( tovak co -F ) |\n  grep -q fendx",
        "tovak co -F | (cat)\necho fendx",
        *(f"{compound} | grep -q fendx" for compound in [
            "if :; then tovak co -F; fi", "case a in a) tovak co -F;; esac", "for x in a; do tovak co -F; done",
            "until :; do tovak co -F; done", "select x in a; do tovak co -F; done"]),
        "exec 2>&1 >>l\ntovak co -F\ngrep fendx l",
        "sh <<E\ntovak co\nE", "cat <<-'E' | ssh h\n\ttovak co\n\tE", "echo 'tovak co' | sh", "bash <<<'tovak co'",
        "sh <<-E\n\tx\n\tE\ntovak", '>"$O" tovak co -F; grep fendx "$O"', "exec >>l 2>&1\ntovak co -F\ngrep fendx l",
        "{ tovak co -F; } >l\ngrep fendx l"]],
           [(2, "-:1: left as it is: an unterminated quote\n"),
            (2, "-:1: left as it is: inside a command substitution\n"),
            (0, "-:1: mentions tovak\n"), (0, "-:1: mentions tovak\n"),
            (2, "-:1: left as it is: after a single quote inside ${...} within double quotes, where quoting cannot be "
                "followed\n"),
            (0, "-:2: mentions tovak\n"), (2, f"-:1: {translates}\n"), (2, f"-:4: {translates}\n"),
            (2, f"-:1: {reads.format('return code')}\n-:1: {translates} >/x$(: return code)\n"),
            (2, f"-:1: {translates}\n-:1: refused by the library: Please specify the command!\n"),
            (2, f"-:1: {reads.format('return code')}\n-:1: {translates.replace(' --type fw', '')} >-\n"),
            (2, f"-:1: {reads.format('return code')}\n-:1: {translates.replace(' --type fw', '')} >x\n"),
            (2, f"-:1: {translates}\n-:2: {reads.format('return code')}\n"),
            *[(2, "-:1: left as it is: its output is piped into a line that reads the launcher's own lines\n"
                  f"-:2: {reads.format('return code')}\n")] * 2,
            *[(2, f"-:1: {reads.format('fendx')}\n-:1: left as it is: its output is piped into a line that reads "
                  "the launcher's own lines\n")] * 2,
            (2, "-:1: left as it is: its output is piped into a line that reads the launcher's own lines\n"
                f"-:2: {reads.format('fendx')}\n"),
            (2, f"-:1: {translates}\n-:2: {reads.format('fendx')}\n"),
            *[(2, f"-:1: {reads.format('fendx')}\n-:1: left as it is: its output is piped into a line that reads "
                  "the launcher's own lines\n")] * 5,
            (2, f"-:2: {goes.format('l')}\n-:3: {reads.format('fendx')}\n"),
            *[(2, f"-:1: left as it is: tovak is run later by {runner}, from its standard input, which the tool "
                  f"does not rewrite\n{mention}") for runner, mention in [
                ("sh", "-:2: mentions tovak\n"), ("ssh", "-:2: mentions tovak\n"), ("sh", ""), ("bash", "")]],
            (2, "-:4: refused by the library: Please specify the command!\n"),
            (2, f"-:1: {reads.format('fendx')}\n-:1: {goes.format(chr(34) + '$O' + chr(34))}\n"),
            *[(2, f"-:{n}: {goes.format('l')}\n-:{n + 1}: {reads.format('fendx')}\n") for n in [2, 1]]])
    # Syntax that sh and bash split differently, or that once hid a call.
    after = "left as it is: after {}, where quoting cannot be followed".format
    ansi = after("a $'...' quote, which sh and bash read differently")
    for script, wanted in [
            ("$'tovak' co\necho $'don\\'t'\ntovak co -F",
             f"-:1: left as it is: a $'...' quote\n-:3: {ansi}\n"),
            ("echo ${x:-$'\\''}\ntovak co -F", f"-:2: {ansi}\n"),
            ("echo $'a\\'; tovak co -F; echo '", f"-:1: {ansi}\n"),  # a call to sh, a mention to bash
            ("tovak co>`<<tovak", f"-:1: {after('a comment or here-document inside backquotes')}\n"),
            ("echo for ) in tovak\nx tovak co", "-:1: mentions tovak\n-:2: left as it is: tovak is among the words of "
             "x, a program the tool does not know, which may run it\n"),  # no empty variable taken from the for
            ("((\n  tovak co -F\n) )",
             f"-:2: {after('a (( command, which bash reads as arithmetic and sh as subshells')}\n"),
            ("echo \"${x:-$'}'}\"; tovak co", f"-:1: {after('a single quote inside ${...} within double quotes')}\n"),
            ("((tovak co -F) 2>&1)\n(( n = n << 2 ))\ntovak co -F",
             f"-:1: {translates}\n-:3: {after('a (( command, which bash reads as arithmetic and sh as subshells')}\n"),
            ("y=$((tovak co -F) 2>&1)", "-:1: left as it is: inside a command substitution\n"),
            ("case $1 in a) echo ;& tovak) tovak co -F;;& tovak) ;; esac", f"-:1: {translates}\n"),
            ("n=$(grep -c case f) m=`echo ${#l}`\ntovak co -F\ny=$(if :; then function f case a in a) :;; esac; fi)\n"
             "tovak co -F",
             f"-:2: {translates}\n-:4: {after('a case statement inside a command substitution')}\n"),
            ("tovak co -F \\", "-:1: left as it is: a backslash at the end of the file\n"),
            ("tovak co -F -l >\\\n /x\ntovak co\\\n  -F\\\n",
             "-:1: refused by the library: The parameter value of -l or --local can not be empty.\n"
             f"-:3: {translates}\n"),
    ]:
        expect(f"split: {script!r}", check(script)[:2], (2, wanted))

finish("all passed")
